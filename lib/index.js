// What the package offers: the native function as it is, and the way from a picture to its values.

export { makeAxes, makeAxis, parseReferences } from './axes.js';
export { chroma, colourDistance, formatColour, parseColour } from './colours.js';
export { ChartTraceError, LimitError } from './errors.js';
export { MODES, splitResult } from './modes.js';
export { trace } from './native.js';
export { contrastingColour, overlaySvg } from './overlay.js';
export { decodePicture, encodePng, writePng } from './pictures.js';
export { selectPixels } from './pixels.js';
export { traceChart } from './series.js';
export { tracePixels } from './tracing.js';
