// The package as those who install it have it: packed, then installed in an empty folder from nothing
// but what the cache of npm has, with scripts off, an empty user configuration and no compiler.

import { spawnSync } from 'node:child_process';
import { mkdirSync, mkdtempSync, rmSync, symlinkSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import process from 'node:process';
import { root } from '../../scripts/setup.mjs';

/**
 * @param {string} program
 * @param {string[]} args
 * @param {import('node:child_process').SpawnSyncOptions} options
 */
function run(program, args, options) {
  const { status, stdout, stderr, error } = spawnSync(program, args, options);
  if (status === 0) return String(stdout);
  throw new Error(`${program} ${args.join(' ')}: ${error?.message ?? `${stdout}${stderr}`}`);
}

/**
 * Packs what was built, types and prebuilt modules, without building anything again.
 * @param {string} folder
 */
export function pack(folder) {
  const args = ['pack', '--json', '--ignore-scripts', '--pack-destination', folder];
  const [packed] = JSON.parse(run('npm', args, { cwd: root }));
  return {
    file: join(folder, packed.filename),
    size: packed.size,
    files: packed.files.map((/** @type {{path: string}} */ { path }) => path).sort(),
  };
}

/** A new folder to work in, and what removes it. */
export function workspace() {
  const folder = mkdtempSync(join(tmpdir(), 'chart-trace-'));
  return { folder, remove: () => rmSync(folder, { recursive: true, force: true }) };
}

/**
 * An environment with Node.js and npm on the PATH, and nothing else.
 * @param {string} folder Where that PATH is made.
 */
function bareEnvironment(folder) {
  const path = join(folder, 'path');
  mkdirSync(path);
  symlinkSync(process.execPath, join(path, 'node'));
  const npm = run('sh', ['-c', 'command -v npm'], {}).trim();
  symlinkSync(npm, join(path, 'npm'));
  symlinkSync('/bin/sh', join(path, 'sh'));
  const configuration = join(folder, 'empty.npmrc');
  writeFileSync(configuration, '');
  return { PATH: path, HOME: folder, npm_config_userconfig: configuration };
}

/**
 * Installs the package in a folder of its own.
 * @param {string} folder
 * @param {string} tarball
 */
export function install(folder, tarball) {
  // An installation elsewhere, with the network, brings what the package depends on into a cache.
  const cache = join(folder, 'cache');
  const args = [
    'install',
    '--ignore-scripts',
    '--no-audit',
    '--no-fund',
    '--cache',
    cache,
    tarball,
  ];
  const first = join(folder, 'first');
  mkdirSync(first);
  run('npm', args, { cwd: first });

  const env = bareEnvironment(folder);
  const place = join(folder, 'app');
  mkdirSync(place);
  const start = performance.now();
  run('npm', [...args, '--offline'], { cwd: place, env });
  const seconds = (performance.now() - start) / 1000;
  return { place, package: join(place, 'node_modules/chart-trace'), env, seconds };
}

/**
 * Runs a script there; tells what it prints.
 * @param {{place: string, env: Record<string, string>}} installed
 * @param {string} source
 * @param {{esm?: boolean, env?: Record<string, string>}} [options]
 */
export function runThere({ place, env }, source, { esm = true, env: more = {} } = {}) {
  const args = [`--input-type=${esm ? 'module' : 'commonjs'}`, '-e', source];
  return run(join(env.PATH, 'node'), args, { cwd: place, env: { ...env, ...more } });
}

export { join, root, run };
