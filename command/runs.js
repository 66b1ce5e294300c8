// Runs over images: what is asked of each, and what becomes of the answers.

import { basename, extname, resolve } from 'node:path';
import process from 'node:process';
import { readStream } from '../lib/files.js';
import { listen } from './interruption.js';
import { colourWriter, traceWriter } from './formats.js';
import { makeMessages } from './messages.js';
import { checkWritable, formatOf, makeOutput } from './output.js';
import { inOrder } from './pool.js';
import { makeProgress } from './progress.js';
import { defaultJobs } from './program.js';
import { planRun } from './projects.js';
import { selectionOf } from './settings.js';
import { usageError } from './usage.js';

/** @typedef {import('./messages.js').Messages} Messages */

/**
 * Traces images.
 * @param {string[]} images
 * @param {Record<string, any>} options
 * @returns {Promise<number>} The exit code.
 */
export async function trace(images, options) {
  const plan = await planRun(images, options);
  const files = plan.images.map(({ file }) => file);
  const overlays = overlaysOf(files, options.overlay);
  await checkTargets(files, {
    '-o': [options.output],
    '--overlay': overlays,
    '--save-project': [options.saveProject],
  });
  const { settings, kinds, hasAxes, isEverySeriesWanted } = plan;
  const tasks = plan.images.map((image, i) => ({
    ...image,
    settings,
    overlay: overlays[i],
    saveProject: options.saveProject,
  }));
  let isFound = false;
  return run('trace', tasks, options, {
    writer: traceWriter(formatOf(options), options, kinds),
    look: (record, note) => {
      for (const { color, notes } of record.series)
        for (const text of notes) note(`${color}: ${text}`, record.file);
      const found = record.series.map((/** @type {any} */ { pixels }) => pixels.length > 0);
      if (found.some(Boolean) && !isFound && !hasAxes)
        note('without --x and --y the result is in pixels');
      isFound ||= found.some(Boolean);
      return isEverySeriesWanted ? found.every(Boolean) : found.some(Boolean);
    },
  });
}

/**
 * Lists the colours of the series in images.
 * @param {string[]} images
 * @param {Record<string, any>} options
 * @returns {Promise<number>} The exit code.
 */
export async function colours(images, options) {
  const select = selectionOf(options);
  await checkTargets(images, { '-o': [options.output] });
  const tasks = images.map((file) => ({ file, select }));
  const writer = colourWriter(formatOf(options), options);
  return run('colors', tasks, options, {
    writer,
    look: ({ file, colors }, note) => {
      if (colors.length === 0) note('no colour of a series found', file);
      return colors.length > 0;
    },
  });
}

/**
 * @typedef {object} Purpose
 * @property {import('./output.js').Writer} writer
 * @property {(record: any, note: Messages['note']) => boolean} look At a record without error:
 *   whether something was found.
 */

/**
 * @param {'trace' | 'colors'} name What the workers do.
 * @param {import('./digests.js').AnyTask[]} images And what is asked about them.
 * @param {Record<string, any>} options
 * @param {Purpose} purpose
 */
async function run(name, images, options, { writer, look }) {
  const messages = makeMessages(options);
  await readInput(images);
  const tasks = images.map((image) => ({ ...image, isDigestWanted: options.resume }));
  const output = await makeOutput(options, writer, tasks);
  if (output.outdated > 0)
    messages.note(
      `${output.outdated} of the records are made anew: the picture, the options or the program is ` +
        'another one now',
      options.output,
    );
  const todo = tasks.filter(({ file }) => !output.has(file));
  const progress = makeProgress(todo.length, options, process.stderr);
  const interruption = listen((text) => {
    progress.clear();
    messages.note(text);
  });
  // A table on the same screen tells errors and notes itself.
  const { error, note } = isTableOnScreen(options) ? { error: () => {}, note: () => {} } : messages;
  let isComplete = true;
  const records = inOrder(todo, {
    name,
    jobs: options.jobs ?? defaultJobs(),
    signal: interruption.signal,
    onDone: progress.step,
    onFailure: ({ file }, words) => failure(file, words),
  });
  for await (const record of records) {
    progress.clear();
    await output.add(record);
    if (record.error) error(record.error, record.file);
    isComplete = !record.error && look(record, note) && isComplete;
  }
  progress.clear();
  await output.end();
  interruption.stop();
  return interruption.code() ?? (isComplete ? 0 : 1);
}

/** @param {Record<string, any>} options */
const isTableOnScreen = (options) =>
  formatOf(options) === 'table' &&
  (options.output ?? '-') === '-' &&
  process.stdout.isTTY &&
  process.stderr.isTTY;

/**
 * @param {string} file
 * @param {import('./messages.js').ErrorWords} error
 */
const failure = (file, error) => ({
  file,
  width: null,
  height: null,
  series: [],
  colors: [],
  error,
});

/**
 * Reads the image that comes by the standard input, whose name is `-`.
 * @param {{file: string, content?: Uint8Array}[]} tasks
 */
async function readInput(tasks) {
  const asked = tasks.filter(({ file }) => file === '-');
  if (asked.length > 1) throw usageError('IMAGE', '- once', `${asked.length} times`);
  if (asked.length === 1) asked[0].content = await readStream(process.stdin);
}

/**
 * The file of each image's overlay.
 * @param {string[]} images
 * @param {string | undefined} pattern
 * @returns {(string | undefined)[]}
 */
function overlaysOf(images, pattern) {
  if (pattern === undefined) return [];
  if (!['.png', '.svg'].includes(extname(pattern).toLowerCase()))
    throw usageError('--overlay', 'a file that ends in .png or .svg', pattern);
  const files = images.map((image) =>
    pattern.replaceAll('{name}', basename(image, extname(image)).replace(/^-$/, 'input')),
  );
  const twice = files.find((file, i) => files.indexOf(file) !== i);
  if (twice !== undefined)
    throw usageError(
      '--overlay',
      'another file for each image',
      twice,
      'Write {name} where the name of the image belongs, such as proofs/{name}.png.',
    );
  return files;
}

/**
 * Refuses, before any work, to write over an image, two things into one file, or where nothing can be
 * written.
 * @param {string[]} images
 * @param {Record<string, (string | undefined)[]>} targets Of each option.
 */
async function checkTargets(images, targets) {
  const inputs = new Set(images.filter((image) => image !== '-').map((image) => resolve(image)));
  /** @type {Map<string, string>} */
  const written = new Map();
  for (const [option, files] of Object.entries(targets))
    for (const file of files) {
      if (file === undefined || file === '-') continue;
      const path = resolve(file);
      const other = written.get(path);
      if (inputs.has(path)) throw usageError(option, 'another file than the image', file);
      if (other) throw usageError(option, `another file than ${other} has`, file);
      written.set(path, option);
      await checkWritable(file);
    }
}
