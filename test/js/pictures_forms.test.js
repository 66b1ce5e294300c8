// Pictures that are encoded in unusual ways come out as viewers show them.

import assert from 'node:assert/strict';
import { readFile, writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import { test } from 'node:test';
import sharp from 'sharp';
import { decodePicture } from '../../lib/pictures.js';
import { makeFolder } from './support/command.js';
import { chunk, pngOf } from './support/png_chunks.js';

/**
 * The colours of the pixels, without alpha.
 * @param {Uint8Array} file
 * @param {{page?: string}} [options]
 */
async function coloursOf(file, options) {
  const { data } = await decodePicture(file, options);
  const pixels = Array.from({ length: data.length / 4 }, (_, i) => [
    ...data.subarray(4 * i, 4 * i + 4),
  ]);
  assert.ok(pixels.every(([, , , alpha]) => alpha === 255));
  return pixels.map((pixel) => pixel.slice(0, 3));
}

/** @param {number[][]} colours */
const rowOf = (...colours) =>
  sharp(Uint8Array.from(colours.flat()), {
    raw: { width: colours.length, height: 1, channels: 3 },
  });

const RED = [255, 0, 0];
const GREEN = [0, 255, 0];
const BLUE = [0, 0, 255];

/**
 * @param {number[]} colour
 * @param {number[]} expected
 * @param {number} most How far each part may be off.
 */
const assertNear = (colour, expected, most) =>
  assert.ok(
    colour.every((part, i) => Math.abs(part - expected[i]) <= most),
    `${colour}, not ${expected}`,
  );

test('the smallest picture, the narrowest and the flattest', async () => {
  for (const [width, height] of [
    [1, 1],
    [1, 65_535],
    [65_535, 1],
  ]) {
    const rows = Buffer.alloc((1 + 3 * width) * height, 0);
    const picture = await decodePicture(pngOf({ width, height, rows }));
    assert.deepEqual([picture.width, picture.height], [width, height]);
    assert.ok(picture.data.every((part, i) => part === (i % 4 === 3 ? 255 : 0)));
  }
});

test('of 16 bits the upper eight count', async () => {
  const rows = Buffer.from([0, 0x12, 0x34, 0xff, 0xff, 0x80, 0x00]);
  const file = pngOf({ width: 1, height: 1, depth: 16, rows });
  assert.deepEqual(await coloursOf(file), [[0x12, 0xff, 0x80]]);
});

test('one bit is black or white', async () => {
  const file = pngOf({ width: 4, height: 1, depth: 1, type: 0, rows: Buffer.of(0, 0b01010000) });
  assert.deepEqual(
    (await coloursOf(file)).map(([red]) => red),
    [0, 255, 0, 255],
  );
});

test('a palette has alpha, through which the page is seen', async () => {
  const more = [chunk('PLTE', Buffer.from([...RED, ...GREEN])), chunk('tRNS', Buffer.of(255, 0))];
  const file = pngOf({ width: 2, height: 1, type: 3, rows: Buffer.of(0, 0, 1), more });
  assert.deepEqual(await coloursOf(file, { page: '#0000ff' }), [RED, BLUE]);
});

test('ink becomes light', async () => {
  for (const colour of [RED, [255, 255, 255], [0, 0, 0]]) {
    const file = await rowOf(colour).toColourspace('cmyk').jpeg({ quality: 100 }).toBuffer();
    assert.equal((await sharp(file).metadata()).space, 'cmyk');
    // No ink is as bright as light.
    assertNear((await coloursOf(file))[0], colour, 30);
  }
});

test('a colour profile counts', async () => {
  // The green of a wide screen, as the profile has it, is beyond that of sRGB.
  const plain = await rowOf([120, 200, 120]).png().toBuffer();
  const wide = await rowOf([120, 200, 120]).withIccProfile('p3').png().toBuffer();
  assertNear((await coloursOf(plain))[0], [120, 200, 120], 0);
  assertNear((await coloursOf(wide))[0], [120, 200, 120], 2);
  const stored = await sharp(wide, { ignoreIcc: true }).raw().toBuffer();
  assert.ok(Math.abs(stored[0] - 120) > 10, `${stored[0]} is stored`);
});

test('a profile that is none is passed over', async () => {
  const more = [chunk('iCCP', Buffer.from('x\0\0no profile', 'latin1'))];
  const file = pngOf({ width: 1, height: 1, rows: Buffer.of(0, ...GREEN), more });
  assert.deepEqual(await coloursOf(file), [GREEN]);
});

test('a photograph is turned as its camera was', async () => {
  const turns = {
    1: [
      [3, 1],
      [RED, GREEN, BLUE],
    ],
    2: [
      [3, 1],
      [BLUE, GREEN, RED],
    ],
    3: [
      [3, 1],
      [BLUE, GREEN, RED],
    ],
    4: [
      [3, 1],
      [RED, GREEN, BLUE],
    ],
    5: [
      [1, 3],
      [RED, GREEN, BLUE],
    ],
    6: [
      [1, 3],
      [RED, GREEN, BLUE],
    ],
    7: [
      [1, 3],
      [BLUE, GREEN, RED],
    ],
    8: [
      [1, 3],
      [BLUE, GREEN, RED],
    ],
  };
  for (const [orientation, [size, colours]] of Object.entries(turns)) {
    const file = await rowOf(RED, GREEN, BLUE)
      .withMetadata({ orientation: Number(orientation) })
      .png()
      .toBuffer();
    const { width, height } = await decodePicture(file);
    assert.deepEqual([width, height], size, orientation);
    assert.deepEqual(await coloursOf(file), colours, orientation);
  }
});

test('of several frames the first counts', async () => {
  const frames = Uint8Array.from([...RED, ...GREEN, ...BLUE]);
  const animation = sharp(frames, { raw: { width: 1, height: 3, channels: 3, pageHeight: 1 } });
  for (const format of ['gif', 'webp']) {
    const file = await animation.clone().toFormat(format, { lossless: true }).toBuffer();
    assert.equal((await sharp(file).metadata()).pages, 3, format);
    assert.deepEqual(await coloursOf(file), [RED], format);
  }
});

test('a file that changes under its name is read anew', async (t) => {
  const { folder, remove } = await makeFolder();
  t.after(remove);
  const path = join(folder, 'picture.png');
  for (const colour of [RED, GREEN]) {
    await writeFile(path, await rowOf(colour).png().toBuffer());
    assert.deepEqual(await coloursOf(await readFile(path)), [colour]);
    assert.deepEqual([...(await decodePicture(path)).data.subarray(0, 3)], colour);
  }
});
