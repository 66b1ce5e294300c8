// Thousands of results, pinned as a hash for each mode: they are the same on every platform and in
// every later version. UPDATE=1 pins them anew; say why in the commit.

import assert from 'node:assert/strict';
import { readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import process from 'node:process';
import test from 'node:test';

import { CASES_OF_A_MODE, pinnedResults } from '../pinned/cases.js';
import { root, trace } from './support/addon.js';

const file = join(root, 'test/fixtures/pinned.json');
const results = pinnedResults(trace);
if (process.env.UPDATE) writeFileSync(file, `${JSON.stringify(results, null, 2)}\n`);

for (const [mode, expected] of Object.entries(JSON.parse(readFileSync(file, 'utf8')))) {
  test(`${CASES_OF_A_MODE} pictures in mode ${mode} give what they always gave`, () => {
    assert.deepEqual(results[mode], expected);
  });
}

test('the hash tells the last bit, the sign of zero and the order, but not one NaN from another', () => {
  const hashesOf = (result) =>
    Object.values(pinnedResults(() => result)).map(({ hash }) => hash)[0];
  const other = new Float64Array(new BigUint64Array([0xfff8000000000001n]).buffer);
  assert.equal(hashesOf([NaN]), hashesOf(other));
  const all = [[1, 2], [2, 1], [1, 2 + 2 ** -51], [0], [-0], [], [NaN]].map(hashesOf);
  assert.equal(new Set(all).size, all.length);
});
