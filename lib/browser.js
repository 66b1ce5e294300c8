// What the package offers wherever JavaScript runs: the native function as it is, and the way from
// pixels to their values. The entry for browsers, where bundlers take native_browser.js for native.js.

import * as native from '#native';

/** @typedef {import('./axes.js').Axes} Axes */
/** @typedef {import('./axes.js').AxesDescription} AxesDescription */
/** @typedef {import('./axes.js').Axis} Axis */
/** @typedef {import('./axes.js').AxisDescription} AxisDescription */
/** @typedef {import('./modes.js').Grouping} Grouping */
/** @typedef {import('./modes.js').Kind} Kind */
/** @typedef {import('./modes.js').Mode} Mode */
/** @typedef {import('./masks.js').Box} Box */
/** @typedef {import('./masks.js').Mask} Mask */
/** @typedef {import('./options.js').TraceOptions} TraceOptions */
/** @typedef {import('./palette.js').FoundColour} FoundColour */
/** @typedef {import('./pixels.js').Points} Points */
/** @typedef {import('./pixels.js').SelectionOptions} SelectionOptions */
/** @typedef {import('./view.js').Picture} Picture */
/** @typedef {import('./project.js').Project} Project */
/** @typedef {import('./project.js').ProjectImage} ProjectImage */
/** @typedef {import('./reports/report.js').ErrorReport} ErrorReport */
/** @typedef {import('./reports/report.js').ImageReport} ImageReport */
/** @typedef {import('./reports/report.js').ImageResult} ImageResult */
/** @typedef {import('./reports/report.js').Report} Report */
/** @typedef {import('./reports/report.js').SeriesReport} SeriesReport */
/** @typedef {import('./series.js').Series} Series */

export { makeAxes, makeAxis, parseReferences } from './axes.js';
export { chroma, colourDistance, formatColour, parseColour } from './colours.js';
export { ChartTraceError, LimitError } from './errors.js';
export { MODES, splitResult } from './modes.js';
export { contrastingColour, overlaySvg } from './overlay.js';
export { findColours, findSeriesColours } from './palette.js';
export { selectPixels, selectSeries } from './pixels.js';
export { checkHash, formatProject, makeProject, parseProject, traceProject } from './project.js';
export { COLUMN_NAMES, columnsFor } from './reports/columns.js';
export { toJson, toNdjson } from './reports/json.js';
export { toOverlay } from './reports/overlay.js';
export { errorReport, makeReport } from './reports/report.js';
export { toCsv, toTsv } from './reports/separated.js';
export { toTable } from './reports/table.js';
export { traceChart } from './series.js';
export { tracePixels } from './tracing.js';
export { VERSION } from './version.js';

// With their types told here: declarations would name #native, which has none.

/** @type {import('./native.js').Engine} */
export const engine = native.engine;

/** @type {import('./native.js').Trace} */
export const trace = native.trace;
