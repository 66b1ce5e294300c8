// Where the records of a run go: to the standard output or into a file.
//
// The standard output gets record by record, but for JSON, which is written when all records are
// there, or those that were finished when the run was interrupted. A file is written whole or not at
// all; only the one that `--resume` goes on with grows line by line, so that no failure loses what is
// finished. Each of its records says by a digest what it was made from.

import { once } from 'node:events';
import { constants, existsSync } from 'node:fs';
import { access, appendFile, stat } from 'node:fs/promises';
import { dirname, extname } from 'node:path';
import process from 'node:process';
import { readWhole, writeWhole } from '../lib/files.js';
import { digestNow } from './digests.js';
import { FORMATS } from './program.js';
import { usageError } from './usage.js';

/** @typedef {import('./digests.js').AnyTask} AnyTask */

/**
 * @typedef {object} AnyRecord
 * @property {string} file
 * @property {import('./messages.js').ErrorWords | null} error
 * @property {string} [digest] Of what it was made from.
 */

/**
 * Writes records in a format.
 * @typedef {object} Writer
 * @property {boolean} isStream Whether each record can be written as soon as it is there.
 * @property {(records: any[], isFirst: boolean) => string} write
 */

/**
 * @typedef {object} Output
 * @property {(file: string) => boolean} has Whether the record of a file is there from before.
 * @property {number} outdated How many records were there, but made from something else.
 * @property {(record: any) => Promise<void>} add The next record.
 * @property {() => Promise<void>} end
 */

/**
 * Makes the output that options ask for.
 * @param {Record<string, any>} options
 * @param {Writer} writer
 * @param {AnyTask[]} tasks In the order of the records.
 * @returns {Promise<Output>}
 */
export async function makeOutput({ output: path = '-', resume = false }, writer, tasks) {
  if (path === '-') return toStandardOutput(writer);
  return resume ? goOn(path, writer, tasks) : intoFile(path, writer);
}

/**
 * @param {Writer} writer
 * @returns {Output}
 */
function toStandardOutput({ isStream, write }) {
  /** @type {any[]} */
  const records = [];
  let isFirst = true;
  return {
    has: () => false,
    outdated: 0,
    add: async (record) => {
      if (!isStream) return void records.push(record);
      await print(write([record], isFirst));
      isFirst = false;
    },
    end: async () => {
      if (!isStream || isFirst) await print(write(records, true));
    },
  };
}

/**
 * @param {string} path
 * @param {Writer} writer
 * @returns {Output}
 */
function intoFile(path, { write }) {
  /** @type {any[]} */
  const records = [];
  return {
    has: () => false,
    outdated: 0,
    add: async (record) => void records.push(record),
    end: () => writeWhole(path, write(records, true)),
  };
}

/**
 * The format that options ask for.
 * @param {Record<string, any>} options
 * @returns {typeof FORMATS[number]}
 */
export function formatOf({ format, json, output = '-', resume }) {
  if (json && format !== undefined && !format.endsWith('json'))
    throw usageError('--format', 'json or ndjson beside --json', format);
  if (resume && (output === '-' || (format ?? 'ndjson') !== 'ndjson'))
    throw usageError(
      '--resume',
      '-o FILE and --format ndjson',
      output === '-' ? 'no FILE' : format,
    );
  if (format !== undefined) return format;
  if (resume) return 'ndjson';
  if (json) return 'json';
  const ending = extname(output).slice(1).toLowerCase();
  const named = FORMATS.find((name) => name === ending && name !== 'table');
  return named ?? (output === '-' && process.stdout.isTTY ? 'table' : 'csv');
}

/** @param {string} text */
async function print(text) {
  if (process.stdout.destroyed || process.stdout.write(text)) return;
  await Promise.race([once(process.stdout, 'drain'), once(process.stdout, 'close')]).catch(
    () => {},
  );
}

/**
 * Finds out before any work that a file cannot be written.
 * @param {string} path
 */
export async function checkWritable(path) {
  try {
    await access(dirname(path), constants.W_OK);
    if (!(await stat(dirname(path))).isDirectory())
      throw Object.assign(new Error('no folder'), { code: 'ENOTDIR' });
    if (existsSync(path) && (await stat(path)).isDirectory())
      throw Object.assign(new Error('a folder'), { code: 'EISDIR' });
  } catch (error) {
    throw Object.assign(/** @type {Error} */ (error), { path });
  }
}

/**
 * Goes on with a file of records, a line each. A line that is not whole, as the last one of a run
 * that was killed, and the records of images that failed or that were made from another picture or
 * with other options are left out and made anew. In the end the records stand in the order of the
 * images, behind those of other images.
 * @param {string} path
 * @param {Writer} writer
 * @param {AnyTask[]} tasks
 * @returns {Promise<Output>}
 */
async function goOn(path, { write }, tasks) {
  const files = tasks.map(({ file }) => file);
  const before = existsSync(path) ? linesOf(await readWhole(path)) : [];
  const finished = before
    .map((line) => ({ line, ...recordOf(line) }))
    .filter(({ error }) => error === null);
  const digests = await digestsNow(tasks, finished);
  // Of an image that is not there any more, nothing newer could be made.
  const lines = finished.filter(
    ({ file = '', digest }) => (digests.get(file) ?? digest) === digest,
  );
  if (lines.length < before.length) await writeWhole(path, textOf(lines));
  const done = new Set(lines.map(({ file }) => file));
  const places = new Map(files.map((file, i) => [file, i]));
  const placeOf = (/** @type {{file?: string}} */ { file = '' }) => places.get(file) ?? -1;
  return {
    has: (file) => done.has(file),
    outdated: finished.length - lines.length,
    add: async (record) => {
      const line = write([record], false);
      lines.push({ line, ...record });
      await appendFile(path, line);
    },
    end: async () => {
      const inOrder = [...lines].sort((a, b) => placeOf(a) - placeOf(b));
      const isOther = inOrder.some((line, i) => line !== lines[i]);
      if (isOther) await writeWhole(path, textOf(inOrder));
    },
  };
}

/** @param {Uint8Array} content */
const linesOf = (content) => {
  const text = new TextDecoder().decode(content);
  return text === '' ? [] : text.split(/(?<=\n)/);
};

/**
 * The digests that the records of images would have if they were made now.
 * @param {AnyTask[]} tasks
 * @param {Partial<AnyRecord>[]} records Whose digests are asked for.
 * @returns {Promise<Map<string, string | undefined>>} By the image's name.
 */
async function digestsNow(tasks, records) {
  const asked = new Set(records.map(({ file }) => file));
  /** @type {Map<string, string | undefined>} */
  const digests = new Map();
  for (const task of tasks) if (asked.has(task.file)) digests.set(task.file, await digestNow(task));
  return digests;
}

/** @param {{line: string}[]} lines */
const textOf = (lines) => lines.map(({ line }) => line).join('');

/**
 * The record in a line; undefined where there is none.
 * @param {string} line
 * @returns {AnyRecord | undefined}
 */
function recordOf(line) {
  try {
    const record = JSON.parse(line);
    return line.endsWith('\n') && typeof record?.file === 'string' ? record : undefined;
  } catch {
    return undefined;
  }
}
