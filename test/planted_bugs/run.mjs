// Puts known bugs into a copy of the core, one at a time, and demands that the C++ tests fail on
// each: a test that no bug can fail proves nothing.
//
//   node test/planted_bugs/run.mjs            all bugs of bugs.mjs
//   node test/planted_bugs/run.mjs fission    only those whose file or name contains the word
//   node test/planted_bugs/run.mjs --sample   every thirtieth bug, others each day: all take half an hour
//   node test/planted_bugs/run.mjs --check    whether each bug still finds its place; builds nothing
//
// The copy stands in build/planted_bugs and is built at -O1, file by file as bugs come and go. A
// bug first meets the suite that caught the one before it, which as a rule stands in the same file;
// then the tests of single classes, then those that drive every path, then the property tests. A
// crash and a run that takes too long or too much memory count as caught. Exits with 1 when a bug
// survives, does not compile or no longer finds its place.

import { spawnSync } from 'node:child_process';
import {
  cpSync,
  existsSync,
  mkdirSync,
  readFileSync,
  readdirSync,
  rmSync,
  writeFileSync,
} from 'node:fs';
import { availableParallelism } from 'node:os';
import { join, relative } from 'node:path';
import process from 'node:process';
import { fileURLToPath } from 'node:url';
import { bugs } from './bugs.mjs';

/** @typedef {{file: string, name: string, find: string, replace: string}} Bug */
/** @typedef {{title: string, filter: string, seconds: number}} Stage */

const root = fileURLToPath(new URL('../..', import.meta.url));
const scratch = join(root, 'build/planted_bugs');
const tree = join(scratch, 'tree');
const binaries = join(scratch, 'cmake');
const COPIED = [
  'CMakeLists.txt',
  'cmake',
  'dispatch',
  'extractors',
  'fuzz',
  'grouping',
  'indexing',
  'primitives',
  'test/CMakeLists.txt',
  'test/cpp',
  'test/oracle',
];

const PATH_TESTS = '*_paths.*';
const PROPERTY_TESTS = '*_property.*:Metamorphic.*';
/** @type {Stage[]} */
const STAGES = [
  { title: 'class tests', filter: `-${PATH_TESTS}:${PROPERTY_TESTS}`, seconds: 30 },
  { title: 'path tests', filter: PATH_TESTS, seconds: 60 },
  { title: 'property tests', filter: PROPERTY_TESTS, seconds: 300 },
];
const MEMORY_IN_KIB = 4 * 1024 * 1024;

/** @param {string} message */
function stop(message) {
  console.error(message);
  process.exit(1);
}

/** @param {string} path */
const read = (path) => readFileSync(path, 'utf8');

/** Plants a bug in the copy; returns what takes it out again. */
function plant(/** @type {Bug} */ { file, find, replace }) {
  const path = join(tree, file);
  const sound = read(path);
  // A function as replacement, since a string would have its dollar signs interpreted.
  writeFileSync(
    path,
    sound.replace(find, () => replace),
  );
  return () => writeFileSync(path, sound);
}

/**
 * What is wrong with the entry, or nothing.
 * @param {Bug} bug
 */
function misplaced({ file, find, replace }) {
  if (!existsSync(join(root, file))) return 'there is no such file';
  const times = read(join(root, file)).split(find).length - 1;
  if (times !== 1) return `its text stands there ${times} times, not once`;
  return find === replace ? 'it changes nothing' : undefined;
}

/** Files below a path of the project, as paths from the root. */
function* filesBelow(/** @type {string} */ path, base = root) {
  if (!existsSync(join(base, path))) return;
  const entries = readdirSync(join(base, path), { withFileTypes: true, recursive: true });
  for (const entry of entries) {
    if (entry.isFile()) yield relative(base, join(entry.parentPath ?? entry.path, entry.name));
  }
}

/** Brings the copy up to date; unchanged files keep their times, so that little is built anew. */
function copyTree() {
  const wanted = new Set();
  for (const path of COPIED) {
    for (const file of /\.txt$/.test(path) ? [path] : filesBelow(path)) wanted.add(file);
  }
  for (const file of wanted) {
    const target = join(tree, file);
    if (existsSync(target) && read(target) === read(join(root, file))) continue;
    mkdirSync(join(target, '..'), { recursive: true });
    cpSync(join(root, file), target);
  }
  for (const file of filesBelow('.', tree)) if (!wanted.has(file)) rmSync(join(tree, file));
}

/**
 * @param {string} program
 * @param {...string} args
 */
function run(program, ...args) {
  const { status, stdout, stderr, error } = spawnSync(program, args, { encoding: 'utf8' });
  if (error) stop(`Could not run ${program}: ${error.message}`);
  return { ok: status === 0, output: `${stdout}${stderr}` };
}

