// From pixel positions to the values of a chart's axes and back.
//
// What is exact: with two references an axis maps each of them to the other side to the last bit, and
// so do three references of a plane; with more, those whose residual is 0. A pixel position that is a
// whole number of 64ths comes back from its value to the last bit, if the value tells it from the
// next one. Everywhere else the way there and back ends within a few units of the last place of the
// axis's longest number; a date is rounded as its scale says.

import { makePlane } from './planes.js';
import {
  axisError,
  checkedReferences,
  mean,
  onGrid,
  plain,
  positionOf,
  referenceName,
  wrongReference,
} from './references.js';
import { makeScale } from './scales.js';

/** @typedef {import('./scales.js').ScaleDescription} ScaleDescription */
/** @typedef {import('./scales.js').Value} Value */

/** @typedef {[x: number, y: number]} Pair */
/** @typedef {number | string | null} AxisValue As a scale writes it. */

/**
 * An axis along the columns or the rows of a picture: its scale and two or more references, pixel
 * positions and the values there. From more than two the line is laid that misses them least: the
 * sum of the squares of its distances from them, in pixels, is the smallest.
 * @typedef {ScaleDescription & {pixel: number[], value: Value[]}} AxisDescription
 */

/**
 * @typedef {object} Axis
 * @property {(pixel: number) => AxisValue} toValue A number; a date in ISO 8601; the name of the
 *   nearest category, null where there is none.
 * @property {(value: Value) => number} toPixel
 * @property {number[]} residuals How far each reference lies from where the axis has its value, in
 *   pixels along the axis.
 * @property {AxisDescription} description What makes the same axis again, as JSON too.
 */

/**
 * Axes that are turned or skewed against the picture: the scales of x and y and three or more
 * references that do not lie on one line, each with x and y of the pixel and of the value.
 * @typedef {object} PlaneDescription
 * @property {ScaleDescription} x
 * @property {ScaleDescription} y
 * @property {Pair[]} pixel
 * @property {[x: Value, y: Value][]} value
 */

/**
 * Axes along columns and rows. Where one is missing, its values are null.
 * @typedef {{x?: AxisDescription, y?: AxisDescription}} StraightDescription
 */

/** @typedef {StraightDescription | PlaneDescription} AxesDescription */

/**
 * Both axes of a chart.
 * @typedef {object} Axes
 * @property {(pixel: Pair) => [x: AxisValue, y: AxisValue]} toValue
 * @property {(value: [x: Value, y: Value]) => Pair} toPixel Where an axis is missing, NaN.
 * @property {Residual[]} residuals One for each reference.
 * @property {AxesDescription} description What makes the same axes again, as JSON too.
 */

/**
 * @typedef {object} Residual
 * @property {string} reference Which, in words.
 * @property {number} distance From where the axes have its value, in pixels.
 */

/**
 * Makes an axis.
 * @param {AxisDescription} description
 * @param {string} [name] What messages call it.
 * @returns {Axis}
 */
export function makeAxis(description, name = 'axis') {
  const { pixel: pixels, value: values } = checkedReferences(description, 2, name);
  for (const [i, at] of pixels.entries())
    if (!Number.isFinite(at)) throw wrongReference(description, i, name, 'a number of pixels', at);
  const order = pixels.map((_, i) => i).sort((a, b) => pixels[a] - pixels[b]);
  const inOrder = order.map((i) => values[i]);
  const scale = makeScale(description, inOrder, name);
  const positions = values.map((value, i) => {
    const position = scale.read(value);
    if (position === undefined) throw wrongReference(description, i, name, scale.expects, value);
    return position;
  });
  checkOrder(description, order, positions, name);

  const line = fitLine(positions, pixels);
  const perPixel = Math.abs((line.t1 - line.t0) / (line.p1 - line.p0));
  const pixelAt = (/** @type {number} */ t) => between(t, line.t0, line.t1, line.p0, line.p1);
  const positionAt = (/** @type {number} */ p) => between(p, line.p0, line.p1, line.t0, line.t1);
  const residuals = pixels.map((at, i) => (pixels.length === 2 ? 0 : at - pixelAt(positions[i])));
  const known = positions.map((position, i) => ({ at: pixels[i], position, value: values[i] }));
  const exact = known.filter((_, i) => residuals[i] === 0);

  /** @param {number} at */
  const toValue = (at) => {
    const reference = exact.find((r) => r.at === at);
    return reference
      ? scale.canonical(reference.value, perPixel)
      : scale.write(positionAt(at), perPixel);
  };
  return {
    toValue,
    toPixel: (value) => {
      const position = positionOf(scale, value, name);
      const reference = exact.find((r) => r.position === position);
      if (reference) return reference.at;
      const at = pixelAt(position);
      const near = onGrid(at);
      const same = !scale.isNearest && toValue(near) === scale.canonical(value, perPixel);
      return same ? near : at;
    },
    residuals,
    description: { ...scale.description, pixel: [...pixels], value: values.map(plain) },
  };
}

/**
 * Makes the axes of a chart.
 * @param {AxesDescription} description
 * @returns {Axes}
 */
