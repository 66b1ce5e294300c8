// Where in a picture to look: a box, and shapes to take in or to leave out.

import { refuse } from '../errors.js';

/**
 * A rectangle of pixel positions. The centre of the top left pixel is (0, 0), y grows downwards,
 * and a pixel is inside when its centre is, edges included.
 * @typedef {{left: number, top: number, right: number, bottom: number}} Box
 */

/**
 * The corners of a polygon in order, in pixel positions as for a box; the last one is joined to the
 * first. Where it overlaps itself, the even-odd rule says what is inside; edges are.
 * @typedef {ReadonlyArray<readonly [x: number, y: number]>} Polygon
 */

/**
 * A shape to look in, or one to leave out.
 * @typedef {{include: Box | Polygon} | {exclude: Box | Polygon}} Mask
 */

const EDGES = /** @type {const} */ (['left', 'top', 'right', 'bottom']);

/**
 * The whole columns and rows of a picture that lie inside a box.
 * @param {Box | undefined} box The whole picture by default.
 * @param {{width: number, height: number}} picture
 * @returns {Box} Of whole numbers; empty, its right less than its left or its bottom less than its
 *   top, when the box lies beside the picture.
 */
export function clip(box, { width, height }) {
  if (box === undefined) return { left: 0, top: 0, right: width - 1, bottom: height - 1 };
  checkBox(box, 'box');
  return {
    left: Math.max(0, Math.ceil(box.left)),
    top: Math.max(0, Math.ceil(box.top)),
    right: Math.min(width - 1, Math.floor(box.right)),
    bottom: Math.min(height - 1, Math.floor(box.bottom)),
  };
}

/**
 * Marks the pixels of a box that the masks let through: those inside any shape to include, or all
 * where there is none, less those inside a shape to exclude.
 * @param {readonly Mask[] | undefined} masks
 * @param {Box} box Of whole numbers.
 * @returns {Uint8Array | undefined} 1 for each pixel to look at, row by row from the box's top left;
 *   undefined when that is every one.
 */
export function openPixels(masks, box) {
  if (masks === undefined) return undefined;
  if (!Array.isArray(masks)) refuse('masks', 'an array', masks);
  if (masks.length === 0) return undefined;
  masks.forEach(checkMask);
  const width = Math.max(0, box.right - box.left + 1);
  const height = Math.max(0, box.bottom - box.top + 1);
  const included = masks.flatMap((mask) => ('include' in mask ? [mask.include] : []));
  const excluded = masks.flatMap((mask) => ('exclude' in mask ? [mask.exclude] : []));
  const open = new Uint8Array(width * height).fill(included.length === 0 ? 1 : 0);
  for (const shape of included) paint(open, shape, box, 1);
  for (const shape of excluded) paint(open, shape, box, 0);
  return open;
}

/**
 * @param {Uint8Array} open
 * @param {Box | Polygon} shape
 * @param {Box} box
 * @param {0 | 1} value
 */
function paint(open, shape, box, value) {
  const width = box.right - box.left + 1;
  for (let row = box.top; row <= box.bottom; ++row) {
    const start = (row - box.top) * width - box.left;
    for (const [from, to] of isPolygon(shape) ? spansOf(shape, row) : spanOf(shape, row)) {
      const first = Math.max(box.left, Math.ceil(from));
      const last = Math.min(box.right, Math.floor(to));
      if (first <= last) open.fill(value, start + first, start + last + 1);
    }
  }
}

/**
 * @param {Box} box
 * @param {number} row
 * @returns {[from: number, to: number][]}
 */
const spanOf = ({ left, top, right, bottom }, row) =>
  top <= row && row <= bottom ? [[left, right]] : [];

/**
 * The stretches of a row that a polygon covers, edges included. A corner on the row is counted once
 * with the edges above it and once with those below; the two together are the closed shape.
 * @param {Polygon} corners
 * @param {number} row
 * @returns {[from: number, to: number][]}
 */
function spansOf(corners, row) {
  const above = [];
  const below = [];
  /** @type {[number, number][]} */
  const spans = [];
  for (let i = 0; i < corners.length; ++i) {
    const [[x0, y0], [x1, y1]] = [corners[i], corners[(i + 1) % corners.length]];
    if (y0 === row && y1 === row) spans.push([Math.min(x0, x1), Math.max(x0, x1)]);
    if (y0 === y1) continue;
    const x = x0 + ((row - y0) * (x1 - x0)) / (y1 - y0);
    if (Math.min(y0, y1) < row && row <= Math.max(y0, y1)) above.push(x);
    if (Math.min(y0, y1) <= row && row < Math.max(y0, y1)) below.push(x);
  }
  for (const crossings of [above, below]) {
    crossings.sort((a, b) => a - b);
    for (let i = 0; i + 1 < crossings.length; i += 2) spans.push([crossings[i], crossings[i + 1]]);
  }
  return spans;
}

/**
 * @param {Box | Polygon} shape
 * @returns {shape is Polygon}
 */
const isPolygon = (shape) => Array.isArray(shape);

/**
 * @param {unknown} box
 * @param {string} name
 */
function checkBox(box, name) {
  const edges = /** @type {Record<string, unknown>} */ (box ?? {});
  if (EDGES.some((edge) => typeof edges[edge] !== 'number' || Number.isNaN(edges[edge])))
    refuse(name, 'four numbers left, top, right and bottom', box);
}

/**
 * @param {Mask} mask
 * @param {number} index
 */
function checkMask(mask, index) {
  const name = `masks[${index}]`;
  const shapes = Object.entries(mask ?? {});
  if (shapes.length !== 1 || !['include', 'exclude'].includes(shapes[0][0]))
    refuse(name, 'an object with one shape, include or exclude', mask);
  const [[key, shape]] = shapes;
  if (!isPolygon(shape)) checkBox(shape, `${name}.${key}`);
  else if (shape.length < 3 || !shape.every(isPosition))
    refuse(`${name}.${key}`, 'three or more corners [x, y] of finite numbers', shape);
}

/** @param {unknown} corner */
const isPosition = (corner) =>
  Array.isArray(corner) && corner.length === 2 && corner.every((value) => Number.isFinite(value));
