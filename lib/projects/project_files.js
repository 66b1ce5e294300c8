// Project files, and the pictures that they name.

import { realpath } from 'node:fs/promises';
import { basename, dirname, isAbsolute, join, relative, resolve, sep } from 'node:path';
import { ChartTraceError } from '../errors.js';
import { readWhole, sha256Of, writeWhole } from '../files.js';
import { checkHash, formatProject, parseProject, staysInside } from './project.js';

/** @typedef {import('./project.js').Project} Project */

/** Larger project files are refused: 64 MiB. */
const MAX_PROJECT = 2 ** 26;

/**
 * Reads a project file.
 * @param {string} path
 * @returns {Promise<Project>}
 */
export async function readProject(path) {
  return parseProject(new TextDecoder().decode(await readWhole(path, MAX_PROJECT)));
}

/**
 * Writes a project file, whole or not at all.
 * @param {string} path
 * @param {Project} project
 */
export const writeProject = (path, project) => writeWhole(path, formatProject(project));

/**
 * What a project in the file `project` calls the picture in the file `image`.
 * @param {string} project
 * @param {string} image
 */
export const pathFromProject = (project, image) =>
  relative(dirname(resolve(project)), resolve(image)).replaceAll(sep, '/');

/**
 * What a project in the file `project` calls the picture in the file `image` so that
 * `readProjectImage` finds it there. A picture that it would not read is refused.
 * @param {string} project
 * @param {string} image
 * @returns {Promise<string>}
 */
export async function nameInProject(project, image) {
  const folder = await realpath(dirname(resolve(project)));
  const target = await realpath(image);
  const place = pathFromProject(join(folder, basename(project)), target);
  if (!staysInside(place)) throw unreachable(image, target, folder);
  // The name that was given says more than that of a link's target, if it stays inside and leads there.
  const given = pathFromProject(project, image);
  const found = await realpath(resolve(folder, given)).catch(() => undefined);
  return staysInside(given) && found === target ? given : place;
}

/**
 * Reads the picture of a project, and refuses any but the one the project was made for.
 * @param {Project} project
 * @param {string} path Where the project file is.
 * @param {{anywhere?: boolean}} [options] `anywhere`: whether the picture may lie outside the folder
 *   of the project. A project from somebody else could name any file, so that it may not by default.
 * @returns {Promise<Uint8Array>} The content of the picture's file.
 */
export async function readProjectImage(project, path, { anywhere = false } = {}) {
  const { file } = project.image;
  const folder = dirname(resolve(path));
  if (!anywhere && !staysInside(file)) throw outside(file);
  // A link inside the folder may lead out of it.
  const image = await realpath(resolve(folder, file));
  const place = relative(await realpath(folder), image);
  if (!anywhere && (isAbsolute(place) || place.split(sep)[0] === '..')) throw outside(file);
  const bytes = await readWhole(image);
  checkHash(project, sha256Of(bytes));
  return bytes;
}

/**
 * @param {string} image
 * @param {string} target The same, with links followed.
 * @param {string} folder Of the project.
 */
const unreachable = (image, target, folder) =>
  new ChartTraceError(`The picture ${image} lies outside the folder of its project, ${folder}.`, {
    code: 'ERR_PROJECT_FOLDER',
    expected: 'a picture inside the folder of the project',
    received: target,
    hint:
      `A project opens no picture elsewhere. Save the project in ${dirname(target)}, or copy the ` +
      `picture to ${folder}.`,
  });

/** @param {string} file */
const outside = (file) =>
  new ChartTraceError(`The picture of the project lies outside its folder: ${file}.`, {
    code: 'ERR_PROJECT_FOLDER',
    expected: 'a path inside the folder of the project',
    received: file,
    hint: 'Name the picture itself, or allow pictures anywhere if you trust the project.',
  });
