// Traces the charts of examples/charts by the command alone, from the colour of the series and the
// axes, and compares with the data that the charts were drawn from.

import { spawnSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { fileURLToPath } from 'node:url';
import { nearestPairs } from './charts.js';
import { axesOf, compareValues, KINDS } from './series.js';

const folder = new URL('../../examples/charts/', import.meta.url);
const program = fileURLToPath(new URL('../../bin/chart-trace.js', import.meta.url));

/**
 * What is typed for a chart: the kind, the colour and the axes, as one reads them off it.
 * @param {any} description
 * @param {import('../../lib/axes/axes.js').Axes} axes
 */
export function argumentsFor({ file, axes: scales, series: [series] }, axes) {
  const references = (/** @type {'x' | 'y'} */ name) => {
    const { scale, pixel, value } = scales[name];
    if (scale !== 'category')
      return pixel.map((/** @type {any} */ p, /** @type {any} */ i) => [p, value[i]]);
    // Every name has a place of its own on the axis.
    const k = name === 'x' ? 0 : 1;
    const { categories } = /** @type {any} */ (axes.description)[name];
    return categories.map((/** @type {string} */ category) => {
      const other = scales[name === 'x' ? 'y' : 'x'].value[0];
      return [axes.toPixel(k === 0 ? [category, other] : [other, category])[k], category];
    });
  };
  const axis = (/** @type {'x' | 'y'} */ name) => [
    `--${name}`,
    references(name)
      .map((/** @type {any[]} */ pair) => pair.join('='))
      .join(','),
    ...(scales[name].scale === 'linear' ? [] : [`--${name}-scale`, scaleOf(scales[name].scale)]),
  ];
  const kind = KINDS[series.kind] ?? series.kind;
  return [file, '--kind', kind, '--color', series.colour, ...axis('x'), ...axis('y')];
}

/** @param {string} scale */
const scaleOf = (scale) => (scale === 'log10' ? 'log' : scale);

/**
 * Runs the command on a chart.
 * @param {string} name
 */
export function traceByCommand(name) {
  const description = JSON.parse(readFileSync(new URL(`${name}.json`, folder), 'utf8'));
  const [truth] = description.series;
  const axes = axesOf(description);
  const args = argumentsFor(description, axes);
  const { status, stdout, stderr } = spawnSync(process.execPath, [program, ...args, '--json'], {
    cwd: fileURLToPath(folder),
    encoding: 'utf8',
  });
  if (status !== 0)
    throw new Error(`chart-trace ${args.join(' ')}\nended with ${status}: ${stderr}`);
  const [{ series }] = JSON.parse(stdout).images;
  const scales = { x: description.axes.x.scale, y: description.axes.y.scale };
  return { args, truth, scales, series: series[0], ...compared(series[0], truth, axes) };
}

/**
 * @param {any} traced
 * @param {any} truth
 * @param {import('../../lib/axes/axes.js').Axes} axes
 */
function compared(traced, truth, axes) {
  const touching = new Set((truth.touching ?? []).flat());
  const [shiftX, shiftY] = truth.centroid_offset ?? [0, 0];
  const positions = traced.pixels.map((/** @type {any} */ [x, y]) => [x - shiftX, y - shiftY]);
  const found = truth.kind === 'curve' ? [] : nearestPairs(truth.pixels, positions);
  return {
    comparison: compareValues(traced, truth, axes),
    alone: truth.kind === 'curve' ? 0 : truth.pixels.length - touching.size,
    aloneFound: found.filter(({ to }) => !touching.has(to)).length,
    touching: touching.size,
    touchingFound: found.filter(({ to }) => touching.has(to)).length,
  };
}

/**
 * The table of all charts, in Markdown.
 * @param {[name: string, result: ReturnType<typeof traceByCommand>][]} results
 */
export function tableOf(results) {
  const head = [
    'chart',
    'kind',
    'found of those alone',
    'of those that touch',
    'points',
    'error in pixels: mean, largest',
    'in x: mean, largest',
    'in y: mean, largest',
  ];
  const rows = results.map(([name, { series, comparison, scales, ...counts }]) => [
    `\`${name}\``,
    series.kind,
    counts.alone > 0 ? `${counts.aloneFound} of ${counts.alone}` : 'a curve',
    counts.touching > 0 ? `${counts.touchingFound} of ${counts.touching}` : '–',
    String(comparison.points),
    `${comparison.pixels.mean.toFixed(2)}, ${comparison.pixels.largest.toFixed(2)}`,
    errors(comparison.x, scales.x),
    errors(comparison.y, scales.y),
  ]);
  const lines = [head, head.map(() => '---'), ...rows].map((row) => `| ${row.join(' | ')} |\n`);
  return lines.join('');
}

/**
 * @param {import('./series.js').Errors | null} both
 * @param {string} scale
 */
function errors(both, scale) {
  if (!both) return '–';
  const [factor, unit] = scale.startsWith('log') ? [100, ' %'] : [1, ''];
  const digits = (/** @type {number} */ value) => Number((factor * value).toPrecision(2)) + unit;
  return `${digits(both.mean)}, ${digits(both.largest)}`;
}
