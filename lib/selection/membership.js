// Tells of a colour whether it is that of a series.

import { toOklab } from './colours.js';
import { ALIKE, blendOf, coverageOf, isEdge, mixtureNear, nearest } from './mixtures.js';
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
    const covers = (/** @type {Blend} */ blend) => coverageOf(blend, colour) >= coverage - ROUNDING;
    // Most colours of a picture are told to be none of the series by this alone.
    if (own.length > 0 && inner.length === 0 && !own.some(covers)) return OUT;
    const seen = toOklab(colour);
    const toOwn = nearest(seen, ownSeen);
    const toRival = nearest(seen, rivalSeen);
    if (toRival < toOwn && toRival <= 2 * ALIKE) return OUT;
    if (toOwn <= alike) return IN;
    if (inner.some((blend) => isEdge(mixtureNear(blend, colour, seen)))) return IN;

    const { distance, hueShare, blend } = nearestMixture(own, colour, seen);
    if (distance > tolerance || hueShare < HUE_TRACE || !blend || !covers(blend)) return OUT;
    const rival = nearestMixture(foreign, colour, seen).distance;
    if (rival < distance - ALIKE) return OUT;
    return rival <= distance || hueShare < HUE_LEFT ? NEAR : IN;
  };
}

/**
 * The mixture of some blends that is nearest to a colour.
 * @param {readonly Blend[]} blends
 * @param {Rgb} colour
 * @param {import('./colours.js').Oklab} seen The same colour.
 */
function nearestMixture(blends, colour, seen) {
  let best = { distance: Infinity, hueShare: 0 };
  /** @type {Blend | undefined} */
  let blend;
  for (const candidate of blends) {
    const mixture = mixtureNear(candidate, colour, seen);
    if (mixture.distance < best.distance) [best, blend] = [mixture, candidate];
  }
  return { ...best, blend };
}

/**
 * @param {readonly Rgb[]} bases
 * @param {readonly Rgb[]} ends
 * @returns {Blend[]}
 */
const blendsBetween = (bases, ends) =>
  ends.flatMap((end) => bases.map((base) => blendOf(base, end)));
