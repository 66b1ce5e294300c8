import assert from 'node:assert/strict';
import { test } from 'node:test';
import { converter } from 'culori';
import {
  chroma,
  colourDistance,
  formatColour,
  parseColour,
  toOklab,
} from '../../lib/selection/colours.js';

test('colours are read in every notation of CSS', () => {
  const steel = [70, 130, 180];
  for (const text of [
    '#4682b4',
    '#4682B4',
    ' #4682b4 ',
    '#4682b4ff',
    '4682b4',
    'steelblue',
    'SteelBlue',
    'rgb(70 130 180)',
    'rgb(70, 130, 180)',
    'hsl(207.27deg 44% 49.02%)',
    'oklch(58.8% 0.0993 245.74)',
  ])
    assert.deepEqual(parseColour(text), steel, text);
  assert.deepEqual(parseColour('#1aF'), [17, 170, 255]);
});

test('a colour beyond the screen becomes the nearest channel values', () => {
  assert.deepEqual(parseColour('color(display-p3 1 0 0)'), [255, 0, 0]);
});

test('what is no opaque colour is an error that says what came', () => {
  const bad = ['', 'steal blue', '#12', '12', '1f4e9g', 'currentcolor', '#1f4e9e80', 'transparent'];
  for (const text of [...bad, null, 7, {}])
    assert.throws(
      // @ts-expect-error other types are what is tried
      () => parseColour(text),
      { name: 'ChartTraceError', code: 'ERR_COLOUR', received: text },
      String(text),
    );
});

test('colours are written as six digits that are read back', () => {
  assert.equal(formatColour([0, 10, 255]), '#000aff');
  assert.deepEqual(parseColour(formatColour([1, 2, 3])), [1, 2, 3]);
});

test('OKLab is that of an independent implementation, channel by channel', () => {
  const reference = converter('oklab');
  for (let red = 0; red < 256; red += 51)
    for (let green = 0; green < 256; green += 15)
      for (let blue = 0; blue < 256; blue += 17) {
        const { l, a, b } = reference({ mode: 'rgb', r: red / 255, g: green / 255, b: blue / 255 });
        const got = toOklab([red, green, blue]);
        [l, a, b].forEach((want, i) =>
          assert.ok(Math.abs(got[i] - want) < 1e-12, `${red} ${green} ${blue}`),
        );
      }
});

test('a level between two whole ones lies between them', () => {
  const [below, between, above] = [99, 99.5, 100].map((level) => toOklab([level, level, level])[0]);
  assert.ok(below < between && between < above);
  assert.ok(Math.abs(between - (below + above) / 2) < 1e-4);
});

test('black to white is a hundred, and equal steps of lightness look equal', () => {
  assert.ok(Math.abs(colourDistance([0, 0, 0], [255, 255, 255]) - 100) < 1e-9);
  assert.equal(colourDistance([31, 78, 158], [31, 78, 158]), 0);
  // A difference of 20 in one channel is seen in dark green much more than in light blue.
  assert.ok(colourDistance([0, 40, 0], [0, 60, 0]) > 2 * colourDistance([0, 0, 235], [0, 0, 255]));
});

test('greys have no chroma and plain colours much', () => {
  for (const level of [0, 1, 128, 255]) assert.ok(chroma([level, level, level]) < 1e-5);
  assert.ok(chroma(parseColour('#1f77b4')) > 9);
  assert.ok(chroma(parseColour('#bfbbd9')) > 4);
});
