// Files while their writers are killed, or write at the same time: whoever looks sees one whole
// content.

import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { readdirSync, readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import process from 'node:process';
import { test } from 'node:test';
import { makeFolder } from './support/command.js';
import { randomNumbers } from './support/random.js';

// Writes contents of different lengths over one another, each of one letter, some times or for ever,
// as soon as it is told to.
const WRITER = `
  import { writeWhole } from ${JSON.stringify(new URL('../../lib/files.js', import.meta.url))};
  const [path, letters, times] = process.argv.slice(1);
  process.stdout.write('ready');
  await new Promise((begin) => process.stdin.once('data', begin));
  process.stdin.destroy();
  for (let i = 0; i < times; ++i)
    for (const [k, letter] of [...letters].entries()) await writeWhole(path, letter.repeat((k + 2) * 1e6));`;

/** @param {string[]} args */
async function beginWriter(...args) {
  const child = spawn(process.execPath, ['--input-type=module', '-e', WRITER, ...args], {
    stdio: ['pipe', 'pipe', 'inherit'],
  });
  const ended = once(child, 'close');
  await once(child.stdout, 'data');
  return { child, ended };
}

/** @param {string} content */
function assertWhole(content, message) {
  const [letter] = content;
  assert.ok(content.length % 1e6 === 0 && content.length > 1e6, `${content.length}, ${message}`);
  assert.equal(content, letter.repeat(content.length), message);
}

test('killed at any moment, a writer leaves one whole content', async (t) => {
  const { folder, remove } = await makeFolder();
  t.after(remove);
  const seed = Date.now() % 1e9;
  t.diagnostic(`seed ${seed}`);
  const random = randomNumbers(seed);
  const path = join(folder, 'killed.txt');
  writeFileSync(path, 'o'.repeat(5e6));
  for (let i = 0; i < 8; ++i) {
    const { child, ended } = await beginWriter(path, 'ab', 'Infinity');
    child.stdin.write('begin');
    await new Promise((resolve) => setTimeout(resolve, 60 * random()));
    child.kill('SIGKILL');
    await ended;
    assertWhole(readFileSync(path, 'utf8'), `seed ${seed}, ${i}`);
  }
});

test('two writers at a time leave the whole content of one, and nothing else', async (t) => {
  const { folder, remove } = await makeFolder();
  t.after(remove);
  const path = join(folder, 'both.txt');
  const writers = [await beginWriter(path, 'abc', '5'), await beginWriter(path, 'xyz', '5')];
  for (const { child } of writers) child.stdin.write('begin');
  const codes = await Promise.all(writers.map(({ ended }) => ended));
  assert.deepEqual(
    codes.map(([code]) => code),
    [0, 0],
  );
  assertWhole(readFileSync(path, 'utf8'), 'in the end');
  assert.deepEqual(readdirSync(folder), ['both.txt']);
});
