// Runs over images: what is asked of each, and what becomes of the answers.

import { basename, extname, resolve } from 'node:path';
import process from 'node:process';
import { buffer } from 'node:stream/consumers';
import { planOf } from '../lib/options.js';
import { listen } from './interruption.js';
import { colourWriter, traceWriter } from './formats.js';
import { makeMessages } from './messages.js';
import { checkWritable, formatOf, makeOutput } from './output.js';
import { inOrder } from './pool.js';
import { makeProgress } from './progress.js';
import { defaultJobs } from './program.js';
import { selectionOf, settingsOf } from './settings.js';
import { usageError } from './usage.js';

/** @typedef {import('./messages.js').Messages} Messages */

/**
 * Traces images.
 * @param {string[]} images
 * @param {Record<string, any>} options
 * @returns {Promise<number>} The exit code.
 */
export async function trace(images, options) {
  const settings = settingsOf(options);
  const overlays = overlaysOf(images, options.overlay);
  await checkTargets(images, [options.output, ...overlays]);
  const tasks = images.map((file, i) => ({ file, settings, overlay: overlays[i] }));
  const format = formatOf(options);
  const writer = traceWriter(format, options, planOf(settings.trace).mode.kind);
  let isFound = false;
  return run('trace', tasks, options, {
    writer,
    look: (record, note) => {
      for (const { color, notes } of record.series)
        for (const text of notes) note(`${color}: ${text}`, record.file);
      const found = record.series.map((/** @type {any} */ { pixels }) => pixels.length > 0);
      if (found.some(Boolean) && !isFound && !settings.trace.axes)
        note('without --x and --y the result is in pixels');
      isFound ||= found.some(Boolean);
      return settings.colours ? found.every(Boolean) : found.some(Boolean);
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
  await checkTargets(images, [options.output]);
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
 * @param {{file: string, content?: Uint8Array}[]} tasks
 * @param {Record<string, any>} options
 * @param {Purpose} purpose
 */
async function run(name, tasks, options, { writer, look }) {
  const messages = makeMessages(options);
  const files = tasks.map(({ file }) => file);
  const output = await makeOutput(options, writer, files);
  await readInput(tasks);
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
  if (asked.length === 1) asked[0].content = await buffer(process.stdin);
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
 * @param {(string | undefined)[]} targets
 */
async function checkTargets(images, targets) {
  const inputs = new Set(images.filter((image) => image !== '-').map((image) => resolve(image)));
  const written = new Set();
  for (const target of targets) {
    if (target === undefined || target === '-') continue;
    const path = resolve(target);
    if (inputs.has(path)) throw usageError('-o', 'another file than the image', target);
    if (written.has(path)) throw usageError('--overlay', 'another file than -o has', target);
    written.add(path);
    await checkWritable(target);
  }
}
