// Every JavaScript example of the README runs as it stands, and says what the README says.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { mkdirSync, readFileSync, writeFileSync } from 'node:fs';
import { fileURLToPath } from 'node:url';
import { test } from 'node:test';

const root = new URL('../../', import.meta.url);
const readme = readFileSync(new URL('README.md', root), 'utf8');
const examples = [...readme.matchAll(/```js\n(.*?)```/gs)].map(([, code]) => code);

/**
 * Runs a program that imports the package by its name, from the root of the tree.
 * @param {string} name
 * @param {string} code
 * @returns {string} What it printed.
 */
function run(name, code) {
  const folder = new URL('build/readme/', root);
  mkdirSync(folder, { recursive: true });
  const file = fileURLToPath(new URL(`${name}.mjs`, folder));
  writeFileSync(file, code);
  const { status, stdout, stderr } = spawnSync(process.execPath, [file], {
    cwd: fileURLToPath(root),
    encoding: 'utf8',
  });
  assert.equal(status, 0, stderr);
  return stdout;
}

test('the first example prints the 19 values of the chart, near the published ones', () => {
  const picture = examples.find((code) => code.includes('decodePicture'));
  assert.ok(picture, 'the README shows the way from a picture');
  const rows = run('picture', picture).trim().split('\n');
  assert.equal(rows.length, 19);
  rows.forEach((row, i) => {
    // Markers come in the order of their first pixel: the topmost one is the hottest.
    const published = 20 * (rows.length - 1 - i);
    const temperature = Number(row.split(' ')[0]);
    assert.ok(Math.abs(temperature - published) < 1, `${row} is about ${published} degrees`);
  });
});

test('the example of trace returns what its comment says', () => {
  const native = examples.find((code) => code.includes('trace(x, y'));
  assert.ok(native, 'the README shows trace');
  const call = /^(trace\(.*\)); \/\/ (\[.*?\]).*$/m.exec(native);
  assert.ok(call, 'the call says its result');
  const printed = run('trace', native.replace(call[0], `console.log(JSON.stringify(${call[1]}))`));
  assert.deepEqual(JSON.parse(printed), JSON.parse(call[2]));
});
