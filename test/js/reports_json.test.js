// JSON and NDJSON.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import fc from 'fast-check';
import { makeReport, toJson, toNdjson } from 'chart-trace';
import { formatJson } from '../../lib/json.js';
import { bars, histogram, markersAndCurve, seriesOf } from './support/reports.js';

const report = makeReport([
  { file: 'a.png', width: 5, height: 6, series: [seriesOf(), bars, histogram, markersAndCurve] },
  { file: 'two\nlines\u2028.png', error: new Error('Broken\nin two.') },
]);

test('a report comes back from JSON', () => {
  assert.deepEqual(JSON.parse(toJson(report)), report);
});

test('JSON is indented, with a pair of coordinates on a line', () => {
  const pixels = Array.from({ length: 30 }, (_, i) => [i, 0.1 * i]);
  const text = toJson(makeReport([{ series: [seriesOf({ pixels })] }]));
  assert.match(text, /^\{\n {2}"schemaVersion": 1,\n {2}"images": \[\n {4}\{\n {6}"file": null,\n/);
  assert.match(text, /\n {12}\[1, 0\.1\],\n {12}\[2, 0\.2\],\n/);
  assert.ok(text.endsWith('\n}\n'));
});

test('NDJSON is one picture on each line', () => {
  const text = toNdjson(report);
  assert.ok(text.endsWith('\n'));
  const lines = text.slice(0, -1).split('\n');
  assert.deepEqual(
    lines.map((line) => JSON.parse(line)),
    report.images,
  );
  assert.equal(toNdjson(makeReport([])), '');
});

test('any data comes back from its indented JSON, and no line that could be joined is broken', () => {
  fc.assert(
    fc.property(fc.jsonValue(), (data) => {
      const text = formatJson(data);
      assert.equal(JSON.stringify(JSON.parse(text)), JSON.stringify(data));
      if (JSON.stringify(data).length < 40) assert.equal(text.split('\n').length, 2);
    }),
  );
});

test('lines are at most a hundred characters wide where they can be', () => {
  const data = { list: Array.from({ length: 40 }, (_, i) => 1000 + i), pair: [1, 2] };
  const lines = formatJson(data).split('\n');
  assert.deepEqual(lines.slice(0, 4), ['{', '  "list": [', '    1000,', '    1001,']);
  assert.ok(lines.includes('  "pair": [1, 2]'));
  for (const [length, count] of [
    [80, 7],
    [81, 9],
  ]) {
    const broken = formatJson({ list: [{ 'é"': ['x'.repeat(length)] }, []] }).split('\n');
    assert.equal(broken.length, count);
    assert.ok(broken.every((line) => line.length <= 100));
  }
  // What stands before a value on its line counts.
  const name = 'n'.repeat(60);
  for (const [length, count] of [
    [29, 5],
    [30, 7],
  ]) {
    const under = formatJson({ [name]: ['x'.repeat(length)], more: 'y'.repeat(80) }).split('\n');
    assert.equal(under.length, count);
    assert.ok(under.every((line) => line.length <= 100));
  }
  assert.equal(formatJson({}), '{}\n');
  assert.equal(formatJson({ a: undefined, b: [undefined] }), '{ "b": [null] }\n');
});
