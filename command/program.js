// What can be typed: the options of the command, their values and their help. The parser, the
// completions and the manual are all made from this one description.

import { readFileSync } from 'node:fs';
import { availableParallelism } from 'node:os';
import { Argument, Command, Option } from 'commander';
import { MODES } from '../lib/tracing/modes.js';
import { box, colour, colours, number, oneOf, references } from './values.js';

/** @typedef {import('commander').Command} Program */

export const FORMATS = /** @type {const} */ (['table', 'csv', 'tsv', 'json', 'ndjson']);
export const SCALES = /** @type {const} */ (['linear', 'log', 'log2', 'ln', 'date', 'category']);
export const SHELLS = /** @type {const} */ (['bash', 'zsh', 'fish']);

/** In the order of how often one meets them. */
export const KINDS = /** @type {const} */ ([
  'scatter',
  'curve',
  'points+curve',
  'bars',
  'hbars',
  'histogram',
  'steps',
]);
const GROUPINGS = /** @type {const} */ (['fission', 'horizontal', 'clusters']);
const DIRECTIONS = /** @type {const} */ (['up', 'down', 'left', 'right']);
const STRIDES = ['1', '2', '4', '8', '16'];

/** @type {{name: string, version: string, description: string}} */
export const PACKAGE = JSON.parse(
  readFileSync(new URL('../package.json', import.meta.url), 'utf8'),
);

/** What the help begins with: for each task, the line to type. */
export const EXAMPLES = [
  ['The colours of the series of a chart', 'chart-trace colors chart.png'],
  ['The markers of every series, in pixels', 'chart-trace chart.png --kind scatter'],
  [
    'One series in the values of the axes, as CSV, and a picture that proves it',
    'chart-trace chart.png --kind scatter --color steelblue \\\n' +
      '    --x 82=0,402=50 --y 310=0.001,24=1000 --y-scale log \\\n' +
      '    -o data.csv --overlay proof.png',
  ],
  [
    'Say in a file how that was done; do it again with another picture',
    'chart-trace chart.png --kind scatter --save-project chart.json\n' +
      '  chart-trace other.png --project chart.json',
  ],
  [
    'A folder of charts, a line of JSON each; after Ctrl-C, again to go on',
    'chart-trace scans/*.png --kind curve --resume --format ndjson -o data.ndjson',
  ],
];

export const EXIT_CODES = [
  ['0', 'done'],
  ['1', 'an image failed, or nothing was found in it'],
  ['2', 'the command line is wrong; nothing was done'],
  ['130', 'interrupted; what was finished is written'],
];

/**
 * The parser of the command.
 * @param {{trace: (images: string[], options: any) => Promise<void>,
 *   colors: (images: string[], options: any) => Promise<void>,
 *   completion: (shell: string) => Promise<void>}} actions What to do.
 * @returns {Program}
 */
export function makeProgram(actions) {
  const program = new Command('chart-trace')
    .description(PACKAGE.description)
    .usage('IMAGE... [options]')
    .helpOption('-h, --help', 'print this help')
    .helpCommand(false)
    .enablePositionalOptions()
    .allowExcessArguments(false)
    .addArgument(imagesArgument().argOptional())
    .action(actions.trace);
  for (const [heading, options] of TRACE_OPTIONS())
    for (const option of options) program.addOption(option.helpGroup(heading));
  program.version(PACKAGE.version, '-V, --version', 'print the version');

  const colors = program
    .command('colors')
    .alias('colours')
    .usage('IMAGE... [options]')
    .description('list the colours of the series in the images')
    .helpOption('-h, --help', 'print this help')
    .addArgument(imagesArgument())
    .action(actions.colors);
  for (const option of [...whereOptions(), ...outputOptions(), jobsOption()])
    colors.addOption(option);

  program
    .command('completion')
    .usage('SHELL')
    .description('print a script that completes what is typed, for bash, zsh or fish')
    .helpOption('-h, --help', 'print this help')
    .addArgument(
      new Argument('<SHELL>', SHELLS.join(', '))
        .choices(SHELLS)
        .argParser(oneOf('completion', SHELLS)),
    )
    .action(actions.completion);
  return program;
}

const imagesArgument = () =>
  new Argument(
    '<IMAGE...>',
    'files: PNG, JPEG, WebP, TIFF, GIF, SVG or AVIF; - reads one from the input',
  );

