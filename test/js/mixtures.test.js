import assert from 'node:assert/strict';
import { test } from 'node:test';
import { toOklab } from '../../lib/selection/colours.js';
import { blendOf, coverageOf, mixtureNear } from '../../lib/selection/mixtures.js';

/** @typedef {import('../../lib/selection/colours.js').Rgb} Rgb */

/** @type {Rgb} */
const white = [255, 255, 255];
/** @type {Rgb} */
const blue = [31, 119, 180];

/** @type {(share: number, from: Rgb, to: Rgb) => Rgb} */
const mixed = (share, from, to) => [
  from[0] + share * (to[0] - from[0]),
  from[1] + share * (to[1] - from[1]),
  from[2] + share * (to[2] - from[2]),
];

/** @type {(value: number, want: number, what?: string) => void} */
const near = (value, want, what) => assert.ok(Math.abs(value - want) < 1e-5, what ?? `${value}`);

test('a clean mixture has one share, which is its coverage, and no distance', () => {
  for (const [from, to] of /** @type {[Rgb, Rgb][]} */ ([
    [white, blue],
    [
      [27, 30, 35],
      [242, 193, 78],
    ],
    [white, [0, 0, 0]],
    [
      [255, 0, 0],
      [0, 130, 0],
    ],
  ]))
    for (const share of [0, 0.25, 0.5, 1]) {
      const blend = blendOf(from, to);
      const colour = mixed(share, from, to);
      const mixture = mixtureNear(blend, colour, toOklab(colour));
      near(coverageOf(blend, colour), share, 'coverage');
      near(mixture.lightShare, share, 'light');
      near(mixture.hueShare, share, 'hue');
      assert.ok(mixture.distance < 0.01, 'distance');
    }
});

test('what lost some of its chroma is still a mixture, with less of the hue', () => {
  const blend = blendOf(white, blue);
  const grey = blend.light + 255;
  const pale = mixed(0.4, [grey, grey, grey], blue);
  const { lightShare, hueShare, distance } = mixtureNear(blend, pale, toOklab(pale));
  near(lightShare, 1);
  near(hueShare, 0.4);
  near(distance, 0);
  assert.ok(coverageOf(blend, pale) > 0.9, 'lightness says more than chroma');
});

test('another hue is far from every mixture, and so is what lies beyond the end', () => {
  const blend = blendOf(white, blue);
  for (const colour of /** @type {Rgb[]} */ ([
    [214, 39, 40],
    [44, 160, 44],
    [5, 20, 60],
  ]))
    assert.ok(mixtureNear(blend, colour, toOklab(colour)).distance > 10, colour.join());
});

test('colours that differ in lightness alone, or not at all, give no NaN', () => {
  /** @type {Rgb} */
  const middle = [128, 128, 128];
  near(coverageOf(blendOf(white, [0, 0, 0]), white), 0);
  near(mixtureNear(blendOf(white, [0, 0, 0]), middle, toOklab(middle)).hueShare, 127 / 255);
  // A few levels of chroma are too few to measure on.
  near(coverageOf(blendOf(middle, [131, 128, 125]), [131, 128, 125]), 0);
  const none = blendOf(blue, blue);
  near(coverageOf(none, blue), 0);
  const { distance, lightShare, hueShare } = mixtureNear(none, white, toOklab(white));
  near(lightShare, 0);
  near(hueShare, 0);
  assert.ok(distance > 30);
});
