// The colours that a picture is made of: its background, its series, its greys, and what is but a
// mixture of these.

import { chroma, formatColour, toOklab } from './colours.js';
import { ALIKE, blendOf, coverageOf, distanceOf, isEdge, mixtureNear } from './mixtures.js';
import { COLOUR_BITS, packColour, unpackColour, viewOf } from './view.js';

/** @typedef {import('./colours.js').Rgb} Rgb */
/** @typedef {import('./colours.js').Oklab} Oklab */
/** @typedef {import('./view.js').Box} Box */
/** @typedef {import('./view.js').Mask} Mask */
/** @typedef {import('./view.js').Picture} Picture */
/** @typedef {import('./view.js').View} View */

/**
 * A colour and its pixels.
 * @typedef {object} Tint
 * @property {number} packed
 * @property {number} count Pixels of this colour, and of such as look alike.
 * @property {number} top Those of this very colour.
 * @property {number} solid Those whose eight neighbours have the same colour, as no line thinner than
 *   three pixels has, nor any smooth edge.
 * @property {number} outer The solid ones near the edge of the box.
 */

/**
 * @typedef {object} Palette
 * @property {Tint | undefined} background What all else is drawn on; undefined where there is nothing.
 * @property {Rgb[]} bases All that series are drawn on: the background and areas of grey.
 * @property {Tint[]} series Largest first.
 * @property {Tint[]} greys Largest first: axes, grids, text and whatever else has no hue.
 * @property {number} pixels How many were looked at.
 */

/**
 * A colour found in a picture.
 * @typedef {object} FoundColour
 * @property {string} colour As `#rrggbb`.
 * @property {number} pixels How many look like it. The pixels of smooth edges are not among them.
 * @property {number} share Of all pixels that were looked at.
 */

/**
 * Finds the colours of a chart's series. Black and grey series are told from axes and text by nobody:
 * they are among the greys of `findColours`.
 * @param {Picture} picture
 * @param {{box?: Box, masks?: readonly Mask[]}} [where] The plot area; the whole picture by default.
 * @returns {FoundColour[]} Largest first.
 */
export function findSeriesColours(picture, where = {}) {
  return findColours(picture, where).series;
}

/**
 * Finds the colours of a chart, mixtures left out.
 * @param {Picture} picture
 * @param {{box?: Box, masks?: readonly Mask[]}} [where] The plot area; the whole picture by default.
 * @returns {{background: FoundColour | null, series: FoundColour[], greys: FoundColour[]}} The series
 *   and the greys (axes, grids, text and whatever else has no hue) largest first.
 */
export function findColours(picture, where = {}) {
  const { background, series, greys, pixels } = paletteOf(viewOf(picture, where));
  /** @type {(tint: Tint) => FoundColour} */
  const found = ({ packed, count }) => ({
    colour: formatColour(unpackColour(packed)),
    pixels: count,
    share: count / pixels,
  });
  return {
    background: background ? found(background) : null,
    series: series.map(found),
    greys: greys.map(found),
  };
}

/**
 * @param {View} view
 * @param {object} [options]
 * @param {readonly Rgb[]} [options.known] Series that are not looked for: neither they nor their
 *   mixtures are among the series.
 * @param {Rgb[]} [options.backgrounds] Where they are known.
 * @param {number} [options.most] About how many pixels to look at, in rows that are evenly spread; all
 *   by default.
 * @returns {Palette}
 */
export function paletteOf(view, { known = [], backgrounds, most = Infinity } = {}) {
  const counted = countTints(view, most);
  const pixels = counted.reduce((sum, { count }) => sum + count, 0);
  const least = Math.max(LEAST_PIXELS, LEAST_SHARE * pixels);
  const all = gather(counted);
  const isKnown = (/** @type {Tint} */ tint) => known.some((colour) => isNear(tint, colour));
  const background = backgroundOf(all.filter((tint) => !isKnown(tint)));
  if (!background) return { background, bases: [], series: [], greys: [], pixels };
  const tints = all.filter((tint) => tint !== background && tint.count >= least);
  const grey = tints.filter(isGrey);
  const areas = grey.filter((tint) => isArea(tint) && !isKnown(tint));
  const bases = backgrounds ?? [background, ...areas].map(rgbOf);
  const coloured = tints.filter((tint) => !isGrey(tint));
  const knownTints = known.map((colour) => ({
    ...(tints.find((tint) => isNear(tint, colour)) ?? tintOf(0)),
    packed: packColour(colour),
  }));
  const series = pureOnes(coloured, bases, knownTints);
  const ends = [...knownTints, ...series];
  const greys = grey.filter((tint) => !ends.some((end) => accountsFor(bases, end, tint)));
  return { background, bases, series, greys, pixels };
}

