// A copy of a part of the project, in which bugs are planted.

import {
  cpSync,
  existsSync,
  mkdirSync,
  readFileSync,
  readdirSync,
  rmSync,
  writeFileSync,
} from 'node:fs';
import { join, relative } from 'node:path';
import process from 'node:process';
import { fileURLToPath } from 'node:url';

/** @typedef {{file: string, name: string, find: string, replace: string}} Bug */

export const root = fileURLToPath(new URL('../..', import.meta.url));
export const scratch = join(root, 'build/planted_bugs');

/**
 * @param {string} message
 * @returns {never}
 */
export function stop(message) {
  console.error(message);
  process.exit(1);
}

/** @param {string} path */
const read = (path) => readFileSync(path, 'utf8');

/**
 * What is wrong with the entry, or nothing.
 * @param {Bug} bug
 */
export function misplaced({ file, find, replace }) {
  if (!existsSync(join(root, file))) return 'there is no such file';
  const times = read(join(root, file)).split(find).length - 1;
  if (times !== 1) return `its text stands there ${times} times, not once`;
  return find === replace ? 'it changes nothing' : undefined;
}

/**
 * Plants a bug in a copy; returns what takes it out again.
 * @param {string} tree
 * @param {Bug} bug
 */
export function plant(tree, { file, find, replace }) {
  const path = join(tree, file);
  const sound = read(path);
  // A function as replacement, since a string would have its dollar signs interpreted.
  writeFileSync(
    path,
    sound.replace(find, () => replace),
  );
  return () => writeFileSync(path, sound);
}

/** Files below a path of the project, as paths from the root. */
function* filesBelow(/** @type {string} */ path, base = root) {
  if (!existsSync(join(base, path))) return;
  const entries = readdirSync(join(base, path), { withFileTypes: true, recursive: true });
  for (const entry of entries) {
    if (entry.isFile()) yield relative(base, join(entry.parentPath ?? entry.path, entry.name));
  }
}

/**
 * Brings a copy up to date; unchanged files keep their times, so that little is built anew.
 * @param {string} tree
 * @param {string[]} paths Files, which have an ending, and folders.
 */
export function copyTo(tree, paths) {
  const wanted = new Set();
  for (const path of paths) {
    for (const file of /\.\w+$/.test(path) ? [path] : filesBelow(path)) wanted.add(file);
  }
  for (const file of wanted) {
    const target = join(tree, file);
    if (existsSync(target) && readFileSync(target).equals(readFileSync(join(root, file)))) continue;
    mkdirSync(join(target, '..'), { recursive: true });
    cpSync(join(root, file), target);
  }
  for (const file of filesBelow('.', tree)) if (!wanted.has(file)) rmSync(join(tree, file));
}
