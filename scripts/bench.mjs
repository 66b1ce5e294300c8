// Builds the benchmarks, runs them and prints what each costs as a Markdown table.
//
//   node scripts/bench.mjs [REGEX] [--quick]
//
// REGEX chooses benchmarks by name, SUBJECT/SHAPE/ORDER/POINTS: 'Fission_algm' or 'bars/raster'.
// Without it the table of whole calls, bench/whole_call.mjs, follows.
// --quick takes each figure once instead of the median of five.
// Needs CMake, a C++ compiler and Google Benchmark; OpenCV and nanoflann add anchors.

import { spawnSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { cpus } from 'node:os';
import { dirname, join } from 'node:path';
import process from 'node:process';
import { fileURLToPath } from 'node:url';

const root = dirname(dirname(fileURLToPath(import.meta.url)));
const buildFolder = join(root, 'build', 'bench');
const resultsFile = join(buildFolder, 'results.json');

/** The figure of a subject without an anchor of its own is held against this. */
const anchorOfLastResort = 'copy';

/** The sizes from which on growth is judged: below, fixed costs and caches blur it. */
const growthFrom = 1e4;

/**
 * Runs a program and ends with it when it fails.
 * @param {string} program
 * @param {string[]} options
 * @param {string} hint What to do when the program fails.
 */
function run(program, options, hint) {
  const { status, error } = spawnSync(program, options, {
    cwd: root,
    stdio: ['inherit', process.stderr, 'inherit'],
  });
  if (status === 0) return;
  console.error(`chart-trace: ${program} ${options.join(' ')} failed. ${error?.message ?? ''}`);
  console.error(`  ${hint}`);
  process.exit(1);
}

/**
 * @typedef {object} Figure One benchmark's answer.
 * @property {string} subject
 * @property {string} input Shape and order.
 * @property {number} points
 * @property {number} ns For each point.
 */

/**
 * Reads the results of Google Benchmark. Of repeated figures it has written medians.
 * @param {string} file
 * @returns {Figure[]}
 */
function figuresOf(file) {
  const { benchmarks } = JSON.parse(readFileSync(file, 'utf8'));
  const wrong = benchmarks.filter((/** @type {any} */ entry) => entry.error_occurred);
  for (const { run_name, error_message } of wrong) console.error(`${run_name}: ${error_message}`);
  if (wrong.length > 0) process.exit(1);
  return benchmarks
    .filter((/** @type {any} */ entry) => (entry.aggregate_name ?? 'median') === 'median')
    .filter((/** @type {any} */ entry) => entry.run_name.split('/').length === 4)
    .map((/** @type {any} */ entry) => {
      const [subject, shape, order, points] = entry.run_name.split('/');
      const input = `${shape}, ${order}`;
      return { subject, input, points: Number(points), ns: 1e9 / entry.items_per_second };
    });
}

/**
 * The exponent of growth: the slope of the line through (log points, log time), least squares.
 * @param {Figure[]} figures Of one subject on one input.
 */
function exponentOf(figures) {
  const large = figures.filter(({ points }) => points >= growthFrom);
  if (large.length < 2) return NaN;
  const logs = large.map(({ points, ns }) => [Math.log(points), Math.log(points * ns)]);
  const mean = (/** @type {number[]} */ values) => values.reduce((a, b) => a + b) / values.length;
  const middleX = mean(logs.map(([x]) => x));
  const middleY = mean(logs.map(([, y]) => y));
  const rise = mean(logs.map(([x, y]) => (x - middleX) * (y - middleY)));
  return rise / mean(logs.map(([x]) => (x - middleX) ** 2));
}

/**
 * One figure, or the smallest and the largest of several.
 * @param {number[]} values
 * @param {number} digits
 */
function rangeOf(values, digits) {
  if (values.length === 0) return '';
  const [least, most] = [Math.min(...values), Math.max(...values)].map((v) => v.toFixed(digits));
  return least === most ? least : `${least} to ${most}`;
}

/**
 * Shapes of one kind cost alike and share a row of the short table.
 * @type {Record<string, string>}
 */
const kinds = { discs: 'solid', bars: 'solid', areas: 'solid', curves: 'lines', steps: 'lines' };

/**
 * A row for each subject and input, with its anchor's figures beside it where there are some.
 * @param {Figure[]} figures
 * @param {(input: string) => string} rowOf The row that an input belongs to.
 */
function tableOf(figures, rowOf) {
  const isAnchor = ({ subject = '' }) => subject === anchorOfLastResort || subject.includes(':');
  const subjects = new Set(figures.filter((each) => !isAnchor(each)).map((each) => each.subject));
  const sizes = [...new Set(figures.map(({ points }) => points))].sort((a, b) => a - b);
  const rows = [];
  for (const subject of subjects) {
    const anchor =
      figures.find((figure) => figure.subject.startsWith(`${subject}:`))?.subject ??
      anchorOfLastResort;
    const inputs = new Set(figures.filter((f) => f.subject === subject).map((f) => f.input));
    for (const row of new Set([...inputs].map(rowOf))) {
      const members = [...inputs].filter((input) => rowOf(input) === row);
      const own = figures.filter((f) => f.subject === subject && members.includes(f.input));
      const other = figures.filter((f) => f.subject === anchor && members.includes(f.input));
      const exponents = members.map((input) => exponentOf(own.filter((f) => f.input === input)));
      const times = [own, other].map((list) =>
        sizes.map((points) => {
          const ns = list.filter((f) => f.points === points).map((f) => f.ns);
          return rangeOf(ns, 1);
        }),
      );
      const growth = rangeOf(exponents.filter(Number.isFinite), 2);
      const anchorName = anchor.slice(anchor.indexOf(':') + 1);
      rows.push([subject, row, ...times[0], growth, anchorName, ...times[1]]);
    }
  }
  const sizeHeads = sizes.map((points) => points.toExponential(0).replace('+', ''));
  const heads = ['what', 'pixels', ...sizeHeads, 'exponent', 'anchor', ...sizeHeads];
  return [heads, heads.map(() => '---'), ...rows].map((row) => `| ${row.join(' | ')} |`).join('\n');
}

const quick = process.argv.includes('--quick');
const regex = process.argv.slice(2).find((option) => !option.startsWith('--'));

run(
  'cmake',
  ['--preset', 'bench'],
  'It needs cmake, ninja-build, a C++ compiler, libbenchmark-dev.',
);
run('cmake', ['--build', '--preset', 'bench'], 'The compiler says why, above.');
run(
  join(buildFolder, 'bench', 'chart_trace_bench'),
  [
    `--benchmark_filter=${regex === undefined ? '.' : `^${anchorOfLastResort}/|${regex}`}`,
    `--benchmark_repetitions=${quick ? 1 : 5}`,
    '--benchmark_min_time=0.02',
    '--benchmark_report_aggregates_only=true',
    `--benchmark_out=${resultsFile}`,
    '--benchmark_out_format=json',
  ],
  'Its last lines say why.',
);

console.log(`ns a point on ${cpus()[0]?.model}, one thread${quick ? '' : ', medians of five'}\n`);
const figures = figuresOf(resultsFile);
console.log(tableOf(figures, (input) => input.replace(/^\w+/, (shape) => kinds[shape] ?? shape)));
console.log(`\nThe same, shape by shape:\n\n${tableOf(figures, (input) => input)}`);
if (regex === undefined) {
  run('node', ['scripts/build.mjs'], 'The module is needed to time whole calls.');
  spawnSync('node', ['bench/whole_call.mjs'], { cwd: root, stdio: 'inherit' });
}
