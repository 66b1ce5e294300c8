// What a record was made from, in 64 hexadecimal digits: the picture, the options and the program.

import { readWhole, sha256Of } from '../lib/files.js';
import { VERSION } from '../lib/version.js';

/**
 * An image, and in the other fields what is asked about it.
 * @typedef {{file: string, content?: Uint8Array, [option: string]: any}} AnyTask
 */

/**
 * @param {AnyTask} task
 * @param {Uint8Array} content Of the image's file.
 */
export function digestOf(task, content) {
  const options = { ...task, file: undefined, content: undefined };
  const words = JSON.stringify([VERSION, options, sha256Of(content)]);
  return sha256Of(new TextEncoder().encode(words));
}

/**
 * The digest that the record of an image would have if it were made now; undefined where the image
 * cannot be read.
 * @param {AnyTask} task
 */
export async function digestNow(task) {
  try {
    return digestOf(task, task.content ?? (await readWhole(task.file)));
  } catch {
    return undefined;
  }
}
