// One image: from its file to its record.

import { extname } from 'node:path';
import { readWhole, writeWhole } from '../lib/files.js';
import { findColours, findSeriesColours } from '../lib/selection/palette.js';
import { decodePicture, encodePng } from '../lib/pictures.js';
import { traceProject } from '../lib/projects/project.js';
import { toOverlay } from '../lib/reports/overlay.js';
import { makeReport } from '../lib/reports/report.js';
import { traceChart } from '../lib/tracing/series.js';
import { digestOf } from './digests.js';
import { wordsOf } from './messages.js';
import { saveProject } from './projects.js';

/** @typedef {import('../lib/projects/project.js').Project} Project */
/** @typedef {import('../lib/selection/view.js').Picture} Picture */
/** @typedef {import('./settings.js').Settings} Settings */
/** @typedef {import('../lib/reports/report.js').ImageReport} ImageReport */

/**
 * An image and what is asked about it.
 * @typedef {object} Task
 * @property {string} file
 * @property {Uint8Array} [content] Of the file, if it was read already.
 * @property {Settings | {project: Project}} settings
 * @property {string} [overlay] Where to draw what was found.
 * @property {string} [saveProject] Where to say how it was traced.
 */

/**
 * Traces an image. Whatever goes wrong is in the record.
 * @param {Task} task
 * @returns {Promise<ImageReport>}
 */
export const traceImage = (task) =>
  recordOf(task, { series: [] }, async (picture, content) => {
    const { file, settings, overlay, saveProject: project } = task;
    const { width, height } = picture;
    const series =
      'project' in settings
        ? traceProject(settings.project, picture, { file }).series
        : traceSeries(picture, settings);
    const [image] = makeReport([{ file, width, height, series }]).images;
    if (overlay) await drawOverlay(overlay, picture, image, settings);
    if (project && !('project' in settings)) {
      const colours = image.series.map(({ color }) => String(color));
      await saveProject(project, { file, content, width, height }, settings, colours);
    }
    return { series: image.series };
  });

/**
 * The record of an image: what there is to say of its picture, or of the failure.
 * @template T
 * @param {import('./digests.js').AnyTask} task With `isDigestWanted` the record gets a digest.
 * @param {T} nothing What a failure leaves.
 * @param {(picture: Picture, content: Uint8Array) => T | Promise<T>} look
 */
export async function recordOf(task, nothing, look) {
  const { file, content, settings } = task;
  /** @type {{width: number | null, height: number | null}} */
  const size = { width: null, height: null };
  try {
    const bytes = content ?? (await readWhole(file));
    const page = settings?.project?.image.page;
    const picture = await decodePicture(bytes, { ...(page && { page }) });
    size.width = picture.width;
    size.height = picture.height;
    const found = await look(picture, bytes);
    const digest = task.isDigestWanted ? { digest: digestOf(task, bytes) } : {};
    return { file, ...size, ...found, error: null, ...digest };
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
 * @param {Task['settings']} settings
 */
async function drawOverlay(path, picture, image, settings) {
  const { background, box, masks } =
    'project' in settings ? settings.project.options : settings.select;
  const ground = [background].flat()[0] ?? findColours(picture, { box, masks }).background?.colour;
  if (extname(path).toLowerCase() === '.png')
    return writeWhole(path, await encodePng(picture, toOverlay(image, { ground })));
  const below = Buffer.from(await encodePng(picture)).toString('base64');
  return writeWhole(path, toOverlay(image, { ground, href: `data:image/png;base64,${below}` }));
}
