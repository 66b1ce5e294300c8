// Arbitrary JavaScript values in all six places: proxies that lie, getters that change the arrays
// while they are read, buffers that are detached or shrink, counts without end.
//
// CHART_TRACE_CALLS is the number of calls (10,000 unless set), CHART_TRACE_SEED their seed.

import assert from 'node:assert/strict';
import { join } from 'node:path';
import process from 'node:process';
import test from 'node:test';

import { addonFile, node, root } from './support/addon.js';

const calls = process.env.CHART_TRACE_CALLS ?? '10000';
const seed = process.env.CHART_TRACE_SEED ?? '1';

test(`${calls} arbitrary calls (seed ${seed}) do what a model in JavaScript does`, async () => {
  const script = join(root, 'test/js/support/arbitrary_calls.mjs');
  // With a small young generation what remains of the memory's movement is what calls leave behind.
  const options = ['--expose-gc', '--max-semi-space-size=1'];
  const ended = await node([...options, script, addonFile, calls, seed]);
  assert.equal(ended.stderr, '');
  assert.equal(ended.status, 0);
  const { seen, growth } = JSON.parse(ended.stdout);
  assert.equal(
    Object.values(seen).reduce((sum, times) => sum + times),
    Number(calls),
  );
  // Every way to end was taken, often enough to mean something.
  const ways = [
    'points',
    'no points',
    'TypeError: A number was expected',
    'TypeError: Cannot convert undefined or null to object',
    'TypeError: Cannot convert a Symbol value to a string',
    "TypeError: Cannot perform 'get' on a proxy that has been revoked",
    'RangeError: there are more compartments than a 32-bit count can tell',
    'Thrown: the mode has no text',
  ];
  for (const way of ways) assert.ok(seen[way] > 0, `${way} never came: ${ended.stdout}`);
  assert.ok(seen.points > Number(calls) / 10, ended.stdout);
  // A sanitizer keeps a record of every place that allocates; it finds by itself what is left behind.
  if (process.env.ASAN_OPTIONS === undefined) assert.ok(growth < 6, `grew by ${growth} MB`);
});
