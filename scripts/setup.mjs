// Sets up what building, testing and the demo need, and says what it does.
//
//   node scripts/setup.mjs [PURPOSE...]     what to set up for; build when nothing is said
//
// Packages of npm are installed as the lock file pins them. Missing system packages are installed
// where this is possible (as root, with apt-get); elsewhere set-up stops with the line to type.

import { spawnSync } from 'node:child_process';
import { existsSync, mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { dirname, join } from 'node:path';
import process from 'node:process';
import { fileURLToPath } from 'node:url';
import { hasRecentCmake } from './cmake.mjs';

export const root = dirname(dirname(fileURLToPath(import.meta.url)));

/** @typedef {'build' | 'test' | 'full' | 'wasm' | 'cross' | 'emulate' | 'browser'} Purpose */

/**
 * A need: what it is called, whether it is there, and the Debian packages that bring it.
 * @typedef {{what: string, isThere: () => boolean, debian: string[]}} Need
 */

const WASM_COMPILERS = ['clang++-14', 'clang++'];
const WASM_OPTIONS = ['--target=wasm32-wasi', '-fno-exceptions'];

/** @type {Record<Purpose, Need[]>} */
const NEEDS = {
  build: [
    { what: 'CMake 3.21 or newer', isThere: hasRecentCmake, debian: ['cmake'] },
    {
      what: 'Ninja or Make',
      isThere: () => runs('ninja', ['--version']) || runs('make', ['--version']),
      debian: ['ninja-build'],
    },
    {
      what: 'a C++ compiler',
      isThere: () =>
        [process.env.CXX, 'c++', 'g++', 'clang++'].some((name) => name && compiles(name)),
      debian: ['g++'],
    },
  ],
  test: [
    { what: 'Ninja', isThere: () => runs('ninja', ['--version']), debian: ['ninja-build'] },
    { what: 'g++', isThere: () => compiles('g++'), debian: ['g++'] },
    {
      what: 'GoogleTest',
      isThere: () => compiles('g++', ['-include', 'gtest/gtest.h', '-lgtest']),
      debian: ['libgtest-dev'],
    },
    {
      what: 'clang-format',
      isThere: () => runs('clang-format', ['--version']),
      debian: ['clang-format'],
    },
    {
      what: 'clang-tidy',
      isThere: () => runs('clang-tidy', ['--version']),
      debian: ['clang-tidy'],
    },
  ],
  full: [
    { what: 'clang++', isThere: () => compiles('clang++'), debian: ['clang'] },
    {
      what: "clang's sanitizers",
      isThere: () => compiles('clang++', ['-fsanitize=address,undefined']),
      debian: ['clang', 'libclang-rt-dev'],
    },
    {
      what: "clang's coverage",
      isThere: () => runs('llvm-cov', ['--version']) && runs('llvm-profdata', ['--help']),
      debian: ['llvm'],
    },
  ],
  wasm: [
    {
      what: 'clang with libraries for WebAssembly',
      isThere: () => WASM_COMPILERS.some((name) => compiles(name, WASM_OPTIONS)),
      debian: [
        'clang-14',
        'lld-14',
        'wasi-libc',
        'libc++-14-dev-wasm32',
        'libc++abi-14-dev-wasm32',
        'libclang-rt-14-dev-wasm32',
      ],
    },
  ],
  cross: [
    {
      what: 'g++ for Linux on x86-64',
      isThere: () => compiles('x86_64-linux-gnu-g++'),
      debian: ['g++-x86-64-linux-gnu'],
    },
    {
      what: 'g++ for Linux on ARM',
      isThere: () => compiles('aarch64-linux-gnu-g++'),
      debian: ['g++-aarch64-linux-gnu'],
    },
    {
      what: 'g++ for Windows',
      isThere: () => compiles('x86_64-w64-mingw32-g++-posix'),
      debian: ['g++-mingw-w64-x86-64-posix'],
    },
  ],
  emulate: [
    {
      what: 'qemu for ARM',
      isThere: () => runs('qemu-aarch64-static', ['--version']),
      debian: ['qemu-user-static'],
    },
    { what: 'wine', isThere: () => runs('wine', ['--version']), debian: ['wine', 'wine64'] },
  ],
  browser: [
    { what: 'Chromium', isThere: () => runs('chromium', ['--version']), debian: ['chromium'] },
  ],
};

/**
 * Sets up for the given purposes; ends the process with a message where that cannot be done.
 * @param {Purpose[]} purposes
 */
export function setUp(purposes) {
  installNpmPackages();
  const needs = purposes.flatMap((purpose) => NEEDS[purpose]);
  installSystemPackages(needs.filter((need) => !need.isThere()));
  say('all that is needed is there');
}

/**
 * Ends the process with a message that says what to do, without a stack trace.
 * @param {string} message
 * @returns {never}
 */
export function stop(message) {
  console.error(`\n${message}`);
  process.exit(1);
}

/** @param {string} message */
const say = (message) => console.log(`set-up: ${message}`);

function installNpmPackages() {
  if (nodeModulesAreCurrent()) return say('node_modules are as the lock file says');
  say('installing npm packages: npm ci --ignore-scripts');
  const { status } = run('npm', ['ci', '--ignore-scripts', '--no-audit', '--no-fund'], 'inherit');
  if (status !== 0)
    stop(`The npm packages could not be installed. Type:\n  npm ci --ignore-scripts`);
}

/** Whether node_modules hold every package of the lock file in its version. */
function nodeModulesAreCurrent() {
  const installedFile = join(root, 'node_modules', '.package-lock.json');
  if (!existsSync(installedFile)) return false;
  const wanted = JSON.parse(readFileSync(join(root, 'package-lock.json'), 'utf8')).packages;
  const installed = JSON.parse(readFileSync(installedFile, 'utf8')).packages;
  return Object.entries(wanted).every(([path, { version, optional }]) => {
    if (path === '') return true;
    // Optional packages for other systems are left out.
    return installed[path] ? installed[path].version === version : optional;
  });
}

/** @param {Need[]} missing */
function installSystemPackages(missing) {
  if (missing.length === 0) return;
  say(`missing: ${missing.map(({ what }) => what).join(', ')}`);
  const packages = [...new Set(missing.flatMap(({ debian }) => debian))];
  if (!runs('apt-get', ['--version']))
    stop(`Please install ${missing.map(({ what }) => what).join(', ')}, then try again.`);
  const install = `apt-get install -y --no-install-recommends ${packages.join(' ')}`;
  if (process.getuid?.() !== 0)
    stop(`Type this, then try again:\n  sudo apt-get update && sudo ${install}`);

  say(`installing system packages: apt-get update && ${install}`);
  const env = { ...process.env, DEBIAN_FRONTEND: 'noninteractive' };
  for (const args of [
    ['-qq', 'update'],
    ['-qq', ...install.split(' ').slice(1)],
  ]) {
    const { status, stdout, stderr } = spawnSync('apt-get', args, { env, encoding: 'utf8' });
    if (status !== 0)
      stop(
        `${stdout}${stderr}\napt-get failed; its messages are above. The line that failed:\n  ` +
          `apt-get ${args.join(' ')}`,
      );
  }
  const still = missing.filter((need) => !need.isThere());
  if (still.length > 0)
    stop(`${packages.join(' ')} installed, but not found: ${still.map((n) => n.what).join(', ')}.`);
}

/**
 * @param {string} program
 * @param {string[]} args
 * @param {'inherit' | 'pipe'} [stdio]
 */
function run(program, args, stdio = 'pipe') {
  // On Windows npm is a batch file, which only a shell runs.
  const shell = process.platform === 'win32';
  return spawnSync(program, args, { cwd: root, stdio, shell, encoding: 'utf8' });
}

/**
 * @param {string} program
 * @param {string[]} args
 */
function runs(program, args) {
  return run(program, args).status === 0;
}

/**
 * Whether a compiler makes a program of nothing but main, with the given options.
 * @param {string} compiler
 * @param {string[]} [options]
 */
function compiles(compiler, options = []) {
  const folder = mkdtempSync(join(tmpdir(), 'chart-trace-'));
  try {
    const args = [...options, '-x', 'c++', '-', '-o', join(folder, 'program')];
    const input = '#include <vector>\nint main() { return 0; }\n';
    return spawnSync(compiler, args, { input }).status === 0;
  } finally {
    rmSync(folder, { recursive: true });
  }
}

if (process.argv[1] === fileURLToPath(import.meta.url)) {
  const purposes = process.argv.slice(2);
  const unknown = purposes.find((purpose) => !(purpose in NEEDS));
  if (unknown) stop(`Unknown purpose '${unknown}'; there are ${Object.keys(NEEDS).join(', ')}.`);
  setUp(/** @type {Purpose[]} */ (purposes.length > 0 ? purposes : ['build']));
}
