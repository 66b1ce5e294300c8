// The command as a shell runs it: in a process of its own, on pictures drawn for the purpose.

import { mkdtemp, realpath, rm, writeFile } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import process from 'node:process';
import { text } from 'node:stream/consumers';
import { encodePng } from '../../../lib/pictures.js';
import { root } from './addon.js';

export const program = join(root, 'bin', 'chart-trace.js');

/**
 * Begins the command.
 * @param {string[]} args
 * @param {import('node:child_process').SpawnOptions} [options]
 */
export function begin(args, options = {}) {
  const env = { ...process.env };
  delete env.NO_COLOR;
  delete env.FORCE_COLOR;
  return spawn(process.execPath, [program, ...args], {
    stdio: ['ignore', 'pipe', 'pipe'],
    ...options,
    env: { ...env, ...options.env },
  });
}

/**
 * Runs the command and tells how it ended and what it wrote.
 * @param {string[]} args
 * @param {import('node:child_process').SpawnOptions & {input?: Uint8Array}} [options]
 */
export async function command(args, { input, ...options } = {}) {
  const child = begin(args, input ? { stdio: 'pipe', ...options } : options);
  if (input) child.stdin.end(input);
  const written = Promise.all([text(child.stdout), text(child.stderr)]);
  const [status, signal] = await once(child, 'close');
  const [stdout, stderr] = await written;
  return { status, signal, stdout, stderr };
}

/** A folder that is gone after the tests. */
export async function makeFolder() {
  const folder = await realpath(await mkdtemp(join(tmpdir(), 'chart-trace-')));
  return { folder, remove: () => rm(folder, { recursive: true, force: true }) };
}

/**
 * A picture as PNG: rectangles on white.
 * @param {{width?: number, height?: number}} size
 * @param {...[left: number, top: number, right: number, bottom: number, rgb: number[]]} boxes Edges
 *   included.
 */
export async function png({ width = 60, height = 40 }, ...boxes) {
  const data = new Uint8Array(4 * width * height).fill(255);
  for (const [left, top, right, bottom, rgb] of boxes)
    for (let y = top; y <= bottom; ++y)
      for (let x = left; x <= right; ++x) data.set(rgb, 4 * (y * width + x));
  return encodePng({ width, height, data });
}

export const BLUE = [0, 0, 255];
export const RED = [255, 0, 0];

/** Two blue markers, at (12, 12) and (42, 22), and a red one at (32, 32). */
export const MARKERS = await png(
  {},
  [10, 10, 14, 14, BLUE],
  [40, 20, 44, 24, BLUE],
  [30, 30, 34, 34, RED],
);

/** @param {string} output NDJSON. */
export const parseRecords = (output) =>
  output
    .split('\n')
    .filter((line) => line !== '')
    .map((line) => JSON.parse(line));

/**
 * Writes the picture of the markers under several names.
 * @param {string} folder
 * @param {string[]} names
 */
export async function writeMarkers(folder, names) {
  for (const name of names) await writeFile(join(folder, name), MARKERS);
}
