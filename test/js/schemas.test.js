// The published schemas.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { Ajv2020 } from 'ajv/dist/2020.js';
import { makeReport, MODES, toJson, toNdjson, VERSION } from 'chart-trace';
import { formatJson } from '../../lib/json.js';
import { projectSchema } from '../../lib/schemas/project.js';
import { reportSchema } from '../../lib/schemas/report.js';
import { root } from './support/addon.js';
import {
  bars,
  histogram,
  histogramWithValues,
  markersAndCurve,
  seriesOf,
} from './support/reports.js';

const read = (/** @type {string} */ file) => readFileSync(join(root, file), 'utf8');
const published = JSON.parse(read('schemas/report.schema.json'));
const ajv = new Ajv2020({ strict: true, strictTypes: false, strictRequired: false });
const validate = ajv.compile(published);

test('the published schemas are those of the modules: npm run schemas writes them', () => {
  assert.equal(read('schemas/report.schema.json'), formatJson(reportSchema));
  assert.equal(read('schemas/project.schema.json'), formatJson(projectSchema));
});

test('the version of the package is that of package.json', () => {
  assert.equal(VERSION, JSON.parse(read('package.json')).version);
});

test('both schemas know every kind and every grouping', () => {
  const kinds = [...new Set(MODES.map(({ kind }) => kind))].sort();
  const groupings = [...new Set(MODES.map(({ grouping }) => grouping))].sort();
  const { kind, grouping } = projectSchema.properties.options.properties;
  assert.deepEqual([...kind.enum].sort(), kinds);
  assert.deepEqual([...grouping.enum].sort(), groupings);
  assert.deepEqual([...published.$defs.series.properties.kind.enum].sort(), kinds);
});

const all = [seriesOf(), bars, histogram, histogramWithValues, markersAndCurve];
const report = makeReport([
  { file: 'a.png', width: 5, height: 6, series: [...all, seriesOf({ pixels: [[NaN, 1]] })] },
  { error: new Error('Broken.') },
]);

test('reports have the published shape, and each line of NDJSON that of a picture', () => {
  assert.ok(validate(JSON.parse(toJson(report))), JSON.stringify(validate.errors));
  const ofImage = ajv.getSchema(`${published.$id}#/$defs/image`);
  for (const line of toNdjson(report).trimEnd().split('\n'))
    assert.ok(ofImage(JSON.parse(line)), JSON.stringify(ofImage.errors));
});

test('the schema refuses what is no report', () => {
  const spoil = (/** @type {(data: any) => void} */ change) => {
    const data = JSON.parse(toJson(report));
    change(data);
    assert.equal(validate(data), false, change.toString());
  };
  spoil((data) => (data.schemaVersion = 2));
  spoil((data) => delete data.images[0].error);
  spoil((data) => (data.images[0].more = 1));
  spoil((data) => (data.images[0].series[0].pixels[0] = [1]));
  spoil((data) => (data.images[0].series[0].kind = 'pie'));
  spoil((data) => (data.images[0].series[1].bars[0].pixels.end = null));
  spoil((data) => (data.images[1].error.message = null));
});
