// Files that are written whole or not at all.

import { createHash, randomBytes } from 'node:crypto';
import { open, realpath, rename, rm, stat } from 'node:fs/promises';
import { dirname, join } from 'node:path';

/**
 * Writes a file. What was there before stays until all of the new content is on the disk, and a
 * failure leaves it as it was: the content goes into a file of another name beside it, which then
 * takes its place. A link is followed. What is no file, such as a pipe, is written to as it is.
 * @param {string} path
 * @param {string | Uint8Array} data
 */
export async function writeWhole(path, data) {
  const target = await realpath(path).catch(() => path);
  const before = await stat(target).catch(() => undefined);
  if (before && !before.isFile()) return writeTo(target, data, 'w');
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
