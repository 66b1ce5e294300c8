// Mirrors point sets, so that what grows down or to the left grows up or to the right.

/** @typedef {'up' | 'down' | 'left' | 'right'} Direction */

/** @type {Readonly<Record<Direction, Direction>>} */
export const OPPOSITE = Object.freeze({ up: 'down', down: 'up', left: 'right', right: 'left' });

/**
 * Turns a point set so that what grows in `direction` grows up or, if that is sideways, to the right.
 * The mirror stands at coordinate 0: signs change, which is exact.
 * @param {import('./tracing.js').PointLists} points In raster order.
 * @param {Direction} direction
 * @returns {import('./tracing.js').PointLists} In raster order too.
 */
export function facing(points, direction) {
  if (direction === 'up' || direction === 'right') return points;
  const { x, y } = points;
  const mirrored = { x: new Float64Array(x.length), y: new Float64Array(y.length) };
  let next = 0;
  const copy = (/** @type {number} */ i) => {
    mirrored.x[next] = direction === 'left' ? 0 - x[i] : x[i];
    mirrored.y[next++] = direction === 'down' ? 0 - y[i] : y[i];
  };
  for (const [from, to] of direction === 'down' ? rows(y).reverse() : rows(y)) {
    if (direction === 'down') for (let i = from; i < to; ++i) copy(i);
    else for (let i = to - 1; i >= from; --i) copy(i);
  }
  return mirrored;
}

/**
 * The stretches of equal y, each as the index of its first point and of the first one after it.
 * @param {ArrayLike<number>} y
 */
function rows(y) {
  /** @type {[number, number][]} */
  const found = [];
  for (let from = 0, i = 1; i <= y.length; ++i)
    if (i === y.length || y[i] !== y[from]) {
      found.push([from, i]);
      from = i;
    }
  return found;
}
