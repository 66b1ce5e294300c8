// Files that are read within bounds, and written whole or not at all.

import { createHash, randomBytes } from 'node:crypto';
import { constants } from 'node:fs';
import { open, readlink, realpath, rename, rm, stat } from 'node:fs/promises';
import { dirname, join, resolve } from 'node:path';
import { ChartTraceError, LimitError } from './errors.js';

/** Larger files are not read: 512 MiB. */
export const MAX_FILE = 2 ** 29;

/**
 * Reads a file. A pipe or a device is refused: it may never end, or never begin.
 * @param {string} path
 * @param {number} [maxBytes]
 * @returns {Promise<Uint8Array>}
 */
export async function readWhole(path, maxBytes = MAX_FILE) {
  // Whoever opens a pipe waits for its other end, unless it is said not to.
  const file = await open(path, constants.O_RDONLY | (constants.O_NONBLOCK ?? 0));
  try {
    const about = await file.stat();
    if (about.isFile()) checkSize(about.size, maxBytes);
    // Reading a folder fails with an error of its own.
    else if (!about.isDirectory()) throw noFile(path);
    return await file.readFile();
  } finally {
    await file.close();
  }
}

/**
 * Reads a stream to its end.
 * @param {AsyncIterable<Uint8Array>} stream
 * @param {number} [maxBytes]
 * @returns {Promise<Uint8Array>}
 */
export async function readStream(stream, maxBytes = MAX_FILE) {
  const parts = [];
  let size = 0;
  for await (const part of stream) {
    size += part.length;
    checkSize(size, maxBytes);
    parts.push(part);
  }
  return Buffer.concat(parts);
}

/**
 * @param {number} size
 * @param {number} maxBytes
 */
function checkSize(size, maxBytes) {
  if (size > maxBytes)
    throw new LimitError(`The file is too large: ${size} bytes or more.`, {
      expected: `at most ${maxBytes} bytes`,
      received: size,
    });
}

/** @param {string} path */
const noFile = (path) =>
  new ChartTraceError(`${path} is no file but a pipe or a device.`, {
    code: 'ERR_FILE',
    expected: 'a file',
    received: path,
    hint: 'The command reads a picture that comes by a pipe under the name -.',
  });

/**
 * Writes a file. What was there before stays until all of the new content is on the disk, and a
 * failure leaves it as it was: the content goes into a file of another name beside it, which then
 * takes its place. A link is followed. What is no file, such as a pipe, is written to as it is.
 * @param {string} path
 * @param {string | Uint8Array} data
 */
export async function writeWhole(path, data) {
  const before = await stat(path).catch(() => undefined);
  if (before && !before.isFile()) return writeTo(path, data, 'w');
  const target = await targetOf(path);
  const beside = join(dirname(target), `.chart-trace-${randomBytes(6).toString('hex')}.tmp`);
  try {
    await writeTo(beside, data, 'wx', before?.mode);
    await rename(beside, target);
  } catch (error) {
    await rm(beside, { force: true });
    throw error;
  }
}

/**
 * The file that a path leads to through links. It need not be there yet.
 * @param {string} path
 * @returns {Promise<string>}
 */
async function targetOf(path) {
  try {
    return await realpath(path);
  } catch (error) {
    if (/** @type {NodeJS.ErrnoException} */ (error).code !== 'ENOENT') throw error;
    const link = await readlink(path).catch(() => undefined);
    if (link === undefined) return path;
    return targetOf(resolve(await realpath(dirname(path)), link));
  }
}

/**
 * @param {string} path
 * @param {string | Uint8Array} data
 * @param {'w' | 'wx'} flags
 * @param {number} [mode] The rights of the file.
 */
async function writeTo(path, data, flags, mode) {
  const file = await open(path, flags, mode);
  try {
    // The process may be set to give new files fewer rights.
    if (mode !== undefined) await file.chmod(mode & 0o777);
    await file.writeFile(data);
    // Not every kind of file can be told to reach the disk.
    if (flags === 'wx') await file.sync();
  } finally {
    await file.close();
  }
}

/**
 * The SHA-256 of a file's bytes, in hexadecimal digits, as projects have it.
 * @param {Uint8Array} bytes
 */
export const sha256Of = (bytes) => createHash('sha256').update(bytes).digest('hex');
