// The manual page, made from the same description as the parser and the help.

import { describe } from './help.js';
import { EXAMPLES, EXIT_CODES, PACKAGE } from './program.js';

/** @typedef {import('commander').Command} Command */

const DETAILS = `
.SH AXES
An axis is given by two or more references,
.IR PIXEL = VALUE ,
with commas between them.
The centre of the top left pixel is (0, 0); rows are counted downwards.
From more than two references the line is laid that misses them least, and a note tells which of them lies off it.
.PP
Values are numbers such as 0.5, 1e\\-3 or 10^\\-3; on a date scale ISO 8601 dates such as 1999\\-12\\-31; on a category scale the names, one reference for each category.
Without axes the result is in pixels.
.SH FORMATS
.TP
.B csv, tsv
One line for each point, after a line of names.
.TP
.B json
One object:
.IR schemaVersion " and " images ,
a record for each image, in the order of the command line.
.TP
.B ndjson
One such record a line, written as soon as it is there.
.TP
.B table
For people.
.SH MASKS
A list of shapes in JSON, each
.RI {\\(dqinclude\\(dq:\\ SHAPE }
or
.RI {\\(dqexclude\\(dq:\\ SHAPE },
a shape being a rectangle
.B {\\(dqleft\\(dq: 60, \\(dqtop\\(dq: 5, \\(dqright\\(dq: 90, \\(dqbottom\\(dq: 20}
or the corners of a polygon
.BR [[60,\\ 5],\\ [90,\\ 5],\\ [75,\\ 30]] .
A pixel counts when it is inside any shape to include, or when there is none, and inside no shape to exclude.
.SH FILES
A file is written whole or not at all: under another name first, which is changed when all is there.
Only the file of
.B \\-\\-resume
grows line by line, so that whatever happens to the run, finished records stay; the next run goes on behind them, and takes up again what failed.
.PP
A project from somebody else could name any file.
So
.B \\-\\-project
opens by itself only an image in the folder of the project or below, links followed, and
.B \\-\\-save\\-project
refuses any other.
.SH ENVIRONMENT
.TP
.B NO_COLOR
When set, nothing is coloured.`;

/**
 * @param {Command} program
 * @returns {string} In the language of man.
 */
export function manual(program) {
  return [
    `.TH CHART\\-TRACE 1 "" "${PACKAGE.name} ${PACKAGE.version}" "User Commands"\n.nh`,
    '.SH NAME',
    `${escaped(PACKAGE.name)} \\- get the data back out of a picture of a chart`,
    '.SH SYNOPSIS',
    ...[program, ...program.commands].flatMap(synopsis),
    '.SH DESCRIPTION',
    escaped(PACKAGE.description),
    'Data go to the standard output, all else to the standard error.',
    'A failure of one image does not stop the others.',
    '.SH EXAMPLES',
    ...EXAMPLES.flatMap(([task, line]) => [
      '.PP',
      `${escaped(task)}:`,
      '.PP',
      '.nf',
      '.RS',
      escaped(line),
      '.RE',
      '.fi',
    ]),
    '.SH OPTIONS',
    ...optionsOf(program),
    ...program.commands.flatMap((command) => [
      `.SH COMMAND ${command.name().toUpperCase()}`,
      `${escaped(sentence(command.description()))}`,
      ...optionsOf(command),
    ]),
    DETAILS.trim(),
    '.SH EXIT STATUS',
    ...EXIT_CODES.flatMap(([code, meaning]) => ['.TP', `.B ${code}`, `${escaped(meaning)}.`]),
    '',
  ].join('\n');
}

/** @param {Command} command */
const synopsis = (command) => [
  '.PP',
  `.B ${escaped([command.parent?.name(), command.name()].filter(Boolean).join(' '))}`,
  escaped(command.usage()),
];

/** @param {Command} command */
function optionsOf(command) {
  /** @type {string | undefined} */
  let before;
  return command.options.flatMap((option) => {
    const heading = option.helpGroupHeading ?? (command.parent ? undefined : 'Other');
    const isNew = heading !== undefined && heading !== before;
    before = heading;
    return [
      ...(isNew ? [`.SS ${escaped(heading.replace(/:$/, ''))}`] : []),
      '.TP',
      `.B ${escaped(option.flags)}`,
      `${escaped(sentence(describe(option)))}`,
    ];
  });
}

/** @param {string} text */
const sentence = (text) => `${text[0].toUpperCase()}${text.slice(1)}.`;

/** @param {string} text */
const escaped = (text) => text.replace(/[\\-]/g, '\\$&').replace(/^(\s*)([.'])/gm, '$1\\&$2');
