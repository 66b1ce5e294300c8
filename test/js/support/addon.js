// The extension module under test, and calls of it in processes of their own.

import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { createRequire } from 'node:module';
import { dirname, join, resolve } from 'node:path';
import process from 'node:process';
import { text } from 'node:stream/consumers';
import { fileURLToPath } from 'node:url';

const here = dirname(fileURLToPath(import.meta.url));

export const root = resolve(here, '../../..');

/** The module's file; CHART_TRACE_ADDON names another build, such as the sanitized one. */
export const addonFile = resolve(
  process.env.CHART_TRACE_ADDON ?? join(root, 'build/Release/cpp_code.node'),
);

export const { trace } = createRequire(import.meta.url)(addonFile);

/** Runs Node.js with `args` and tells how it ended and what it wrote. */
export async function node(args, options) {
  const child = spawn(process.execPath, args, { stdio: ['ignore', 'pipe', 'pipe'], ...options });
  const written = Promise.all([text(child.stdout), text(child.stderr)]);
  const [status, signal] = await once(child, 'close');
  const [stdout, stderr] = await written;
  return { status, signal, stdout, stderr };
}

/**
 * Runs `source`, a script that sees `trace`, in a process of its own: an abort would take this one
 * along. Tells the value of its last expression, or what it threw, once the process has ended as it
 * should.
 */
export async function attempt(source, nodeOptions = []) {
  const args = [...nodeOptions, join(here, 'attempt.cjs'), addonFile, source];
  const { status, signal, stdout, stderr } = await node(args);
  if (status !== 0 || signal !== null || stderr !== '')
    throw new Error(`the process ended with status ${status}, signal ${signal}: ${stderr}`);
  return JSON.parse(stdout);
}
