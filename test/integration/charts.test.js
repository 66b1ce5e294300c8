// Every chart of examples/charts, traced in its modes and held against its truth and against the
// whole result pinned in test/fixtures/charts. `UPDATE=1 npm test -- js` rewrites the pins: a change
// there is a decision.
import assert from 'node:assert/strict';
import { readFileSync, writeFileSync } from 'node:fs';
import { test } from 'node:test';
import { chartNames, modesOf, readChart, traceChart } from './charts.js';

/** @param {string} name */
const fixture = (name) => new URL(`../fixtures/charts/${name}.json`, import.meta.url);

/** @typedef {ReturnType<typeof traceChart>} Result */

/**
 * A mode a paragraph, a list a line, so that a difference shows where it is.
 * @param {Record<string, Result>} results
 */
function format(results) {
  const modes = Object.entries(results).map(
    ([mode, { traced, compared }]) =>
      `  "${mode}": {\n    "traced": {\n      "x": ${JSON.stringify(traced.x)},\n` +
      `      "y": ${JSON.stringify(traced.y)}\n    },\n` +
      `    "compared": ${JSON.stringify(compared)}\n  }`,
  );
  return `{\n${modes.join(',\n')}\n}\n`;
}

/**
 * What a chart of each kind must show at the least, whatever the pins say.
 * @param {{kind: string, touching?: number[][]}} series
 * @param {Result['compared']} compared
 */
function holdAgainstTruth(series, compared) {
  const { kind } = series;
  const { lone, loneFound, touching, touchingFound, others, lineMean, largest } = compared;
  if (kind === 'curve') {
    // A curve comes back as a thinned chain of points on it, not as the data it was drawn from.
    assert.ok(lineMean !== null && lineMean < 3.5, `${lineMean} px from the line on average`);
    assert.ok(compared.traced >= 40);
    return;
  }
  if (kind === 'steps') {
    // A jump of less than half a percent of all height changes is no step; one value has no partner.
    assert.ok(loneFound >= 0.85 * lone, `${loneFound} of ${lone} vertices`);
    return;
  }
  assert.equal(loneFound, lone, 'every element that touches no other is found');
  // Markers that touch are one group of pixels, and so one point, near one of them or near none.
  assert.ok(touchingFound <= (series.touching ?? []).length);
  if (kind !== 'points_curve') assert.equal(others + loneFound + touchingFound, compared.traced);
  if (touching === 0) assert.ok(largest < 1.5, `${largest} px`);
}

for (const name of chartNames) {
  test(`${name}: the colour's pixels, the traced elements and the pinned result`, async () => {
    const chart = await readChart(name);
    const { description, series, picture, pixels } = chart;
    assert.deepEqual([picture.width, picture.height], description.size);
    assert.equal(pixels.x.length, series.selected_pixels);

    const results = Object.fromEntries(
      modesOf(series).map((mode) => [mode, traceChart(chart, mode)]),
    );
    if (process.env.UPDATE === '1') writeFileSync(fixture(name), format(results));
    for (const { compared } of Object.values(results)) holdAgainstTruth(series, compared);
    // JSON keeps every bit of a finite double but the sign of a zero, and none of these is -0.
    assert.deepEqual(results, JSON.parse(readFileSync(fixture(name), 'utf8')));
  });
}
