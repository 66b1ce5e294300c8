// What the package offers wherever JavaScript runs: the native function as it is, and the way from
// pixels to their values. The entry for browsers, where bundlers take native_browser.js for native.js.

import * as native from '#native';

/** @typedef {import('./axes/axes.js').Axes} Axes */
/** @typedef {import('./axes/axes.js').AxesDescription} AxesDescription */
/** @typedef {import('./axes/axes.js').Axis} Axis */
/** @typedef {import('./axes/axes.js').AxisDescription} AxisDescription */
/** @typedef {import('./tracing/modes.js').Grouping} Grouping */
/** @typedef {import('./tracing/modes.js').Kind} Kind */
/** @typedef {import('./tracing/modes.js').Mode} Mode */
/** @typedef {import('./selection/masks.js').Box} Box */
/** @typedef {import('./selection/masks.js').Mask} Mask */
/** @typedef {import('./tracing/options.js').TraceOptions} TraceOptions */
/** @typedef {import('./selection/palette.js').FoundColour} FoundColour */
/** @typedef {import('./selection/pixels.js').Points} Points */
/** @typedef {import('./selection/pixels.js').SelectionOptions} SelectionOptions */
/** @typedef {import('./selection/view.js').Picture} Picture */
/** @typedef {import('./projects/project.js').Project} Project */
/** @typedef {import('./projects/project.js').ProjectImage} ProjectImage */
/** @typedef {import('./reports/report.js').ErrorReport} ErrorReport */
/** @typedef {import('./reports/report.js').ImageReport} ImageReport */
/** @typedef {import('./reports/report.js').ImageResult} ImageResult */
/** @typedef {import('./reports/report.js').Report} Report */
/** @typedef {import('./reports/report.js').SeriesReport} SeriesReport */
/** @typedef {import('./tracing/series.js').Series} Series */

export { makeAxes, makeAxis, parseReferences } from './axes/axes.js';
export { chroma, colourDistance, formatColour, parseColour } from './selection/colours.js';
export { ChartTraceError, LimitError } from './errors.js';
export { MODES, splitResult } from './tracing/modes.js';
export { contrastingColour, overlaySvg } from './overlay.js';
export { findColours, findSeriesColours } from './selection/palette.js';
export { selectPixels, selectSeries } from './selection/pixels.js';
export {
  checkHash,
  formatProject,
  makeProject,
  parseProject,
  traceProject,
} from './projects/project.js';
export { COLUMN_NAMES, columnsFor } from './reports/columns.js';
export { toJson, toNdjson } from './reports/json.js';
export { toOverlay } from './reports/overlay.js';
export { errorReport, makeReport } from './reports/report.js';
export { toCsv, toTsv } from './reports/separated.js';
export { toTable } from './reports/table.js';
export { traceChart } from './tracing/series.js';
export { tracePixels } from './tracing/tracing.js';
export { VERSION } from './version.js';

// With their types told here: declarations would name #native, which has none.

/** @type {import('./tracing/native.js').Engine} */
export const engine = native.engine;

/** @type {import('./tracing/native.js').Trace} */
export const trace = native.trace;
