// Draws SVGs. An SVG is more a program than a picture: a few lines of it can keep a renderer busy for
// hours, or fill the memory. So it is drawn in a process of its own, which ends itself when it takes
// too long or too much.

import { spawn } from 'node:child_process';
import process from 'node:process';
import { text } from 'node:stream/consumers';
import { fileURLToPath } from 'node:url';
import { ChartTraceError, LimitError } from './errors.js';

/** @typedef {import('./selection/view.js').Picture} Picture */

/**
 * @typedef {object} SvgLimits
 * @property {number} seconds How long the process may have the processor, and a tenth of how long it
 *   may take at all.
 * @property {number} bytes How much memory it may have.
 */

/** @type {SvgLimits} */
const LIMITS = { seconds: 20, bytes: 2 ** 30 };

/**
 * What the process says: the size of the picture, or why there is none.
 * @typedef {{width: number, height: number} | {error: ErrorData}} Answer
 */

/** @typedef {import('./errors.js').Details & {message: string}} ErrorData */

/**
 * Draws an SVG at its own width and height.
 * @param {Uint8Array} svg The file's content. Nothing that it refers to is read.
 * @param {{page: string, maxPixels: number}} options As `decodePicture` has them.
 * @param {SvgLimits} [limits]
 * @returns {Promise<Picture>}
 */
export async function drawSvg(svg, options, limits = LIMITS) {
  const program = fileURLToPath(new URL('./svg_process.js', import.meta.url));
  const args = [program, JSON.stringify({ ...options, ...limits, parent: process.pid })];
  // A width that the renderer cannot hold would silently be another one: so what it calls critical is
  // its end.
  const env = { ...process.env, G_DEBUG: 'fatal-criticals' };
  const child = /** @type {import('node:child_process').ChildProcessWithoutNullStreams} */ (
    spawn(process.execPath, args, {
      env,
      // First comes the answer, by a pipe of its own, then the pixels by the standard output.
      stdio: ['pipe', 'pipe', 'ignore', 'pipe'],
      // Ctrl-C in a terminal is for this process to answer, which may want to finish the picture. On
      // Windows it would open a window.
      detached: process.platform !== 'win32',
    })
  );
  // One that cannot be started, or ends early, gives no answer.
  child.on('error', () => {});
  child.stdin.on('error', () => {});
  child.stdin.end(svg);
  const words = await text(/** @type {import('node:stream').Readable} */ (child.stdio[3]));
  const said = /** @type {Answer} */ (words === '' ? { error: ENDED } : JSON.parse(words));
  if ('error' in said) throw errorOf(said.error);
  const data = new Uint8Array(4 * said.width * said.height);
  let at = 0;
  for await (const part of child.stdout) {
    data.set(part, at);
    at += part.length;
  }
  if (at < data.length) throw errorOf(ENDED);
  return { ...said, data };
}

const ENDED = {
  code: 'ERR_PICTURE',
  message: 'The picture cannot be decoded: the process that draws SVGs has died.',
  hint: 'Let another program draw it as a PNG.',
};

/** @param {ErrorData} error Of the process. */
const errorOf = ({ message, ...details }) =>
  details.code === 'ERR_LIMIT'
    ? new LimitError(message, details)
    : new ChartTraceError(message, details);
