// Whether a colour is that of a series: sure, near, or not.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { IN, membershipOf, NEAR, OUT } from '../../lib/selection/membership.js';
import { packColour } from '../../lib/selection/view.js';

/** @typedef {import('../../lib/selection/colours.js').Rgb} Rgb */

/** @type {Rgb} */
const WHITE = [255, 255, 255];
/** @type {Rgb} */
const BRICK = [214, 39, 40];

/**
 * How a colour stands to a series on white.
 * @param {Rgb} colour
 * @param {Partial<import('../../lib/selection/membership.js').SeriesColours>} [series]
 */
function standing(colour, series) {
  const usual = { colours: [BRICK], backgrounds: [WHITE], rivals: [], tolerance: 6, coverage: 0.5 };
  return membershipOf({ ...usual, ...series })(packColour(colour));
}

/**
 * @param {number} share
 * @param {Rgb} colour
 * @returns {Rgb} White with a share of a colour.
 */
const onWhite = (share, [red, green, blue]) => [
  Math.round(255 + share * (red - 255)),
  Math.round(255 + share * (green - 255)),
  Math.round(255 + share * (blue - 255)),
];

test('the colour itself and its edges are sure, from half a pixel on', () => {
  assert.equal(standing(BRICK), IN);
  assert.equal(standing(onWhite(0.6, BRICK)), IN);
  assert.equal(standing(onWhite(0.5, BRICK)), IN);
  assert.equal(standing(onWhite(0.45, BRICK)), OUT);
  assert.equal(standing(WHITE), OUT);
  assert.equal(standing([0, 0, 0]), OUT);
});

test('a mixture of another series is none of this one, though it would be without that', () => {
  /** @type {Rgb} */
  const pink = [214, 39, 90];
  const mixture = onWhite(0.7, pink);
  assert.equal(standing(mixture), IN);
  assert.equal(standing(mixture, { rivals: [pink] }), OUT);
  assert.equal(standing(pink, { rivals: [pink] }), OUT);
});

test('a mixture of either series is near', () => {
  /** @type {Rgb} */
  const pale = [230, 70, 70];
  assert.equal(standing(onWhite(0.7, pale)), IN);
  assert.equal(standing(onWhite(0.7, pale), { rivals: [pale] }), NEAR);
});

test('between two colours of a series is the series', () => {
  const colours = /** @type {Rgb[]} */ ([
    [255, 0, 0],
    [0, 0, 255],
  ]);
  assert.equal(standing([128, 0, 128], { colours }), IN);
  for (const colour of colours) assert.equal(standing([128, 0, 128], { colours: [colour] }), OUT);
});
