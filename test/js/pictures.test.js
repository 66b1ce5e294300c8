import assert from 'node:assert/strict';
import { cpSync, mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { fileURLToPath, pathToFileURL } from 'node:url';
import { decodePicture, encodePng } from '../../lib/pictures.js';

const svg = (/** @type {string} */ content) =>
  Buffer.from(`<svg xmlns="http://www.w3.org/2000/svg" width="3" height="2">${content}</svg>`);
const redPixel = svg('<rect x="1" width="1" height="1" fill="#ff0000"/>');

test('a picture is decoded to red, green, blue and alpha, row by row from the top', async () => {
  const { width, height, data } = await decodePicture(redPixel);
  assert.deepEqual([width, height], [3, 2]);
  const white = [255, 255, 255, 255];
  assert.deepEqual([...data], [white, [255, 0, 0, 255], white, white, white, white].flat());
});

test('transparent pixels show the page colour', async () => {
  const half = svg('<rect width="3" height="2" fill="#ff0000" fill-opacity="0.5"/>');
  const { data } = await decodePicture(half, { page: '#000000' });
  assert.deepEqual([...data.subarray(1, 4)], [0, 0, 255]);
  assert.ok(data[0] === 127 || data[0] === 128, `${data[0]}`);
});

test('a picture with too many pixels is refused, whatever it would take to decode it', async () => {
  await assert.rejects(decodePicture(redPixel, { maxPixels: 5 }), {
    name: 'LimitError',
    code: 'ERR_LIMIT',
    expected: 'at most 5 pixels',
    received: 6,
  });
  const enormous = svg('').toString().replace('"3"', '"30000"').replace('"2"', '"20000"');
  await assert.rejects(decodePicture(Buffer.from(enormous)), /too large: 30000 x 20000 pixels/);
  await decodePicture(redPixel, { maxPixels: 6 });
});

test('a grey picture has four channels too', async () => {
  const grey = { width: 2, height: 1, data: Uint8Array.of(9, 9, 9, 255, 200, 200, 200, 255) };
  assert.deepEqual([...(await decodePicture(await encodePng(grey))).data], [...grey.data]);
});

test('a drawing is laid over the picture', async () => {
  const black = { width: 3, height: 2, data: new Uint8Array(24).fill(0) };
  for (let i = 3; i < 24; i += 4) black.data[i] = 255;
  const { data } = await decodePicture(await encodePng(black, redPixel.toString()));
  assert.deepEqual([...data.subarray(0, 8)], [0, 0, 0, 255, 255, 0, 0, 255]);
});

const whole = await encodePng({ width: 50, height: 50, data: new Uint8Array(10_000).fill(99) });
for (const [what, content] of /** @type {const} */ ([
  ['nothing', Buffer.alloc(0)],
  ['text', Buffer.from('no picture')],
  ['a drawing without an end', Buffer.from('<svg xmlns="http://www.w3.org/2000/svg"')],
  ['the beginning of a picture', whole.subarray(0, 40)],
  ['a picture without its end', whole.subarray(0, whole.length - 30)],
  ['a file that is not there', '/none/such.png'],
]))
  test(`${what} is no picture`, async () => {
    const refusal = {
      name: 'ChartTraceError',
      code: 'ERR_PICTURE',
      message: /cannot be decoded: /,
    };
    await assert.rejects(decodePicture(content), refusal);
  });

test('without sharp, decoding says what to install', async (t) => {
  const folder = mkdtempSync(join(tmpdir(), 'chart-trace-'));
  t.after(() => rmSync(folder, { recursive: true }));
  cpSync(fileURLToPath(new URL('../../lib', import.meta.url)), join(folder, 'lib'), {
    recursive: true,
  });
  writeFileSync(join(folder, 'package.json'), '{"type": "module"}');
  const alone = await import(pathToFileURL(join(folder, 'lib', 'pictures.js')).href);
  await assert.rejects(alone.decodePicture(redPixel), {
    code: 'ERR_DECODER_MISSING',
    message: /package sharp/,
    hint: /npm install sharp/,
  });
});
