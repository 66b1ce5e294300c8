// What whole calls of `trace` cost: time on two Float64Arrays and on two plain arrays, beside that
// of copying both; time on the real charts; and the memory a call needs at its peak.
//
//   node bench/whole_call.mjs [REGEX]     only the modes that match
//
// Needs the module (npm run build) and the benchmarks (scripts/bench.mjs builds them).

import { execFileSync } from 'node:child_process';
import { readFileSync, writeFileSync } from 'node:fs';
import process from 'node:process';
import { fileURLToPath } from 'node:url';
import { trace } from '../lib/tracing/native.js';
import { chartNames, modesOf, readChart } from '../test/integration/charts.js';

const pixelsProgram = fileURLToPath(
  new URL('../build/bench/bench/chart_trace_pixels', import.meta.url),
);
const self = fileURLToPath(import.meta.url);
const STEP = 1;
const ORDERS = ['raster', 'columns', 'shuffled'];
const FRACTION = 0.05;

/** The modes, each with the pixels it is made for. */
const SUBJECTS = [
  ['points-fission', 'discs'],
  ['points-horizontal', 'discs'],
  ['points_curves-fission', 'discs'],
  ['point_density', 'discs'],
  ['curves-fission', 'curves'],
  ['curves-horizontal', 'curves'],
  ['bar_vertical-fission', 'bars'],
  ['bar_vertical-horizontal', 'bars'],
  ['histogram', 'areas'],
  ['step_size_graph', 'steps'],
];

/**
 * @param {string} shape
 * @param {number} points
 * @param {string} [order]
 */
function pixelsOf(shape, points, order = 'raster') {
  const options = { maxBuffer: 17 * points };
  const bytes = execFileSync(pixelsProgram, [shape, order, String(points)], options);
  const values = new Float64Array(
    bytes.buffer.slice(bytes.byteOffset, bytes.byteOffset + 16 * points),
  );
  return { x: values.slice(0, points), y: values.slice(points) };
}

/**
 * The median processor time of a warm call, in nanoseconds. The clock counts whole microseconds, so
 * that short calls are timed several at once.
 * @param {() => unknown} call
 */
function timeOf(call) {
  const start = process.hrtime.bigint();
  for (let i = 0; i < 5; i++) call();
  const together = Math.max(1, Math.round(5e6 / Number(process.hrtime.bigint() - start)));
  const times = [];
  for (const end = performance.now() + 1500; times.length < 15 || performance.now() < end;) {
    const before = process.cpuUsage();
    for (let i = 0; i < together; i++) call();
    const { user, system } = process.cpuUsage(before);
    times.push((1000 * (user + system)) / together);
  }
  return medianOf(times);
}

/** @param {number[]} values Are sorted. */
function medianOf(values) {
  return values.sort((a, b) => a - b)[values.length >> 1];
}

/**
 * @param {ArrayLike<number>} a
 * @param {ArrayLike<number>} b
 */
const areAlike = (a, b) =>
  a.length === b.length && Array.from(a).every((value, i) => Object.is(value, b[i]));

/**
 * The times of one mode, in nanoseconds a point: on two Float64Arrays, on two plain arrays, and of a
 * copy of both. To be run in a process of its own, whose memory no other mode has touched.
 * @param {string} mode
 * @param {string} shape
 */
function timesOf(mode, shape) {
  const points = 1e5;
  const { x, y } = pixelsOf(shape, points);
  const [plainX, plainY] = [Array.from(x), Array.from(y)];
  const typed = () => trace(x, y, points, STEP, mode, FRACTION);
  const plain = () => trace(plainX, plainY, points, STEP, mode, FRACTION);
  if (!areAlike(typed(), plain())) throw new Error(`${mode}: the two kinds of arrays disagree`);
  const copy = () => [x.slice(), y.slice()];
  return [typed, plain, copy].map((call) => timeOf(call) / points);
}

// Tells the C library to keep the memory that is freed. Left alone it hands it back to the system
// after most calls, and the next call pays for the first touch of every page.
const KEPT = { MALLOC_MMAP_MAX_: '0', MALLOC_TRIM_THRESHOLD_: '2147483647' };

