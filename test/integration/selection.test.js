// The pixels of every chart of examples/charts, selected by colour alone, as PNG, JPEG and WebP, held
// against the scores pinned in test/fixtures/selection.json. `UPDATE=1 npm test -- js` rewrites them.
import assert from 'node:assert/strict';
import { readFileSync, writeFileSync } from 'node:fs';
import { test } from 'node:test';
import { chartNames, readChart } from './charts.js';
import { formats, scoreSelection } from './selection.js';

const fixture = new URL('../fixtures/selection.json', import.meta.url);
const pinned = process.env.UPDATE ? {} : JSON.parse(readFileSync(fixture, 'utf8'));

/** @typedef {import('./selection.js').Scores} Scores */

/** @param {Scores | null} scores */
const rounded = (scores) =>
  scores && Object.entries(scores).map(([name, score]) => `${name} ${score.toFixed(2)}`);

/**
 * Holds scores against pinned ones. Encoders differ a little between versions and machines.
 * @param {Scores | null} scores
 * @param {string[] | null} pins
 * @param {string} what
 */
function holdAgainst(scores, pins, what) {
  if (!scores || !pins) return assert.equal(scores, pins, what);
  for (const [i, [name, score]] of Object.entries(scores).entries()) {
    /** @type {string[]} */
    const [pinnedName, pin] = pins[i].split(' ');
    assert.equal(name, pinnedName);
    assert.ok(Math.abs(score - Number(pin)) < 0.02, `${what}: ${name} ${score}, pinned ${pin}`);
  }
}

for (const name of chartNames) {
  test(`${name}: the colour alone selects the pixels of the series`, async () => {
    const chart = await readChart(name);
    for (const format of formats) {
      const { marked, covered } = await scoreSelection(chart, format);
      // No pixel of the series is missing where no pixel was lost.
      if (format === 'png') assert.ok(marked.recall >= 0.99, `${format}: ${marked.recall}`);
      if (covered) assert.ok(covered.f1 >= (format === 'png' ? 0.99 : 0.93), `${covered.f1}`);
      if (process.env.UPDATE) {
        pinned[name] ??= {};
        pinned[name][format] = { marked: rounded(marked), covered: rounded(covered) };
        continue;
      }
      holdAgainst(marked, pinned[name][format].marked, `${format}, marked`);
      holdAgainst(covered, pinned[name][format].covered, `${format}, covered`);
    }
  });
}

if (process.env.UPDATE)
  test('the scores are written down', () =>
    writeFileSync(fixture, `${JSON.stringify(pinned, null, 1)}\n`));
