// Every chart of examples/charts by the command alone, from its kind, colour and axes. The table of
// what is found and of the errors is pinned in test/fixtures/command/charts.md; `UPDATE=1 npm test --
// js` rewrites it: a change there is a decision.

import assert from 'node:assert/strict';
import { mkdirSync, readFileSync, writeFileSync } from 'node:fs';
import { test } from 'node:test';
import { chartNames } from './charts.js';
import { tableOf, traceByCommand } from './command.js';

const pinned = new URL('../fixtures/command/charts.md', import.meta.url);

/** @type {[name: string, result: ReturnType<typeof traceByCommand>][]} */
const results = [];

for (const name of chartNames)
  test(`${name}: the command finds what the chart shows`, () => {
    const result = traceByCommand(name);
    results.push([name, result]);
    const { truth, series, comparison, alone, aloneFound } = result;
    assert.equal(series.values.length, series.pixels.length);
    if (truth.kind === 'curve')
      assert.ok(comparison.pixels.mean < 3.5, `${comparison.pixels.mean}`);
    else if (truth.kind === 'steps') assert.ok(aloneFound >= 0.9 * alone, `${aloneFound} vertices`);
    else assert.equal(aloneFound, alone);
  });

test('the table of all charts is the pinned one', () => {
  const table = tableOf(results);
  if (process.env.UPDATE === '1') {
    mkdirSync(new URL('.', pinned), { recursive: true });
    writeFileSync(pinned, table);
  }
  assert.equal(table, readFileSync(pinned, 'utf8'));
});
