// Runs that go by a project, and projects that say how a run went.

import { extname } from 'node:path';
import { sha256Of } from '../lib/files.js';
import { planOf, TRACE_OPTIONS } from '../lib/tracing/options.js';
import { makeProject } from '../lib/projects/project.js';
import {
  nameInProject,
  readProject,
  readProjectImage,
  writeProject,
} from '../lib/projects/project_files.js';
import { settingsOf } from './settings.js';
import { asUsageError, usageError } from './usage.js';

/** @typedef {import('../lib/projects/project.js').Project} Project */
/** @typedef {import('./settings.js').Settings} Settings */

/**
 * What a run does.
 * @typedef {object} Plan
 * @property {{file: string, content?: Uint8Array}[]} images
 * @property {Settings | {project: Project}} settings
 * @property {import('../lib/tracing/modes.js').Kind[]} kinds Of the series.
 * @property {boolean} hasAxes
 * @property {boolean} isEverySeriesWanted Whether a series without a point is a failure.
 */

/** What a project says itself, which nothing else may say beside it. */
const SAID = [
  ...TRACE_OPTIONS,
  ...'color exclude tolerance background region mask x y xScale yScale'.split(' '),
];

/**
 * Finds out what a command line asks for.
 * @param {string[]} images
 * @param {Record<string, any>} options
 * @returns {Promise<Plan>}
 */
export async function planRun(images, options) {
  if (options.project !== undefined) return planOfProject(images, options);
  if (images.length === 0)
    throw usageError('IMAGE', 'the file of a chart', undefined, 'See chart-trace --help.');
  const settings = settingsOf(options);
  await checkSave(images, options);
  return {
    images: images.map((file) => ({ file })),
    settings,
    kinds: [planOf(settings.trace).mode.kind],
    hasAxes: settings.trace.axes !== undefined,
    isEverySeriesWanted: settings.colours !== undefined,
  };
}

/**
 * @param {string[]} images
 * @param {Record<string, any>} options
 * @returns {Promise<Plan>}
 */
async function planOfProject(images, options) {
  for (const name of [...SAID, 'saveProject'])
    if (options[name] !== undefined)
      throw usageError(flagOf(name), 'nothing beside --project, which says it', options[name]);
  try {
    const project = await readProject(options.project);
    const own = project.series.map((series) => ({ ...project.options, ...series }));
    return {
      images:
        images.length > 0
          ? images.map((file) => ({ file }))
          : [await ownImage(project, options.project)],
      settings: { project },
      kinds: own.map(({ kind, mode, grouping }) => planOf({ kind, mode, grouping }).mode.kind),
      hasAxes: project.axes !== null,
      isEverySeriesWanted: true,
    };
  } catch (error) {
    throw Object.assign(/** @type {Error} */ (error), { path: options.project });
  }
}

/**
 * The picture of a project, under the name that the project has for it.
 * @param {Project} project
 * @param {string} path
 */
const ownImage = async (project, path) => ({
  file: project.image.file,
  content: await readProjectImage(project, path),
});

/** @param {string} name */
const flagOf = (name) => `--${name.replace(/[A-Z]/g, (letter) => `-${letter.toLowerCase()}`)}`;

/**
 * Refuses to save a project that could not be opened again.
 * @param {string[]} images
 * @param {Record<string, any>} options
 */
async function checkSave(images, { saveProject: path }) {
  if (path === undefined) return;
  if (extname(path).toLowerCase() !== '.json')
    throw usageError('--save-project', 'a file that ends in .json', path);
  if (images.length > 1 || images[0] === '-')
    throw usageError(
      '--save-project',
      'a single image, which is a file',
      images.length > 1 ? `${images.length} images` : '-',
      'A project is made for one image, and can be applied to others.',
    );
  await nameInProject(path, images[0]).catch((error) => {
    // A file or a folder that is not there is told by whoever needs it.
    if (error.code === 'ERR_PROJECT_FOLDER') throw asUsageError('--save-project', error);
  });
}

/**
 * Writes the project of an image that was traced.
 * @param {string} path
 * @param {{file: string, content: Uint8Array, width: number, height: number}} image
 * @param {Settings} settings
 * @param {string[]} colours Of the series.
 */
export async function saveProject(path, { content, ...image }, settings, colours) {
  const { axes, ...trace } = settings.trace;
  const file = await nameInProject(path, image.file);
  const project = await makeProject({
    image: { ...image, file, sha256: sha256Of(content) },
    axes: axes ?? null,
    options: { ...trace, ...settings.select },
    series: colours.map((colour) => ({ colour })),
  });
  await writeProject(path, project);
}
