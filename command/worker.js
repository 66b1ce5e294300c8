// What a worker thread does: one image after another.

export { traceImage as trace } from './trace_image.js';
export { listColours as colors } from './list_colours.js';