const LEAST_PIXELS = 8;
const LEAST_SHARE = 0.0001;

/**
 * Counts the colours of a picture.
 * @param {View} view
 * @param {number} most
 * @returns {Tint[]}
 */
function countTints({ pixels, width, box, columns, rows, open }, most) {
  /** @type {Map<number, Tint>} */
  const tints = new Map();
  const stride = Math.max(1, Math.floor((columns * rows) / most));
  const band = OUTER * Math.min(columns, rows);
  for (let row = 0; row < rows; row += stride) {
    const isInner = row > 0 && row < rows - 1;
    const isOuter = row < band || row >= rows - band;
    /** @type {Tint | undefined} */
    let tint;
    // How many columns up to here have this very colour in three rows.
    let alike = 0;
    for (let column = 0; column < columns; ++column) {
      if (open !== undefined && open[row * columns + column] === 0) {
        alike = 0;
        continue;
      }
      const at = (box.top + row) * width + box.left + column;
      const packed = pixels[at] & COLOUR_BITS;
      if (tint === undefined || packed !== tint.packed) {
        tint = tints.get(packed);
        if (tint === undefined) tints.set(packed, (tint = tintOf(packed)));
        alike = 0;
      }
      ++tint.count;
      if (!isInner || (pixels[at - width] & COLOUR_BITS) !== packed) alike = 0;
      else if ((pixels[at + width] & COLOUR_BITS) !== packed) alike = 0;
      else if (++alike >= 3) {
        ++tint.solid;
        if (isOuter || column < band || column >= columns - band) ++tint.outer;
      }
    }
  }
  for (const tint of tints.values()) tint.top = tint.count;
  return [...tints.values()];
}

/** How far from the edge of the box counts as near, as a share of its shorter side. */
const OUTER = 0.08;

/**
 * @param {number} packed
 * @returns {Tint} Without pixels.
 */
const tintOf = (packed) => ({ packed, count: 0, top: 0, solid: 0, outer: 0 });

/**
 * Brings colours that look alike together under the most frequent of them: lossy files have every
 * colour in many shades.
 * @param {Tint[]} tints
 * @returns {Tint[]} Largest first, the smallest left out where there are too many.
 */
function gather(tints) {
  /** @type {Map<number, Tint>} */
  const cells = new Map();
  for (const tint of tints) {
    const cell = cells.get(tint.packed & CELL_BITS);
    if (cell) add(cell, tint);
    else cells.set(tint.packed & CELL_BITS, { ...tint });
  }
  /** @type {{tint: Tint, seen: Oklab}[]} */
  const groups = [];
  for (const tint of [...cells.values()].sort(largerFirst)) {
    const seen = toOklab(rgbOf(tint));
    const group = groups.find((other) => distanceOf(seen, other.seen) <= ALIKE);
    if (group) add(group.tint, tint);
    else if (groups.length < MOST_GROUPS) groups.push({ tint, seen });
  }
  return groups.map(({ tint }) => tint).sort(largerFirst);
}

// The upper five bits of each channel.
const CELL_BITS = 0xf8f8f8;
const MOST_GROUPS = 256;

/**
 * Adds a colour to others; together they go by the most frequent of them.
 * @param {Tint} sum
 * @param {Tint} tint
 */
function add(sum, { packed, top, count, solid, outer }) {
  if (top > sum.top) [sum.packed, sum.top] = [packed, top];
  sum.count += count;
  sum.solid += solid;
  sum.outer += outer;
}

/**
 * The colour that most of the edge of the box has, or else the one with the largest areas, or else
 * the most frequent one.
 * @param {Tint[]} tints
 */
function backgroundOf(tints) {
  const keys = /** @type {const} */ (['outer', 'solid', 'count']);
  const most = keys.map((key) => tints.reduce((a, b) => (b[key] > a[key] ? b : a), tints[0]));
  return most.find((tint, i) => tint?.[keys[i]] > 0);
}

