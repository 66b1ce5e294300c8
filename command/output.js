// Where the records of a run go: to the standard output or into a file.
//
// NDJSON goes out record by record. Every other format is written when all records are there, or
// those that were finished when the run was interrupted. A file is written whole or not at all; only
// the one that `--resume` goes on with grows line by line, so that no failure loses what is finished.

import { once } from 'node:events';
import { constants, existsSync, readFileSync } from 'node:fs';
import { access, appendFile, stat } from 'node:fs/promises';
import { dirname, extname } from 'node:path';
import process from 'node:process';
import { writeWhole } from '../lib/files.js';
import { FORMATS } from './program.js';
import { usageError } from './usage.js';

/** @typedef {{file: string, error: import('./messages.js').ErrorWords | null}} AnyRecord */

/**
 * Writes records in a format.
 * @typedef {object} Writer
 * @property {boolean} isStream Whether each record can be written as soon as it is there.
 * @property {(records: any[], isFirst: boolean) => string} write
 */

/**
 * @typedef {object} Output
 * @property {(file: string) => boolean} has Whether the record of a file is there from before.
 * @property {(record: any) => Promise<void>} add The next record.
 * @property {() => Promise<void>} end
 */

/**
 * Makes the output that options ask for.
 * @param {Record<string, any>} options
 * @param {Writer} writer
 * @param {string[]} files The images, in their order.
 * @returns {Promise<Output>}
 */
export async function makeOutput({ output: path = '-', resume = false }, writer, files) {
  if (path === '-') return toStandardOutput(writer);
  return resume ? goOn(path, writer, files) : intoFile(path, writer);
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
 * that was killed, and the records of images that failed are left out and made anew. In the end the
 * records stand in the order of the images, behind those of other images.
 * @param {string} path
 * @param {Writer} writer
 * @param {string[]} files
 * @returns {Promise<Output>}
 */
async function goOn(path, { write }, files) {
  const before = existsSync(path) ? readFileSync(path, 'utf8').split(/(?<=\n)/) : [];
  const lines = before
    .map((line) => ({ line, ...recordOf(line) }))
    .filter(({ error }) => error === null);
  const isWhole = lines.length === before.length;
  if (!isWhole) await writeWhole(path, textOf(lines));
  const done = new Set(lines.map(({ file }) => file));
  const places = new Map(files.map((file, i) => [file, i]));
  const placeOf = (/** @type {{file?: string}} */ { file = '' }) => places.get(file) ?? -1;
  return {
    has: (file) => done.has(file),
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
