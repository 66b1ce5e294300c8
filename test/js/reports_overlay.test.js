// The drawing that is laid over a picture, looked at pixel by pixel.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { filterDeficiencyDeuter, filterDeficiencyProt, filterDeficiencyTrit } from 'culori';
import { colourDistance, decodePicture, encodePng, makeReport, toOverlay } from 'chart-trace';
import { parseColour } from '../../lib/selection/colours.js';
import { seriesOf } from './support/reports.js';

const size = { width: 120, height: 100 };
const grey = { ...size, data: new Uint8Array(120 * 100 * 4).fill(255) };
for (let i = 0; i < grey.data.length; ++i) if (i % 4 !== 3) grey.data[i] = 128;

/**
 * @param {object[]} series
 * @param {object} [options]
 */
const overlayOf = (series, options) => {
  const [image] = makeReport([{ file: 'a.png', ...size, series }]).images;
  return toOverlay(image, options);
};

/**
 * The colours of the marks, one for each series.
 * @param {string} svg
 */
const inksOf = (svg) =>
  svg
    .split('<g ')
    .slice(1)
    .map((group) => [...group.matchAll(/ stroke="(#\w+)"/g)][1][1]);

/**
 * Draws series over a grey picture; gives a function that tells whether a pixel was drawn on in the
 * ink of the first series, or was left alone.
 * @param {object[]} series
 */
async function drawn(...series) {
  const svg = overlayOf(series, { ground: '#808080' });
  const [ink] = inksOf(svg);
  const { width, data } = await decodePicture(await encodePng(grey, svg));
  return (/** @type {number} */ x, /** @type {number} */ y) => {
    const start = 4 * (y * width + x);
    const [red, green, blue] = data.subarray(start, start + 3);
    if (red === 128 && green === 128 && blue === 128) return 'nothing';
    return colourDistance([red, green, blue], parseColour(ink)) < 3 ? 'ink' : 'edge';
  };
}

test('a marker is open in the middle', async () => {
  const at = await drawn(seriesOf({ pixels: [[50, 40]] }));
  assert.equal(at(50, 40), 'nothing');
  assert.equal(at(45, 40), 'ink');
  assert.equal(at(55, 40), 'ink');
  assert.equal(at(50, 35), 'ink');
  assert.equal(at(50, 45), 'ink');
  assert.equal(at(55, 45), 'nothing');
});

test('a curve is a dot at every point, joined to the next one unless that is far', async () => {
  const pixels = [
    [10, 20],
    [20, 20],
    [30, 20],
    [40, 20],
    [100, 80],
    [110, 80],
  ];
  const at = await drawn(seriesOf({ kind: 'curve', pixels }));
  for (const [x, y] of pixels) assert.equal(at(x, y), 'ink', `${x}, ${y}`);
  assert.equal(at(25, 20), 'ink');
  assert.equal(at(105, 80), 'ink');
  assert.equal(at(70, 50), 'nothing');
});

test('of markers on a curve the first points are markers', async () => {
  const pixels = [
    [60, 50],
    [10, 90],
    [30, 90],
  ];
  const at = await drawn(seriesOf({ kind: 'points+curve', markers: 1, pixels }));
  assert.equal(at(60, 50), 'nothing');
  assert.equal(at(55, 50), 'ink');
  assert.equal(at(20, 90), 'ink');
  assert.equal(at(10, 85), 'nothing');
});

for (const [kind, flip] of /** @type {const} */ ([
  ['bars', false],
  ['hbars', true],
])) {
  test(`${kind} have a cap across each end and a line between the ends`, async () => {
    const turned = (/** @type {[number, number]} */ [a, b]) => (flip ? [b, a] : [a, b]);
    const ends = [turned([20, 30]), turned([50, 40])];
    const values = { end: ['a', 1], otherEnd: null };
    const bars = [
      { pixels: { end: ends[0], otherEnd: turned([20, 90]) }, values },
      { pixels: { end: ends[1], otherEnd: null }, values },
    ];
    const draw = await drawn(seriesOf({ kind, pixels: ends, bars }));
    const at = (/** @type {[number, number]} */ place) => draw(...turned(place));
    assert.equal(at([16, 30]), 'ink');
    assert.equal(at([24, 30]), 'ink');
    assert.equal(at([16, 90]), 'ink');
    assert.equal(at([20, 60]), 'ink');
    assert.equal(at([46, 40]), 'ink');
    assert.equal(at([50, 60]), 'nothing');
  });
}

