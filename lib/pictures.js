// Decodes picture files into plain data and writes pictures. The one module that knows the decoder,
// sharp, which is an optional dependency: tracing pixels that a program already has needs none.
import { writeFile } from 'node:fs/promises';

/** @typedef {import('./pixels.js').Picture} Picture */

/**
 * Decodes a picture: PNG, JPEG, WebP, TIFF, GIF, SVG (at its own width and height) or AVIF.
 * @param {string | Uint8Array} source A file's path, or its content.
 * @param {{page?: string, maxPixels?: number}} [options] `page`: the colour under transparent
 *   pixels, white by default. `maxPixels`: larger pictures are refused, 100 million by default.
 * @returns {Promise<Picture>} Every pixel opaque.
 */
export async function decodePicture(source, { page = '#ffffff', maxPixels = 100e6 } = {}) {
  const sharp = await loadSharp();
  const { data, info } = await sharp(source, { limitInputPixels: maxPixels })
    .flatten({ background: page })
    .toColourspace('srgb')
    .ensureAlpha()
    .raw()
    .toBuffer({ resolveWithObject: true });
  return { width: info.width, height: info.height, data };
}

/**
 * Encodes a picture as PNG, with an SVG of the same size drawn over it where one is given.
 * @param {Picture} picture
 * @param {string} [svg]
 * @returns {Promise<Uint8Array>} The file's content.
 */
export async function encodePng({ width, height, data }, svg) {
  const sharp = await loadSharp();
  const image = sharp(data, { raw: { width, height, channels: 4 } });
  if (svg) image.composite([{ input: Buffer.from(svg) }]);
  return image.png().toBuffer();
}

/**
 * Writes a picture as a PNG file.
 * @param {string} path
 * @param {Picture} picture
 * @param {string} [svg] Drawn over the picture.
 */
export async function writePng(path, picture, svg) {
  await writeFile(path, await encodePng(picture, svg));
}

/** @returns {Promise<typeof import('sharp').default>} */
async function loadSharp() {
  try {
    return (await import('sharp')).default;
  } catch (error) {
    // A sharp that is there but cannot be loaded has its own, more exact message.
    if (/** @type {NodeJS.ErrnoException} */ (error).code !== 'ERR_MODULE_NOT_FOUND') throw error;
    throw new Error(
      'Decoding a picture needs the package sharp, which is not installed: run `npm install sharp`.',
      { cause: error },
    );
  }
}
