// PNG files put together by hand, for what no encoder writes.

import { deflateSync } from 'node:zlib';

const TABLE = Uint32Array.from({ length: 256 }, (_, byte) => {
  let rest = byte;
  for (let bit = 0; bit < 8; ++bit) rest = rest & 1 ? 0xedb88320 ^ (rest >>> 1) : rest >>> 1;
  return rest;
});

/** @param {Uint8Array} bytes */
const crcOf = (bytes) =>
  ~bytes.reduce((crc, byte) => TABLE[(crc ^ byte) & 255] ^ (crc >>> 8), -1) >>> 0;

/** @param {number} value */
const word = (value) => Buffer.of(value >>> 24, value >>> 16, value >>> 8, value);

/**
 * @param {string} name Four letters.
 * @param {Uint8Array} content
 */
export function chunk(name, content) {
  const named = Buffer.concat([Buffer.from(name, 'latin1'), content]);
  return Buffer.concat([word(content.length), named, word(crcOf(named))]);
}

/**
 * A PNG that says what it is told to say.
 * @param {object} parts
 * @param {number} parts.width
 * @param {number} parts.height
 * @param {number} [parts.depth] Bits of a sample.
 * @param {number} [parts.type] 0 grey, 2 colour, 3 palette, 6 colour and alpha.
 * @param {Uint8Array} parts.rows Each a byte for its filter and the samples.
 * @param {Uint8Array[]} [parts.more] Chunks before the pixels.
 */
export function pngOf({ width, height, depth = 8, type = 2, rows, more = [] }) {
  return Buffer.concat([
    Buffer.from('\x89PNG\r\n\x1a\n', 'latin1'),
    chunk('IHDR', Buffer.concat([word(width), word(height), Buffer.of(depth, type, 0, 0, 0)])),
    ...more,
    chunk('IDAT', deflateSync(rows)),
    chunk('IEND', Buffer.alloc(0)),
  ]);
}