test('a histogram is its skyline, open where its bars do not touch', async () => {
  const bins = [
    [10.5, 30.5, 50],
    [30.5, 50.5, 20],
    [80.5, 100.5, 70],
  ].map(([left, right, top]) => ({ pixels: { left, right, top }, values: null }));
  const pixels = bins.map(({ pixels: { left, right, top } }) => [(left + right) / 2, top]);
  const at = await drawn(seriesOf({ kind: 'histogram', values: null, pixels, bins }));
  assert.equal(at(20, 50), 'ink');
  assert.equal(at(40, 20), 'ink');
  assert.equal(at(90, 70), 'ink');
  // Between two pixels, so that neither is wholly covered.
  assert.notEqual(at(30, 35), 'nothing');
  assert.notEqual(at(31, 35), 'nothing');
  assert.equal(at(65, 45), 'nothing');
  assert.equal(at(10, 80), 'nothing');
});

test('a step line is drawn through its vertices', async () => {
  const pixels = [
    [10, 80],
    [60, 80],
    [60, 20],
    [110, 20],
  ];
  const at = await drawn(seriesOf({ kind: 'steps', pixels }));
  assert.equal(at(35, 80), 'ink');
  assert.equal(at(60, 50), 'ink');
  assert.equal(at(85, 20), 'ink');
  assert.equal(at(35, 50), 'nothing');
});

test('points that lack a coordinate are left out', () => {
  const pixels = [
    [NaN, 1],
    [20, 30],
    [2, Infinity],
  ];
  for (const kind of ['scatter', 'curve', 'bars', 'steps']) {
    const svg = overlayOf([seriesOf({ kind, pixels, values: null })]);
    const beginnings = [...svg.matchAll(/M(-?[.\d]+),/g)].map(([, x]) => Number(x));
    assert.ok(beginnings.length > 0, kind);
    assert.ok(
      beginnings.every((x) => Math.abs(x - 20) < 12),
      kind,
    );
  }
});

test('series have colours of their own and, one after the other, other shapes and dashes', () => {
  const colours = ['#1f77b4', '#ff7f0e', '#2ca02c', '#d62728', '#9467bd'];
  const scatter = overlayOf(colours.map((color) => seriesOf({ color, pixels: [[50, 50]] })));
  const inks = inksOf(scatter);
  assert.equal(new Set(inks).size, 5);
  for (const ink of inks)
    for (const other of [...colours, '#ffffff'])
      assert.ok(colourDistance(parseColour(ink), parseColour(other)) > 4);
  assert.equal(new Set([...scatter.matchAll(/ d="([^"]*)"/g)].map(([, path]) => path)).size, 5);
  const curves = overlayOf(colours.map((color) => seriesOf({ color, kind: 'curve' })));
  const dashes = [...curves.matchAll(/stroke-dasharray="([^"]*)"/g)].map(([, dash]) => dash);
  assert.equal(new Set(dashes).size, 4);
});

test('with any kind of colour vision the colours of the series are told apart', () => {
  const seven = inksOf(overlayOf(Array.from({ length: 7 }, () => seriesOf({ color: '#888888' }))));
  assert.equal(new Set(seven).size, 7);
  for (const filter of [filterDeficiencyProt, filterDeficiencyDeuter, filterDeficiencyTrit]) {
    const seen = seven.map((ink) => {
      const { r, g, b } = filter(1)(ink);
      return [r, g, b].map((channel) => 255 * Math.min(1, Math.max(0, channel)));
    });
    for (const [i, one] of seen.entries())
      for (const other of seen.slice(i + 1)) assert.ok(colourDistance(one, other) > 6);
  }
});

test('the eighth series begins the colours anew', () => {
  const series = Array.from({ length: 8 }, () => seriesOf({ color: '#888888' }));
  const inks = inksOf(overlayOf(series));
  assert.equal(new Set(inks).size, 7);
  assert.equal(inks[7], inks[0]);
});

test('a pale colour has a dark rim', () => {
  const [first] = overlayOf([seriesOf({ color: '#000000' })], { ground: '#000000' }).match(
    /stroke="#1a1a1a"[^>]*><path[^>]*stroke="#f0e442"/,
  );
  assert.ok(first);
});

test('the picture itself can be put below, and what is written stays text', () => {
  const svg = overlayOf([seriesOf()], { href: 'data:image/png;base64,"&<' });
  assert.match(
    svg,
    /<image href="data:image\/png;base64,&#34;&#38;&#60;" x="-0.5" y="-0.5" width="120"/,
  );
  assert.ok(svg.indexOf('<image') < svg.indexOf('<path'));
  assert.match(overlayOf([seriesOf({ color: null })]), /<title>series 1: scatter<\/title>/);
});

test('a picture of unknown size is refused', () => {
  const [image] = makeReport([{ error: new Error('Broken.') }]).images;
  assert.throws(() => toOverlay(image), { code: 'ERR_ARGUMENT' });
});
