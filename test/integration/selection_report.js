// Prints, as a Markdown table, how well the pixels of each chart of examples/charts are selected by
// the series' colour alone: `npm run charts:colours`.
import { chartNames, readChart } from './charts.js';
import { formats, scoreSelection } from './selection.js';

/** @param {import('./selection.js').Scores} scores */
const inWords = ({ precision, recall, f1 }) =>
  [precision, recall, f1].map((score) => score.toFixed(2)).join(', ');

console.log('Precision, recall and F1 of the pixels selected by colour, without a tolerance.\n');
console.log(`| chart | file | ${formats.join(' | ')} | ${formats.join(' | ')} |`);
console.log(`|---|---|${'---|'.repeat(2 * formats.length)}`);
for (const name of chartNames) {
  const chart = await readChart(name);
  const all = [];
  for (const format of formats) all.push(await scoreSelection(chart, format));
  const cells = [
    ...all.map(({ marked }) => inWords(marked)),
    ...all.map(({ covered }) => covered?.f1.toFixed(2) ?? '–'),
  ];
  const ending = chart.description.file.split('.').at(-1);
  console.log(`| \`${name}\` | ${ending} | ${cells.join(' | ')} |`);
}
console.log(`
file: what the chart came as; then it is written as each format (quality 80 where pixels are lost).
First three columns: against the pixels of the exact colour, or within the tolerance that the chart's
description gives where the exact colour is not enough. Last three: F1 against the pixels that the
series covers by half or more, which is what the selection aims at; they cannot be told of a chart that
came in a lossy file.`);
