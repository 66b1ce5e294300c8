import assert from 'node:assert/strict';
import { test } from 'node:test';
import sharp from 'sharp';
import { decodePicture } from '../../lib/pictures.js';
import { selectSeries } from '../../lib/selection/pixels.js';
import { bar, canvas, disc, line, paint } from './support/drawing.js';
import { randomNumbers } from './support/random.js';

/** @typedef {import('../../lib/selection/pixels.js').SelectionOptions} SelectionOptions */
/** @typedef {import('../../lib/selection/view.js').Picture} Picture */
/** @typedef {(x: number, y: number) => number} Coverage */

/**
 * The share of pixels on which a selection and a shape agree, of all that either has.
 * @param {{x: Float64Array, y: Float64Array}} selected
 * @param {Picture} picture
 * @param {Coverage} coverage
 */
function agreement({ x, y }, { width, height }, coverage) {
  const chosen = new Set(Array.from(x, (value, i) => y[i] * width + value));
  let both = 0;
  let either = 0;
  for (let at = 0; at < width * height; ++at) {
    const isCovered = coverage(at % width, Math.floor(at / width)) >= 0.5;
    if (isCovered && chosen.has(at)) ++both;
    if (isCovered || chosen.has(at)) ++either;
  }
  return both / either;
}

/**
 * @param {Picture} picture
 * @param {number} quality
 */
async function asJpeg({ width, height, data }, quality) {
  const raw = { width, height, channels: /** @type {4} */ (4) };
  const file = await sharp(data, { raw }).removeAlpha().jpeg({ quality }).toBuffer();
  return decodePicture(file);
}

/** Axes, a grid and some words in black, drawn before the series. */
function chart(width = 240, height = 160, page = '#ffffff', ink = '#000000') {
  const picture = canvas(width, height, page);
  paint(picture, '#888888', (x, y) => (x % 50 === 25 || y % 40 === 20 ? 0.4 : 0));
  paint(picture, ink, (x, y) => (x === 3 || y === height - 4 ? 1 : 0));
  for (let i = 0; i < 12; ++i) paint(picture, ink, bar(20 + 7 * i, 6.3, 23.4 + 7 * i, 12.8));
  return picture;
}

test('of a smooth edge the pixels are taken that are covered by half or more', () => {
  for (const [page, ink] of [
    ['#ffffff', '#000000'],
    ['#1b1e23', '#cccccc'],
  ])
    for (const colour of ['#1f77b4', '#ff7f0e', '#2ca02c', '#d62728', '#9467bd', '#c7a005'])
      for (const shape of [disc(100.3, 90.6, 6), line(0, 60, 0.4, 1.6), line(0, 100, 0.1, 3)]) {
        const picture = chart(240, 160, page, ink);
        paint(picture, colour, shape);
        const same = agreement(selectSeries(picture, { colour }), picture, shape);
        assert.ok(same > 0.95, `${colour} on ${page}: ${same}`);
      }
});

test('a coverage asks for more of a pixel or for less', () => {
  const picture = chart();
  const shape = line(0, 60, 0.4, 3);
  paint(picture, '#1f77b4', shape);
  const count = (/** @type {number} */ coverage) =>
    selectSeries(picture, { colour: '#1f77b4', coverage }).x.length;
  for (const [coverage, want] of [0.25, 0.5, 0.9].map((share) => [share, share]))
    assert.ok(
      agreement(selectSeries(picture, { colour: '#1f77b4', coverage }), picture, (x, y) =>
        shape(x, y) >= want ? 1 : 0,
      ) > 0.95,
      `${coverage}: ${selectSeries(picture, { colour: '#1f77b4', coverage }).x.length}`,
    );
  assert.ok(count(0.25) > count(0.5) && count(0.5) > count(0.9) && count(0.9) >= count(1));
});

test('pixels come in raster order', () => {
  const picture = chart();
  paint(picture, '#d62728', disc(100, 90, 20));
  const { x, y } = selectSeries(picture, { colour: '#d62728' });
  for (let i = 1; i < x.length; ++i)
    assert.ok(y[i] > y[i - 1] || (y[i] === y[i - 1] && x[i] > x[i - 1]));
});

test('other series are told apart by themselves, also where they cross and where one covers another', () => {
  const colours = ['#1f77b4', '#ff7f0e', '#2ca02c', '#d62728'];
  const shapes = [line(0, 30, 0.5, 3), line(0, 130, -0.4, 3), disc(100, 80, 15), disc(115, 90, 12)];
  const picture = chart();
  shapes.forEach((shape, k) => paint(picture, colours[k], shape));
  shapes.forEach((shape, k) => {
    const above = shapes.slice(k + 1);
    const seen = (/** @type {number} */ x, /** @type {number} */ y) =>
      above.some((other) => other(x, y) > 0.5) ? 0 : shape(x, y);
    const selected = selectSeries(picture, { colour: colours[k] });
    assert.ok(agreement(selected, picture, seen) > 0.95, colours[k]);
    assert.equal(selected.rivals.length, 3);
  });
});

