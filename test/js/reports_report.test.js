// The report as plain data.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ChartTraceError, errorReport, makeReport } from 'chart-trace';
import { bars, histogram, markersAndCurve, seriesOf } from './support/reports.js';

test('a report has its fields in a fixed order', () => {
  const image = { error: null, series: [seriesOf()], height: 3, width: 2, file: 'a.png' };
  const { mode, kind, color, notes, values, pixels, selected } = seriesOf();
  const report = makeReport([image]);
  assert.equal(
    JSON.stringify(report),
    JSON.stringify({
      schemaVersion: 1,
      images: [
        {
          file: 'a.png',
          width: 2,
          height: 3,
          series: [{ color, kind, mode, pixels, values, notes, selected }],
          error: null,
        },
      ],
    }),
  );
});

test('a report stays as it is when the notes it was made of grow', () => {
  const notes = ['first'];
  const [image] = makeReport([{ series: [seriesOf({ notes })] }]).images;
  notes.push('second');
  assert.deepEqual(image.series[0].notes, ['first']);
});

test('what is not known about a picture is null, and its series are none', () => {
  assert.deepEqual(makeReport([{}]).images, [
    { file: null, width: null, height: null, series: [], error: null },
  ]);
});

test('nothing of a series is lost', () => {
  for (const series of [seriesOf(), bars, histogram, markersAndCurve])
    assert.deepEqual(makeReport([{ series: [series] }]).images[0].series[0], series);
});

test('numbers that JSON cannot write become null, and a note counts them', () => {
  const pixels = [
    [NaN, 1],
    [2, -0],
  ];
  const values = [
    [Infinity, -Infinity],
    ['a', null],
  ];
  const series = seriesOf({ pixels, values, notes: ['first'] });
  const [found] = makeReport([{ series: [series] }]).images[0].series;
  assert.deepEqual(found.pixels, [
    [null, 1],
    [2, 0],
  ]);
  assert.deepEqual(found.values, [
    [null, null],
    ['a', null],
  ]);
  assert.deepEqual(found.notes, [
    'first',
    'numbers left empty, since they are infinite or none at all: 3',
  ]);
  assert.ok(Object.is(series.pixels[1][1], -0), 'the series itself is left alone');
});

test('numbers inside bars and bins are looked at as well', () => {
  const [bar] = bars.bars;
  const broken = { ...bar, values: { ...bar.values, otherEnd: ['ash', NaN] } };
  const [bin] = histogram.bins;
  const series = [
    { ...bars, bars: [broken, bars.bars[1]] },
    { ...histogram, bins: [{ ...bin, pixels: { ...bin.pixels, left: -Infinity } }] },
  ];
  const [first, second] = makeReport([{ series }]).images[0].series;
  assert.deepEqual(first.bars[0].values.otherEnd, ['ash', null]);
  assert.equal(second.bins[0].pixels.left, null);
  assert.equal(first.notes.length, 1);
  assert.equal(second.notes.length, 1);
});

test('an error keeps its code, what was expected, what came and the hint', () => {
  const details = { code: 'ERR_COLOUR', expected: 'a colour', received: { r: 1 }, hint: 'Look.' };
  assert.deepEqual(errorReport(new ChartTraceError('No colour.', details)), {
    code: 'ERR_COLOUR',
    message: 'No colour.',
    expected: 'a colour',
    received: '{"r":1}',
    hint: 'Look.',
  });
});

test('whatever was thrown becomes an error in words', () => {
  const nothing = { code: null, expected: null, received: null, hint: null };
  assert.deepEqual(errorReport('oops'), { ...nothing, message: 'oops' });
  assert.deepEqual(errorReport({ code: 5, message: 'm' }), { ...nothing, message: 'm' });
  assert.deepEqual(errorReport(undefined), { ...nothing, message: 'undefined' });
  const circle = {};
  circle.self = circle;
  assert.deepEqual(errorReport(circle), { ...nothing, message: '[object Object]' });
  const long = errorReport(Object.assign(new Error('m'), { received: 'x'.repeat(1000) }));
  assert.equal(long.received, `${'x'.repeat(199)}…`);
});