/**
 * Leaves out what is a mixture of a background and another of the colours. The colour that accounts
 * for most pixels is taken first, with its mixtures; then the same with what is left.
 * @param {Tint[]} tints
 * @param {readonly Rgb[]} bases
 * @param {readonly Tint[]} known
 * @returns {Tint[]} Largest first.
 */
function pureOnes(tints, bases, known) {
  const around = [...bases, ...known.map(rgbOf)];
  const unknown = tints.filter((other) => !known.some((tint) => accountsFor(around, tint, other)));
  /** @type {Candidate[]} */
  const candidates = unknown.map((tint) => ({
    tint,
    shades: unknown.filter((other) => other !== tint && accountsFor(bases, tint, other)),
  }));
  const left = new Set(unknown);
  /** @type {Candidate[]} */
  const pure = [];
  while (left.size > 0) {
    const first = weightiest(
      candidates.filter(({ tint }) => left.has(tint)),
      left,
    );
    pure.push(first);
    for (const tint of [first.tint, ...first.shades]) left.delete(tint);
  }
  // What was taken early may turn out to be a shade of what was taken later.
  return pure
    .filter(({ tint, shades }) =>
      pure.every((other) => !other.shades.includes(tint) || shades.includes(other.tint)),
    )
    .map(({ tint }) => tint)
    .sort(largerFirst);
}

/**
 * A colour and those that it accounts for.
 * @typedef {{tint: Tint, shades: Tint[]}} Candidate
 */

/**
 * The colour that accounts for most pixels. A shade a little beyond the series' colour accounts for a
 * few more; so among about equal ones the most frequent is taken.
 * @param {Candidate[]} candidates
 * @param {Set<Tint>} left The colours not yet accounted for.
 */
function weightiest(candidates, left) {
  const weighed = candidates.map((candidate) => ({
    candidate,
    weight: [candidate.tint, ...candidate.shades].reduce(
      (sum, tint) => sum + (left.has(tint) ? tint.count : 0),
      0,
    ),
  }));
  const most = Math.max(...weighed.map(({ weight }) => weight));
  return weighed
    .filter(({ weight }) => weight >= 0.8 * most)
    .map(({ candidate }) => candidate)
    .reduce((a, b) => (largerFirst(a.tint, b.tint) <= 0 ? a : b));
}

/**
 * Whether a colour is but a shade of a series, at an edge or smeared.
 * @param {readonly Rgb[]} bases
 * @param {Tint} tint That of the series.
 * @param {Tint} other
 */
function accountsFor(bases, tint, other) {
  if (isNear(other, rgbOf(tint))) return true;
  if (isArea(other)) return false;
  const colour = rgbOf(other);
  const seen = toOklab(colour);
  return bases.some((base) => {
    const blend = blendOf(base, rgbOf(tint));
    if (coverageOf(blend, colour) > BEYOND) return false;
    const mixture = mixtureNear(blend, colour, seen);
    if (isEdge(mixture)) return true;
    const isSmall = other.top < 0.1 * tint.top && !isGrey(other);
    return mixture.distance <= SHADE && (isSmall || !isSharp(other));
  });
}
const SHADE = 5;
const BEYOND = 1.15;

/**
 * Whether a colour is that of a series, as a lossy file may have it.
 * @param {Tint} tint
 * @param {Rgb} colour
 */
const isNear = (tint, colour) => distanceOf(toOklab(rgbOf(tint)), toOklab(colour)) <= 6;

/** @type {(a: Tint, b: Tint) => number} */
const largerFirst = (a, b) => b.count - a.count || a.packed - b.packed;

/** @param {Tint} tint */
const rgbOf = ({ packed }) => unpackColour(packed);

/**
 * Whether a colour fills areas of its own.
 * @param {Tint} tint
 */
const isArea = ({ solid, count }) => solid >= 9 && solid >= 0.02 * count;

/**
 * Whether most of what looks like a colour has this very colour, as a drawn one and no smeared one.
 * @param {Tint} tint
 */
const isSharp = ({ top, count }) => top >= 20 && top >= 0.3 * count;

/**
 * Whether people would call a colour black, grey or white.
 * @param {Tint} tint
 */
function isGrey(tint) {
  const colour = rgbOf(tint);
  return chroma(colour) < 3 || Math.max(...colour) - Math.min(...colour) < 24;
}
