import assert from 'node:assert/strict';
import { test } from 'node:test';
import { makeAxes, makeAxis, parseReferences } from '../../lib/axes/axes.js';
import { randomNumbers } from './support/random.js';

/**
 * @param {unknown} got
 * @param {number} want
 * @param {number} [reach]
 */
const near = (got, want, reach = 1e-12 * Math.abs(want)) =>
  assert.ok(typeof got === 'number' && Math.abs(got - want) <= reach, `${got}, not ${want}`);

test('a linear axis passes through its two references and on beyond them', () => {
  const axis = makeAxis({ scale: 'linear', pixel: [400, 100], value: [0, 30] });
  assert.equal(axis.toValue(400), 0);
  assert.equal(axis.toValue(100), 30);
  assert.equal(axis.toValue(90), 31);
  assert.equal(axis.toPixel(31), 90);
});

test('a logarithmic axis multiplies by the same factor over the same distance', () => {
  for (const scale of /** @type {const} */ (['log', 'log10', 'log2', 'ln'])) {
    const axis = makeAxis({ scale, pixel: [100, 300], value: [0.01, 100] });
    near(axis.toValue(200), 1);
    near(axis.toValue(250), 10);
    near(axis.toPixel(1000), 350);
  }
});

test('powers of the base come out exactly', () => {
  const ten = makeAxis({ scale: 'log', pixel: [0, 1200], value: [1e-6, 1e6] });
  for (let k = -6; k <= 6; ++k) {
    const value = Number(`1e${k}`);
    assert.equal(ten.toValue(600 + 100 * k), value);
    assert.equal(ten.toPixel(value), 600 + 100 * k);
  }
  const five = makeAxis({ scale: 'log', base: 5, pixel: [0, 30], value: [1, 125] });
  assert.deepEqual([10, 20, 40].map(five.toValue), [5, 25, 625]);
  const two = makeAxis({ scale: 'log2', pixel: [0, 100], value: ['2^-5', '2^5'] });
  assert.equal(two.toValue(20), 2 ** -3);
});

test('a date axis counts true days, from month to month', () => {
  const axis = makeAxis({ scale: 'date', pixel: [0, 365], value: ['2023-01', '2024-01'] });
  const lengths = [31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31];
  let day = 0;
  for (const [i, length] of lengths.entries()) {
    const month = `2023-${String(i + 1).padStart(2, '0')}`;
    assert.equal(axis.toPixel(month), day);
    assert.equal(axis.toValue(day), `${month}-01T00:00:00.000Z`);
    day += length;
  }
});

test('dates are written in the stated offset, and in UTC where none is stated', () => {
  const at = (/** @type {any} */ value, /** @type {string | undefined} */ zone) =>
    makeAxis({ scale: 'date', pixel: [0, 24], value, ...(zone && { zone }) });
  const plain = at(['2024-03-30', '2024-03-31']);
  assert.equal(plain.toValue(12), '2024-03-30T12:00:00.000Z');
  const stated = at(['2024-03-30T00:00+02:00', '2024-03-31T00:00+02:00']);
  assert.equal(stated.toValue(12), '2024-03-30T12:00:00.000+02:00');
  assert.equal(stated.toPixel('2024-03-30T10:00Z'), 12);
  assert.equal(stated.toPixel('2024-03-30T12:00'), 12, 'what states none is in that of the axis');
  const asked = at(['2024-03-30', '2024-03-31'], '-05:30');
  assert.equal(asked.toValue(0), '2024-03-30T00:00:00.000-05:30');
  assert.equal(plain.toPixel(new Date('2024-03-30T18:00Z')), 18);
});

test('a second has six digits where a pixel is shorter than a second', () => {
  const axis = makeAxis({
    scale: 'date',
    pixel: [0, 1000],
    value: ['2024-01-01T00:00:00Z', '2024-01-01T00:00:01Z'],
  });
  assert.equal(axis.toValue(1.5), '2024-01-01T00:00:00.001500Z');
  assert.equal(axis.toPixel('2024-01-01T00:00:00.0015Z'), 1.5);
});

test('a category is the nearest name, half a step around its centre', () => {
  const axis = makeAxis({ scale: 'category', pixel: [300, 100, 200], value: ['c', 'a', 'b'] });
  assert.deepEqual([51, 149, 151, 200, 349].map(axis.toValue), ['a', 'a', 'b', 'b', 'c']);
  assert.deepEqual([49, 351].map(axis.toValue), [null, null]);
  assert.deepEqual(['a', 'b', 'c'].map(axis.toPixel), [100, 200, 300]);
});

