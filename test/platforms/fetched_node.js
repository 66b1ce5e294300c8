// Real builds of Node.js for any system and version, from packages of npm, each checked by its hash.

import { spawnSync } from 'node:child_process';
import { existsSync, mkdirSync, mkdtempSync, renameSync, rmSync } from 'node:fs';
import { join } from 'node:path';
import process from 'node:process';
import { root } from '../../scripts/setup.mjs';

/** Where they are kept from one run to the next. */
export const folder = join(root, 'build', 'hosts');

/**
 * @typedef {object} NodePackage
 * @property {string} package The npm package that has a Node.js, with the version.
 * @property {string} integrity Of that package.
 * @property {string} program In that package.
 */

/**
 * Runs a program in the project's folder to its end; its failure is an exception.
 * @param {string[]} command
 * @param {NodeJS.ProcessEnv} [env] Beyond that of this process.
 * @returns {string} What it printed.
 */
export function run([program, ...args], env = {}) {
  const { status, stdout, stderr, error } = spawnSync(program, args, {
    cwd: root,
    encoding: 'utf8',
    env: { ...process.env, ...env },
    maxBuffer: 2 ** 28,
  });
  if (status === 0) return stdout;
  throw new Error(`${program} ${args.join(' ')} failed: ${error?.message ?? stderr + stdout}`);
}

/**
 * Fetches a Node.js unless it is there.
 * @param {NodePackage} wanted
 * @returns {string} Its program.
 */
export function nodeOf(wanted) {
  const place = join(folder, wanted.package);
  if (!existsSync(place)) {
    mkdirSync(folder, { recursive: true });
    // Tests fetch side by side, each into a folder of its own.
    const fetching = mkdtempSync(join(folder, 'fetching-'));
    const pack = ['npm', 'pack', wanted.package, '--json', '--pack-destination', fetching];
    const [{ filename, integrity }] = JSON.parse(run(pack));
    if (integrity !== wanted.integrity) throw new Error(`${wanted.package} has ${integrity}`);
    run(['tar', '-xzf', join(fetching, filename), '-C', fetching]);
    renameSync(join(fetching, 'package'), place);
    rmSync(fetching, { recursive: true });
  }
  return join(place, wanted.program);
}
