// Every chart of examples/charts, from its colour and its axes to values, held against its data and
// against the errors and the values pinned in test/fixtures/series. `UPDATE=1 npm test -- js` rewrites
// the pins: a change there is a decision.
import assert from 'node:assert/strict';
import { mkdirSync, readFileSync, writeFileSync } from 'node:fs';
import { test } from 'node:test';
import { chartNames, readChart } from './charts.js';
import { traceSeries } from './series.js';

/** @param {string} name */
const fixture = (name) => new URL(`../fixtures/series/${name}.json`, import.meta.url);

/**
 * Numbers with nine digits: powers and logarithms differ in their last bits between engines.
 * @param {unknown} value
 * @returns {unknown}
 */
function rounded(value) {
  return JSON.parse(
    JSON.stringify(value, (_, v) => (typeof v === 'number' ? Number(v.toPrecision(9)) : v)),
  );
}

/**
 * What must hold whatever the pins say.
 * @param {any} truth
 * @param {ReturnType<typeof traceSeries>} result
 */
function holdAgainstData(truth, { traced, compared }) {
  assert.equal(traced.values?.length, traced.pixels.length);
  assert.ok(traced.pixels.flat().every(Number.isFinite));
  assert.ok(traced.values?.flat().every((value) => value !== null && !Number.isNaN(value)));
  const touching = new Set((truth.touching ?? []).flat()).size;
  if (truth.kind === 'curve') {
    // A curve comes back as a thinned chain of mean positions.
    assert.ok(compared.pixels.mean < 3.5, `${compared.pixels.mean} px from the curve`);
  } else if (truth.kind === 'steps') {
    // A jump of less than half a percent of all changes of height is no step.
    assert.ok(compared.found >= 0.9 * compared.elements, `${compared.found} vertices`);
  } else {
    assert.ok(compared.found >= compared.elements - touching, `${compared.found} elements`);
  }
  // Bars end where they are drawn to end, within the pixel that is partly covered.
  if (truth.kind.startsWith('bars') || truth.kind === 'histogram')
    assert.ok(compared.pixels.largest <= 0.95, `${compared.pixels.largest}`);
}

for (const name of chartNames) {
  test(`${name}: from colour and axes to the data`, async () => {
    const chart = await readChart(name);
    const result = traceSeries(chart);
    const { traced, compared } = result;
    const { kind, mode, selected, values, notes } = traced;
    const pinned = rounded({ kind, mode, selected, notes, compared, values });
    if (process.env.UPDATE === '1') {
      mkdirSync(new URL('.', fixture(name)), { recursive: true });
      writeFileSync(fixture(name), `${JSON.stringify(pinned, null, 1)}\n`);
    }
    holdAgainstData(chart.series, result);
    assert.deepEqual(pinned, JSON.parse(readFileSync(fixture(name), 'utf8')));
  });
}

test('the borders of the bins are those of the histogram', async () => {
  const chart = await readChart('faithful-histogram');
  const { traced } = traceSeries(chart);
  const edges = chart.series.bin_edges;
  assert.equal(traced.bins?.length, edges.length - 1);
  for (const [i, { pixels, values }] of (traced.bins ?? []).entries()) {
    assert.ok(Math.abs(pixels.left - chart.series.bin_edge_pixels[i]) <= 0.75);
    assert.ok(Math.abs(pixels.right - chart.series.bin_edge_pixels[i + 1]) <= 0.75);
    assert.ok(Math.abs(Number(values?.left) - edges[i]) <= 0.0065);
  }
});