test('categories can be listed in order, two of them being references', () => {
  const categories = ['mon', 'tue', 'wed', 'thu', 'fri'];
  const axis = makeAxis({ scale: 'category', categories, pixel: [400, 0], value: ['mon', 'fri'] });
  assert.deepEqual([400, 310, 200, 60, 10].map(axis.toValue), categories);
  assert.equal(axis.toPixel('wed'), 200);
});

test('both references of an axis are met to the last bit, both ways', () => {
  const random = randomNumbers(5);
  for (let i = 0; i < 3000; ++i) {
    const pixel = [random() * 500, 500 + random() * 500];
    const value = [random() * 10 ** (random() * 12), random() * -(10 ** (random() * 12))];
    const positive = value.map((v) => Math.abs(v) + 1e-9);
    const dates = [new Date(Math.round(value[0])), new Date(Math.round(value[1]) - 1e9)];
    for (const axis of [
      makeAxis({ scale: 'linear', pixel, value }),
      makeAxis({ scale: 'ln', pixel, value: positive }),
      makeAxis({ scale: 'log', base: 7, pixel, value: positive }),
      makeAxis({ scale: 'date', pixel, value: dates }),
    ]) {
      const references = axis.description.value;
      for (const k of [0, 1]) {
        const is = axis.toValue(pixel[k]);
        assert.equal(is, references[k], axis.description.scale);
        assert.equal(axis.toPixel(references[k]), pixel[k]);
      }
    }
  }
});

test('a reference is met where its value, rounded, is also that of a whole pixel', () => {
  const value = ['2001-01-01', '2002-01-01'];
  const axis = makeAxis({ scale: 'date', pixel: [100 + 1e-9, 465 + 1e-9], value });
  assert.equal(axis.toValue(100), axis.toValue(100 + 1e-9));
  assert.equal(axis.toPixel('2001-01-01'), 100 + 1e-9);
});

test('whole 64ths of a pixel come back from their values to the last bit, others nearly', () => {
  const random = randomNumbers(6);
  for (let i = 0; i < 2000; ++i) {
    const pixel = [random() * 300, 400 + random() * 500];
    const value = [(random() - 0.5) * 1000, 600 + random() * 1000];
    const scales = /** @type {const} */ (['linear', 'log', 'date']);
    const scale = scales[i % 3];
    /** @type {any} */
    const own = {
      linear: value,
      log: value.map((v) => Math.abs(v) + 1),
      date: value.map((v) => new Date(Math.round(v * 1e9))),
    };
    const axis = makeAxis({ scale, pixel, value: own[scale] });
    const at = Math.floor(random() * 1000 * 64) / 64;
    assert.equal(axis.toPixel(/** @type {any} */ (axis.toValue(at))), at);
    const anywhere = random() * 1000;
    const back = axis.toPixel(/** @type {any} */ (axis.toValue(anywhere)));
    near(back, anywhere, scale === 'date' ? 5e-4 : 1e-9);
  }
});

test('more references than two are fitted by least squares, and their residuals told', () => {
  // By hand: the mean is (1.5, 26), the slope of pixel by value 50 / 5, so the line is 11 + 10 v.
  const axis = makeAxis({ scale: 'linear', pixel: [10, 22, 32, 40], value: [0, 1, 2, 3] });
  near(axis.toPixel(0), 11);
  near(axis.toPixel(3), 41);
  for (const [i, residual] of [-1, 1, 1, -1].entries()) near(axis.residuals[i], residual);
  const distances = makeAxes({ x: axis.description }).residuals.map(({ distance }) => distance);
  for (const distance of distances) near(distance, 1);
  const exact = makeAxis({ scale: 'log', pixel: [0, 10, 20], value: [1, 10, 100] });
  assert.deepEqual(exact.residuals, [0, 0, 0]);
  assert.equal(exact.toValue(10), 10);
  near(makeAxis({ scale: 'linear', pixel: [0, 1, 2], value: [0, 1e299, 2e299] }).toValue(3), 3e299);
});

