// Small files that claim, or really hold, more than fits: what they claim is refused before it is
// decoded, and what is decoded stays within the stated memory.

import assert from 'node:assert/strict';
import { writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { pathToFileURL } from 'node:url';
import { deflateSync } from 'node:zlib';
import sharp from 'sharp';
import { decodePicture } from '../../lib/pictures.js';
import { root } from './support/addon.js';
import { command, makeFolder } from './support/command.js';
import { chunk, pngOf } from './support/png_chunks.js';

const MEBIBYTE = 2 ** 20;

let folder, remove;
before(async () => {
  ({ folder, remove } = await makeFolder());
});
after(() => remove());

/**
 * Runs the command on a picture: its record, and the most memory it had.
 * @param {Uint8Array} picture
 */
async function traced(picture) {
  await writeFile(join(folder, 'bomb'), picture);
  const peak = pathToFileURL(join(root, 'test/js/support/peak.mjs')).href;
  const args = [
    'bomb',
    '--kind',
    'scatter',
    '--color',
    'blue',
    '--format',
    'ndjson',
    '--jobs',
    '1',
  ];
  const { stdout, stderr } = await command(args, {
    cwd: folder,
    env: { NODE_OPTIONS: `--import=${peak}` },
  });
  const [, bytes] = /^peak (\d+) bytes$/m.exec(stderr) ?? [];
  assert.ok(Number(bytes) > 20 * MEBIBYTE, stderr);
  return { record: JSON.parse(stdout), mebibytes: Number(bytes) / MEBIBYTE };
}

/** @param {number} width @param {number} height */
function gifOf(width, height) {
  const file = Buffer.from(
    'GIF89a....\x80\0\0\0\0\0\xff\xff\xff,\0\0\0\0....\0\x02\x02\x44\x01\0;',
    'latin1',
  );
  for (const at of [6, 24]) {
    file.writeUInt16LE(width, at);
    file.writeUInt16LE(height, at + 2);
  }
  return file;
}

/** @param {number} size */
function tiffOf(size) {
  const numbers = [256, size, 257, size, 258, 8, 259, 1, 262, 1, 273, 8, 277, 1, 278, size, 279, 8];
  const entries = numbers.flatMap((number, i) => (i % 2 ? [1, number] : [number | (4 << 16)]));
  const head = Buffer.from('II*\0\x08\0\0\0\x09\0', 'latin1');
  return Buffer.concat([head, Buffer.from(Uint32Array.from([...entries, 0]).buffer)]);
}

test('a picture that claims too many pixels is refused by its size', async () => {
  for (const [name, file] of Object.entries({
    png: pngOf({ width: 100_000, height: 100_000, rows: Buffer.alloc(9) }),
    'png of one bit': pngOf({
      width: 100_000,
      height: 100_000,
      depth: 1,
      type: 0,
      rows: Buffer.alloc(9),
    }),
    gif: gifOf(65_535, 65_535),
    tiff: tiffOf(1e6),
  }))
    await assert.rejects(decodePicture(file), { code: 'ERR_LIMIT', message: /too large/ }, name);
});

test('the claim takes no memory', async () => {
  const { record, mebibytes } = await traced(
    pngOf({ width: 100_000, height: 100_000, rows: Buffer.alloc(9) }),
  );
  assert.equal(record.error.code, 'ERR_LIMIT');
  assert.ok(mebibytes < 200, `${mebibytes} MiB`);
});

test('a picture is decoded in ten bytes a pixel, whatever it unpacks to, AVIF in twenty', async () => {
  const [width, height] = [5000, 2000];
  // 80 MB behind 0.1 MB: 16 bits of each colour and of alpha.
  const rows = Buffer.alloc((1 + 8 * width) * height);
  const png = pngOf({ width, height, depth: 16, type: 6, rows });
  assert.ok(png.length < MEBIBYTE / 4);
  const white = { create: { width, height, channels: 3, background: '#ffffff' } };
  const avif = await sharp(/** @type {any} */ (white))
    .avif({ effort: 0 })
    .toBuffer();
  for (const [file, bytesAPixel] of /** @type {const} */ ([
    [png, 10],
    [avif, 20],
  ])) {
    const { record, mebibytes } = await traced(file);
    assert.deepEqual([record.error, record.width, record.height], [null, width, height]);
    const most = 200 + (bytesAPixel * width * height) / MEBIBYTE;
    assert.ok(mebibytes < most, `${mebibytes} MiB, not ${most}`);
  }
});

test('what is hidden beside the pixels is not unpacked', async () => {
  const bomb = deflateSync(Buffer.alloc(2 ** 27));
  const text = chunk('zTXt', Buffer.concat([Buffer.from('Comment\0\0'), bomb]));
  const profile = chunk('iCCP', Buffer.concat([Buffer.from('x\0\0'), bomb]));
  const rows = Buffer.of(0, 0, 0, 255);
  const { record, mebibytes } = await traced(
    pngOf({ width: 1, height: 1, rows, more: [profile, text, text] }),
  );
  assert.deepEqual(record.series[0].pixels, [[0, 0]]);
  assert.ok(mebibytes < 200, `${mebibytes} MiB`);
});

test('thousands of frames cost no more than one', async () => {
  const one = gifOf(1000, 1000);
  const frame = one.subarray(19, -1);
  const { mebibytes } = await traced(
    Buffer.concat([
      one.subarray(0, -1),
      ...Array.from({ length: 50_000 }, () => frame),
      Buffer.from(';'),
    ]),
  );
  assert.ok(mebibytes < 200, `${mebibytes} MiB`);
});
