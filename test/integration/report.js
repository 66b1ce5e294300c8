// Prints, as a Markdown table, how well each chart of examples/charts is traced: `npm run charts`.
import { chartNames, modesOf, REACH, readChart, traceChart } from './charts.js';

/** @param {number} value */
function signed(value) {
  const rounded = Number(value.toFixed(2));
  return `${rounded > 0 ? '+' : ''}${(rounded + 0).toFixed(2)}`;
}

console.log(`Found: a traced point within ${REACH} px. Offsets: traced less true, in px.\n`);
console.log('| chart | mode | points | alone | touching | offset x, y, largest | line | others |');
console.log('|---|---|---|---|---|---|---|---|');
for (const name of chartNames) {
  const chart = await readChart(name);
  for (const mode of modesOf(chart.series)) {
    const c = traceChart(chart, mode).compared;
    const touching = c.touching > 0 ? `${c.touchingFound} of ${c.touching}` : '–';
    const line =
      c.lineMean === null ? '–' : `${c.lineMean.toFixed(2)}, ${c.lineLargest?.toFixed(2)}`;
    const offsets = `${signed(c.offsetX)}, ${signed(c.offsetY)}, ${c.largest.toFixed(2)}`;
    console.log(
      `| \`${name}\` | \`${mode}\` | ${c.traced} | ${c.loneFound} of ${c.lone} | ${touching} ` +
        `| ${offsets} | ${line} | ${c.others} |`,
    );
  }
}
console.log(`
alone, touching: true elements found, of those that touch no other and of those that do; markers that
touch are one group of pixels, so that one point stands for all of them. A curve comes back as a
thinned chain of points on it, not as the data it was drawn from: its line column counts.
line: mean and largest distance from the true line of a curve's points, or, in a chart with markers
and a curve, of the points that are no true marker. others: points that are no true element.`);
