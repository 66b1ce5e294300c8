// One image: from its file to its record.

import { readFile } from 'node:fs/promises';
import { extname } from 'node:path';
import { writeWhole } from '../lib/files.js';
import { findColours, findSeriesColours } from '../lib/palette.js';
import { decodePicture, encodePng } from '../lib/pictures.js';
import { toOverlay } from '../lib/reports/overlay.js';
import { makeReport } from '../lib/reports/report.js';
import { traceChart } from '../lib/series.js';
import { wordsOf } from './messages.js';

/** @typedef {import('../lib/view.js').Picture} Picture */
/** @typedef {import('../lib/reports/report.js').ImageReport} ImageReport */

/**
 * An image and what is asked about it.
 * @typedef {object} Task
 * @property {string} file
 * @property {Uint8Array} [content] Of the file, if it was read already.
 * @property {import('./settings.js').Settings} settings
 * @property {string} [overlay] Where to draw what was found.
 */

/**
 * Traces an image. Whatever goes wrong is in the record.
 * @param {Task} task
 * @returns {Promise<ImageReport>}
 */
export const traceImage = ({ file, content, settings, overlay }) =>
  recordOf({ file, content }, { series: [] }, async (picture) => {
    const { width, height } = picture;
    const series = traceSeries(picture, settings);
    const [image] = makeReport([{ file, width, height, series }]).images;
    if (overlay) await drawOverlay(overlay, picture, image, settings.select);
    return { series: image.series };
  });

/**
 * The record of an image: what there is to say of its picture, or of the failure.
 * @template T
 * @param {{file: string, content?: Uint8Array}} image
 * @param {T} nothing What a failure leaves.
 * @param {(picture: Picture) => T | Promise<T>} look
 */
export async function recordOf({ file, content }, nothing, look) {
  /** @type {{width: number | null, height: number | null}} */
  const size = { width: null, height: null };
  try {
    const picture = await decodePicture(content ?? (await readFile(file)));
    size.width = picture.width;
    size.height = picture.height;
    return { file, ...size, ...(await look(picture)), error: null };
  } catch (error) {
    return { file, ...size, ...nothing, error: wordsOf(error) };
  }
}

/**
 * @param {Picture} picture
 * @param {import('./settings.js').Settings} settings
 */
function traceSeries(picture, { colours, select, trace }) {
  const { box, masks } = select;
  const asked = colours ?? findSeriesColours(picture, { box, masks }).map(({ colour }) => colour);
  return asked.map((colour) => traceChart(picture, { colour, ...select, ...trace }));
}

/**
 * Draws what was found over the picture, for the eye to judge.
 * @param {string} path
 * @param {Picture} picture
 * @param {ImageReport} image
 * @param {Record<string, any>} select
 */
async function drawOverlay(path, picture, image, { background, box, masks }) {
  const ground = background ?? findColours(picture, { box, masks }).background?.colour;
  if (extname(path).toLowerCase() === '.png')
    return writeWhole(path, await encodePng(picture, toOverlay(image, { ground })));
  const below = Buffer.from(await encodePng(picture)).toString('base64');
  return writeWhole(path, toOverlay(image, { ground, href: `data:image/png;base64,${below}` }));
}
