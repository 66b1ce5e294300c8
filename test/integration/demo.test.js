// The demo as a newcomer runs it.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { rmSync } from 'node:fs';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { decodePicture } from '../../lib/pictures.js';

const root = fileURLToPath(new URL('../..', import.meta.url));

test('the demo prints the values of its chart and writes the traced points over it', async () => {
  const path = `${root}build/demo/pressure-squares-log.png`;
  rmSync(path, { force: true });
  const { status, stdout, stderr } = spawnSync(process.execPath, ['scripts/demo.mjs'], {
    cwd: root,
    encoding: 'utf8',
  });
  assert.equal(status, 0, stderr);

  const rows = stdout.split('\n').filter((line) => /^[\d.\s-]+$/.test(line) && line.trim() !== '');
  assert.equal(rows.length, 19);
  for (const row of rows) {
    const [, , degrees, pressure, trueDegrees, truePressure] = row.trim().split(/\s+/).map(Number);
    assert.ok(Math.abs(degrees - trueDegrees) < 0.5, row);
    assert.ok(Math.abs(Math.log(pressure / truePressure)) < 0.03, row);
  }

  assert.match(stdout, /build\/demo\/pressure-squares-log\.png/);
  const { width, height, data } = await decodePicture(path);
  assert.deepEqual([width, height], [680, 520]);
  // An arm of the cross over the rightmost marker, at (623, 109), in the contrasting blue.
  const at = 4 * (109 * width + 623 + 8);
  assert.deepEqual([...data.subarray(at, at + 3)], [0, 114, 178]);
});
