// Series and reports for tests.

/**
 * A series with two points, changed as wanted.
 * @param {object} [changes]
 */
export const seriesOf = (changes = {}) => ({
  color: '#1f77b4',
  kind: 'scatter',
  mode: 'points-fission',
  pixels: [
    [10.5, 20],
    [30, 40.25],
  ],
  values: [
    [1, 0.1],
    [2, 1e-7],
  ],
  notes: [],
  selected: 18,
  ...changes,
});

/** Bars with their other ends, the second of which is not known. */
export const bars = seriesOf({
  kind: 'bars',
  mode: 'bar_vertical-fission',
  values: [
    ['ash', 5],
    ['oak', 6],
  ],
  bars: [
    {
      pixels: { end: [10.5, 20], otherEnd: [10.5, 90] },
      values: { end: ['ash', 5], otherEnd: ['ash', 0] },
    },
    {
      pixels: { end: [30, 40.25], otherEnd: null },
      values: { end: ['oak', 6], otherEnd: null },
    },
  ],
});

/** A histogram without axes. */
export const histogram = seriesOf({
  kind: 'histogram',
  mode: 'histogram',
  values: null,
  bins: [
    { pixels: { left: 0.5, right: 20.5, top: 20 }, values: null },
    { pixels: { left: 20.5, right: 39.5, top: 40.25 }, values: null },
  ],
});

/** A histogram with axes. */
export const histogramWithValues = {
  ...histogram,
  values: seriesOf().values,
  bins: histogram.bins.map((bin, i) => ({
    ...bin,
    values: { left: i, right: i + 1, top: seriesOf().values[i][1] },
  })),
};

/** One marker, then a curve. */
export const markersAndCurve = seriesOf({
  kind: 'points+curve',
  mode: 'points_curves-fission',
  markers: 1,
});
