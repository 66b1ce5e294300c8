// Pixel positions to the values of a chart's axis and back.

/**
 * What an axis says: two pixel positions along it and the values there.
 * @typedef {object} AxisDescription
 * @property {'linear' | 'log10' | 'category'} scale
 * @property {[number, number]} pixel Two different positions.
 * @property {[number, number] | [string, string]} value The values there, positive ones on a
 *   logarithmic axis. For categories the names of the first and the last.
 */

/**
 * @typedef {object} Axis
 * @property {(pixel: number) => number} toValue
 * @property {(value: number) => number} toPixel
 */

/** @type {Record<string, {forward: (value: number) => number, back: (t: number) => number}>} */
const SCALES = {
  linear: { forward: (value) => value, back: (t) => t },
  log10: { forward: Math.log10, back: (t) => 10 ** t },
};

/**
 * Makes the two functions of a linear or logarithmic axis.
 * @param {AxisDescription} description
 * @returns {Axis}
 */
export function makeAxis({ scale, pixel, value }) {
  if (!(scale in SCALES))
    throw new RangeError(`Expected a linear or log10 axis, but received '${scale}'.`);
  const { forward, back } = SCALES[scale];
  const [first, last] = value.map((v) => forward(Number(v)));
  if (![first, last].every(Number.isFinite))
    throw new RangeError(`The reference values ${value.join(' and ')} suit no ${scale} axis.`);
  const perPixel = (last - first) / (pixel[1] - pixel[0]);
  if (!Number.isFinite(perPixel) || perPixel === 0)
    throw new RangeError('An axis needs two different pixels and two different values.');
  return {
    toValue: (at) => back(first + (at - pixel[0]) * perPixel),
    toPixel: (v) => pixel[0] + (forward(v) - first) / perPixel,
  };
}
