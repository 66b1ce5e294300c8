// The help: what a newcomer types first, then every option.

import process from 'node:process';
import { EXAMPLES, EXIT_CODES } from './program.js';
import { bold, columnsOf, hasColours, wrap } from './terminal.js';

/** @typedef {import('commander').Command} Command */

/**
 * Gives a command and those under it their help.
 * @param {Command} program
 */
export function setUpHelp(program) {
  const width = Math.min(100, columnsOf(process.stdout));
  for (const command of [program, ...program.commands]) {
    const isWhole = command === program;
    command.configureHelp({
      helpWidth: width,
      formatHelp: (asked, help) =>
        [
          usage(asked),
          wrap(isWhole ? asked.description() : sentence(asked.description()), width),
          ...(isWhole ? [section('Examples:', EXAMPLES.map(example).join('\n'))] : []),
          ...optionSections(asked, help),
          ...(isWhole ? [section('Exit codes:', EXIT_CODES.map(exitCode).join('\n'))] : []),
        ]
          .join('\n\n')
          .concat('\n'),
    });
  }
}

/** @param {Command} command */
function usage(command) {
  const names = [command.name(), ...(command.parent ? [command.parent.name()] : [])].reverse();
  const lines = [`Usage: ${names.join(' ')} ${command.usage()}`];
  for (const sub of command.commands)
    lines.push(`       ${names.join(' ')} ${sub.name()} ${sub.usage()}`);
  return lines.join('\n');
}

/** @param {string} text */
const sentence = (text) => `${text[0].toUpperCase()}${text.slice(1)}.`;

/**
 * @param {string} title
 * @param {string} body
 */
const section = (title, body) => `${hasColours(process.stdout) ? bold(title) : title}\n${body}`;

/** @param {string[]} example */
const example = ([task, line]) => `  # ${task}\n  ${line}`;

/** @param {string[]} entry */
const exitCode = ([code, meaning]) => `  ${code.padEnd(4)} ${meaning}`;

/**
 * The options in their groups, terms and descriptions in two columns.
 * @param {Command} command
 * @param {import('commander').Help} help
 */
function optionSections(command, help) {
  /** @type {Map<string, string[]>} */
  const groups = new Map();
  const width = help.helpWidth ?? 80;
  for (const option of help.visibleOptions(command)) {
    const heading = option.helpGroupHeading ?? (command.parent ? 'Options:' : 'Other:');
    const lines = [...(groups.get(heading) ?? []), optionLines(option, width)];
    groups.set(heading, lines);
  }
  return [...groups].map(([heading, lines]) => section(heading, lines.join('\n')));
}

/** Where the second column begins. */
const TERM = 30;

/**
 * @param {import('commander').Option} option
 * @param {number} width
 */
function optionLines(option, width) {
  const { flags, short } = option;
  const term = `${short ? '  ' : '      '}${flags}`;
  const body = wrap(describe(option), width, ' '.repeat(TERM));
  return term.length < TERM - 1 ? term + body.slice(term.length) : `${term}\n${body}`;
}

/**
 * What an option does and which words it takes.
 * @param {import('commander').Option} option
 */
export function describe({ description, argChoices, defaultValueDescription: usual }) {
  if (!argChoices) return description;
  const words = argChoices.map((word) => (word === usual ? `${word} (default)` : word));
  return `${description}: ${words.join(', ')}`;
}
