// Tells of a colour whether it is that of a series.

import { toOklab } from './colours.js';
import { blendOf, distanceFromMixture, nearest, sharesOf } from './mixtures.js';
import { unpackColour } from './view.js';

/** @typedef {import('./colours.js').Rgb} Rgb */
/** @typedef {import('./mixtures.js').Blend} Blend */

// How a colour stands to a series. Zero is left for what was not asked yet.
/** Not the series. */
export const OUT = 1;
/** The series only beside pixels that are it for sure: little chroma is left, or a rival is as near. */
export const NEAR = 2;
/** The series for sure. */
export const IN = 3;

/** A colour no farther than this from another one looks much the same. */
export const ALIKE = 2;

/** What is left of the chroma of a thin line in a lossy file, at least. */
const HUE_LEFT = 0.25;

/** Less than this is left of no series; black text and grey lines have so much by accident. */
const HUE_TRACE = 0.1;

// A coverage of one half must not depend on how a level was rounded.
const ROUNDING = 0.004;

/**
 * @typedef {object} SeriesColours
 * @property {readonly Rgb[]} colours The series' own.
 * @property {readonly Rgb[]} backgrounds What the series is drawn on.
 * @property {readonly Rgb[]} rivals Colours that are not the series, nor are their mixtures with the
 *   backgrounds.
 * @property {number} tolerance How far from a mixture a colour may lie, in hundredths.
 * @property {number} coverage How much of a pixel the series must cover, above 0 and at most 1.
 */

/**
 * Makes a function that says of a packed colour how it stands to a series.
 * @param {SeriesColours} series
 * @returns {(packed: number) => typeof OUT | typeof NEAR | typeof IN}
 */
export function membershipOf({ colours, backgrounds, rivals, tolerance, coverage }) {
  const own = blendsBetween(backgrounds, colours);
  const foreign = blendsBetween(backgrounds, rivals);
  // Whatever lies between two colours of the series is the series.
  const inner = colours.flatMap((end, i) => blendsBetween(colours.slice(0, i), [end]));
  const ownSeen = colours.map(toOklab);
  const rivalSeen = rivals.map(toOklab);
  const alike = Math.min(ALIKE, tolerance);

  return (packed) => {
    const colour = unpackColour(packed);
    const covered = own
      .map((blend) => ({ blend, shares: sharesOf(blend, colour) }))
      .filter(({ shares }) => shares.coverage >= coverage - ROUNDING);
    // Most colours of a picture are told to be none of the series by this alone.
    if (covered.length === 0 && own.length > 0 && inner.length === 0) return OUT;
    const seen = toOklab(colour);
    const toOwn = nearest(seen, ownSeen);
    const toRival = nearest(seen, rivalSeen);
    if (toRival < toOwn && toRival <= 2 * ALIKE) return OUT;
    if (toOwn <= alike || distanceFrom(inner, colour, seen) <= tolerance) return IN;

    let distance = Infinity;
    let hueShare = 0;
    for (const { blend, shares } of covered) {
      const away = distanceFromMixture(blend, shares, seen);
      if (away < distance) [distance, hueShare] = [away, shares.hueShare];
    }
    if (distance > tolerance || hueShare < HUE_TRACE) return OUT;
    const rival = distanceFrom(foreign, colour, seen);
    if (rival < distance - ALIKE) return OUT;
    return rival <= distance || hueShare < HUE_LEFT ? NEAR : IN;
  };
}

/**
 * The distance of a colour from the nearest mixture of some blends.
 * @param {readonly Blend[]} blends
 * @param {Rgb} colour
 * @param {import('./colours.js').Oklab} seen The same colour.
 */
function distanceFrom(blends, colour, seen) {
  let least = Infinity;
  for (const blend of blends)
    least = Math.min(least, distanceFromMixture(blend, sharesOf(blend, colour), seen));
  return least;
}

/**
 * @param {readonly Rgb[]} bases
 * @param {readonly Rgb[]} ends
 * @returns {Blend[]}
 */
const blendsBetween = (bases, ends) =>
  ends.flatMap((end) => bases.map((base) => blendOf(base, end)));
