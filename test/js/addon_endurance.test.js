// Many calls and large ones, in processes of their own so that memory can be measured.

import assert from 'node:assert/strict';
import test from 'node:test';

import { attempt } from './support/addon.js';

// With a small young generation and a collection before each measurement, what remains of the
// resident memory's movement is the heap's own and comes and goes, and what calls leave behind,
// which comes in every round: 100,000 calls that leak 64 bytes each would add 6 MB.
const steady = ['--expose-gc', '--max-semi-space-size=1'];
const leastGrowthOf = (call) => `
  const x = [10, 20, 30, 40, 50];
  const thrower = { get 0() { throw 5 } };
  const run = (calls) => {
    for (let i = 0; i < calls; ++i) { ${call} }
    gc();
    return process.memoryUsage.rss() / 2 ** 20;
  };
  run(30_000);
  let least = Infinity;
  for (let round = 0; round < 5 && least > 1; ++round) {
    const before = run(5_000);
    least = Math.min(least, run(100_000) - before);
  }
  least`;

const calls = {
  'good calls': 'trace(x, x, 5, 1, "bar_vertical-fission", 0.05)',
  'calls with an unknown mode': 'trace(x, x, 5, 1, "no-such-mode-" + i, 0.05)',
  'calls that fail on an argument': 'try { trace() } catch {}',
  'calls that fail on an element': 'try { trace(x, x, 6, 1, "", 0.05) } catch {}',
  'calls that fail in a getter': 'try { trace(thrower, x, 1, 1, "", 0) } catch {}',
};
for (const [name, call] of Object.entries(calls)) {
  test(`100,000 ${name} leave no memory behind`, async () => {
    const { returned: growth } = await attempt(leastGrowthOf(call), steady);
    assert.ok(growth < 4, `grew by ${growth} MB`);
  });
}

// A point costs 16 bytes, for a moment three times that while its list grows. Handles that are kept
// for the length of the call, and the numbers they hold, would cost 48 bytes more for each point.
test('a million pairs are read once, in memory that is in proportion', async () => {
  const { returned } = await attempt(`
    const n = 1_000_000;
    const x = new Float64Array(n).fill(0.5);
    const y = new Float64Array(n).fill(1 / 3);
    const before = process.resourceUsage().maxRSS;
    const traced = trace(x, y, n, 1, 'no-such-mode', 0.05);
    const grown = (process.resourceUsage().maxRSS - before) / 1024;
    ({ traced, grown })`);
  assert.deepEqual(returned.traced, []);
  assert.ok(returned.grown < 64, `grew by ${returned.grown} MB`);
});

test('a million pairs are traced', async () => {
  // Ten columns of a hundred thousand rows: one bar, whose top is the first row.
  const { returned } = await attempt(`
    const n = 1_000_000;
    const x = Float64Array.from({ length: n }, (_, i) => i % 10);
    const y = Float64Array.from({ length: n }, (_, i) => 7 + Math.floor(i / 10));
    trace(x, y, n, 1, 'histogram', 0.05)`);
  assert.deepEqual(returned, [4.5, 7]);
});
