// Tables for the terminal.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { makeReport, toTable } from 'chart-trace';
import {
  bars,
  histogram,
  histogramWithValues,
  markersAndCurve,
  seriesOf,
} from './support/reports.js';

/** @param {object[]} series */
const reportOf = (...series) => makeReport([{ file: 'a.png', width: 9, height: 8, series }]);

test('a scatter chart in full', () => {
  const values = [
    [359.850001, 821.7545],
    [-2, 1.5e-7],
  ];
  assert.equal(
    toTable(reportOf(seriesOf({ values, notes: ['mind the gap'] }))),
    [
      'a.png  9 × 8 px',
      '',
      '  ● series 1  #1f77b4  scatter (points-fission), 2 points from 18 pixels',
      '    note: mind the gap',
      '    #  pixel x  pixel y       x         y',
      '    1     10.5    20     359.85  821.755',
      '    2     30      40.25   -2       1.5e-7',
      '',
    ].join('\n'),
  );
});

test('very large and very small numbers have exponents, others none', () => {
  const values = [
    [1e9, 0.0001],
    [999999499, 0.0000999],
    [-2.5e12, 0],
  ];
  const pixels = values.map(() => [1, 2]);
  const rows = toTable(reportOf(seriesOf({ pixels, values })))
    .split('\n')
    .filter((line) => /^ {4}\d/.test(line))
    .map((line) => line.trim().split(/ +/).slice(3));
  assert.deepEqual(rows, [
    ['1e9', '0.0001'],
    ['999999000', '9.99e-5'],
    ['-2.5e12', '0'],
  ]);
});

test('without axes there are pixels alone, and the table says so', () => {
  const table = toTable(reportOf(seriesOf({ values: null })));
  assert.match(table, /\n {4}in pixels: no axes are given\n {4}# {2}pixel x {2}pixel y\n/);
});

test('bars show their other ends, in values if there are any', () => {
  const lines = toTable(reportOf(bars)).split('\n');
  assert.equal(lines[3], '    #  pixel x  pixel y  x    y  other x  other y');
  assert.equal(lines[4], '    1     10.5    20     ash  5  ash            0');
  assert.equal(lines[5], '    2     30      40.25  oak  6  –              –');
  assert.match(toTable(reportOf({ ...bars, values: null })), / other pixel x {2}other pixel y\n/);
});

test('the bars of a histogram show their borders, in values if there are any', () => {
  assert.match(toTable(reportOf(histogram)), / left pixel {2}right pixel\n.* 0\.5 {9}20\.5\n/);
  assert.match(toTable(reportOf(histogramWithValues)), / left {2}right\n.* 0 {6}1\n/);
});

test('markers are told from the curve', () => {
  const table = toTable(reportOf(markersAndCurve));
  assert.match(table, /2 points \(1 marker, the others the curve\) from 18 pixels/);
  assert.match(table, /1 {2}marker .*\n.*2 {2}curve /);
});

test('long lists show their first and last points', () => {
  const pixels = Array.from({ length: 100 }, (_, i) => [i, i]);
  const report = reportOf(seriesOf({ pixels, values: null }));
  const shown = (/** @type {number} */ limit) =>
    toTable(report, { limit })
      .split('\n')
      .slice(5)
      .map((line) => line.trim().split(/ {2,}/)[0]);
  assert.deepEqual(shown(5), ['1', '2', '3', '… 95 more points', '99', '100', '']);
  assert.deepEqual(shown(0), ['… 100 more points', '']);
  assert.equal(shown(100).length, 101);
  assert.equal(toTable(report), toTable(report, { limit: 100 }));
  for (const limit of [-1, 2.5, NaN])
    assert.throws(() => toTable(report, { limit }), { code: 'ERR_ARGUMENT' });
});

test('an error stands below its picture, with its hint', () => {
  const error = Object.assign(new Error('Broken.'), { hint: 'Mend it.' });
  assert.equal(
    toTable(makeReport([{ file: 'a.png', error }, { file: 'b.png' }])),
    'a.png\n  error: Broken.\n  hint:  Mend it.\n\nb.png\n',
  );
});

test('a terminal obeys nothing that a text says', () => {
  const evil = 'a\x1b[2J\x07\u202e\u2067b\u009b\n';
  const series = seriesOf({
    values: [
      [evil, 1],
      [evil, 2],
    ],
    notes: [evil],
  });
  const report = makeReport([
    { file: evil, series: [series], error: Object.assign(new Error(evil), { hint: evil }) },
  ]);
  const table = toTable(report);
  // eslint-disable-next-line no-control-regex
  assert.doesNotMatch(table, /[\0-\x09\x0b-\x1f\x7f-\x9f\u202e\u2067]/);
  assert.equal(table.split('a\\x1b[2J\\x07\\u202e\\u2067b\\x9b\\x0a').length, 7);
});

test('wide characters are counted as the two columns they take', () => {
  const values = [
    ['東京', 1],
    ['e\u0301', 2],
  ];
  const lines = toTable(reportOf(seriesOf({ values }))).split('\n');
  assert.ok(lines[4].endsWith('東京  1'));
  assert.ok(lines[5].endsWith('e\u0301     2'));
});

test('colours change nothing but the colours', () => {
  const report = makeReport([
    { file: 'a.png', width: 9, height: 8, series: [seriesOf({ notes: ['n'] }), bars] },
    { file: 'b.png', error: new Error('Broken.') },
  ]);
  const coloured = toTable(report, { colour: true });
  assert.ok(coloured.includes('\x1b[38;2;31;119;180m●\x1b[39m'));
  // eslint-disable-next-line no-control-regex
  assert.equal(coloured.replace(/\x1b\[[0-9;]*m/g, ''), toTable(report));
});
