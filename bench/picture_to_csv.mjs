// What the way from a picture to a file of numbers costs, and where: decode, select, trace, write.
//
//   node bench/picture_to_csv.mjs [REGEX] [--runs N]
//
// The pictures are drawn here: charts of 3840 x 2160 pixels, some 1.8 million of them the series'.
// REGEX chooses charts by name. Times are medians of N runs, 7 by default, after one that warms up.
// The last column is the command, a process of its own, from its start to its end.

import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { readFile } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import process from 'node:process';
import { fileURLToPath } from 'node:url';
import { parseArgs } from 'node:util';
import sharp from 'sharp';
import { writeWhole } from '../lib/files.js';
import { decodePicture } from '../lib/pictures.js';
import { selectSeries } from '../lib/selection/pixels.js';
import { makeReport } from '../lib/reports/report.js';
import { toCsv } from '../lib/reports/separated.js';
import { traceChart } from '../lib/tracing/series.js';

const WIDTH = 3840;
const HEIGHT = 2160;
const PLOT = { left: 240, top: 80, right: 3760, bottom: 1960 };
const COLOUR = '#1f77b4';

let state = 1;

/** Numbers from 0 to 1 that look random and are always the same. */
function random() {
  state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
  return state / 2 ** 32;
}

/** 24 bars. */
function bars() {
  return Array.from({ length: 24 }, (_, i) => {
    const height = 250 + 1250 * random();
    const x = PLOT.left + 20 + i * 145.4;
    return `<rect x="${x}" y="${PLOT.bottom - height}" width="95.4" height="${height}"/>`;
  }).join('');
}

/** 2300 discs that do not touch, in cells. */
function discs() {
  const cells = [];
  for (let row = 0; row < 36; ++row)
    for (let column = 0; column < 64; ++column) {
      const x = PLOT.left + 30 + 54.5 * column + 8 * random();
      const y = PLOT.top + 30 + 51.5 * row + 8 * random();
      cells.push(`<circle cx="${x}" cy="${y}" r="15.8"/>`);
    }
  return cells.join('');
}

/** A histogram of 60 bins. */
function histogram() {
  const width = 3400 / 60;
  return Array.from({ length: 60 }, (_, i) => {
    const height = 1100 * Math.exp(-(((i - 28) / 17) ** 2)) * (0.8 + 0.4 * random());
    const x = PLOT.left + 60 + i * width;
    return `<rect x="${x}" y="${PLOT.bottom - height}" width="${width + 0.5}" height="${height}"/>`;
  }).join('');
}

/** A line with 12 treads, as thick as it takes. */
function steps() {
  const heights = Array.from({ length: 12 }, (_, i) => 300 + 1500 * Math.abs(Math.sin(i * 2.3)));
  const parts = heights.map((height, i) => `H${PLOT.left + 60 + 283 * i}V${height}`);
  return (
    `<path d="M${PLOT.left + 60},1000${parts.join('')}h280" fill="none" stroke="${COLOUR}" ` +
    'stroke-width="16"/>'
  );
}

/** @type {[name: string, draw: () => string, elements: number | null][]} */
const CHARTS = [
  ['bars', bars, 24],
  ['scatter', discs, 2304],
  ['histogram', histogram, null],
  ['steps', steps, null],
];

/** @param {string} series */
function svg(series) {
  const ticks = Array.from({ length: 11 }, (_, i) => {
    const y = PLOT.bottom - i * 188;
    const x = PLOT.left + i * 352;
    return (
      `<path d="M${PLOT.left - 20},${y}H${PLOT.right}M${x},${PLOT.bottom}v20" stroke="#cccccc"/>` +
      `<text x="${PLOT.left - 40}" y="${y + 12}" text-anchor="end">${i * 10}</text>` +
      `<text x="${x}" y="${PLOT.bottom + 70}" text-anchor="middle">${i}</text>`
    );
  });
  return (
    `<svg xmlns="http://www.w3.org/2000/svg" width="${WIDTH}" height="${HEIGHT}" ` +
    `font-size="36" font-family="sans-serif"><rect width="100%" height="100%" fill="white"/>` +
    `${ticks.join('')}<path d="M${PLOT.left},${PLOT.top}V${PLOT.bottom}H${PLOT.right}" ` +
    `fill="none" stroke="black" stroke-width="3"/><g fill="${COLOUR}">${series}</g></svg>`
  );
}

