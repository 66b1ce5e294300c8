import assert from 'node:assert/strict';
import { test } from 'node:test';
import { findColours, findSeriesColours } from '../../lib/selection/palette.js';
import { bar, canvas, disc, line, paint } from './support/drawing.js';

/** @param {{colour: string}[]} found */
const names = (found) => found.map(({ colour }) => colour);

test('series come by area, and mixtures and greys are not among them', () => {
  const picture = canvas(200, 120);
  paint(picture, '#dddddd', (x) => (x % 40 === 0 ? 1 : 0));
  paint(picture, '#000000', (x, y) => (y === 110 || x === 5 ? 1 : 0));
  paint(picture, '#1f77b4', line(0, 20, 0.3, 2.2));
  paint(picture, '#ff7f0e', disc(60.3, 80.6, 9));
  paint(picture, '#d62728', bar(120, 80.4, 150, 109));
  const { background, series, greys } = findColours(picture);
  assert.equal(background?.colour, '#ffffff');
  assert.deepEqual(names(series), ['#d62728', '#1f77b4', '#ff7f0e']);
  assert.deepEqual(names(greys), ['#dddddd', '#000000']);
  assert.deepEqual(findSeriesColours(picture), series);
  assert.equal(series[0].pixels, 31 * 29);
  assert.equal(series[0].share, (31 * 29) / (200 * 120));
});

test('on a dark page, on a grey panel, and with bars that fill most of it', () => {
  const dark = canvas(120, 100, '#1b1e23');
  paint(dark, '#f2c14e', line(0, 20, 0.5, 1.6));
  assert.deepEqual(names(findSeriesColours(dark)), ['#f2c14e']);
  assert.equal(findColours(dark).background?.colour, '#1b1e23');

  const panel = canvas(120, 100);
  paint(panel, '#ebebeb', bar(10, 10, 109, 89));
  paint(panel, '#00bfc4', line(0, 20, 0.5, 2));
  assert.deepEqual(names(findSeriesColours(panel)), ['#00bfc4']);

  const full = canvas(120, 100);
  paint(full, '#ff7f0e', bar(20, 20, 100, 99));
  assert.equal(findColours(full).background?.colour, '#ffffff');
  assert.deepEqual(names(findSeriesColours(full)), ['#ff7f0e']);
});

test('shades that look alike are one colour, that of the most frequent of them', () => {
  const picture = canvas(120, 100);
  paint(picture, '#1f77b4', bar(10, 20, 40, 99));
  paint(picture, '#2a7ab6', bar(41, 20, 50, 99));
  const [found, ...others] = findSeriesColours(picture);
  assert.deepEqual(others, []);
  assert.equal(found.colour, '#1f77b4');
  assert.equal(found.pixels, 41 * 80);
});

test('two series of one hue are two where both fill areas', () => {
  const picture = canvas(120, 100);
  paint(picture, '#1f78b4', bar(10, 20, 40, 99));
  paint(picture, '#a6cee3', bar(60, 40, 90, 99));
  assert.deepEqual(names(findSeriesColours(picture)).sort(), ['#1f78b4', '#a6cee3']);
});

test('only the box and what the masks let through is looked at', () => {
  const picture = canvas(120, 100);
  paint(picture, '#2ca02c', disc(30, 50, 10));
  paint(picture, '#9467bd', disc(90, 50, 10));
  const left = { left: 0, top: 0, right: 59, bottom: 99 };
  assert.deepEqual(names(findSeriesColours(picture, { box: left })), ['#2ca02c']);
  assert.deepEqual(names(findSeriesColours(picture, { masks: [{ exclude: left }] })), ['#9467bd']);
  const lower = { left: 0, top: 30, right: 59, bottom: 99 };
  paint(picture, '#d62728', disc(30, 15, 10));
  assert.deepEqual(names(findSeriesColours(picture, { box: lower })), ['#2ca02c']);
  const outside = { left: 300, top: 0, right: 400, bottom: 99 };
  assert.deepEqual(findColours(picture, { box: outside }), {
    background: null,
    series: [],
    greys: [],
  });
});

test('a picture of one colour is all background, and a pixel is a picture', () => {
  for (const colour of ['#ffffff', '#ff0000'])
    for (const size of [1, 2, 50]) {
      const { background, series, greys } = findColours(canvas(size, size, colour));
      assert.deepEqual(background, { colour, pixels: size * size, share: 1 });
      assert.deepEqual([series, greys], [[], []]);
    }
});

test('alpha is not looked at', () => {
  const picture = canvas(60, 60);
  paint(picture, '#2ca02c', disc(30, 30, 12));
  const found = findSeriesColours(picture);
  for (let at = 3; at < picture.data.length; at += 4) picture.data[at] = at % 256;
  assert.deepEqual(findSeriesColours(picture), found);
});

test('what is no picture, box or mask is refused', () => {
  const good = canvas(4, 4);
  for (const picture of /** @type {any[]} */ ([
    null,
    undefined,
    7,
    'picture.png',
    {},
    { ...good, width: 0 },
    { ...good, width: 3 },
    { ...good, height: 4.5 },
    { ...good, data: Array.from(good.data) },
    { ...good, data: null },
  ]))
    assert.throws(() => findColours(picture), { name: 'ChartTraceError', code: 'ERR_PICTURE' });
  for (const where of /** @type {any[]} */ ([{ box: 7 }, { masks: 7 }, { masks: [7] }]))
    assert.throws(() => findColours(good, where), {
      name: 'ChartTraceError',
      code: 'ERR_ARGUMENT',
    });
});
