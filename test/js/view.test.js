// Pictures as they are looked at: what is refused, and how their bytes become numbers.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { checkPicture, packColour, unpackColour, viewOf } from '../../lib/selection/view.js';

test('a pixel is red, green, blue and alpha from its lowest byte on, wherever its bytes lie', () => {
  const bytes = Uint8Array.from({ length: 40 }, (_, i) => i);
  for (const start of [0, 4, 5]) {
    const data = bytes.subarray(start, start + 16);
    const { pixels, columns, rows } = viewOf({ width: 2, height: 2, data }, {});
    const want = [0, 4, 8, 12].map((at) => {
      const [red, green, blue, alpha] = data.subarray(at, at + 4);
      return red + 256 * (green + 256 * (blue + 256 * alpha));
    });
    assert.deepEqual([...pixels], want, `from ${start} on`);
    assert.deepEqual([columns, rows], [2, 2]);
  }
});

test('a colour is packed in the order of its pixel, and comes back', () => {
  assert.equal(packColour([1, 2, 3]), 1 + 256 * (2 + 256 * 3));
  assert.deepEqual(unpackColour(packColour([250, 128, 7])), [250, 128, 7]);
});

test('what is no picture is refused', () => {
  const data = new Uint8Array(16);
  checkPicture({ width: 2, height: 2, data });
  checkPicture({ width: 4, height: 1, data: new Uint8ClampedArray(16) });
  for (const picture of /** @type {any[]} */ ([
    null,
    {},
    { width: 2, height: 2 },
    { width: 2, height: 2, data: new Uint8Array(15) },
    { width: 2, height: 2, data: new Uint8Array(17) },
    { width: 0, height: 2, data: new Uint8Array(0) },
    { width: -2, height: -2, data },
    { width: 2.5, height: 2, data: new Uint8Array(20) },
    { width: 2, height: 2, data: Array.from(data) },
    { width: 2, height: 2, data: new Float32Array(16) },
  ]))
    assert.throws(() => checkPicture(picture), { code: 'ERR_PICTURE' });
});
