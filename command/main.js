// The command as a function: arguments in, exit code out.

import process from 'node:process';
import { CommanderError } from 'commander';
import { completionScript } from './completion.js';
import { errorReport } from '../lib/reports/report.js';
import { setUpHelp } from './help.js';
import { makeMessages, wordsOf } from './messages.js';
import { makeProgram } from './program.js';
import { colours, trace } from './runs.js';

/**
 * @param {string[]} args What was typed behind the name of the command.
 * @returns {Promise<number>} The exit code.
 */
export async function main(args) {
  // The reader of a pipe may have seen enough: that is no failure.
  let isClosed = false;
  process.stdout.on('error', (error) => {
    if (/** @type {NodeJS.ErrnoException} */ (error).code !== 'EPIPE') throw error;
    isClosed = true;
  });
  process.stderr.on('error', () => {});
  let code = 0;
  const program = makeProgram({
    trace: async (images, options) => void (code = await trace(images, options)),
    colors: async (images, options) => void (code = await colours(images, options)),
    completion: async (shell) => void process.stdout.write(completionScript(program, shell)),
  });
  setUpHelp(program);
  for (const command of [program, ...program.commands])
    command.exitOverride().configureOutput({ writeErr: () => {}, outputError: () => {} });
  try {
    await program.parseAsync(args, { from: 'user' });
    return code;
  } catch (error) {
    if (error instanceof CommanderError && error.exitCode === 0) return 0;
    if (isClosed) return 0;
    const words = error instanceof CommanderError ? wordsOfParser(error) : wordsOf(error);
    const { path } = /** @type {NodeJS.ErrnoException} */ (error);
    makeMessages({ json: args.includes('--json') }).error(words, path);
    return words.code === 'ERR_USAGE' ? 2 : 1;
  }
}

/**
 * An error of the parser in our words.
 * @param {CommanderError} error
 * @returns {import('./messages.js').ErrorWords}
 */
function wordsOfParser({ message }) {
  const [what, hint] = message.replace(/^error: /, '').split('\n');
  const suggestion = hint?.replace(/^\((.*)\)$/, '$1') ?? 'See chart-trace --help.';
  return errorReport({ code: 'ERR_USAGE', message: `${what}.`, hint: suggestion });
}
