// One picture in every format and way of encoding that is decoded.

import { fileURLToPath } from 'node:url';
import sharp from 'sharp';

const chart = fileURLToPath(
  new URL('../../../examples/charts/penguins-triangles-dark.png', import.meta.url),
);
const small = sharp(chart).resize(160).flatten().toColourspace('srgb');

/** @type {Record<string, import('sharp').Sharp>} */
const WAYS = {
  png: small.clone().png(),
  'png, interlaced': small.clone().png({ progressive: true }),
  'png, palette': small.clone().png({ palette: true }),
  jpeg: small.clone().jpeg(),
  'jpeg, progressive': small.clone().jpeg({ progressive: true }),
  webp: small.clone().webp(),
  'webp, lossless': small.clone().webp({ lossless: true }),
  gif: small.clone().gif(),
  tiff: small.clone().tiff({ compression: 'none' }),
  'tiff, packed': small.clone().tiff({ compression: 'lzw' }),
  'tiff, tiles of jpeg': small.clone().tiff({ compression: 'jpeg', tile: true }),
  avif: small.clone().avif({ effort: 0 }),
};

/** @returns {Promise<[name: string, file: Buffer][]>} */
export const encodedPictures = () =>
  Promise.all(
    Object.entries(WAYS).map(
      async ([name, way]) => /** @type {const} */ ([name, await way.toBuffer()]),
    ),
  );
