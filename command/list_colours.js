// One image: from its file to the colours of the series in it.

import { findSeriesColours } from '../lib/selection/palette.js';
import { recordOf } from './trace_image.js';

/**
 * Lists the colours of an image. Whatever goes wrong is in the record.
 * @param {{file: string, content?: Uint8Array, select: Record<string, any>}} task
 */
export const listColours = (task) =>
  recordOf(task, { colors: [] }, (picture) => ({
    colors: findSeriesColours(picture, task.select).map(({ colour, pixels, share }) => ({
      color: colour,
      pixels,
      share,
    })),
  }));