/** @param {string[][]} subjects */
function printTimes(subjects) {
  console.log('Whole calls, 100000 pixels in raster order, ns a point, medians:\n');
  console.log('| mode | pixels | Float64Arrays | plain arrays | a copy | memory handed back |');
  console.log('|---|---|---|---|---|---|');
  for (const [mode, shape] of subjects) {
    const [kept, handedBack] = [KEPT, {}].map((settings) => {
      const env = { ...process.env, ...settings };
      return JSON.parse(
        String(execFileSync(process.execPath, [self, 'times', mode, shape], { env })),
      );
    });
    const times = [...kept, handedBack[0]].map((time) => time.toFixed(1));
    console.log(`| ${mode} | ${shape} | ${times.join(' | ')} |`);
  }
}

/** @param {(mode: string) => boolean} isWanted */
async function printCharts(isWanted) {
  console.log('\nReal charts, whole calls:\n');
  console.log('| chart | mode | pixels | ms | ns a pixel |');
  console.log('|---|---|---|---|---|');
  for (const name of chartNames) {
    const chart = await readChart(name);
    const { x, y } = chart.pixels;
    for (const mode of modesOf(chart.series).filter(isWanted)) {
      const time = timeOf(() => trace(x, y, x.length, STEP, mode, FRACTION));
      const figures = [x.length, (time / 1e6).toFixed(3), (time / x.length).toFixed(1)];
      console.log(`| ${name} | ${mode} | ${figures.join(' | ')} |`);
    }
  }
}

/**
 * A figure of this process as the kernel keeps it, in bytes.
 * @param {'VmRSS' | 'VmHWM'} name
 */
function memory(name) {
  const status = readFileSync('/proc/self/status', 'utf8');
  return 1024 * Number(new RegExp(`^${name}:\\s+(\\d+) kB`, 'm').exec(status)?.[1]);
}

/**
 * The memory of one call at its peak, beyond what was in use before it, in bytes a point. To be run
 * in a process of its own.
 * @param {string} mode
 * @param {string} shape
 * @param {string} order
 */
function peakOf(mode, shape, order) {
  const points = 1e6;
  const { x, y } = pixelsOf(shape, points, order);
  trace(x, y, 1000, STEP, mode, FRACTION);
  writeFileSync('/proc/self/clear_refs', '5'); // the peak is counted from here on
  const before = memory('VmRSS');
  trace(x, y, points, STEP, mode, FRACTION);
  return (memory('VmHWM') - before) / points;
}

/** @param {string[][]} subjects */
function printPeaks(subjects) {
  if (process.platform !== 'linux') return console.log('\nPeak memory is measured on Linux only.');
  console.log(
    "\nPeak memory of a call with 1e6 pixels, in multiples of the input's 16 bytes a point:\n",
  );
  console.log(`| mode | pixels | ${ORDERS.join(' | ')} |`);
  console.log('|---|---|---|---|---|');
  for (const [mode, shape] of subjects) {
    const peaks = ORDERS.map((order) => {
      const peak = () => Number(execFileSync(process.execPath, [self, 'peak', mode, shape, order]));
      // The system may take back pages that were in use before, and the call fetches them again.
      const bytes = medianOf([peak(), peak(), peak()]);
      return (bytes / 16).toFixed(1);
    });
    console.log(`| ${mode} | ${shape} | ${peaks.join(' | ')} |`);
  }
}

const [task = '', mode, shape, order] = process.argv.slice(2);
if (task === 'peak') {
  console.log(peakOf(mode, shape, order));
} else if (task === 'times') {
  console.log(JSON.stringify(timesOf(mode, shape)));
} else {
  const isWanted = (/** @type {string} */ name) => new RegExp(task).test(name);
  const subjects = SUBJECTS.filter(([name]) => isWanted(name));
  printTimes(subjects);
  await printCharts(isWanted);
  printPeaks(subjects);
}