export function makeAxes(description) {
  if (description === null || typeof description !== 'object')
    throw axisError('axes', 'the descriptions of x and y', description);
  if ('pixel' in description || 'value' in description)
    return makePlane(/** @type {PlaneDescription} */ (description));
  const { x: xDescription, y: yDescription } = /** @type {StraightDescription} */ (description);
  if (!xDescription && !yDescription)
    throw axisError('axes', 'the description of x, of y or of both', description);
  const x = xDescription && makeAxis(xDescription, 'x axis');
  const y = yDescription && makeAxis(yDescription, 'y axis');
  const residualsOf = (/** @type {Axis | undefined} */ axis, /** @type {string} */ name) =>
    (axis?.residuals ?? []).map((distance, i) => ({
      reference: referenceName(/** @type {Axis} */ (axis).description, i, name),
      distance: Math.abs(distance),
    }));
  return {
    toValue: ([atX, atY]) => [x ? x.toValue(atX) : null, y ? y.toValue(atY) : null],
    toPixel: ([valueX, valueY]) => [x ? x.toPixel(valueX) : NaN, y ? y.toPixel(valueY) : NaN],
    residuals: [...residualsOf(x, 'x axis'), ...residualsOf(y, 'y axis')],
    description: { ...(x && { x: x.description }), ...(y && { y: y.description }) },
  };
}

/**
 * Reads references as a command line has them: `PIXEL=VALUE,PIXEL=VALUE`. A comma belongs to a name
 * unless another `PIXEL=` follows.
 * @param {string} text Such as `'82=0,402=50'` or `'60=1990-01,700=2000-01'`.
 * @param {string} [name] What messages call the axis.
 * @returns {{pixel: number[], value: string[]}}
 */
export function parseReferences(text, name = 'axis') {
  const parts = text.split(/,(?=\s*[-+]?(?:\d+\.?\d*|\.\d+)\s*=)/);
  const references = parts.map((part, i) => {
    const [, at, value] = /^\s*([-+]?(?:\d+\.?\d*|\.\d+))\s*=\s*(.*?)\s*$/.exec(part) ?? [];
    if (!at || !value)
      throw axisError(`${name}, reference ${i + 1}`, 'PIXEL=VALUE, such as 82=0', part);
    return { at: Number(at), value };
  });
  return { pixel: references.map(({ at }) => at), value: references.map(({ value }) => value) };
}

/**
 * Refuses references whose values do not rise, or fall, from pixel to pixel.
 * @param {AxisDescription} description
 * @param {number[]} order The references from the smallest pixel to the largest.
 * @param {number[]} positions
 * @param {string} name
 */
function checkOrder(description, order, positions, name) {
  const { pixel, value } = description;
  for (const [k, i] of order.slice(1).entries())
    if (pixel[i] === pixel[order[k]])
      throw wrongReference(
        description,
        i,
        name,
        `another pixel than reference ${order[k] + 1} has`,
        pixel[i],
      );
  const inOrder = order.map((i) => positions[i]);
  if (inOrder.every((position) => position === inOrder[0]))
    throw wrongReference(description, order[1], name, 'different values', value[order[1]]);
  if (keepsOrder(inOrder)) return;
  const suspects = order.filter((_, k) => keepsOrder(inOrder.filter((__, other) => other !== k)));
  throw axisError(
    suspects.map((i) => referenceName(description, i, name)).join(' or ') || name,
    'values that rise, or fall, from pixel to pixel',
    value,
    suspects.length > 0
      ? 'Without it the others are in order: look for a slip in its pixel or its value.'
      : undefined,
  );
}

/**
 * Whether numbers never fall or never rise.
 * @param {number[]} numbers
 */
function keepsOrder(numbers) {
  const steps = numbers.slice(1).map((number, i) => number - numbers[i]);
  return steps.every((step) => step >= 0) || steps.every((step) => step <= 0);
}

/**
 * The line p(t) that misses the given points least in p, as two of its points: the given ones where
 * there are but two, otherwise those at the smallest and the largest t.
 * @param {number[]} t
 * @param {number[]} p
 */
function fitLine(t, p) {
  if (t.length === 2) return { t0: t[0], t1: t[1], p0: p[0], p1: p[1] };
  const [t0, t1] = [Math.min(...t), Math.max(...t)];
  const [meanT, meanP] = [mean(t), mean(p)];
  // In parts of the whole length, whose squares are numbers whatever the values are.
  const along = (/** @type {number} */ value) => (value - meanT) / (t1 - t0);
  let products = 0;
  let squares = 0;
  for (let i = 0; i < t.length; ++i) {
    products += along(t[i]) * (p[i] - meanP);
    squares += along(t[i]) * along(t[i]);
  }
  const at = (/** @type {number} */ value) => meanP + (along(value) * products) / squares;
  return { t0, t1, p0: at(t0), p1: at(t1) };
}

/**
 * The line through (a0, b0) and (a1, b1), at `a`.
 * @param {number} a
 * @param {number} a0
 * @param {number} a1
 * @param {number} b0
 * @param {number} b1
 */
const between = (a, a0, a1, b0, b1) => b0 + ((a - a0) * (b1 - b0)) / (a1 - a0);