/** @type {() => [heading: string, options: Option[]][]} */
const TRACE_OPTIONS = () => [
  [
    'What the chart shows:',
    [
      choice('--kind <KIND>', 'what the series is drawn as', KINDS),
      choice('--mode <MODE>', 'instead of --kind: a mode of the native function', modeNames()),
      choice('--grouping <HOW>', 'how pixels are told to belong together', GROUPINGS, {
        usual: 'fission',
      }),
      choice('--stride <N>', 'curves: keep every Nth point', STRIDES, {
        usual: '1',
        read: Number,
      }),
      option(
        '--cluster-fraction <F>',
        'clusters: the share of pixels that sets their radius (default: 0.05)',
        number('--cluster-fraction', 'a number above 0, at most 1', (f) => f > 0 && f <= 1),
      ),
      option(
        '--pixel-step <S>',
        'distance of neighbouring pixels (default: 1)',
        number('--pixel-step', 'a number above 0', (step) => step > 0),
      ),
      choice('--direction <WAY>', 'where bars grow (default: up, lying bars right)', DIRECTIONS),
      new Option('--other-ends', 'bars: give their other ends too'),
    ],
  ],
  [
    'Which pixels are the series:',
    [
      option(
        '--color <CSS>',
        'its colour; again for each more series (default: every colour found)',
        colours('--color'),
      ),
      option(
        '--exclude <CSS>',
        'a colour that is not of it; may stand again',
        colours('--exclude'),
      ),
      option(
        '--tolerance <N>',
        'how unlike it a pixel may look, 0 to 100 (default: 6)',
        number('--tolerance', 'a number from 0 to 100', (n) => n >= 0 && n <= 100),
      ),
      option('--background <CSS>', 'the colour behind it (default: found)', colour('--background')),
      ...whereOptions(),
    ],
  ],
  [
    'Axes (without them the result is in pixels):',
    [
      option('--x <P=V,P=V,...>', 'pixel columns and the values there', references('--x')),
      option('--y <P=V,P=V,...>', 'pixel rows, from the top, and the values', references('--y')),
      choice('--x-scale <SCALE>', 'scale of x', SCALES, { usual: 'linear' }),
      choice('--y-scale <SCALE>', 'scale of y', SCALES, { usual: 'linear' }),
    ],
  ],
  [
    'Output:',
    [
      ...outputOptions(),
      new Option(
        '--overlay <FILE>',
        'draw what was found over the picture, .png or .svg; {name} stands for that of the image',
      ),
      new Option('--project <FILE>', 'go by a project; without IMAGE, for its own image'),
      new Option(
        '--save-project <FILE>',
        'say how the image was traced, in a project beside or above it',
      ),
    ],
  ],
  [
    'Many images:',
    [jobsOption(), new Option('--resume', 'go on with FILE: leave out the images it has (ndjson)')],
  ],
];

const modeNames = () => MODES.map(({ mode }) => mode);

const whereOptions = () => [
  option(
    '--region <L,T,R,B>',
    'where to look: left, top, right and bottom, in pixels',
    box('--region'),
  ),
  new Option('--mask <FILE>', 'shapes to look in, or not, as JSON'),
];

const outputOptions = () => [
  choice('--format <FORMAT>', 'of what is written; on a terminal a table, elsewhere csv', FORMATS),
  new Option('-o, --output <FILE>', 'where to write (default: -, the standard output)'),
  new Option('--json', 'json, and errors as JSON too'),
  new Option('-q, --quiet', 'no notes, no progress'),
];

const jobsOption = () =>
  option(
    '-j, --jobs <N>',
    'how many images at a time (default: one a processor)',
    number(
      '--jobs',
      'a whole number from 1 to 256',
      (n) => Number.isInteger(n) && n >= 1 && n <= 256,
    ),
  );

/** How many images are traced at a time if nothing else is said. */
export const defaultJobs = () => Math.min(256, availableParallelism());

/**
 * @param {string} flags
 * @param {string} help
 * @param {(text: string, before: any) => unknown} read
 */
const option = (flags, help, read) => new Option(flags, help).argParser(read);

/**
 * An option that takes one of a few words. The help names them.
 * @param {string} flags
 * @param {string} help
 * @param {readonly string[]} words
 * @param {{usual?: string, read?: (word: string) => unknown}} [more] `usual`: the word that counts if
 *   none is given.
 */
function choice(flags, help, words, { usual, read = (word) => word } = {}) {
  const made = new Option(flags, help).choices(words);
  made.defaultValueDescription = usual;
  const word = oneOf(/** @type {string} */ (made.long), words);
  return made.argParser((text) => read(word(text)));
}