test('a JPEG, whose chroma is smeared, gives nearly the same pixels', async () => {
  for (const [page, ink] of [
    ['#ffffff', '#000000'],
    ['#1b1e23', '#cccccc'],
  ])
    for (const colour of ['#1f77b4', '#ff7f0e', '#2ca02c', '#d62728'])
      for (const shape of [disc(100.3, 90.6, 6), line(0, 60, 0.4, 2.2)]) {
        const clean = chart(240, 160, page, ink);
        paint(clean, colour, shape);
        for (const quality of [75, 90]) {
          const picture = await asJpeg(clean, quality);
          const same = agreement(selectSeries(picture, { colour }), picture, shape);
          assert.ok(same > 0.85, `${colour} on ${page}, quality ${quality}: ${same}`);
        }
      }
});

test('what lost most of its chroma is of the series only beside pixels that are it for sure', () => {
  // Nearly as dark as the series' colour, with a fifth of its chroma; and with next to none.
  for (const [faded, want] of /** @type {[string, number][]} */ ([
    ['#6b7d89', 1],
    ['#76787a', 0],
  ])) {
    const picture = canvas(60, 30);
    paint(picture, '#1f77b4', bar(10, 10, 20, 20));
    paint(picture, faded, bar(22, 15, 22, 15));
    paint(picture, faded, bar(24, 15, 24, 15));
    paint(picture, faded, bar(40, 15, 40, 15));
    // Three columns away, and three rows.
    paint(picture, faded, bar(7, 12, 7, 12));
    paint(picture, faded, bar(15, 23, 15, 23));
    const { x, y } = selectSeries(picture, { colour: '#1f77b4' });
    assert.equal(x.length, 11 * 11 + want, faded);
    assert.equal(Math.max(...x), want ? 22 : 20);
    assert.equal(Math.min(...y), 10);
  }
});

test('a series may have several colours, and what lies between them is of the series', () => {
  const picture = chart();
  const [outer, inner] = [disc(100, 90, 12), disc(100, 90, 6)];
  paint(picture, '#1f77b4', outer);
  paint(picture, '#f2c14e', inner);
  const both = selectSeries(picture, { colours: ['#1f77b4', '#f2c14e'] });
  assert.ok(agreement(both, picture, outer) > 0.98);
  const ring = (/** @type {number} */ x, /** @type {number} */ y) =>
    inner(x, y) >= 0.5 ? 0 : outer(x, y);
  const one = selectSeries(picture, { colour: '#1f77b4' });
  assert.ok(agreement(one, picture, ring) > 0.95);
});

test('a colour that is excluded is left out however near it is', () => {
  const picture = chart();
  paint(picture, '#1f77b4', disc(60, 90, 12));
  paint(picture, '#2a7db8', disc(160, 90, 12));
  const left = disc(60, 90, 12);
  const all = selectSeries(picture, { colour: '#1f77b4' });
  assert.ok(agreement(all, picture, left) < 0.6);
  const one = selectSeries(picture, { colour: '#1f77b4', exclude: ['#2a7db8'] });
  assert.ok(agreement(one, picture, left) > 0.9);
});

test('a background may be given, and else is the one found', () => {
  const picture = chart(240, 160, '#1b1e23', '#cccccc');
  paint(picture, '#f2c14e', disc(100, 90, 12));
  assert.deepEqual(selectSeries(picture, { colour: '#f2c14e' }).backgrounds[0], [27, 30, 35]);
  const { backgrounds, x } = selectSeries(picture, { colour: '#f2c14e', background: '#1b1e23' });
  assert.deepEqual(backgrounds, [[27, 30, 35]]);
  assert.ok(x.length > 400);
});

test('grey series are selected too', () => {
  const picture = canvas(100, 100);
  paint(picture, '#444444', disc(50.4, 50.2, 20));
  const selected = selectSeries(picture, { colour: '#444444' });
  assert.ok(agreement(selected, picture, disc(50.4, 50.2, 20)) > 0.98);
});

