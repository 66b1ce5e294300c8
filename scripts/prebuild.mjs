// Builds the module for every platform that the package brings it for, by cross compilers.
//
//   node scripts/prebuild.mjs [linux-x64] [linux-arm64] [win32-x64] [wasm32]     all when none is said
//
// Native modules become prebuilds/PLATFORM-ARCH/cpp_code[.glibc].node, where the loader looks for
// them. WebAssembly becomes prebuilds/wasm32/cpp_code.wasm and, beside it, the same as a JavaScript
// module, which a bundler takes along without being told how.

import { spawnSync } from 'node:child_process';
import { readdirSync, readFileSync, renameSync, rmSync, writeFileSync } from 'node:fs';
import { availableParallelism } from 'node:os';
import { join } from 'node:path';
import process from 'node:process';
import { root, setUp, stop } from './setup.mjs';

const TARGETS = ['linux-x64', 'linux-arm64', 'win32-x64', 'wasm32'];

/** @param {string[]} args */
function cmake(...args) {
  const { status, error } = spawnSync('cmake', args, { cwd: root, stdio: 'inherit' });
  if (status !== 0) stop(`\`cmake ${args.join(' ')}\` failed. ${error?.message ?? ''}`);
}

/** @param {string} target */
function build(target) {
  const folder = join(root, 'prebuilds', target);
  rmSync(folder, { recursive: true, force: true });
  cmake('--preset', target, '--log-level=WARNING');
  cmake('--build', '--preset', target, '--parallel', String(availableParallelism()));
  // The name tells the loader that this one is not for musl.
  if (target.startsWith('linux'))
    renameSync(join(folder, 'cpp_code.node'), join(folder, 'cpp_code.glibc.node'));
  if (target === 'wasm32') writeAsText(folder);
  for (const file of readdirSync(folder)) console.log(`prebuilds/${target}/${file}`);
}

/** @param {string} folder */
function writeAsText(folder) {
  const base64 = readFileSync(join(folder, 'cpp_code.wasm'), 'base64');
  const text = `// The bytes of cpp_code.wasm, in base64.\nexport default '${base64}';\n`;
  writeFileSync(join(folder, 'cpp_code.js'), text);
}

const asked = process.argv.slice(2);
const unknown = asked.find((target) => !TARGETS.includes(target));
if (unknown) stop(`There is no target '${unknown}'. There are: ${TARGETS.join(', ')}.`);
const targets = asked.length > 0 ? asked : TARGETS;
/** @type {import('./setup.mjs').Purpose[]} */
const purposes = ['build'];
if (targets.includes('wasm32')) purposes.push('wasm');
if (targets.some((target) => target !== 'wasm32')) purposes.push('cross');
setUp(purposes);
targets.forEach(build);
