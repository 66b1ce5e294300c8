// The map of the folders in CONTRIBUTING.md is true: it names every folder, and what the folders of
// the core include is what it allows.
import assert from 'node:assert/strict';
import { readFileSync, readdirSync } from 'node:fs';
import { test } from 'node:test';

const root = new URL('../../', import.meta.url);
/** @param {string} path */
const read = (path) => readFileSync(new URL(path, root), 'utf8');

/** The rows of the table: a folder, or a file of the root, and what it may include. */
const map = read('CONTRIBUTING.md')
  .split('\n')
  .map((line) => line.split(' | '))
  .filter((cells) => cells.length === 3 && cells[0].startsWith('| `'))
  .map(([names, , allowed]) => ({
    names: [...names.matchAll(/`(.*?)`/g)].map(([, name]) => name),
    allowed,
  }));

test('the map names every folder', () => {
  const ignored = read('.gitignore').split('\n');
  const folders = readdirSync(root, { withFileTypes: true })
    .filter((entry) => entry.isDirectory() && entry.name !== '.git')
    .map(({ name }) => `${name}/`)
    .filter((folder) => !ignored.includes(folder));
  const named = map.flatMap(({ names }) => names);
  const unnamed = folders.filter((folder) => !named.includes(folder));
  assert.deepEqual(unnamed, []);
});

for (const name of ['t.cpp', 'dispatch/', 'extractors/', 'grouping/', 'primitives/', 'indexing/']) {
  test(`${name} includes only what the map allows`, () => {
    const allowed = map.find(({ names }) => names.includes(name))?.allowed ?? '';
    const files = name.endsWith('/')
      ? readdirSync(new URL(name, root)).map((file) => name + file)
      : [name];
    for (const file of files) {
      for (const [, folder] of read(file).matchAll(/^#include "(\w+\/)/gm)) {
        assert.ok(
          folder === name || allowed.includes(`\`${folder}\``),
          `${file} includes ${folder}`,
        );
      }
    }
  });
}
