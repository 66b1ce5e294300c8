// Sets up, then runs the stages of the tests one after another and stops at the first failure.
//
//   npm test                 the usual stages
//   npm test -- cpp js       only these
//   npm test -- full         every stage there is
//
// A stage is an entry of the table below; to add one, add an entry.

import { spawn, spawnSync } from 'node:child_process';
import { once } from 'node:events';
import { existsSync, readdirSync } from 'node:fs';
import { availableParallelism } from 'node:os';
import { join } from 'node:path';
import process from 'node:process';
import { root, setUp, stop } from './setup.mjs';

/** @typedef {[program: string, ...args: string[]]} Command */

/**
 * @typedef {object} Stage
 * @property {string} name What to type.
 * @property {string} title
 * @property {boolean} [onlyFull] Whether the usual run leaves it out.
 * @property {import('./setup.mjs').Purpose[]} [needs] What it is set up for beyond the others.
 * @property {() => Command[]} commands Asked for when the stage begins. Run from the root, one after
 *   another; each must exit with 0.
 * @property {() => Command[]} [sideBySide] The same, but run afterwards, as many at a time as there
 *   are processors; only those that fail are heard.
 */

const node = process.execPath;
const jobs = String(availableParallelism());

// By itself the runner leaves one processor idle.
const NODE_TEST = ['--test', '--test-reporter=spec', `--test-concurrency=${jobs}`];

/** @type {Stage[]} */
const STAGES = [
  {
    name: 'build',
    title: 'the native module',
    commands: () => [[node, 'scripts/build.mjs']],
  },
  {
    name: 'cpp',
    title: 'C++ tests, built with g++',
    commands: () => buildAndTest('dev'),
  },
  {
    name: 'js',
    title: 'JavaScript tests: the host boundary, the library, real charts; what they run',
    commands: () => [
      [node, 'scripts/build.mjs'],
      [
        ...counting('build/js_coverage', JS_DEMANDS),
        node,
        ...NODE_TEST,
        ...filesOf(['test/js', 'test/integration'], '.test.js'),
      ],
    ],
  },
  {
    name: 'types',
    title: 'types of the JavaScript',
    commands: () => [[node, 'node_modules/typescript/bin/tsc']],
  },
  {
    name: 'lint',
    title: 'formatting and the JavaScript linter',
    commands: () => [
      ['clang-format', '--dry-run', '--Werror', ...filesOf(CPP_FOLDERS, '.cpp', '.hpp'), 't.cpp'],
      [node, 'node_modules/prettier/bin/prettier.cjs', '--check', '--log-level=warn', '.'],
      [node, 'node_modules/eslint/bin/eslint.js', '.'],
    ],
  },
  {
    name: 'tidy',
    title: 'clang-tidy on the module',
    commands: () => [['cmake', '--preset', 'addon', '--log-level=WARNING']],
    sideBySide: () =>
      [...filesOf(CORE_FOLDERS, '.cpp'), 't.cpp'].map((file) => [
        'clang-tidy',
        '--quiet',
        '-p',
        'build/addon',
        // The compilation database may name warnings that only g++ knows.
        '--extra-arg=-Wno-unknown-warning-option',
        file,
      ]),
  },
  {
    name: 'coverage',
    title: 'C++ tests, built with clang++; the lines and branches that tests run',
    onlyFull: true,
    commands: () => [...builtBy('coverage'), [node, 'scripts/coverage.mjs']],
  },
  {
    name: 'sanitize',
    title: 'C++ tests under the address and undefined-behaviour sanitizers',
    onlyFull: true,
    commands: () => buildAndTest('sanitize'),
  },
  {
    name: 'sanitize-addon',
    title: 'the host boundary under the same sanitizers',
    onlyFull: true,
    commands: () => [[node, 'scripts/test_sanitized_addon.mjs']],
  },
  {
    name: 'wasm',
    title: 'WebAssembly: the host boundary and the pinned results',
    onlyFull: true,
    needs: ['wasm'],
    commands: () => [
      [node, 'scripts/prebuild.mjs', 'wasm32'],
      [node, 'scripts/test_wasm.mjs'],
    ],
  },
  {
    name: 'package',
    title: 'the package as it is installed and bundled',
    onlyFull: true,
    needs: ['wasm', 'cross'],
    commands: () => [
      [node, 'scripts/prebuild.mjs'],
      [node, 'node_modules/typescript/bin/tsc', '--project', 'tsconfig.types.json'],
      [node, ...NODE_TEST, ...filesOf(['test/package'], '.test.js')],
    ],
  },
  {
    name: 'platforms',
    title: 'the same bits on other processors and systems and in a browser',
    onlyFull: true,
    needs: ['wasm', 'cross', 'emulate', 'browser'],
    commands: () => [
      [node, 'scripts/prebuild.mjs'],
      [node, ...NODE_TEST, ...filesOf(['test/platforms'], '.test.js')],
    ],
  },
  {
    name: 'planted',
    title: 'planted bugs: all find their place, and the tests catch a sample, others each day',
    onlyFull: true,
    commands: () => [
      [node, 'scripts/build.mjs'],
      [node, 'test/planted_bugs/run.mjs', '--sample'],
    ],
  },
];

/**
 * How much of the library and the command tests must run, in per cent. What runs WebAssembly is
 * tested by the stages wasm and platforms.
 */