test('an axis that cannot be is refused, and the reference at fault named', () => {
  /** @type {[any, RegExp][]} */
  const bad = [
    [{ scale: 'log10', pixel: [0, 1], value: [0, 10] }, /^x axis, reference 1 \(0=0\): .* above 0/],
    [{ scale: 'ln', pixel: [0, 1], value: [10, -1] }, /reference 2 \(1=-1\)/],
    [
      { scale: 'linear', pixel: [5, 5], value: [0, 10] },
      /reference 2 .*another pixel than ref.* 1/,
    ],
    [{ scale: 'linear', pixel: [5, 6], value: [3, 3] }, /reference 2 .*different values/],
    [{ scale: 'linear', pixel: [5, NaN], value: [3, 4] }, /reference 2 \(NaN=4\): .*of pixels/],
    [{ scale: 'linear', pixel: [5, 6], value: ['1', 'b'] }, /reference 2 \(6=b\): expected a num/],
    [{ scale: 'linear', pixel: [5, 6], value: [1, Infinity] }, /reference 2/],
    [{ scale: 'linear', pixel: [5, 6], value: [1, -1.1e300] }, /reference 2 .*at most 1e300/],
    [{ scale: 'linear', pixel: [0, 1, 2, 3, 4], value: [0, 1, 20, 3, 4] }, /ce 3 \(2=20\): .*rise/],
    [{ scale: 'linear', pixel: [5], value: [1] }, /two references or more/],
    [{ scale: 'linear', pixel: [5, 6], value: [1] }, /as many values as pixels, 2/],
    [{ scale: 'linear' }, /lists of references/],
    [undefined, /lists of references/],
    [{ scale: 'cubic', pixel: [5, 6], value: [1, 2] }, /one of the scales linear, .*'?cubic/],
    [{ scale: 'toString', pixel: [5, 6], value: [1, 2] }, /one of the scales/],
    [{ scale: 'log', base: 1, pixel: [5, 6], value: [1, 2] }, /a base above 0/],
    [{ scale: 'linear', base: 2, pixel: [5, 6], value: [1, 2] }, /no base on a linear scale/],
    [{ scale: 'date', pixel: [0, 1], value: ['2023-02-29', '2024'] }, /reference 1 .*the calendar/],
    [{ scale: 'date', pixel: [0, 1], value: ['2023', 2024] }, /reference 2/],
    [{ scale: 'date', zone: 'Europe/Rome', pixel: [0, 1], value: ['2023', '2024'] }, /a zone that/],
    [{ scale: 'category', pixel: [0, 1], value: ['a', 'a'] }, /different names/],
    [
      { scale: 'category', categories: ['a', 'b'], pixel: [0, 1], value: ['a', 'c'] },
      /nce 2 \(1=c/,
    ],
  ];
  for (const [description, message] of bad)
    assert.throws(() => makeAxis(description, 'x axis'), {
      name: 'ChartTraceError',
      code: 'ERR_AXIS',
      message,
    });
});

test('a value that an axis does not have is refused', () => {
  const axis = makeAxis({ scale: 'log', pixel: [0, 1], value: [1, 10] }, 'y axis');
  for (const value of [0, -3, NaN, 'many'])
    assert.throws(() => axis.toPixel(value), /^ChartTraceError: y axis: expected a number above 0/);
});

test('the description of axes makes the same axes again, by way of JSON', () => {
  /** @type {any[]} */
  const all = [
    { x: { scale: 'linear', pixel: [3, 4], value: [0.1, 0.2] } },
    {
      x: { scale: 'date', pixel: [0, 9.5], value: ['1999-12-31T12:00+02:00', '2000'] },
      y: { scale: 'category', pixel: [9, 1, 5], value: ['c', 'a', 'b'] },
    },
    {
      x: { scale: 'date', zone: '+01:00' },
      y: { scale: 'log' },
      pixel: [
        [0, 100],
        [90, 110],
        [12, 10],
      ],
      value: [
        ['2001', 1],
        ['2002', 1],
        ['2001', 1000],
      ],
    },
  ];
  for (const description of all) {
    const axes = makeAxes(description);
    const again = makeAxes(JSON.parse(JSON.stringify(axes.description)));
    assert.deepEqual(again.description, axes.description);
    for (const pixel of /** @type {[number, number][]} */ ([
      [0, 0],
      [7.3, 4.1],
    ]))
      assert.deepEqual(again.toValue(pixel), axes.toValue(pixel));
  }
});

test('one axis may be missing: its values are null', () => {
  const axes = makeAxes({ x: { scale: 'linear', pixel: [0, 10], value: [0, 1] } });
  assert.deepEqual(axes.toValue([5, 3]), [0.5, null]);
  assert.throws(() => makeAxes({}), { code: 'ERR_AXIS' });
});

/**
 * A turned and skewed map from values to pixels.
 * @param {[number, number]} value
 * @returns {[number, number]}
 */
const turned = ([x, y]) => [100 + 8.7 * x - 2.1 * y, 400 - 3.3 * x - 9.4 * y];

test('three references make axes that are turned and skewed', () => {
  /** @type {[number, number][]} */
  const value = [
    [0, 0],
    [50, 5],
    [10, 30],
  ];
  const pixel = value.map(turned);
  const axes = makeAxes({ x: { scale: 'linear' }, y: { scale: 'linear' }, pixel, value });
  for (const [i, pair] of value.entries()) {
    assert.deepEqual(axes.toValue(pixel[i]), pair, 'references are met to the last bit');
    assert.deepEqual(axes.toPixel(pair), pixel[i]);
  }
  // One near the middle of the references and one far from it.
  for (const [inX, inY] of /** @type {[number, number][]} */ ([
    [20, 12],
    [40, -25],
  ])) {
    const [x, y] = axes.toValue(turned([inX, inY]));
    near(x, inX);
    near(y, inY);
  }
  for (const at of /** @type {[number, number][]} */ ([
    [3.25, 7],
    [640, 480.5],
  ]))
    assert.deepEqual(axes.toPixel(/** @type {any} */ (axes.toValue(at))), at);
});

test('turned axes have scales too, and residuals where references are more than three', () => {
  /** @type {[number, number][]} */
  const exponents = [
    [0, 0],
    [3, 0],
    [0, 2],
    [3, 2],
  ];
  const pixel = exponents.map(turned);
  const value = exponents.map(([x, y]) => /** @type {[number, number]} */ ([10 ** x, 2 ** y]));
  const axes = makeAxes({ x: { scale: 'log' }, y: { scale: 'log2' }, pixel, value });
  const [x, y] = axes.toValue(turned([1.5, 1]));
  near(x, 10 ** 1.5);
  near(y, 2);
  for (const { distance } of axes.residuals) near(distance, 0, 1e-10);
  pixel[3][0] += 4;
  const off = makeAxes({ x: { scale: 'log' }, y: { scale: 'log2' }, pixel, value });
  // Of an error at one corner of a parallelogram, each corner takes a quarter.
  for (const { distance } of off.residuals) near(distance, 1, 1e-10);
  assert.match(off.residuals[3].reference, /^axes, reference 4 \(/);
});

test('turned axes whose references lie on one line, or are no pairs, are refused', () => {
  /** @type {any} */
  const scales = { x: { scale: 'linear' }, y: { scale: 'linear' } };
  const corners = [
    [0, 0],
    [1, 0],
    [0, 1],
  ];
  const line = [
    [0, 0],
    [1, 1],
    [2, 2],
  ];
  /** @type {[any, RegExp][]} */
  const bad = [
    [{ ...scales, pixel: line, value: corners }, /pixels that do not lie on one line/],
    [{ ...scales, pixel: corners, value: line }, /values that do not lie on one line/],
    [{ ...scales, pixel: corners, value: [[0, 0], [1], [0, 1]] }, /reference 2 .*x and y of a v/],
    [{ ...scales, pixel: [[0, 0], [1], [0, 1]], value: corners }, /reference 2 .*x and y of a p/],
    [{ ...scales, pixel: corners, value: [...corners.slice(1), ['a', 1]] }, /reference 3 .*, x: /],
    [{ ...scales, pixel: corners.slice(1), value: corners.slice(1) }, /three references or more/],
    [{ y: scales.y, pixel: corners, value: corners }, /x axis: expected one of the scales/],
    [
      { ...scales, x: { scale: 'category' }, pixel: corners, value: corners.map(() => ['a', 1]) },
      /x axis: expected all categories in order/,
    ],
  ];
  for (const [description, message] of bad)
    assert.throws(() => makeAxes(description), { code: 'ERR_AXIS', message });
});

test('references are read from text, names with commas and equals signs included', () => {
  assert.deepEqual(parseReferences('82=0, 402.5=1e3'), { pixel: [82, 402.5], value: ['0', '1e3'] });
  assert.deepEqual(parseReferences('60=1990-01,700=2000-01').value, ['1990-01', '2000-01']);
  assert.deepEqual(parseReferences('60=a, b,700=c=d').value, ['a, b', 'c=d']);
  const axis = makeAxis({ scale: 'linear', ...parseReferences('-5=-1,5=\u22123') });
  assert.equal(axis.toValue(0), -2);
  for (const [text, message] of /** @type {const} */ ([
    ['82', /^x axis, reference 1: expected PIXEL=VALUE/],
    ['82=1,90=', /reference 2/],
    ['', /reference 1/],
    ['a=1', /reference 1/],
  ]))
    assert.throws(() => parseReferences(text, 'x axis'), { code: 'ERR_AXIS', message });
});
