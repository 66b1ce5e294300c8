// Axes that are turned or skewed against the picture: an affine map over both.

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

/** @typedef {import('./scales.js').Value} Value */
/** @typedef {import('./axes.js').Axes} Axes */
/** @typedef {import('./axes.js').AxisValue} AxisValue */
/** @typedef {import('./axes.js').Pair} Pair */
/** @typedef {import('./axes.js').PlaneDescription} PlaneDescription */

/**
 * Makes the axes of a plane.
 * @param {PlaneDescription} description
 * @returns {Axes}
 */
export function makePlane(description) {
  const { pixel: pixels, value: values } = checkedReferences(description, 3, 'axes');
  const isPair = (/** @type {unknown} */ pair) => Array.isArray(pair) && pair.length === 2;
  for (const [i, pair] of pixels.entries())
    if (!isPair(pair) || !pair.every(Number.isFinite))
      throw wrongReference(description, i, 'axes', 'x and y of a pixel', pair);
  const missing = values.findIndex((pair) => !isPair(pair));
  if (missing >= 0)
    throw wrongReference(description, missing, 'axes', 'x and y of a value', values[missing]);

  const scales = /** @type {const} */ (['x', 'y']).map((letter, k) => {
    const own = description[letter];
    if (own?.scale === 'category' && !own.categories)
      throw axisError(`${letter} axis`, 'all categories in order on turned axes', own);
    return makeScale(
      own ?? {},
      values.map((pair) => pair[k]),
      `${letter} axis`,
    );
  });
  const positions = values.map((pair, i) =>
    toPositions(pair, referenceName(description, i, 'axes')),
  );

  /**
   * @param {[Value, Value]} pair
   * @param {string} where
   * @returns {Pair}
   */
  function toPositions(pair, where) {
    const [x, y] = scales.map((scale, k) => positionOf(scale, pair[k], `${where}, ${'xy'[k]}`));
    return [x, y];
  }

  const map = fitPlane(positions, pixels, description);
  const perPixel = positionsPerPixel(map.from);
  /** @param {Pair} position */
  const write = ([x, y]) =>
    /** @type {[AxisValue, AxisValue]} */ ([
      scales[0].write(x, perPixel[0]),
      scales[1].write(y, perPixel[1]),
    ]);
  /** @param {[Value, Value]} value */
  const canonical = ([x, y]) =>
    /** @type {[AxisValue, AxisValue]} */ ([
      scales[0].canonical(x, perPixel[0]),
      scales[1].canonical(y, perPixel[1]),
    ]);
  const residuals = pixels.map(([x, y], i) => {
    const [atX, atY] = map.to(positions[i]);
    return pixels.length === 3 ? 0 : Math.hypot(x - atX, y - atY);
  });
  const exact = pixels
    .map((pixel, i) => ({ pixel, position: positions[i], value: values[i] }))
    .filter((_, i) => residuals[i] === 0);

  /** @param {Pair} pixel */
  const toValue = (pixel) => {
    const reference = exact.find((r) => isSame(r.pixel, pixel));
    if (!reference) return write(map.from(pixel));
    return canonical(reference.value);
  };
  return {
    toValue,
    toPixel: (value) => {
      const position = toPositions(value, 'axes');
      const reference = exact.find((r) => isSame(r.position, position));
      if (reference) return [...reference.pixel];
      const pixel = map.to(position);
      const [x, y] = pixel.map(onGrid);
      const isExact = scales.every((scale) => !scale.isNearest);
      return isExact && isSame(toValue([x, y]), canonical(value)) ? [x, y] : pixel;
    },
    residuals: residuals.map((distance, i) => ({
      reference: referenceName(description, i, 'axes'),
      distance,
    })),
    description: {
      x: scales[0].description,
      y: scales[1].description,
      pixel: pixels.map(([x, y]) => [x, y]),
      value: values.map(([x, y]) => [plain(x), plain(y)]),
    },
  };
}

/**
 * @param {unknown[]} one
 * @param {unknown[]} other
 */
const isSame = (one, other) => one[0] === other[0] && one[1] === other[1];

/**
 * The affine map from positions to pixels that misses the references least.
 * @param {Pair[]} positions
 * @param {Pair[]} pixels
 * @param {PlaneDescription} description
 */
function fitPlane(positions, pixels, description) {
  const names = pixels.map((_, i) => referenceName(description, i, 'axes')).join('; ');
  const own = centred(positions);
  const theirs = centred(pixels);
  for (const [what, { across }] of /** @type {const} */ ([
    ['pixels', theirs],
    ['values', own],
  ]))
    if (!(across > 1e-6))
      throw axisError(
        names,
        `${what} that do not lie on one line`,
        description[what === 'pixels' ? 'pixel' : 'value'],
      );

  // Both coordinates of the pixel by least squares: the normal equations have the sums of products
  // of the positions on their left.
  const { xx, xy, yy } = own;
  const determinant = xx * yy - xy * xy;
  const row = (/** @type {0 | 1} */ k) => {
    const sum = (/** @type {0 | 1} */ j) =>
      own.points.reduce((total, point, i) => total + point[j] * theirs.points[i][k], 0);
    const [sx, sy] = [sum(0), sum(1)];
    return [(sx * yy - sy * xy) / determinant, (sy * xx - sx * xy) / determinant];
  };
  const [[a, b], [c, d]] = [row(0), row(1)];
  const area = a * d - b * c;
  return {
    to: (/** @type {Pair} */ position) => {
      const [x, y] = own.inward(position);
      return theirs.outward([a * x + b * y, c * x + d * y]);
    },
    from: (/** @type {Pair} */ pixel) => {
      const [x, y] = theirs.inward(pixel);
      return own.outward([(d * x - b * y) / area, (a * y - c * x) / area]);
    },
  };
}

/**
 * How much of either position a pixel covers where that is most.
 * @param {(pixel: Pair) => Pair} from
 */
function positionsPerPixel(from) {
  const [origin, right, down] = [from([0, 0]), from([1, 0]), from([0, 1])];
  return [0, 1].map((k) => Math.hypot(right[k] - origin[k], down[k] - origin[k]));
}

/**
 * Points about their mean, in parts of their farthest coordinate from it, so that squares are numbers
 * whatever the points are; the sums of their products; and how far they spread across the line that
 * suits them best: 0 on one line, 1 where x and y have nothing to do with each other.
 * @param {Pair[]} points
 */
function centred(points) {
  const [cx, cy] = [0, 1].map((k) => mean(points.map((point) => point[k])));
  const [ux, uy] = [cx, cy].map((c, k) => Math.max(...points.map((p) => Math.abs(p[k] - c))));
  /** @type {(point: Pair) => Pair} */
  const inward = ([x, y]) => [(x - cx) / ux, (y - cy) / uy];
  /** @type {(point: Pair) => Pair} */
  const outward = ([x, y]) => [cx + x * ux, cy + y * uy];
  const around = points.map(inward);
  const sum = (/** @type {(point: Pair) => number} */ of) =>
    around.reduce((total, point) => total + of(point), 0);
  const [xx, xy, yy] = [sum(([x]) => x * x), sum(([x, y]) => x * y), sum(([, y]) => y * y)];
  return { points: around, inward, outward, xx, xy, yy, across: 1 - (xy * xy) / (xx * yy) };
}