function configure() {
  const { ok, output } = run(
    ...['cmake', '-S', tree, '-B', binaries, '-G', 'Ninja', '-DCHART_TRACE_TESTS=ON'],
    // A build type of no meaning, so that none of the usual flags come on top of these.
    ...['-DCMAKE_BUILD_TYPE=Planted', '-DCMAKE_CXX_FLAGS=-O1'],
    // Nobody asks CTest here: listing the tests after each link would be wasted.
    '-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST',
  );
  if (!ok) stop(`The copy could not be configured:\n${output}`);
}

const build = () => run('cmake', '--build', binaries, '--parallel', String(availableParallelism()));

/**
 * Runs one stage of the tests on what is built now.
 * @param {Stage} stage
 * @returns {string | undefined} How it failed, or nothing.
 */
function failureOf({ filter, seconds }) {
  const limited = `ulimit -v ${MEMORY_IN_KIB} 2>/dev/null; exec "$@"`;
  const tests = join(binaries, 'test/chart_trace_tests');
  const { status, signal, stdout, error } = spawnSync(
    'sh',
    [
      '-c',
      limited,
      'sh',
      tests,
      '--gtest_brief=1',
      '--gtest_fail_fast',
      `--gtest_filter=${filter}`,
    ],
    { encoding: 'utf8', timeout: seconds * 1000, killSignal: 'SIGKILL', maxBuffer: 1 << 28 },
  );
  if (status === 0) return undefined;
  if (/** @type {NodeJS.ErrnoException} */ (error)?.code === 'ETIMEDOUT') return 'ran too long';
  const failed = /^\[ {2}FAILED {2}\] ([^ ,\n]+)/m.exec(stdout ?? '')?.[1];
  return failed ?? `crashed (${signal ?? `exit code ${status}`})`;
}

/**
 * The stage of the one suite that a test belongs to.
 * @param {string} test
 * @returns {Stage[]} None when there was no test, but a crash.
 */
function suiteOf(test) {
  const suite = /^(\w+)\.\w+$/.exec(test)?.[1];
  return suite ? [{ title: 'the suite before', filter: `${suite}.*`, seconds: 300 }] : [];
}

/**
 * What catches bugs must pass without any.
 * @param {Stage} stage
 */
function demandThatItPasses(stage) {
  const { ok, output } = build();
  if (!ok) stop(`The copy could not be built:\n${output}`);
  const failure = failureOf(stage);
  if (failure) stop(`The ${stage.title} fail without any bug: ${failure}`);
}

/**
 * Plants a bug, builds, tests and heals.
 * @param {Bug} bug
 * @param {Stage[]} stages
 * @returns {{isCaught: boolean, how: string}}
 */
function judge(bug, stages) {
  const heal = plant(bug);
  try {
    const { ok, output } = build();
    if (!ok) return { isCaught: false, how: `does not compile:\n${output}` };
    for (const stage of stages) {
      const failure = failureOf(stage);
      if (failure) return { isCaught: true, how: failure };
    }
    return { isCaught: false, how: 'survived' };
  } finally {
    heal();
  }
}

/** @type {Bug[]} */
const all = Object.entries(bugs).flatMap(([file, ofFile]) =>
  ofFile.flatMap(({ arch = process.arch, ...bug }) =>
    arch === process.arch ? [{ file, ...bug }] : [],
  ),
);
const words = process.argv.slice(2).filter((word) => !word.startsWith('--'));
const chosen = all.filter(
  ({ file, name }) =>
    words.length === 0 || words.some((word) => file.includes(word) || name.includes(word)),
);
if (chosen.length === 0) stop(`No bug has a name or a file with ${words.join(' or ')}.`);

const misplacements = chosen.flatMap((bug) => {
  const wrong = misplaced(bug);
  return wrong ? [`  ${bug.file}: ${bug.name}: ${wrong}`] : [];
});
if (misplacements.length > 0) stop(`Bugs that lost their place:\n${misplacements.join('\n')}`);
if (process.argv.includes('--check')) {
  console.log(`All ${chosen.length} planted bugs find their place.`);
  process.exit(0);
}

const day = Math.floor(Date.now() / 86_400_000);
const planted = process.argv.includes('--sample')
  ? chosen.filter((_, k) => k % 30 === day % 30)
  : chosen;

copyTree();
configure();
STAGES.forEach(demandThatItPasses);

const start = performance.now();
const survivors = [];
/** @type {Stage[]} */
let suiteBefore = [];
for (const bug of planted) {
  const { isCaught, how } = judge(bug, [...suiteBefore, ...STAGES]);
  if (isCaught) suiteBefore = suiteOf(how);
  else survivors.push(bug);
  console.log(`${isCaught ? 'caught' : 'MISSED'}  ${bug.file}: ${bug.name}\n        ${how}`);
}
const seconds = ((performance.now() - start) / 1000).toFixed(0);
console.log(`${planted.length - survivors.length} of ${planted.length} caught in ${seconds} s`);
if (survivors.length > 0) {
  const list = survivors.map(({ file, name }) => `  ${file}: ${name}`);
  stop(`Not caught:\n${list.join('\n')}`);
}
