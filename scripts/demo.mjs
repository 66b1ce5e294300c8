// Traces a chart of examples/charts from picture to numbers: prints the values and writes a picture
// that shows the traced points over the chart.
//
//   npm run demo

import { spawnSync } from 'node:child_process';
import { mkdirSync, readFileSync } from 'node:fs';
import { join, relative } from 'node:path';
import process from 'node:process';
import { root, setUp, stop } from './setup.mjs';

const CHART = 'pressure-squares-log';

setUp(['build']);
console.log('demo: building the native module');
const build = spawnSync(process.execPath, ['scripts/build.mjs'], { cwd: root, encoding: 'utf8' });
if (build.status !== 0) stop(`${build.stdout}${build.stderr}`);

// Only now is everything there that these need.
const { makeAxis } = await import('../lib/axes/axes.js');
const { parseColour } = await import('../lib/selection/colours.js');
const { contrastingColour, overlaySvg } = await import('../lib/overlay.js');
const { decodePicture, writePng } = await import('../lib/pictures.js');
const { selectPixels } = await import('../lib/selection/pixels.js');
const { tracePixels } = await import('../lib/tracing/tracing.js');

const folder = join(root, 'examples', 'charts');
const chart = JSON.parse(readFileSync(join(folder, `${CHART}.json`), 'utf8'));
const [series] = chart.series;
const [left, top, right, bottom] = chart.plot_box;
const colour = parseColour(series.colour);

const picture = await decodePicture(join(folder, chart.file));
const pixels = selectPixels(picture, colour, {
  tolerance: series.tolerance,
  box: { left, top, right, bottom },
});
const traced = tracePixels(pixels, series.mode);

console.log(
  `\n${relative(root, join(folder, chart.file))}: vapour pressure of mercury, logarithmic y axis\n` +
    `${picture.width} x ${picture.height} px, ${pixels.x.length} pixels of ${series.colour}, ` +
    `mode ${series.mode}, ${traced.x.length} markers\n`,
);
printTable(
  ['pixel x', 'pixel y', 'deg C', 'mm Hg', 'published deg C', 'mm Hg'],
  rows(traced, makeAxis(chart.axes.x), makeAxis(chart.axes.y), series.data),
);

const overlay = join(root, 'build', 'demo', `${CHART}.png`);
mkdirSync(join(root, 'build', 'demo'), { recursive: true });
const ink = contrastingColour([colour, [255, 255, 255]]);
await writePng(overlay, picture, overlaySvg(picture, traced, { colour: ink }));
console.log(`\nThe traced points over the chart: ${relative(process.cwd(), overlay)}`);

/**
 * A row for each traced point, from left to right, beside the published value nearest to it in x.
 * @param {{x: number[], y: number[]}} points
 * @param {import('../lib/axes/axes.js').Axis} xAxis
 * @param {import('../lib/axes/axes.js').Axis} yAxis
 * @param {[number, number][]} published
 */
function rows({ x, y }, xAxis, yAxis, published) {
  return x
    .map((pixelX, i) => ({ pixelX, pixelY: y[i] }))
    .sort((a, b) => a.pixelX - b.pixelX)
    .map(({ pixelX, pixelY }) => {
      const [valueX, valueY] = [Number(xAxis.toValue(pixelX)), Number(yAxis.toValue(pixelY))];
      const [nearest] = [...published].sort(
        (a, b) => Math.abs(a[0] - valueX) - Math.abs(b[0] - valueX),
      );
      return [
        pixelX.toFixed(2),
        pixelY.toFixed(2),
        valueX.toFixed(1),
        valueY.toPrecision(3),
        String(nearest[0]),
        String(nearest[1]),
      ];
    });
}

/**
 * @param {string[]} head
 * @param {string[][]} lines
 */
function printTable(head, lines) {
  const widths = head.map((cell, i) => Math.max(cell.length, ...lines.map((row) => row[i].length)));
  for (const row of [head, ...lines])
    console.log(row.map((cell, i) => cell.padStart(widths[i])).join('  '));
}
