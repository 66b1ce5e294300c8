// Colours as the charts' descriptions and the command line write them.

/** @typedef {[red: number, green: number, blue: number]} Rgb Each channel 0 to 255. */

/**
 * Reads a colour written as six hexadecimal digits.
 * @param {string} text Such as `'#1f4e9e'`, in either case.
 * @returns {Rgb}
 */
export function parseColour(text) {
  const digits = /^#([0-9a-f]{2})([0-9a-f]{2})([0-9a-f]{2})$/i.exec(text);
  if (!digits) throw new TypeError(`Expected a colour such as '#1f4e9e', but received '${text}'.`);
  const [red, green, blue] = digits.slice(1).map((pair) => Number.parseInt(pair, 16));
  return [red, green, blue];
}
