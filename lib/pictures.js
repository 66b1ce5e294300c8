// Decodes picture files into plain data and writes pictures. The one module that knows the decoder,
// sharp, which is an optional dependency: tracing pixels that a program already has needs none.
import { ChartTraceError, LimitError } from './errors.js';
import { readWhole, writeWhole } from './files.js';
import { drawSvg } from './svg.js';

/** @typedef {import('./selection/view.js').Picture} Picture */

/**
 * Decodes a picture: PNG, JPEG, WebP, TIFF, GIF, SVG (at its own width and height) or AVIF, as
 * viewers show it: turned as its EXIF data say, in the colours of sRGB, of several frames the first.
 * A picture that is cut off or damaged is refused.
 * @param {string | Uint8Array} source A file's path, or its content. Nothing but that is read.
 * @param {{page?: string, maxPixels?: number}} [options] `page`: the colour under transparent
 *   pixels, white by default. `maxPixels`: larger pictures are refused, 100 million by default.
 * @returns {Promise<Picture>} Every pixel opaque.
 */
export async function decodePicture(source, { page = '#ffffff', maxPixels = 100e6 } = {}) {
  await loadSharp();
  const content = typeof source === 'string' ? await readPicture(source) : source;
  const start = Buffer.from(content.subarray(0, 1024)).toString('latin1');
  if (PIXELS.test(start)) return decodeContent(content, { page, maxPixels });
  if (SVG.test(start) || start.startsWith(PACKED)) return drawSvg(content, { page, maxPixels });
  throw noPicture(new Error(start === '' ? 'it is empty' : 'it is of no kind that is known'));
}

// What the files of each format begin with. Whatever else a decoder may know is not asked of it.
const PIXELS = /^(?:\x89PNG\r\n|\xff\xd8\xff|RIFF.{4}WEBP|II[*+]\0|MM\0[*+]|GIF8[79]a|.{4}ftyp)/s;
// Behind the mark of UTF-8, if it is there; or packed.
const SVG = /^(?:\xef\xbb\xbf)?\s*</;
const PACKED = '\x1f\x8b';

/** @param {string} path */
async function readPicture(path) {
  try {
    return await readWhole(path);
  } catch (error) {
    throw error instanceof ChartTraceError || error instanceof LimitError
      ? error
      : noPicture(error);
  }
}

/**
 * Decodes the content of a picture file in this process.
 * @param {Uint8Array} content
 * @param {{page: string, maxPixels: number}} options As `decodePicture` has them.
 * @returns {Promise<Picture>}
 */
export async function decodeContent(content, { page, maxPixels }) {
  const sharp = await loadSharp();
  try {
    const { data, info } = await sharp(content, { limitInputPixels: maxPixels, autoOrient: true })
      .flatten({ background: page })
      .toColourspace('srgb')
      .ensureAlpha()
      .raw()
      .toBuffer({ resolveWithObject: true });
    return { width: info.width, height: info.height, data };
  } catch (error) {
    const { width, height } = await statedSize(sharp, content);
    throw width * height > maxPixels ? tooLarge(width, height, maxPixels) : noPicture(error);
  }
}

/**
 * The size that a picture says it has, 0 where it says none. Only its header is read.
 * @param {typeof import('sharp').default} sharp
 * @param {Uint8Array} content
 */
async function statedSize(sharp, content) {
  try {
    return await sharp(content, { limitInputPixels: false }).metadata();
  } catch {
    return { width: 0, height: 0 };
  }
}

/**
 * @param {number} width
 * @param {number} height
 * @param {number} maxPixels
 */
const tooLarge = (width, height, maxPixels) =>
  new LimitError(`The picture is too large: ${width} x ${height} pixels.`, {
    expected: `at most ${maxPixels} pixels`,
    received: width * height,
    hint: 'Scale the picture down, or cut the chart out of it.',
  });

/** @param {any} error The decoder's. */
function noPicture(error) {
  const [reason] = String(error.message).trim().replace(/:$/, '').split('\n');
  return new ChartTraceError(`The picture cannot be decoded: ${reason}.`, {
    code: 'ERR_PICTURE',
    expected: 'a picture that is whole: PNG, JPEG, WebP, TIFF, GIF, SVG or AVIF',
    cause: error,
  });
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
 * Writes a picture as a PNG file, whole or not at all.
 * @param {string} path
 * @param {Picture} picture
 * @param {string} [svg] Drawn over the picture.
 */
export async function writePng(path, picture, svg) {
  await writeWhole(path, await encodePng(picture, svg));
}

/** @returns {Promise<typeof import('sharp').default>} */
async function loadSharp() {
  try {
    return (await import('sharp')).default;
  } catch (error) {
    // A sharp that is there but cannot be loaded has its own, more exact message.
    if (/** @type {NodeJS.ErrnoException} */ (error).code !== 'ERR_MODULE_NOT_FOUND') throw error;
    throw new ChartTraceError(
      'Decoding a picture needs the package sharp, which is not installed.',
      {
        code: 'ERR_DECODER_MISSING',
        expected: 'the package sharp',
        hint: 'Run `npm install sharp`.',
        cause: error,
      },
    );
  }
}