test('boxes and masks say where to look', () => {
  const picture = canvas(40, 20);
  paint(picture, '#d62728', bar(5, 5, 34, 14));
  /** @type {SelectionOptions} */
  const colour = { colour: '#d62728' };
  const box = { left: 0, top: 0, right: 19, bottom: 9 };
  assert.equal(selectSeries(picture, { ...colour, box }).x.length, 15 * 5);
  const masks = [{ exclude: { left: 10, top: 0, right: 12, bottom: 19 } }];
  assert.equal(selectSeries(picture, { ...colour, masks }).x.length, 27 * 10);
  assert.equal(selectSeries(picture, { ...colour, box, masks }).x.length, 12 * 5);
  const within = { left: 33, top: 13, right: 39, bottom: 16 };
  const { x, y } = selectSeries(picture, { ...colour, box: within });
  assert.deepEqual([...x], [33, 34, 33, 34]);
  assert.deepEqual([...y], [13, 13, 14, 14]);
  const beside = { left: 50, top: 0, right: 60, bottom: 9 };
  assert.equal(selectSeries(picture, { ...colour, box: beside }).x.length, 0);
});

test('a colour that is not there selects nothing, and one that is everywhere all', () => {
  const picture = chart();
  paint(picture, '#d62728', disc(100, 90, 20));
  assert.equal(selectSeries(picture, { colour: '#1f77b4' }).x.length, 0);
  for (const size of [1, 3, 40]) {
    assert.equal(
      selectSeries(canvas(size, size, '#d62728'), { colour: '#d62728' }).x.length,
      size * size,
    );
    assert.equal(selectSeries(canvas(size, size), { colour: '#d62728' }).x.length, 0);
  }
});

test('a tolerance of none takes the very colour, and what is clear of it alone', () => {
  const picture = canvas(60, 60);
  paint(picture, '#d62728', bar(10, 10, 30, 30));
  paint(picture, '#d72929', bar(40, 10, 50, 30));
  assert.equal(selectSeries(picture, { colour: '#d62728', tolerance: 0 }).x.length, 21 * 21);
  assert.equal(selectSeries(picture, { colour: '#d62728' }).x.length, 21 * 21 + 11 * 21);
});

test('transparency, odd offsets and noise change nothing or fail nowhere', () => {
  const picture = chart(61, 47);
  paint(picture, '#2ca02c', disc(30, 25, 9));
  const { x } = selectSeries(picture, { colour: '#2ca02c' });
  const moved = new Uint8Array(picture.data.length + 3).subarray(3);
  moved.set(picture.data);
  for (let at = 3; at < moved.length; at += 4) moved[at] = at % 256;
  assert.deepEqual(selectSeries({ ...picture, data: moved }, { colour: '#2ca02c' }).x, x);

  const random = randomNumbers(7);
  for (let i = 0; i < 8; ++i) {
    const data = Uint8Array.from({ length: 4 * 900 }, () => Math.floor(256 * random()));
    const noise = { width: 30, height: 30, data };
    const found = selectSeries(noise, { colour: [data[0], data[1], data[2]] });
    assert.ok(found.x.length >= 1 && found.x.length === found.y.length);
  }
});

test('wrong options are refused by name before any work', () => {
  const picture = canvas(4, 4);
  for (const [options, name] of /** @type {[any, string][]} */ ([
    [undefined, 'the options'],
    [null, 'the options'],
    [7, 'the options'],
    [{}, 'colour'],
    [{ colour: '#123456', colours: ['#123456'] }, 'colour'],
    [{ colours: [] }, 'colours'],
    [{ colour: '#123456', background: [] }, 'background'],
    [{ colour: '#123456', tolerance: '3' }, 'tolerance'],
    [{ colour: '#123456', tolerance: NaN }, 'tolerance'],
    [{ colour: '#123456', tolerance: -1 }, 'tolerance'],
    [{ colour: '#123456', tolerance: 101 }, 'tolerance'],
    [{ colour: '#123456', coverage: 0 }, 'coverage'],
    [{ colour: '#123456', coverage: 1.5 }, 'coverage'],
    [{ colour: '#123456', box: 'all' }, 'box'],
    [{ colour: '#123456', masks: {} }, 'masks'],
  ]))
    assert.throws(
      () => selectSeries(picture, options),
      (/** @type {any} */ error) =>
        error.name === 'ChartTraceError' &&
        error.code === 'ERR_ARGUMENT' &&
        error.message.includes(`Expected ${name} to be`),
      name,
    );
  for (const colour of /** @type {any[]} */ ([
    'no colour',
    null,
    7,
    [1, 2],
    [1, 2, 256],
    [[1, 2, 3.5]],
  ]))
    assert.throws(() => selectSeries(picture, { colour }), { code: 'ERR_COLOUR' }, String(colour));
  // @ts-expect-error a picture that is none is what is tried
  assert.throws(() => selectSeries(null, { colour: 'red' }), { code: 'ERR_PICTURE' });
});