const JS_DEMANDS = ['--lines=99.2', '--branches=97.2', '--functions=98'];
const JS_COUNTED = ['lib/**', 'command/**', 'bin/**'];
const JS_OF_WASM = ['lib/tracing/wasm.js', 'lib/tracing/native_browser.js'];

const CORE_FOLDERS = ['dispatch', 'extractors', 'grouping', 'indexing', 'primitives'];
const CPP_FOLDERS = [
  ...CORE_FOLDERS,
  'wasm',
  'cmake',
  'test/cpp',
  'test/oracle',
  'test/record',
  'bench',
  'fuzz',
];

/**
 * Configures and builds a preset of CMakePresets.json, warnings being errors.
 * @param {string} preset
 * @returns {Command[]}
 */
function builtBy(preset) {
  return [
    ['cmake', '--preset', preset, '--log-level=WARNING'],
    ['cmake', '--build', '--preset', preset, '--parallel', jobs],
  ];
}

/**
 * The same, then the C++ tests.
 * @param {string} preset
 * @returns {Command[]}
 */
function buildAndTest(preset) {
  return [...builtBy(preset), ['ctest', '--preset', preset, '--parallel', jobs]];
}

/**
 * What stands before a command of Node.js, so that the lines, branches and functions that it and the
 * processes it starts run are counted, and too few of them fail.
 * @param {string} folder For the counts.
 * @param {string[]} demands
 * @returns {Command}
 */
function counting(folder, demands) {
  return [
    node,
    'node_modules/c8/bin/c8.js',
    '--all',
    ...JS_COUNTED.map((pattern) => `--include=${pattern}`),
    ...JS_OF_WASM.map((file) => `--exclude=${file}`),
    '--check-coverage',
    ...demands,
    '--reporter=text',
    '--skip-full',
    `--temp-directory=${folder}`,
  ];
}

/**
 * The files directly in the given folders, those that exist, with one of the given endings.
 * @param {string[]} folders
 * @param {...string} endings
 */
function filesOf(folders, ...endings) {
  return folders
    .filter((folder) => existsSync(join(root, folder)))
    .flatMap((folder) => readdirSync(join(root, folder)).map((file) => `${folder}/${file}`))
    .filter((file) => endings.some((ending) => file.endsWith(ending)));
}

/**
 * The stages that the command line asks for.
 * @param {string[]} names
 */
function chosenStages(names) {
  if (names.length === 0) return STAGES.filter(({ onlyFull }) => !onlyFull);
  if (names.includes('full')) return STAGES;
  const unknown = names.find((name) => !STAGES.some((stage) => stage.name === name));
  if (unknown) {
    const lines = STAGES.map(({ name, title }) => `  ${name.padEnd(16)}${title}`);
    stop(
      `There is no stage '${unknown}'. There are:\n${lines.join('\n')}\n  ${'full'.padEnd(16)}all`,
    );
  }
  return STAGES.filter(({ name }) => names.includes(name));
}

/**
 * Ends the process with the command of a stage that failed.
 * @param {string} stage
 * @param {Command} command
 * @param {string} how
 * @returns {never}
 */
function fail(stage, command, how) {
  stop(`Stage ${stage} failed: ${how} of\n  ${command.join(' ').slice(0, 200)}`);
}

/**
 * Runs a stage; ends the process when one of its commands fails.
 * @param {Stage} stage
 * @returns {Promise<string>} Its line in the summary.
 */
async function runStage({ name, title, commands, sideBySide }) {
  console.log(`\n== ${name}: ${title}`);
  const start = performance.now();
  for (const command of commands()) {
    const [program, ...args] = command;
    const { status, error } = spawnSync(program, args, { cwd: root, stdio: 'inherit' });
    if (status !== 0) fail(name, command, error?.message ?? `exit code ${status}`);
  }
  if (sideBySide) await runSideBySide(name, sideBySide());
  const seconds = (performance.now() - start) / 1000;
  return `  ${name.padEnd(16)}${seconds.toFixed(1).padStart(7)} s`;
}

/**
 * @param {string} stage
 * @param {Command[]} commands
 */
async function runSideBySide(stage, commands) {
  const waiting = [...commands];
  const runWaiting = async () => {
    for (let command = waiting.shift(); command; command = waiting.shift()) {
      const [program, ...args] = command;
      const child = spawn(program, args, { cwd: root });
      /** @type {Buffer[]} */
      const output = [];
      child.stdout.on('data', (chunk) => output.push(chunk));
      child.stderr.on('data', (chunk) => output.push(chunk));
      const [status] = await once(child, 'close');
      if (status === 0) continue;
      console.log(Buffer.concat(output).toString());
      fail(stage, command, `exit code ${status}`);
    }
  };
  await Promise.all(Array.from({ length: availableParallelism() }, runWaiting));
}

const stages = chosenStages(process.argv.slice(2));
/** @type {Set<import('./setup.mjs').Purpose>} */
const purposes = new Set(['build', 'test']);
for (const { onlyFull, needs } of stages)
  for (const purpose of needs ?? (onlyFull ? /** @type {const} */ (['full']) : []))
    purposes.add(purpose);
setUp([...purposes]);
const summary = [];
for (const stage of stages) summary.push(await runStage(stage));
console.log(`\nAll stages passed:\n${summary.join('\n')}`);
