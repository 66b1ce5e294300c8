// What each mode costs on pictures that are hard to trace, test/cpp/hard_pictures.cpp: time, growth
// and memory, each figure from a process of its own. Linux only.
//
//   node bench/hard_pictures.mjs [REGEX] [--quick]
//
// REGEX chooses pictures by name. --quick leaves out the million points and the table of every
// picture. Builds what it needs: CMake, a C++ compiler, Google Benchmark, GoogleTest.

import { execFileSync } from 'node:child_process';
import process from 'node:process';
import { fileURLToPath } from 'node:url';

const root = fileURLToPath(new URL('..', import.meta.url));
const program = `${root}build/bench/bench/chart_trace_hard_pictures`;
const SMALL_FRACTION = '0.001';

/** Of modes that differ only in which result they hand out, one; with the cluster fraction. */
const MODES = [
  ['point_density', '0.05'],
  ['point_density', SMALL_FRACTION],
  ['points_curves-fission', '0.05'],
  ['points_curves-horizontal', '0.05'],
  ['bar_vertical-fission', '0.05'],
  ['bar_vertical-horizontal', '0.05'],
  ['histogram', '0.05'],
  ['step_size_graph', '0.05'],
];

/** @typedef {{picture: string, points: number[], ns: number[], bytes: number[]}} Row */

/**
 * The table's row of a mode on a picture.
 * @param {string[]} mode
 * @param {string} picture
 * @param {number[]} sizes
 * @returns {Row}
 */
function rowOf(mode, picture, sizes) {
  /** @type {Row} */
  const row = { picture, points: [], ns: [], bytes: [] };
  for (const size of sizes) {
    const printed = execFileSync(program, [...mode, picture, String(size)], { encoding: 'utf8' });
    const [points, ns, bytes] = printed.split(' ').map(Number);
    row.points.push(points);
    row.ns.push(ns);
    row.bytes.push(bytes);
  }
  return row;
}

/**
 * The exponent of growth: the slope from the smallest to the largest number of points.
 * @param {Row} row
 */
function exponentOf({ points, ns }) {
  const last = points.length - 1;
  const times = ns.map((each, i) => each * points[i]);
  return Math.log(times[last] / times[0]) / Math.log(points[last] / points[0]);
}

/** @param {string[][]} lines */
const print = (lines) => console.log(lines.map((line) => `| ${line.join(' | ')} |`).join('\n'));

const quick = process.argv.includes('--quick');
const wanted = new RegExp(process.argv.slice(2).find((option) => !option.startsWith('--')) ?? '');
const sizes = quick ? [1e4, 1e5] : [1e4, 1e5, 1e6];
const heads = sizes.map((size) => size.toExponential(0).replace('+', ''));

const toStderr = /** @type {const} */ (['ignore', process.stderr, 'inherit']);
execFileSync('cmake', ['--preset', 'bench'], { cwd: root, stdio: [...toStderr] });
execFileSync('cmake', ['--build', '--preset', 'bench', '--target', 'chart_trace_hard_pictures'], {
  cwd: root,
  stdio: [...toStderr],
});
const pictures = execFileSync(program, { encoding: 'utf8' }).trim().split('\n');

/** Outliers stretch histograms and step lines over compartments that no point fills. */
const isStretched = (/** @type {string} */ mode, /** @type {Row} */ { picture }) =>
  picture.startsWith('outlier') && (mode === 'histogram' || mode === 'step_size_graph');

console.log(
  'The worst of each mode: ns a point, and bytes a point at the peak in multiples of 16.\n',
);
print([
  ['mode', 'slowest on', ...heads, 'exponent', 'steepest', 'exponent', 'most memory on', 'peak'],
  Array(sizes.length + 7).fill('---'),
]);
/** @type {string[][]} */
const all = [];
for (const [mode, fraction] of MODES) {
  const rows = pictures
    .filter((name) => wanted.test(name))
    .map((picture) => rowOf([mode, fraction], picture, sizes));
  const name = fraction === SMALL_FRACTION ? `${mode}, fraction ${fraction}` : mode;
  for (const row of rows) {
    const peak = row.bytes[row.bytes.length - 1] / 16;
    const figures = [...row.ns.map((ns) => ns.toFixed(1)), exponentOf(row).toFixed(2)];
    all.push([name, row.picture, ...figures, peak.toFixed(1)]);
  }
  const judged = rows.filter((row) => !isStretched(mode, row));
  const last = sizes.length - 1;
  const worst = (/** @type {(row: Row) => number} */ of) =>
    judged.reduce((a, b) => (of(b) > of(a) ? b : a));
  const slowest = worst(({ ns }) => ns[last]);
  const steepest = worst(exponentOf);
  const largest = worst(({ bytes }) => bytes[last]);
  print([
    [
      name,
      slowest.picture,
      ...slowest.ns.map((ns) => ns.toFixed(0)),
      exponentOf(slowest).toFixed(2),
      steepest.picture,
      exponentOf(steepest).toFixed(2),
      largest.picture,
      (largest.bytes[last] / 16).toFixed(1),
    ],
  ]);
}
if (!quick) {
  console.log('\nEvery picture:\n');
  print([
    ['mode', 'picture', ...heads, 'exponent', 'peak'],
    Array(sizes.length + 4).fill('---'),
    ...all,
  ]);
}