/** @type {import('../lib/axes/axes.js').AxesDescription} */
const AXES = {
  x: { scale: 'linear', pixel: [PLOT.left, PLOT.right], value: [0, 10] },
  y: { scale: 'linear', pixel: [PLOT.bottom, PLOT.top], value: [0, 100] },
};

/**
 * The way from the file to the CSV, timed.
 * @param {string} file
 * @param {any} kind
 * @param {string} target
 */
async function go(file, kind, target) {
  const times = [performance.now()];
  const lap = () => times.push(performance.now());
  const picture = await decodePicture(await readFile(file));
  lap();
  const { x, y } = selectSeries(picture, { colour: COLOUR });
  lap();
  const series = traceChart({ x, y }, { kind, axes: AXES });
  lap();
  await writeWhole(target, toCsv(makeReport([{ file, series: [series] }])));
  lap();
  const [decode, select, trace, write] = times.slice(1).map((time, i) => time - times[i]);
  return { series, times: { decode, select, trace, write, all: times[4] - times[0] } };
}

/**
 * The same by the command.
 * @param {string} file
 * @param {string} kind
 * @param {string} target
 */
function command(file, kind, target) {
  const program = fileURLToPath(new URL('../bin/chart-trace.js', import.meta.url));
  const axis = (/** @type {'x' | 'y'} */ name) => {
    const { pixel, value } = /** @type {any} */ (AXES)[name];
    return [`--${name}`, `${pixel[0]}=${value[0]},${pixel[1]}=${value[1]}`];
  };
  const args = [file, '--kind', kind, '--color', COLOUR, ...axis('x'), ...axis('y'), '-o', target];
  const start = performance.now();
  const { status, stderr } = spawnSync(process.execPath, [program, ...args], { encoding: 'utf8' });
  assert.equal(status, 0, stderr);
  return performance.now() - start;
}

/** @param {number[]} numbers */
const median = (numbers) => [...numbers].sort((a, b) => a - b)[numbers.length >> 1];

const { values: options, positionals } = parseArgs({
  options: { runs: { type: 'string', default: '7' } },
  allowPositionals: true,
});
const runs = Number(options.runs);
const wanted = new RegExp(positionals[0] ?? '');
const folder = mkdtempSync(join(tmpdir(), 'chart-trace-bench-'));
const STAGES = /** @type {const} */ (['decode', 'select', 'trace', 'write', 'all']);
console.log('Milliseconds, medians.\n');
console.log(`| chart | series pixels | points | ${STAGES.join(' | ')} | the command |`);
console.log(`|---|---|---|${STAGES.map(() => '---|').join('')}---|`);
try {
  for (const [name, draw, elements] of CHARTS.filter(([chart]) => wanted.test(chart))) {
    const file = join(folder, `${name}.png`);
    const target = join(folder, `${name}.csv`);
    writeFileSync(
      file,
      await sharp(Buffer.from(svg(draw())))
        .png()
        .toBuffer(),
    );
    const { series } = await go(file, name, target);
    if (elements !== null) assert.equal(series.pixels.length, elements);
    assert.equal(readFileSync(target, 'utf8').split('\n').length, series.pixels.length + 2);
    /** @type {Awaited<ReturnType<typeof go>>['times'][]} */
    const all = [];
    for (let i = 0; i < runs; ++i) all.push((await go(file, name, target)).times);
    const times = STAGES.map((stage) => median(all.map((run) => run[stage])));
    const alone = median(Array.from({ length: runs }, () => command(file, name, target)));
    const cells = [...times, alone].map((time) => time.toFixed(time < 10 ? 1 : 0));
    console.log(
      `| ${name} | ${series.selected} | ${series.pixels.length} | ${cells.join(' | ')} |`,
    );
  }
} finally {
  rmSync(folder, { recursive: true });
}
