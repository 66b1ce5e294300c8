// The planted bugs of the library and the command: as in bugs.mjs, for each file small mistakes that
// someone could make there, and the tests of which one must fail on each.

const COMMAND = ['test/js/command_usage.test.js', 'test/js/command_runs.test.js'];
const RUNS = [...COMMAND].reverse();
const SERIES = ['test/js/series.test.js', 'test/js/modes.test.js'];

/**
 * The tests of a file, in the order in which they run.
 * @type {Record<string, string[]>}
 */
export const testsOf = {
  'bin/chart-trace.js': COMMAND,
  'command/completion.js': ['test/js/command_completion.test.js'],
  'command/digests.js': ['test/js/command_resume.test.js'],
  'command/formats.js': [...RUNS, 'test/js/command_names.test.js'],
  'command/help.js': ['test/js/command_usage.test.js', 'test/js/command_completion.test.js'],
  'command/interruption.js': ['test/js/command_runs.test.js'],
  'command/list_colours.js': ['test/js/command_runs.test.js'],
  'command/main.js': COMMAND,
  'command/manual.js': ['test/js/command_completion.test.js'],
  'command/messages.js': ['test/js/command_terminal.test.js', ...COMMAND],
  'command/output.js': ['test/js/command_resume.test.js', ...RUNS],
  'command/pool.js': ['test/js/command_runs.test.js'],
  'command/program.js': [...COMMAND, 'test/js/command_completion.test.js'],
  'command/progress.js': ['test/js/command_terminal.test.js'],
  'command/projects.js': COMMAND,
  'command/runs.js': COMMAND,
  'command/settings.js': COMMAND,
  'command/terminal.js': ['test/js/command_terminal.test.js'],
  'command/trace_image.js': ['test/js/command_runs.test.js'],
  'command/usage.js': ['test/js/command_terminal.test.js', ...COMMAND],
  'command/values.js': COMMAND,
  'command/worker.js': ['test/js/command_runs.test.js'],
  'lib/axes/axes.js': ['test/js/axes.test.js'],
  'lib/axes/dates.js': ['test/js/dates.test.js', 'test/js/axes.test.js'],
  'lib/axes/planes.js': ['test/js/axes.test.js'],
  'lib/axes/references.js': ['test/js/axes.test.js'],
  'lib/axes/scales.js': ['test/js/axes.test.js'],
  'lib/browser.js': ['test/js/package_entry.test.js'],
  'lib/errors.js': ['test/js/errors.test.js'],
  'lib/files.js': [
    'test/js/files.test.js',
    'test/js/pictures_damaged.test.js',
    'test/js/pictures_forms.test.js',
    'test/js/pictures_bombs.test.js',
    'test/js/project.test.js',
  ],
  'lib/index.cjs': ['test/js/package_entry.test.js'],
  'lib/index.js': ['test/js/package_entry.test.js'],
  'lib/json.js': ['test/js/reports_json.test.js'],
  'lib/overlay.js': ['test/js/overlay.test.js'],
  'lib/pictures.js': [
    'test/js/pictures.test.js',
    'test/js/svg.test.js',
    'test/js/pictures_forms.test.js',
    'test/js/pictures_damaged.test.js',
    'test/js/pictures_bombs.test.js',
  ],
  'lib/projects/project.js': ['test/js/project.test.js'],
  'lib/projects/project_files.js': ['test/js/project.test.js'],
  'lib/reports/columns.js': ['test/js/reports_separated.test.js', 'test/js/reports_table.test.js'],
  'lib/reports/json.js': ['test/js/reports_json.test.js'],
  'lib/reports/overlay.js': ['test/js/reports_overlay.test.js'],
  'lib/reports/report.js': ['test/js/reports_report.test.js'],
  'lib/reports/separated.js': ['test/js/reports_separated.test.js'],
  'lib/reports/table.js': ['test/js/reports_table.test.js'],
  'lib/schemas/project.js': ['test/js/schemas.test.js', 'test/js/project.test.js'],
  'lib/schemas/report.js': ['test/js/schemas.test.js'],
  'lib/selection/colours.js': ['test/js/colours.test.js'],
  'lib/selection/masks.js': ['test/js/masks.test.js'],
  'lib/selection/membership.js': ['test/js/membership.test.js', 'test/js/selection.test.js'],
  'lib/selection/mixtures.js': ['test/js/mixtures.test.js', 'test/js/selection.test.js'],
  'lib/selection/palette.js': ['test/js/palette.test.js', 'test/js/selection.test.js'],
  'lib/selection/pixels.js': ['test/js/pixels.test.js', 'test/js/selection.test.js'],
  'lib/selection/view.js': ['test/js/view.test.js'],
  'lib/svg.js': ['test/js/svg.test.js', 'test/js/pictures_bombs.test.js'],
  'lib/svg_process.js': ['test/js/svg.test.js', 'test/js/pictures_bombs.test.js'],
  'lib/tracing/kinds.js': SERIES,
  'lib/tracing/mirror.js': SERIES,
  'lib/tracing/modes.js': SERIES,
  'lib/tracing/native.cjs': ['test/js/package_entry.test.js', 'test/js/addon_loading.test.js'],
  'lib/tracing/native.js': ['test/js/package_entry.test.js', 'test/js/modes.test.js'],
  'lib/tracing/options.js': SERIES,
  'lib/tracing/series.js': SERIES,
  'lib/tracing/tracing.js': SERIES,
  'lib/version.js': ['test/js/package_entry.test.js', 'test/js/project.test.js'],
};

/** @type {Record<string, {name: string, find: string, replace: string}[]>} */
export const bugs = {
  'bin/chart-trace.js': [
    {
      name: 'the exit code is lost',
      find: 'process.exitCode = await',
      replace: 'await',
    },
    { name: 'the name of the script is an argument', find: 'slice(2)', replace: 'slice(1)' },
  ],

  'command/completion.js': [
    {
      name: 'short options are not completed',
      find: 'flags: [long, short].filter(',
      replace: 'flags: [long].filter(',
    },
    {
      name: 'files are not completed behind options that take one',
      find: "takesFile: flags.includes('<FILE>')",
      replace: 'takesFile: false',
    },
    {
      name: 'a quote in a help text ends the string of a shell',
      find: `text.replaceAll("'", "'\\\\''")`,
      replace: 'text',
    },
    {
      name: 'brackets in a help text end an argument of zsh',
      find: "text.replace(/[[\\]:\\\\]/g, '\\\\$&')",
      replace: 'text',
    },
    {
      name: 'the words of an option are left out in fish',
      find: "...(words.length > 0 ? [`-a ${quotedInFish(words.join(' '))}`] : []),",
      replace: '',
    },
    {
      name: 'options without a value wait for one',
      find: '.filter(({ takesValue }) => takesValue)',
      replace: '',
    },
  ],

  'command/digests.js': [
    { name: 'the picture counts for nothing', find: ', sha256Of(content)]', replace: ']' },
    { name: 'the options count for nothing', find: '[VERSION, options, ', replace: '[VERSION, ' },
    { name: 'the program counts for nothing', find: '[VERSION, options, ', replace: '[options, ' },
    { name: 'another name makes another digest', find: 'file: undefined, ', replace: '' },
    { name: 'the input makes another digest', find: ', content: undefined', replace: '' },
    {
      name: 'the input is read once more',
      find: 'task.content ?? (await readWhole(task.file))',
      replace: 'await readWhole(task.file)',
    },
    { name: 'a picture that is gone ends the run', find: 'return undefined;', replace: 'throw 0;' },
  ],

  'command/formats.js': [
    {
      name: 'a file gets the colours of the terminal',
      find: "output === '-' && hasColours",
      replace: 'hasColours',
    },
    {
      name: 'other ends have columns although nobody asked for them',
      find: "hasOtherEnds || !name.startsWith('other_')",
      replace: 'true',
    },
    {
      name: 'a project with other ends loses their columns',
      find: ' || options.project !== undefined',
      replace: '',
    },
    {
      name: 'tables stand without a blank line between them',
      find: "table: between('\\n', (images) => toTable",
      replace: "table: between('', (images) => toTable",
    },
    {
      name: 'names of columns come again in the middle of the colours',
      find: '[...(header ? [COLOUR_COLUMNS] : []),',
      replace: '[COLOUR_COLUMNS,',
    },
    {
      name: 'an image without colours has no row',
      find: '? [[file, null, null, null, error?.message ?? null]]',
      replace: '? []',
    },
    { name: 'shares are no per cent', find: '(100 * share)', replace: 'share' },
    {
      name: 'a name of a file reaches the terminal as it is',
      find: '`${visible(file)}${size}`',
      replace: '`${file}${size}`',
    },
  ],

  'command/help.js': [
    {
      name: 'lines are as wide as they come',
      find: 'Math.min(100, columnsOf',
      replace: 'Math.max(100, columnsOf',
    },
    {
      name: 'the help of a command is that of the program',
      find: 'const isWhole = command === program;',
      replace: 'const isWhole = true;',
    },
    {
      name: 'only the last option of a group is shown',
      find: '[...(groups.get(heading) ?? []), optionLines(option, width)]',
      replace: '[optionLines(option, width)]',
    },
    {
      name: 'the words that an option takes are not told',
      find: 'if (!argChoices) return',
      replace: 'if (argChoices) return',
    },
    {
      name: 'the usual word is not marked',
      find: 'word === usual ?',
      replace: 'word !== usual ?',
    },
  ],

  'command/interruption.js': [
    { name: 'SIGINT ends with another code', find: 'SIGINT: 130', replace: 'SIGINT: 1' },
    {
      name: 'SIGTERM is not listened to',
      find: "['SIGHUP', 'SIGINT', 'SIGTERM']);",
      replace: "['SIGHUP', 'SIGINT']);",
    },
    {
      name: 'a second Ctrl-C does nothing',
      find: 'process.once(name, onSignal)',
      replace: 'process.on(name, onSignal)',
    },
    {
      name: 'a reader that has seen enough is not noticed',
      find: "if (code === 'EPIPE') interrupt('EPIPE');",
      replace: '',
    },
  ],

  'command/list_colours.js': [
    {
      name: 'the region is not looked at',
      find: 'findSeriesColours(picture, task.select)',
      replace: 'findSeriesColours(picture)',
    },
    {
      name: 'the number of pixels is that of all',
      find: '      pixels,\n',
      replace: '      pixels: share,\n',
    },
    { name: 'a failure has no list of colours', find: '{ colors: [] }', replace: '{}' },
  ],

  'command/main.js': [
    {
      name: 'a failed run ends with 0',
      find: 'void (code = await trace(images, options))',
      replace: 'void (await trace(images, options))',
    },
    {
      name: 'help is an error',
      find: 'error.exitCode === 0) return 0;',
      replace: 'error.exitCode === 1) return 0;',
    },
    {
      name: 'a wrong command line ends with 1',
      find: "words.code === 'ERR_USAGE' ? 2 : 1",
      replace: "words.code === 'ERR_USAGE' ? 1 : 1",
    },
    {
      name: 'errors of the parser are text beside --json',
      find: "json: args.includes('--json')",
      replace: 'json: false',
    },
    {
      name: 'no suggestion for an option that does not exist',
      find: "hint?.replace(/^\\((.*)\\)$/, '$1') ?? ",
      replace: '',
    },
  ],

  'command/manual.js': [
    { name: 'hyphens become dashes', find: "text.replace(/[\\\\-]/g, '\\\\$&')", replace: 'text' },
    {
      name: 'an option is named without its description',
      find: '`${escaped(sentence(describe(option)))}`,',
      replace: '',
    },
    {
      name: 'every option has a heading',
      find: 'heading !== undefined && heading !== before',
      replace: 'heading !== undefined',
    },
    {
      name: 'exit codes are left out',
      find: "'.SH EXIT STATUS',\n    ...EXIT_CODES.flatMap",
      replace: "'.SH EXIT STATUS',\n    ...[].flatMap",
    },
  ],

  'command/messages.js': [
    {
      name: 'a file that is not there has the words of the system',
      find: "  ['ENOENT', 'no such file'],\n",
      replace: '',
    },
    {
      name: 'notes come beside --quiet',
      find: 'if (quiet || json) return;',
      replace: 'if (json) return;',
    },
    {
      name: 'notes come beside --json',
      find: 'if (quiet || json) return;',
      replace: 'if (quiet) return;',
    },
    {
      name: 'a name of a file reaches the terminal as it is',
      find: '`chart-trace: ${visible(file)}`',
      replace: '`chart-trace: ${file}`',
    },
    { name: 'hints are not told', find: 'if (words.hint) say(', replace: 'if (!words.hint) say(' },
    {
      name: 'errors are coloured everywhere',
      find: 'isColoured ? first.replace',
      replace: 'true ? first.replace',
    },
    {
      name: 'JSON does not say of which image an error is',
      find: '...(file !== undefined && { file }), error: words',
      replace: 'error: words',
    },
  ],

  'command/output.js': [
    {
      name: 'a picture that has changed keeps its record',
      find: '(digests.get(file) ?? digest) === digest',
      replace: 'true',
    },
    {
      name: 'what is no stream is written record by record',
      find: 'if (!isStream) return void records.push(record);',
      replace: '',
    },
    {
      name: 'names of columns come with every record',
      find: '      isFirst = false;\n',
      replace: '',
    },
    {
      name: 'the ending of the file does not choose the format',
      find: 'name === ending &&',
      replace: 'name !== ending &&',
    },
    {
      name: '--resume without a file goes on',
      find: "if (resume && (output === '-' ||",
      replace: 'if (resume && (false ||',
    },
    {
      name: 'a terminal gets CSV',
      find: "process.stdout.isTTY ? 'table' : 'csv'",
      replace: "process.stdout.isTTY ? 'csv' : 'csv'",
    },
    {
      name: 'a folder is taken for a file that can be written',
      find: 'if (existsSync(path) && (await stat(path)).isDirectory())',
      replace: 'if (false)',
    },
    {
      name: 'without records nothing is written',
      find: 'if (!isStream || isFirst) await print',
      replace: 'if (!isStream) await print',
    },
    {
      name: 'a record that was cut is kept',
      find: "line.endsWith('\\n') && ",
      replace: '',
    },
    {
      name: 'failed records are not made anew',
      find: '.filter(({ error }) => error === null)',
      replace: '.filter(({ error }) => error !== undefined)',
    },
    {
      name: 'a line that is cut stays in the file',
      find: 'if (lines.length < before.length) await',
      replace: 'if (lines.length > before.length) await',
    },
    {
      name: 'records stay in the order in which they came',
      find: 'if (isOther) await writeWhole',
      replace: 'if (false) await writeWhole',
    },
    {
      name: 'finished images are traced again',
      find: 'has: (file) => done.has(file)',
      replace: 'has: () => false',
    },
  ],

  'command/pool.js': [
    {
      name: 'tasks are begun after the interruption',
      find: 'if (signal.aborted) break;',
      replace: '',
    },
    {
      name: 'tasks that wait are done after the interruption',
      find: 'const stop = () => pool.cancelPendingTasks();',
      replace: 'const stop = () => {};',
    },
    {
      name: 'a task whose worker died is lost',
      find: 'signal.aborted ? undefined : onFailure(task, wordsOf(error))',
      replace: 'undefined',
    },
    {
      name: 'one worker, whatever is asked for',
      find: 'Math.min(jobs, tasks.length)',
      replace: 'Math.min(1, tasks.length)',
    },
    {
      name: 'all tasks are begun at once',
      find: 'if (begun.length >= 4 * threads)',
      replace: 'if (begun.length >= 4000 * threads)',
    },
    {
      name: 'the last records are lost',
      find: 'while (begun.length > 0)',
      replace: 'while (begun.length > 1)',
    },
  ],

  'command/program.js': [
    {
      name: 'a cluster fraction of 0 is taken',
      find: 'f > 0 && f <= 1',
      replace: 'f >= 0 && f <= 1',
    },
    { name: 'a pixel step of 0 is taken', find: 'step > 0', replace: 'step >= 0' },
    { name: 'half a job', find: 'Number.isInteger(n) && n >= 1', replace: 'n >= 0.5' },
    {
      name: 'the version is that of the parser',
      find: "program.version(PACKAGE.version, '-V, --version', 'print the version');",
      replace: "program.version('0', '-V, --version', 'print the version');",
    },
    { name: 'words are not checked', find: 'read(word(text))', replace: 'read(text)' },
    {
      name: 'a tolerance of 100 is refused',
      find: 'n >= 0 && n <= 100',
      replace: 'n >= 0 && n < 100',
    },
    {
      name: 'a stride stays a text',
      find: "usual: '1',\n        read: Number,",
      replace: "usual: '1',",
    },
    {
      name: 'colours is no other name of colors',
      find: "    .alias('colours')\n",
      replace: '',
    },
  ],

  'command/progress.js': [
    { name: 'a single image has a bar', find: 'total < 2 ||', replace: 'total < 1 ||' },
    {
      name: 'a bar beside --quiet',
      find: 'if (quiet || json || total',
      replace: 'if (json || total',
    },
    { name: 'a bar into a file', find: ' || !canRewrite(stream)', replace: '' },
    { name: 'every step is drawn', find: 'now() - shownAt >= INTERVAL_MS', replace: 'true' },
    {
      name: 'the line stays in the end',
      find: 'if (done === total) clear();\n      else',
      replace: '',
    },
    {
      name: 'the time is left out, or of the whole',
      find: '(elapsed / done) * (total - done)',
      replace: '(elapsed / done) * total',
    },
    {
      name: 'time is told after one image',
      find: 'done > 1 && elapsed > 1000',
      replace: 'done > 0 && elapsed > 1000',
    },
    {
      name: 'a line too long for the terminal',
      find: 'count.slice(0, columns - 1)',
      replace: 'count',
    },
    {
      name: 'an hour is 60 minutes too many',
      find: '${minutes % 60} min',
      replace: '${minutes} min',
    },
  ],

  'command/projects.js': [
    {
      name: 'options beside a project are passed over',
      find: 'for (const name of [...SAID,',
      replace: 'for (const name of [',
    },
    {
      name: 'a project without images has none',
      find: ': [await ownImage(project, options.project)]',
      replace: ': []',
    },
    {
      name: 'a project for many images is written',
      find: "if (images.length > 1 || images[0] === '-')",
      replace: "if (images[0] === '-')",
    },
    {
      name: 'a project of the input is written',
      find: "if (images.length > 1 || images[0] === '-')",
      replace: 'if (images.length > 1)',
    },
    {
      name: 'a project forgets how pixels were selected',
      find: 'options: { ...trace, ...settings.select },',
      replace: 'options: { ...trace },',
    },
    {
      name: 'a project forgets the axes',
      find: 'axes: axes ?? null,',
      replace: 'axes: null,',
    },
    {
      name: 'a project may have any ending',
      find: "if (extname(path).toLowerCase() !== '.json')",
      replace: 'if (false)',
    },
    {
      name: 'a project names its picture from here',
      find: 'const file = await nameInProject(path, image.file);',
      replace: 'const { file } = image;',
    },
    {
      name: 'a project that cannot be opened again is found out after the work',
      find: "if (error.code === 'ERR_PROJECT_FOLDER')",
      replace: 'if (false)',
    },
    {
      name: 'an image that is not there is a wrong command line',
      find: "if (error.code === 'ERR_PROJECT_FOLDER') throw asUsageError",
      replace: 'throw asUsageError',
    },
  ],

  'command/runs.js': [
    {
      name: 'nothing found is exit code 0',
      find: 'look(record, note) && isComplete',
      replace: 'isComplete',
    },
    {
      name: 'the code of an interruption is lost',
      find: 'interruption.code() ?? (isComplete',
      replace: '(isComplete',
    },
    {
      name: 'an overlay may have any ending',
      find: "if (!['.png', '.svg'].includes(extname(pattern).toLowerCase()))",
      replace: 'if (false)',
    },
    {
      name: 'two images have one overlay',
      find: 'files.indexOf(file) !== i',
      replace: 'files.indexOf(file) > i',
    },
    {
      name: 'an image is written over',
      find: 'if (inputs.has(path)) throw',
      replace: 'if (false) throw',
    },
    {
      name: 'two things go into one file',
      find: 'if (other) throw',
      replace: 'if (!written) throw',
    },
    {
      name: 'the input is read twice',
      find: 'if (asked.length > 1) throw',
      replace: 'if (asked.length > 2) throw',
    },
    {
      name: 'a file that cannot be written is noticed after the work',
      find: 'await checkWritable(file);',
      replace: '',
    },
  ],

  'command/settings.js': [
    {
      name: 'a scale without references is passed over',
      find: 'if (scale !== undefined)',
      replace: 'if (scale === 0)',
    },
    {
      name: 'the scale is not handed on',
      find: "scale: scale ?? 'linear', ...references",
      replace: "...references, scale: 'linear'",
    },
    {
      name: 'no kind at all is an error of the library',
      find: 'if (trace.kind === undefined && trace.mode === undefined)',
      replace: 'if (false)',
    },
    {
      name: 'the mask is not handed on',
      find: '...(options.mask && { masks: readMasks(options.mask) }),',
      replace: '',
    },
    {
      name: 'other ends are not handed on',
      find: '...picked(options, TRACE_OPTIONS),',
      replace: "...picked(options, TRACE_OPTIONS.filter((name) => name !== 'otherEnds')),",
    },
    {
      name: 'the region is not handed on',
      find: '...(options.region && { box: options.region }),',
      replace: '',
    },
    {
      name: 'colours to exclude are not handed on',
      find: "['exclude', 'background', 'tolerance']",
      replace: "['background', 'tolerance']",
    },
    {
      name: 'an axis is made without being tried',
      find: 'makeAxis(axis, `--${name}`);',
      replace: '',
    },
    {
      name: 'the option at fault is always the kind',
      find: '/^Expected (\\w+)/',
      replace: '/^Unexpected (\\w+)/',
    },
  ],

  'command/terminal.js': [
    { name: 'NO_COLOR is passed over', find: ' && !environment.NO_COLOR', replace: '' },
    {
      name: 'a pipe gets colours',
      find: 'stream.isTTY === true && !environment',
      replace: '!environment',
    },
    {
      name: 'a dumb terminal has its line written over',
      find: "stream.isTTY === true && environment.TERM !== 'dumb';\n\n/**\n * @param {Stream} stream\n * @returns",
      replace: 'stream.isTTY === true;\n\n/**\n * @param {Stream} stream\n * @returns',
    },
    {
      name: 'a terminal of no width',
      find: 'columns && columns > 20',
      replace: 'columns !== undefined',
    },
    {
      name: 'lines are one character too long',
      find: 'indent.length + longer.length > width',
      replace: 'longer.length > width',
    },
    {
      name: 'a word is lost where a line is broken',
      find: 'lines.push(word);',
      replace: "lines.push('');",
    },
  ],

  'command/trace_image.js': [
    {
      name: 'a project is traced as the first series alone',
      find: 'traceProject(settings.project, picture, { file }).series',
      replace: 'traceProject(settings.project, picture, { file }).series.slice(0, 1)',
    },
    {
      name: 'the picture of a failure has no size',
      find: '    size.width = picture.width;\n',
      replace: '',
    },
    {
      name: 'colours are looked for outside of the region',
      find: 'findSeriesColours(picture, { box, masks })',
      replace: 'findSeriesColours(picture)',
    },
    {
      name: 'colours that were asked for are passed over',
      find: 'colours ?? findSeriesColours',
      replace: 'findSeriesColours',
    },
    {
      name: 'an overlay in SVG has no picture',
      find: ', href: `data:image/png;base64,${below}`',
      replace: '',
    },
    {
      name: 'no project is written',
      find: 'await saveProject(project,',
      replace: 'void (project,',
    },
    {
      name: 'a failure ends the run',
      find: 'return { file, ...size, ...nothing, error: wordsOf(error) };',
      replace: 'throw error;',
    },
  ],

  'command/usage.js': [
    {
      name: 'the beginning of a word is not known',
      find: 'if (longer) return',
      replace: 'if (!longer) return',
    },
    {
      name: 'whatever is typed, something is meant',
      find: 'const isNear = nearest && nearest.edits <=',
      replace: 'const isNear = nearest || nearest <=',
    },
    {
      name: 'two letters that are swapped are two edits',
      find: 'edits[i - 2][j - 2] + 1',
      replace: 'edits[i - 2][j - 2] + 2',
    },
    { name: 'inserting is free', find: 'edits[i][j - 1] + 1);', replace: 'edits[i][j - 1]);' },
    {
      name: 'what is missing is undefined',
      find: "received === undefined ? 'it is missing'",
      replace: "received === null ? 'it is missing'",
    },
    {
      name: 'any error is one of the command line',
      find: 'if (!(error instanceof ChartTraceError)) return error;',
      replace: '',
    },
    {
      name: 'the option is named twice',
      find: 'message.startsWith(option)',
      replace: 'false',
    },
  ],

  'command/values.js': [
    {
      name: 'no number is 0',
      find: "text.trim() === '' ? NaN : Number(text);\n  if",
      replace: 'Number(text);\n  if',
    },
    {
      name: 'a number may be infinite',
      find: '!Number.isFinite(value) || !fits(value)',
      replace: 'Number.isNaN(value) || !fits(value)',
    },
    {
      name: 'a rectangle may stand on its head',
      find: 'left <= right && top <= bottom',
      replace: 'left <= right',
    },
    {
      name: 'left and right may be exchanged',
      find: 'left <= right && top <= bottom',
      replace: 'top <= bottom',
    },
    {
      name: 'a fifth edge is passed over',
      find: 'parts.length === 4 &&',
      replace: 'parts.length >= 4 &&',
    },
    {
      name: 'a single reference is enough',
      find: 'found.pixel.length > 1',
      replace: 'found.pixel.length > 0',
    },
    { name: 'nothing is suggested', find: 'text, didYouMean(text, words))', replace: 'text)' },
    {
      name: 'the last colour alone counts',
      find: '[...before, colour(option)(text)]',
      replace: '[colour(option)(text)]',
    },
  ],

  'command/worker.js': [
    {
      name: 'colours are traced',
      find: 'listColours as colors',
      replace: 'listColours as colours',
    },
  ],

  'lib/axes/axes.js': [
    {
      name: 'a position that is no number is taken',
      find: 'if (!Number.isFinite(at)) throw wrongReference',
      replace: 'if (at === null) throw wrongReference',
    },
    {
      name: 'values may go up and down',
      find: 'if (keepsOrder(inOrder)) return;',
      replace: 'return;',
    },
    {
      name: 'falling values are refused',
      find: ' || steps.every((step) => step <= 0)',
      replace: '',
    },
    {
      name: 'one pixel may have two values',
      find: 'if (pixel[i] === pixel[order[k]])',
      replace: 'if (false)',
    },
    {
      name: 'all values may be the same',
      find: 'if (inOrder.every((position) => position === inOrder[0]))',
      replace: 'if (false)',
    },
    {
      name: 'references are met but for the last bits',
      find: 'const reference = exact.find((r) => r.at === at);',
      replace: 'const reference = exact.find((r) => r.at === at && false);',
    },
    {
      name: 'values come back but for the last bits',
      find: 'return same ? near : at;',
      replace: 'return at;',
    },
    {
      name: 'the line of many goes through the outer two',
      find: 'p0: at(t0), p1: at(t1)',
      replace: 'p0: p[0], p1: p[p.length - 1]',
    },
    {
      name: 'residuals have the wrong sign',
      find: ': at - pixelAt(positions[i])',
      replace: ': pixelAt(positions[i]) - at',
    },
    {
      name: 'a comma in a name begins a reference',
      find: 'text.split(/,(?=\\s*[-+]?(?:\\d+\\.?\\d*|\\.\\d+)\\s*=)/)',
      replace: "text.split(',')",
    },
    { name: 'positions are whole numbers', find: 'at: Number(at)', replace: 'at: parseInt(at)' },
    {
      name: 'a missing axis has the value 0',
      find: 'y ? y.toValue(atY) : null',
      replace: 'y ? y.toValue(atY) : 0',
    },
    { name: 'distances are signed', find: 'distance: Math.abs(distance)', replace: 'distance' },
  ],

  'lib/axes/dates.js': [
    {
      name: 'months count from 0',
      find: 'date.setUTCFullYear(year, month - 1, day);',
      replace: 'date.setUTCFullYear(year, month, day);',
    },
    {
      name: 'February has 31 days',
      find: 'return isThatDay ? date.getTime() : undefined;',
      replace: 'return date.getTime();',
    },
    {
      name: 'a day ends before 24:00',
      find: 'if (!(hour < 24 || endOfDay)',
      replace: 'if (!(hour < 24)',
    },
    {
      name: '24:00:01 is a time',
      find: 'minute === 0 && second === 0 && fraction === 0',
      replace: 'minute === 0',
    },
    {
      name: 'the offset has the wrong sign',
      find: "(parts[1] === '-' ? -1 : 1)",
      replace: "(parts[1] === '-' ? 1 : -1)",
    },
    { name: 'a stated offset of 0 is none', find: '(stated ?? zone)', replace: '(stated || zone)' },
    { name: 'a minute of 60', find: 'minute > 59 || second > 59', replace: 'second > 59' },
    {
      name: 'offsets of half an hour are written wrong',
      find: 'Math.abs(zone) % 60',
      replace: 'Math.abs(zone) % 30',
    },
    {
      name: 'a rounded-up second is not carried',
      find: 'whole + Math.floor(units / unitsPerMillisecond)',
      replace: 'whole',
    },
    {
      name: 'years beyond the calendar throw',
      find: 'if (Number.isNaN(local.getTime())) return null;',
      replace: '',
    },
  ],

  'lib/axes/planes.js': [
    {
      name: 'two references are enough',
      find: "checkedReferences(description, 3, 'axes')",
      replace: "checkedReferences(description, 2, 'axes')",
    },
    {
      name: 'references may lie on a line',
      find: 'if (!(across > 1e-6))',
      replace: 'if (across < 0)',
    },
    {
      name: 'the map is mirrored',
      find: '(d * x - b * y) / area',
      replace: '(d * x + b * y) / area',
    },
    {
      name: 'the normal equations have a sign wrong',
      find: '(sx * yy - sy * xy)',
      replace: '(sx * yy + sy * xy)',
    },
    {
      name: 'residuals are sums of differences',
      find: 'Math.hypot(x - atX, y - atY)',
      replace: 'x - atX + y - atY',
    },
    {
      name: 'references are met but for the last bits',
      find: 'if (!reference) return write(map.from(pixel));',
      replace: 'return write(map.from(pixel));',
    },
    {
      name: 'x and y of a value are exchanged',
      find: 'value: values.map(([x, y]) => [plain(x), plain(y)])',
      replace: 'value: values.map(([x, y]) => [plain(y), plain(x)])',
    },
    {
      name: 'categories of a turned axis are guessed',
      find: "if (own?.scale === 'category' && !own.categories)",
      replace: 'if (false)',
    },
  ],

  'lib/axes/references.js': [
    {
      name: 'positions are tried at whole pixels alone',
      find: 'Math.round(at * 64) / 64',
      replace: 'Math.round(at)',
    },
    {
      name: 'references are counted from 0',
      find: 'reference ${i + 1} (',
      replace: 'reference ${i} (',
    },
    {
      name: 'values may be missing',
      find: 'if (pixel.length !== value.length)',
      replace: 'if (pixel.length < value.length)',
    },
    {
      name: 'one reference fewer is enough',
      find: 'if (pixel.length < least)',
      replace: 'if (pixel.length < least - 1)',
    },
    {
      name: 'a date in a description is no text',
      find: 'value instanceof Date ? value.toISOString() : value',
      replace: 'value',
    },
    {
      name: 'a value that an axis does not have has a position',
      find: 'if (position === undefined) throw',
      replace: 'if (position === null) throw',
    },
  ],

  'lib/axes/scales.js': [
    {
      name: 'options of other scales are passed over',
      find: 'if (given !== undefined && scale !== only)',
      replace: 'if (false)',
    },
    { name: 'a base of 1 is taken', find: ' && base !== 1', replace: '' },
    {
      name: 'the logarithm of 0 is a position',
      find: 'number <= 0 ? undefined',
      replace: 'number < 0 ? undefined',
    },
    {
      name: 'powers of ten are nearly exact',
      find: 'base === 10 && Number.isInteger(exponent) ? Number(`1e${exponent}`) : base ** exponent',
      replace: 'Math.exp(exponent * Math.log(base))',
    },
    {
      name: 'the logarithm of a power is nearly whole',
      find: 'return power(base, whole) === value ? whole : exponent;',
      replace: 'return exponent;',
    },
    {
      name: 'a minus as books print it is no sign',
      find: ".replaceAll('\\u2212', '-')",
      replace: '',
    },
    { name: 'the zone of the first date is passed over', find: '(stated ?? 0)', replace: '0' },
    {
      name: 'digits of a second are too few',
      find: 'perPixel < 1000 ? 6 : 3',
      replace: 'perPixel < 1 ? 6 : 3',
    },
    {
      name: 'a category reaches a whole step to the right',
      find: 'names[Math.round(position)]',
      replace: 'names[Math.floor(position)]',
    },
    {
      name: 'a category may stand twice',
      find: 'if (twice !== undefined) throw',
      replace: 'if (twice === null) throw',
    },
    {
      name: 'numbers beyond 1e300',
      find: 'Math.abs(number) <= 1e300',
      replace: 'Math.abs(number) <= 1e308',
    },
    {
      name: 'a scale that every object has',
      find: 'Object.hasOwn(SCALES, scale) ? SCALES[scale] : undefined',
      replace: 'SCALES[scale]',
    },
  ],

  'lib/browser.js': [
    {
      name: 'a name is missing',
      find: 'chroma, colourDistance, formatColour',
      replace: 'chroma, formatColour',
    },
    {
      name: 'an engine without its name',
      find: 'export const engine = native.engine;',
      replace: 'export const engine = undefined;',
    },
  ],

  'lib/errors.js': [
    {
      name: 'long values are shown whole',
      find: 'if (text.length <= 100) return text;',
      replace: 'return text;',
    },
    {
      name: 'a value of 100 characters is too long',
      find: 'text.length <= 100',
      replace: 'text.length < 100',
    },
    { name: 'texts have no quotes', find: "return `'${received}'`;", replace: 'return received;' },
    {
      name: 'infinity is a number that fits',
      find: '!Number.isFinite(value)',
      replace: 'Number.isNaN(value)',
    },
    { name: 'what fits is not asked', find: ' || !fits) refuse', replace: ') refuse' },
    {
      name: 'the hint is lost',
      find: "code: 'ERR_ARGUMENT', expected, received, hint }",
      replace: "code: 'ERR_ARGUMENT', expected, received }",
    },
    { name: 'a limit has no code', find: "    this.code = 'ERR_LIMIT';\n", replace: '' },
  ],

  'lib/files.js': [
    {
      name: 'a file of any size is read',
      find: 'if (size > maxBytes)',
      replace: 'if (size > 1e300)',
    },
    {
      name: 'a pipe is waited for',
      find: 'else if (!about.isDirectory()) throw noFile(path);',
      replace: '',
    },
    { name: 'a stream of any length is read', find: '    size += part.length;\n', replace: '' },
    {
      name: 'what was there is cut first',
      find: "await writeTo(beside, data, 'wx', before?.mode);\n    await rename(beside, target);",
      replace: "await writeTo(target, data, 'w', before?.mode);",
    },
    {
      name: 'a failure leaves its file behind',
      find: 'await rm(beside, { force: true });',
      replace: '',
    },
    {
      name: 'a link is replaced',
      find: 'const target = await targetOf(path);',
      replace: 'const target = path;',
    },
    {
      name: 'a pipe is replaced',
      find: "if (before && !before.isFile()) return writeTo(path, data, 'w');",
      replace: '',
    },
    {
      name: 'the rights of the file are lost',
      find: "await writeTo(beside, data, 'wx', before?.mode)",
      replace: "await writeTo(beside, data, 'wx')",
    },
    { name: 'a failure is no failure', find: '    throw error;\n', replace: '' },
    { name: 'another hash', find: "createHash('sha256')", replace: "createHash('sha1')" },
  ],

  'lib/index.cjs': [
    {
      name: 'CommonJS has the native module alone',
      find: "? { ...require('./index.js') }",
      replace: "? require('./tracing/native.cjs').load()",
    },
  ],

  'lib/index.js': [
    {
      name: 'files are missing',
      find: "export { sha256Of, writeWhole } from './files.js';\n",
      replace: '',
    },
    {
      name: 'a picture cannot be written',
      find: 'decodePicture, encodePng, writePng',
      replace: 'decodePicture, encodePng',
    },
  ],

  'lib/json.js': [
    {
      name: 'lines are a character too long',
      find: 'before + line.length < WIDTH',
      replace: 'before + line.length <= WIDTH',
    },
    {
      name: 'the name before a value is not counted',
      find: 'indented(part, inner, inner.length + name.length)',
      replace: 'indented(part, inner)',
    },
    {
      name: 'what is undefined is written',
      find: '.filter(([, part]) => part !== undefined)',
      replace: '',
    },
    {
      name: 'a hole in a list is written as it is',
      find: 'indented(part ?? null, inner)',
      replace: 'indented(part, inner)',
    },
    { name: 'the end is open', find: "`${indented(data, '')}\\n`", replace: "indented(data, '')" },
  ],

  'lib/overlay.js': [
    {
      name: 'the colour that stands out least',
      find: 'clearance(next) > clearance(best)',
      replace: 'clearance(next) < clearance(best)',
    },
    {
      name: 'colours are taken twice at once',
      find: 'PALETTE.filter((ink) => times(ink) === least)',
      replace: 'PALETTE',
    },
    { name: 'a pixel is drawn at its corner', find: 'viewBox="-0.5 -0.5', replace: 'viewBox="0 0' },
    { name: 'no rim', find: "${stroke('#ffffff', 3.5)}", replace: '' },
    { name: 'NaN is drawn', find: 'pair.every(Number.isFinite)', replace: 'pair.length === 2' },
    { name: 'a line is made of points', find: "i === 0 ? 'M' : 'L'", replace: "'M'" },
  ],

  'lib/pictures.js': [
    {
      name: 'whatever the decoder knows is decoded',
      find: "throw noPicture(new Error(start === ''",
      replace:
        "return decodeContent(content, { page, maxPixels });\n  throw noPicture(new Error(start === ''",
    },
    {
      name: 'an SVG is drawn here',
      find: 'return drawSvg(content',
      replace: 'return decodeContent(content',
    },
    { name: 'a picture that was turned lies on its side', find: ', autoOrient: true', replace: '' },
    {
      name: 'transparent pixels are black',
      find: '.flatten({ background: page })',
      replace: ".flatten({ background: '#000000' })",
    },
    { name: 'three bytes a pixel', find: '      .ensureAlpha()\n', replace: '' },
    {
      name: 'large pictures are decoded',
      find: 'limitInputPixels: maxPixels',
      replace: 'limitInputPixels: false',
    },
    {
      name: 'a picture that is too large is no picture',
      find: 'width * height > maxPixels ?',
      replace: 'width * height > 1e300 ?',
    },
    {
      name: 'the message has many lines',
      find: ".split('\\n');\n  return new ChartTraceError(`The picture cannot",
      replace: ".split('\\t');\n  return new ChartTraceError(`The picture cannot",
    },
    {
      name: 'nothing is drawn over the picture',
      find: 'if (svg) image.composite',
      replace: 'if (!svg) image.composite',
    },
  ],

  'lib/projects/project.js': [
    {
      name: 'a newer project is misread',
      find: 'Number.isInteger(version) && version > PROJECT_VERSION',
      replace: 'Number.isInteger(version) && version > PROJECT_VERSION + 1',
    },
    {
      name: 'a byte order mark is an error',
      find: "text.replace(/^\\ufeff/, '')",
      replace: 'text',
    },
    {
      name: 'another picture size is not noted',
      find: 'width === made.width && height === made.height',
      replace: 'width === made.width || height === made.height',
    },
    {
      name: 'any picture is that of the project',
      find: 'if (sha256 === image.sha256) return;',
      replace: 'return;',
    },
    { name: 'a path may climb out', find: "if (part === '..') --depth;", replace: '' },
    {
      name: 'a path may climb out and come back',
      find: '    if (depth < 0) return false;\n  }\n  return true;',
      replace: '  }\n  return depth >= 0;',
    },
    {
      name: 'a path may be that of a drive',
      find: '/^[/\\\\]|^[a-z]:|\\0/i',
      replace: '/^[/\\\\]|\\0/i',
    },
    {
      name: 'options for all go before those of a series',
      find: '    ...options,\n    ...own,\n',
      replace: '    ...own,\n    ...options,\n',
    },
    { name: 'the axes are left out', find: '...(axes && { axes }),', replace: '' },
    {
      name: 'colours of series are not checked',
      find: "if (typeof one === 'string') parseColour(one);",
      replace: '',
    },
    {
      name: 'the tracing options of series are not checked',
      find: '    planOf(options);\n',
      replace: '',
    },
    {
      name: 'the first series alone is checked',
      find: 'for (const i of project.series.keys()) checkSeries(project, i);',
      replace: 'checkSeries(project, 0);',
    },
    {
      name: 'the shape is not checked',
      find: 'if (!validate(data)) throw',
      replace: 'if (!data) throw',
    },
  ],

  'lib/projects/project_files.js': [
    {
      name: 'a huge project is read',
      find: 'readWhole(path, MAX_PROJECT)',
      replace: 'readWhole(path)',
    },
    {
      name: 'a picture may lie outside',
      find: 'if (!anywhere && !staysInside(file)) throw outside(file);',
      replace: '',
    },
    { name: 'a link may lead out', find: "place.split(sep)[0] === '..'", replace: 'false' },
    {
      name: 'a picture anywhere is refused all the same',
      find: 'if (!anywhere && (isAbsolute',
      replace: 'if ((isAbsolute',
    },
    {
      name: 'the hash is not checked',
      find: '  checkHash(project, sha256Of(bytes));\n',
      replace: '',
    },
    {
      name: 'the path is one from here',
      find: 'relative(dirname(resolve(project)), resolve(image))',
      replace: "relative('', resolve(image))",
    },
    {
      name: 'a picture that will not be opened gets a name',
      find: '  if (!staysInside(place)) throw unreachable(image, target, folder);\n',
      replace: '',
    },
    {
      name: 'a name that leads elsewhere is taken',
      find: 'staysInside(given) && found === target ?',
      replace: 'staysInside(given) ?',
    },
    {
      name: 'a name that leaves the folder and comes back is taken',
      find: 'staysInside(given) && found === target ?',
      replace: 'found === target ?',
    },
    {
      name: 'a link is called by what it leads to',
      find: 'return staysInside(given) && found === target ? given : place;',
      replace: 'return place;',
    },
  ],

  'lib/reports/columns.js': [
    {
      name: 'points are counted from 0',
      find: 'i === undefined ? null : i + 1',
      replace: 'i === undefined ? null : i',
    },
    {
      name: 'series are counted from 0',
      find: 'const number = k + 1;',
      replace: 'const number = k;',
    },
    {
      name: 'x and y are exchanged',
      find: "['value_y', (place) => valueOf(place)?.[1]]",
      replace: "['value_y', (place) => valueOf(place)?.[0]]",
    },
    {
      name: 'the last marker is a curve',
      find: 'i < series.markers ?',
      replace: 'i < series.markers - 1 ?',
    },
    {
      name: 'a series without points has no row',
      find: 'if (series.pixels.length === 0) yield',
      replace: 'if (false) yield',
    },
    {
      name: 'a picture without series has no row',
      find: 'image.error || image.series.length === 0',
      replace: 'image.error',
    },
    { name: 'notes stand on every row', find: 'series && !i ?', replace: 'series ?' },
    {
      name: 'left and right are exchanged',
      find: "['left_value_x', (place) => binOf(place)?.values?.left, BINS]",
      replace: "['left_value_x', (place) => binOf(place)?.values?.right, BINS]",
    },
    {
      name: 'every kind has every column',
      find: '!only || only.some',
      replace: '!only || !only.some',
    },
    {
      name: 'the hint of an error is lost',
      find: 'hint ? `${message} ${hint}` : message',
      replace: 'message',
    },
  ],

  'lib/reports/json.js': [
    {
      name: 'lines of NDJSON have no end',
      find: '`${jsonLine(image)}\\n`',
      replace: 'jsonLine(image)',
    },
    {
      name: 'JSON is one line',
      find: 'return formatJson(report);',
      replace: 'return `${JSON.stringify(report)}\\n`;',
    },
  ],

  'lib/reports/overlay.js': [
    {
      name: 'a picture without a size has an overlay',
      find: 'if (width === null || height === null) refuse',
      replace: 'if (width === 0 && height === null) refuse',
    },
    {
      name: 'the address of the picture ends its attribute',
      find: 'href="${escaped(href)}"',
      replace: 'href="${href}"',
    },
    {
      name: 'a pixel is drawn at its corner',
      find: '`viewBox="-0.5 -0.5 ${width}',
      replace: '`viewBox="0 0 ${width}',
    },
    {
      name: 'series have one colour',
      find: 'inks.push(contrastingColour(taken, inks))',
      replace: 'inks.push(contrastingColour(taken))',
    },
    { name: 'series have one shape', find: 'SHAPES[i % SHAPES.length]', replace: 'SHAPES[0]' },
    { name: 'series have one dash', find: 'DASHES[i % DASHES.length]', replace: 'DASHES[0]' },
    {
      name: 'markers are part of the curve',
      find: 'line: chain(pixels.slice(count), style.scale)',
      replace: 'line: chain(pixels, style.scale)',
    },
    {
      name: 'a curve goes on over a gap',
      find: 'return isFar ? move(x, y)',
      replace: 'return i === 0 ? move(x, y)',
    },
    {
      name: 'a point without a number is drawn',
      find: 'pair && pair.every((part) => part !== null)',
      replace: 'pair',
    },
    {
      name: 'bars of a histogram stand apart',
      find: 'left === before ?',
      replace: 'left === null ?',
    },
    {
      name: 'a pale colour has a white rim',
      find: "> 0.8 ? '#1a1a1a' : '#ffffff'",
      replace: "> 0.8 ? '#ffffff' : '#ffffff'",
    },
  ],

  'lib/reports/report.js': [
    {
      name: 'infinity is a number',
      find: 'if (Number.isFinite(value)) return',
      replace: 'if (!Number.isNaN(value)) return',
    },
    { name: '-0 stays', find: 'return value + 0; // -0 + 0 is 0.', replace: 'return value;' },
    {
      name: 'numbers that are left out are not noted',
      find: 'lost > 0 ? [...notes, note]',
      replace: 'lost < 0 ? [...notes, note]',
    },
    {
      name: 'the notes are those of the series itself',
      find: '[...notes, note] : [...notes]',
      replace: '[...notes, note] : notes',
    },
    {
      name: 'left and right are exchanged',
      find: 'left: cell(sides.left), right: cell(sides.right)',
      replace: 'left: cell(sides.right), right: cell(sides.left)',
    },
    {
      name: 'a code that is no text',
      find: "typeof error?.code === 'string' ? error.code : null",
      replace: 'error?.code ?? null',
    },
    {
      name: 'long values are shown whole',
      find: 'text.length > 200 ?',
      replace: 'text.length > 1e9 ?',
    },
    {
      name: 'a value that is circular throws',
      find: '  } catch {\n    text = Object.prototype.toString.call(value);\n  }',
      replace: '  } finally {\n    text ??= undefined;\n  }',
    },
    {
      name: 'no error is an error',
      find: 'error === undefined || error === null ? null',
      replace: 'error === undefined ? null',
    },
  ],

  'lib/reports/separated.js': [
    { name: 'a quote is not doubled', find: "text.replaceAll('\"', '\"\"')", replace: 'text' },
    {
      name: 'a comma needs no quotes',
      find: '/[",\\r\\n]/.test(text)',
      replace: '/["\\r\\n]/.test(text)',
    },
    {
      name: 'a tab in a text begins a cell',
      find: '/\\r\\n|[\\t\\r\\n]/g',
      replace: '/\\r\\n|[\\r\\n]/g',
    },
    {
      name: 'formulas are run',
      find: 'quoted(guard ? guarded(cell) : cell)',
      replace: 'quoted(cell)',
    },
    { name: 'formulas behind blanks are run', find: '/^[\\s\\p{Cc}\\p{Cf}]*[=+', replace: '/^[=+' },
    { name: 'an at sign is no formula', find: '[=+\\-@\\uff1d', replace: '[=+\\-\\uff1d' },
    { name: 'negative numbers are texts', find: ' && !NUMBER.test(text)', replace: '' },
    {
      name: 'a number may have a formula behind it',
      find: '(?:e[+-]?\\d+)?$/i',
      replace: '(?:e[+-]?\\d+)?/i',
    },
    {
      name: 'rows end as on Unix',
      find: "${written(cells, guard, quoted).join(',')}\\r\\n",
      replace: "${written(cells, guard, quoted).join(',')}\\n",
    },
    { name: 'names of columns are not written', find: 'header = true', replace: 'header = false' },
    {
      name: 'no number is null',
      find: "cell === null ? '' : String(cell)",
      replace: 'String(cell)',
    },
  ],

  'lib/reports/table.js': [
    {
      name: 'a limit of half a point',
      find: 'Number.isInteger(limit) && limit >= 0',
      replace: 'limit >= 0',
    },
    {
      name: 'the last points are not shown',
      find: 'cells.slice(count - last)',
      replace: 'cells.slice(count)',
    },
    {
      name: 'one point of one more',
      find: 'const isCut = count > limit;',
      replace: 'const isCut = count >= limit;',
    },
    {
      name: 'points do not stand below one another',
      find: "text + ' '.repeat(most - after[i])",
      replace: 'text',
    },
    { name: 'seven digits', find: 'toPrecision(6)', replace: 'toPrecision(7)' },
    { name: 'large numbers have many zeros', find: 'size >= 1e9', replace: 'size >= 1e21' },
    {
      name: 'wide characters are narrow',
      find: 'WIDE.test(character) ? 2 : 1',
      replace: 'WIDE.test(character) ? 1 : 1',
    },
    {
      name: 'marks have a width',
      find: 'MARK.test(character) ? 0',
      replace: 'MARK.test(character) ? 1',
    },
    {
      name: 'control characters reach the terminal',
      find: '[\\p{Cc}\\p{Cf}\\u2028',
      replace: '[\\p{Cf}\\u2028',
    },
    {
      name: 'the direction of writing turns',
      find: '[\\p{Cc}\\p{Cf}\\u2028',
      replace: '[\\p{Cc}\\u2028',
    },
    { name: 'one points', find: "count === 1 ? '' : 's'", replace: "count === 0 ? '' : 's'" },
    { name: 'everything is coloured', find: 'colour && s ?', replace: 's ?' },
  ],

  'lib/schemas/project.js': [
    {
      name: 'a project without series',
      find: "series: {\n      type: 'array',\n      minItems: 1,",
      replace: "series: {\n      type: 'array',",
    },
    { name: 'a hash of any length', find: "'^[0-9a-f]{64}$'", replace: "'^[0-9a-f]+$'" },
    {
      name: 'a picture of no width',
      find: "width: { type: 'integer', minimum: 1 },\n        height",
      replace: "width: { type: 'integer' },\n        height",
    },
    {
      name: 'two references of a plane',
      find: "pixel: { type: 'array', items: pair, minItems: 3 }",
      replace: "pixel: { type: 'array', items: pair, minItems: 2 }",
    },
    {
      name: 'a series with color and colors',
      find: "oneOf: [{ required: ['color'] }, { required: ['colors'] }]",
      replace: "anyOf: [{ required: ['color'] }, { required: ['colors'] }]",
    },
    {
      name: 'unknown fields',
      find: "required: ['schemaVersion', 'tool', 'image', 'axes', 'options', 'series'],\n  additionalProperties: false,",
      replace: "required: ['schemaVersion', 'tool', 'image', 'axes', 'options', 'series'],",
    },
  ],

  'lib/schemas/report.js': [
    { name: 'unknown fields', find: '  additionalProperties: false,\n', replace: '' },
    {
      name: 'a pair of three',
      find: "items: orNull('number'), minItems: 2, maxItems: 2",
      replace: "items: orNull('number'), minItems: 2",
    },
    {
      name: 'a kind is missing',
      find: "'hbars', 'histogram', 'steps'",
      replace: "'hbars', 'histogram'",
    },
    {
      name: 'a file may be a number',
      find: "file: orNull('string')",
      replace: "file: { type: ['string', 'number', 'null'] }",
    },
    {
      name: 'values may be missing',
      find: "['selected', 'markers', 'bars', 'bins'],",
      replace: "['values', 'selected', 'markers', 'bars', 'bins'],",
    },
  ],

  'lib/selection/colours.js': [
    {
      name: 'transparent colours are taken',
      find: 'if ((parsed.alpha ?? 1) < 1)',
      replace: 'if (false)',
    },
    {
      name: 'channels are cut off',
      find: 'Math.round(255 * channel)',
      replace: 'Math.floor(255 * channel)',
    },
    {
      name: 'colours that no screen shows',
      find: 'clampRgb(toSrgb(parsed))',
      replace: 'toSrgb(parsed)',
    },
    {
      name: 'small channels have one digit',
      find: ".toString(16).padStart(2, '0')",
      replace: '.toString(16)',
    },
    { name: 'light is proportional', find: '((share + 0.055) / 1.055) ** 2.4', replace: 'share' },
    {
      name: 'a level between two is the lower one',
      find: 'LIGHT[below] + (level - below) * (LIGHT[below + 1] - LIGHT[below])',
      replace: 'LIGHT[below]',
    },
    {
      name: 'lightness does not count',
      find: 'Math.hypot(l1 - l2, a1 - a2, b1 - b2)',
      replace: 'Math.hypot(a1 - a2, b1 - b2)',
    },
    {
      name: 'yellow and blue have no chroma',
      find: '100 * Math.hypot(a, b)',
      replace: '100 * Math.hypot(a)',
    },
  ],

  'lib/selection/masks.js': [
    {
      name: 'an edge between pixels takes in the pixel before',
      find: 'Math.max(0, Math.ceil(box.left))',
      replace: 'Math.max(0, Math.floor(box.left))',
    },
    {
      name: 'the bottom is left out',
      find: 'Math.min(height - 1, Math.floor(box.bottom))',
      replace: 'Math.min(height - 1, Math.floor(box.bottom) - 1)',
    },
    {
      name: 'a box is as wide as the picture is high',
      find: 'right: Math.min(width - 1,',
      replace: 'right: Math.min(height - 1,',
    },
    {
      name: 'what is included goes before what is excluded',
      find: '  for (const shape of included) paint(open, shape, box, 1);\n  for (const shape of excluded) paint(open, shape, box, 0);',
      replace:
        '  for (const shape of excluded) paint(open, shape, box, 0);\n  for (const shape of included) paint(open, shape, box, 1);',
    },
    {
      name: 'with shapes to exclude alone nothing is left',
      find: 'fill(included.length === 0 ? 1 : 0)',
      replace: 'fill(0)',
    },
    {
      name: 'a polygon is open',
      find: '(i + 1) % corners.length',
      replace: 'Math.min(i + 1, corners.length - 1)',
    },
    {
      name: 'level edges are not inside',
      find: 'if (y0 === row && y1 === row) spans.push',
      replace: 'if (false) spans.push',
    },
    { name: 'crossings are not in order', find: 'crossings.sort((a, b) => a - b);', replace: '' },
    {
      name: 'the lowest corner is not inside',
      find: 'for (const crossings of [above, below])',
      replace: 'for (const crossings of [below])',
    },
    { name: 'two corners are a polygon', find: 'shape.length < 3', replace: 'shape.length < 2' },
    { name: 'NaN is an edge', find: ' || Number.isNaN(edges[edge])', replace: '' },
    {
      name: 'a mask may have two shapes',
      find: 'shapes.length !== 1 ||',
      replace: 'shapes.length < 1 ||',
    },
  ],

  'lib/selection/membership.js': [
    {
      name: 'less than half a pixel is enough',
      find: '>= coverage - ROUNDING',
      replace: '>= coverage - 0.1',
    },
    {
      name: 'more than half a pixel is needed',
      find: 'const ROUNDING = 0.004;',
      replace: 'const ROUNDING = -0.02;',
    },
    {
      name: 'rivals are passed over',
      find: 'if (toRival < toOwn && toRival <= 2 * ALIKE) return OUT;',
      replace: '',
    },
    { name: 'the tolerance is passed over', find: 'if (distance > tolerance ||', replace: 'if (' },
    { name: 'black is a shade of the series', find: ' || hueShare < HUE_TRACE', replace: '' },
    {
      name: 'mixtures of two colours of the series are not of it',
      find: 'if (inner.some((blend) => isEdge(mixtureNear(blend, colour, seen)))) return IN;',
      replace: '',
    },
    {
      name: 'a mixture of a rival is as good',
      find: 'if (rival < distance - ALIKE) return OUT;',
      replace: '',
    },
    { name: 'what is near is sure', find: '? NEAR : IN', replace: '? IN : IN' },
  ],

  'lib/selection/mixtures.js': [
    {
      name: 'chroma counts as much as lightness',
      find: 'const SHARPNESS = 9;',
      replace: 'const SHARPNESS = 1;',
    },
    {
      name: 'nearly equal colours are measured',
      find: 'const hasHue = hue2 >= SHORT * SHORT;',
      replace: 'const hasHue = hue2 > 0;',
    },
    {
      name: 'greens are as light as reds',
      find: '[0.299, 0.587, 0.114]',
      replace: '[0.587, 0.299, 0.114]',
    },
    { name: 'blue does not count', find: '(colour[2] - base[2]) * toCoverage[2]', replace: '0' },
    {
      name: 'mixtures reach beyond the end',
      find: 'Math.min(1, Math.max(0, share))',
      replace: 'Math.max(0, share)',
    },
    {
      name: 'smeared colours are edges',
      find: ' && Math.abs(lightShare - hueShare) <= 0.1',
      replace: '',
    },
    { name: 'the farthest colour', find: 'Math.min(...from.map', replace: 'Math.max(...from.map' },
  ],

  'lib/selection/palette.js': [
    {
      name: 'specks are series',
      find: 'const LEAST_PIXELS = 8;',
      replace: 'const LEAST_PIXELS = 1;',
    },
    {
      name: 'masks are passed over',
      find: 'if (open !== undefined && open[row * columns + column] === 0) {\n        alike',
      replace: 'if (false) {\n        alike',
    },
    {
      name: 'alpha is part of a colour',
      find: 'const packed = pixels[at] & COLOUR_BITS;',
      replace: 'const packed = pixels[at];',
    },
    {
      name: 'the rows of a box are those of the picture',
      find: '(box.top + row) * width + box.left + column',
      replace: 'row * width + box.left + column',
    },
    { name: 'mixtures are series', find: 'if (isEdge(mixture)) return true;', replace: '' },
    {
      name: 'the smallest comes first',
      find: 'b.count - a.count || a.packed',
      replace: 'a.count - b.count || a.packed',
    },
    { name: 'greys are series', find: 'tints.filter((tint) => !isGrey(tint))', replace: 'tints' },
    { name: 'pale colours are greys', find: 'chroma(colour) < 3', replace: 'chroma(colour) < 8' },
    {
      name: 'shades are counted by themselves',
      find: 'if (group) add(group.tint, tint);\n    else if',
      replace: 'if',
    },
    { name: 'areas are shades', find: 'if (isArea(other)) return false;', replace: '' },
    {
      name: 'the background is the most frequent colour',
      find: "['outer', 'solid', 'count']",
      replace: "['count']",
    },
    { name: 'shares are those of the box', find: 'share: count / pixels', replace: 'share: count' },
  ],

  'lib/selection/pixels.js': [
    {
      name: 'pixels that are nearly of the colour are left out',
      find: 'channelDistance(picture, column, row, colour) <= tolerance',
      replace: 'channelDistance(picture, column, row, colour) < tolerance',
    },
    { name: 'blue is not compared', find: '    Math.abs(data[at + 2] - blue),\n', replace: '' },
    {
      name: 'the last column is left out',
      find: 'column <= right; ++column',
      replace: 'column < right; ++column',
    },
    {
      name: 'colour and colours are both taken',
      find: 'if (colour !== undefined && options.colours !== undefined)',
      replace: 'if (false)',
    },
    {
      name: 'a tolerance below 0',
      find: 'tolerance >= 0 && tolerance <= 100',
      replace: 'tolerance <= 100',
    },
    {
      name: 'a coverage of 0',
      find: 'coverage > 0 && coverage <= 1',
      replace: 'coverage >= 0 && coverage <= 1',
    },
    {
      name: 'what was taken in takes in more',
      find: 'const taken = near.filter((place) => hasNeighbour(marks, columns, rows, place));\n  for (const place of taken) marks[place] = IN;',
      replace:
        'const taken = near.filter((place) => hasNeighbour(marks, columns, rows, place) && ((marks[place] = IN), true));',
    },
    { name: 'near pixels reach too far', find: 'const REACH = 2;', replace: 'const REACH = 3;' },
    { name: 'near pixels reach one pixel', find: 'const REACH = 2;', replace: 'const REACH = 1;' },
    {
      name: 'masks are passed over',
      find: '(open !== undefined && open[at] === 0)',
      replace: 'false',
    },
    {
      name: 'columns are those of the box',
      find: 'x[next] = box.right + 1 + at - end;',
      replace: 'x[next] = columns + at - end;',
    },
    { name: 'rows are those of the box', find: 'let row = box.top;', replace: 'let row = 0;' },
    {
      name: 'other series are no rivals',
      find: 'const rivals = [...exclude, ...found];',
      replace: 'const rivals = [...exclude];',
    },
    {
      name: 'colours to exclude are no rivals',
      find: 'const rivals = [...exclude, ...found];',
      replace: 'const rivals = [...found];',
    },
    { name: 'a channel of 256', find: 'level <= 255', replace: 'level <= 256' },
  ],

  'lib/selection/view.js': [
    {
      name: 'a part of a buffer is read from its beginning',
      find: 'new Uint32Array(buffer, byteOffset, count)',
      replace: 'new Uint32Array(buffer, 0, count)',
    },
    {
      name: 'an odd place in a buffer throws',
      find: 'data.byteOffset % 4 === 0 ? data : Uint8Array.from(data)',
      replace: 'data',
    },
    {
      name: 'red and blue are exchanged',
      find: 'red | (green << 8) | (blue << 16)',
      replace: 'blue | (green << 8) | (red << 16)',
    },
    {
      name: 'a picture may have too few bytes',
      find: 'data.length === 4 * width * height',
      replace: 'data.length <= 4 * width * height',
    },
    {
      name: 'a picture may have no height',
      find: 'Number.isInteger(side) && side > 0',
      replace: 'Number.isInteger(side)',
    },
    {
      name: 'any numbers are bytes',
      find: 'const isBytes = data instanceof Uint8Array || data instanceof Uint8ClampedArray;',
      replace: 'const isBytes = data !== undefined;',
    },
  ],

  'lib/svg.js': [
    {
      name: 'a width beyond what the renderer holds is another width',
      find: "G_DEBUG: 'fatal-criticals'",
      replace: '',
    },
    {
      name: 'pixels that are missing are transparent',
      find: 'if (at < data.length) throw errorOf(ENDED);',
      replace: '',
    },
    {
      name: 'a limit is an error of another kind',
      find: "details.code === 'ERR_LIMIT'",
      replace: "details.code === 'ERR_NONE'",
    },
    { name: 'pixels stand over one another', find: '    at += part.length;\n', replace: '' },
    {
      name: 'Ctrl-C ends the drawing',
      find: "detached: process.platform !== 'win32',",
      replace: '',
    },
    {
      name: 'the limits of the caller are passed over',
      find: '{ ...options, ...limits, parent',
      replace: '{ ...options, ...LIMITS, parent',
    },
  ],

  'lib/svg_process.js': [
    { name: 'time is told as memory', find: "giveUp('long',", replace: "giveUp('much memory'," },
    {
      name: 'drawing may take all memory',
      find: 'process.memoryUsage.rss() > bytes',
      replace: 'process.memoryUsage.rss() > 1e300',
    },
    { name: 'what is wrong is not said', find: '  fail(error);\n', replace: '' },
    {
      name: 'what nobody hears ends no drawing',
      find: '  } finally {\n    // There may be nobody to tell it.',
      replace:
        '  } catch (error) {\n    throw error;\n  }\n  {\n    // There may be nobody to tell it.',
    },
    {
      name: 'a drawing that nobody waits for goes on',
      find: 'process.ppid !== parent',
      replace: 'false',
    },
  ],

  'lib/tracing/kinds.js': [
    {
      name: 'NaN is a point',
      find: 'all.filter((pair) => pair.every(Number.isFinite))',
      replace: 'all',
    },
    {
      name: 'the curve counts as markers',
      find: "m.kind === 'scatter' && m.grouping",
      replace: "m.kind === 'curve' && m.grouping",
    },
    {
      name: 'bars end at the centres of their pixels',
      find: 'return [x, y - beyond];',
      replace: 'return [x, y];',
    },
    {
      name: 'bars that hang end inside',
      find: 'return [x, beyond - y];',
      replace: 'return [x, 0 - beyond - y];',
    },
    {
      name: 'bars to the left are mirrored',
      find: 'return [0 - x - beyond, y];',
      replace: 'return [x - beyond, y];',
    },
    {
      name: 'bars come in the order of the trace',
      find: 'return ends.sort((a, b) => a[first] - b[first] || a[second] - b[second]);',
      replace: 'return ends;',
    },
    {
      name: 'ends of different bars are paired',
      find: 'Math.abs(other[across] - ends[i][across]) < reach',
      replace: 'true',
    },
    {
      name: 'bins are a pixel too narrow',
      find: 'right: right + numbers.pixelStep / 2',
      replace: 'right: right - numbers.pixelStep / 2',
    },
    { name: 'gaps are not noted', find: '> 1.5 * step', replace: '> 1e9 * step' },
    { name: 'neighbouring columns are a gap', find: '> 1.5 * step', replace: '>= step' },
    {
      name: 'a gap behind a bar is noted',
      find: 'left <= after && after < right',
      replace: 'left <= after && after <= right',
    },
    { name: 'the last of equal tops', find: 'y[i] < y[top]', replace: 'y[i] <= y[top]' },
    {
      name: 'a first riser is left out',
      find: 'if (y[0] !== y[1]) vertices.splice',
      replace: 'if (false) vertices.splice',
    },
    {
      name: 'a last riser is left out',
      find: 'else vertices.push([x[x.length - 1], end]);',
      replace: '',
    },
    {
      name: 'a soft flank is a tread',
      find: 'if (right - left > 2 * numbers.pixelStep) return;',
      replace: 'return;',
    },
    { name: 'every vertex stays', find: 'if (isStraight) kept.pop();', replace: '' },
    {
      name: 'a spike is straight',
      find: '(last[1 - k] - before[1 - k]) * (vertex[1 - k] - last[1 - k]) >= 0',
      replace: 'true',
    },
  ],

  'lib/tracing/mirror.js': [
    { name: 'down is up', find: "down: 'up'", replace: "down: 'down'" },
    {
      name: 'rows come from the bottom',
      find: "direction === 'down' ? rows(y).reverse() : rows(y)",
      replace: 'rows(y)',
    },
    {
      name: 'rows run from the right',
      find: 'else for (let i = to - 1; i >= from; --i) copy(i);',
      replace: 'else for (let i = from; i < to; ++i) copy(i);',
    },
    {
      name: 'to the left nothing is mirrored',
      find: "direction === 'left' ? 0 - x[i] : x[i]",
      replace: 'x[i]',
    },
    {
      name: '0 becomes -0',
      find: "direction === 'down' ? 0 - y[i] : y[i]",
      replace: "direction === 'down' ? -y[i] : y[i]",
    },
    { name: 'the last row is left out', find: 'i <= y.length; ++i', replace: 'i < y.length; ++i' },
  ],

  'lib/tracing/modes.js': [
    {
      name: 'a mode has a letter wrong',
      find: "'bar_vertical-fission'",
      replace: "'bar_vertical_fission'",
    },
    {
      name: 'clusters know the pixel step',
      find: "usesPixelStep: grouping !== 'clusters'",
      replace: 'usesPixelStep: true',
    },
    { name: 'grouping by rows is usual', find: ": 'fission';", replace: ": 'horizontal';" },
    {
      name: 'an odd number of values is split',
      find: "if (odd && findMode(mode).split !== 'steps')",
      replace: 'if (false)',
    },
    {
      name: 'y is always the longer list',
      find: 'odd && stepsHaveMoreX(values, lookAgain) ? half + 1 : half',
      replace: 'half',
    },
    {
      name: 'equal values in the middle are x',
      find: 'if (sameHeights(values, again, middle)) return again[middle] !== value;',
      replace: 'if (sameHeights(values, again, middle)) return true;',
    },
    { name: '0 is doubled', find: 'return value !== 0\n', replace: 'return value !== -1\n' },
    {
      name: 'without a second look x is taken',
      find: '  if (!lookAgain)\n    throw',
      replace: '  if (!lookAgain) return true;\n  if (!lookAgain)\n    throw',
    },
  ],

  'lib/tracing/native.cjs': [
    {
      name: 'a module that was lost is not loaded again',
      find: 'if (!wasLost || attemptsLeft === 0) throw error;',
      replace: 'throw error;',
    },
    {
      name: 'any failure is tried again, for ever',
      find: 'if (!wasLost || attemptsLeft === 0) throw error;',
      replace: 'if (attemptsLeft === -100) throw error;',
    },
    {
      name: 'the engine that is asked for is passed over',
      find: "if (!wanted) return ['native', 'wasm'];",
      replace: "return ['native', 'wasm'];",
    },
    {
      name: 'an unknown engine is passed over',
      find: 'throw new Error(`CHART_TRACE_ENGINE must be',
      replace: "return ['native'];\n  throw new Error(`CHART_TRACE_ENGINE must be",
    },
  ],

  'lib/tracing/native.js': [
    {
      name: 'the engine has no name',
      find: 'export const engine = loaded.engine;',
      replace: "export const engine = 'wasm';",
    },
  ],

  'lib/tracing/options.js': [
    { name: 'a stride has another code', find: '[4, 0.052]', replace: '[4, 0.053]' },
    { name: 'a code for the stride 8 is refused', find: ', 0.054];', replace: '];' },
    {
      name: 'options without a meaning are taken',
      find: 'if (options[name] !== undefined && !matters(mode))',
      replace: 'if (false)',
    },
    { name: 'a pixel step of 0', find: 'pixelStep > 0,', replace: 'pixelStep >= 0,' },
    {
      name: 'a mode ends at the outer edge',
      find: "options.mode ? 'centre' : 'edge'",
      replace: "'edge'",
    },
    {
      name: 'a kind beside a mode is passed over',
      find: "if (kind !== undefined) refuse('kind', 'left out",
      replace: "if (false) refuse('kind', 'left out",
    },
    {
      name: 'bars grow to the left',
      find: "hbars: ['right', 'left']",
      replace: "hbars: ['left', 'right']",
    },
    {
      name: 'a cluster fraction above 1',
      find: 'clusterFraction > 0 && clusterFraction <= 1',
      replace: 'clusterFraction > 0',
    },
    {
      name: 'any fraction is one of curves',
      find: 'else if (!CURVE_FRACTIONS.includes(clusterFraction))',
      replace: 'else if (false)',
    },
    {
      name: 'bars reach a whole pixel beyond',
      find: "ends === 'edge' ? pixelStep / 2 : 0",
      replace: "ends === 'edge' ? pixelStep : 0",
    },
    {
      name: 'a direction that is none for the kind',
      find: ' || !all.includes(direction)',
      replace: '',
    },
  ],

  'lib/tracing/series.js': [
    {
      name: 'unknown options are passed over',
      find: 'if (unknown !== undefined) refuse',
      replace: 'if (unknown === null) refuse',
    },
    {
      name: 'a selection of points is passed over',
      find: 'if (given !== undefined)\n      refuse',
      replace: 'if (false)\n      refuse',
    },
    {
      name: 'points may be infinite',
      find: 'if (!Number.isFinite(list[i]))',
      replace: 'if (Number.isNaN(list[i]))',
    },
    {
      name: 'nothing found is not told',
      find: 'found.pixels.length === 0 ? [whatWasTried(selection, plan)] : []',
      replace: '[]',
    },
    {
      name: 'a large picture is selected from',
      find: 'if (!(width * height > MAX_PIXELS)) return;',
      replace: 'return;',
    },
    {
      name: 'missing values are not noted',
      find: 'if (without > 0) notes.push',
      replace: 'if (without < 0) notes.push',
    },
    {
      name: 'references that are off are not noted',
      find: 'if (distance > 1) notes.push',
      replace: 'if (distance > 1e9) notes.push',
    },
    {
      name: 'two bars on one category are not noted',
      find: 'if (twice !== undefined)\n      notes.push',
      replace: 'if (false)\n      notes.push',
    },
    {
      name: 'the top of a bin is read on x',
      find: 'top: valueOf([(left + right) / 2, top])[1]',
      replace: 'top: valueOf([(left + right) / 2, top])[0]',
    },
    {
      name: 'the right border has the value of the left',
      find: 'right: valueOf([right, top])[0]',
      replace: 'right: valueOf([left, top])[0]',
    },
    {
      name: 'step lines are traced with their edges',
      find: '>= 0.98 * new Set(all.x).size ? core : all',
      replace: '>= 0.98 * new Set(all.x).size ? all : all',
    },
    {
      name: 'step lines lose columns',
      find: '>= 0.98 * new Set(all.x).size ? core : all',
      replace: '>= 0 ? core : all',
    },
  ],

  'lib/tracing/tracing.js': [
    {
      name: 'a pixel step of 0',
      find: "pixelStep > 0, 'a number above 0'",
      replace: "pixelStep >= 0, 'a number above 0'",
    },
    {
      name: 'lists of different lengths',
      find: 'if (x.length !== y.length)',
      replace: 'if (false)',
    },
    { name: 'too many pixels', find: 'if (x.length > MAX_PIXELS)', replace: 'if (false)' },
    {
      name: 'compartments without end',
      find: "if (grouping === 'compartments') checkCompartments",
      replace: 'if (false) checkCompartments',
    },
    {
      name: 'borders that do not move',
      find: ' || (right > left && !(right + step > right && left + step > left))',
      replace: '',
    },
    {
      name: 'the second look does not scale the step',
      find: 'pixelStep * scale,',
      replace: 'pixelStep,',
    },
    {
      name: 'the second look does not shift',
      find: 'value * scale + shift',
      replace: 'value * scale',
    },
    {
      name: 'a fraction that is no number',
      find: "checkNumber('clusterFraction', clusterFraction, true, 'a number');",
      replace: '',
    },
  ],

  'lib/version.js': [
    { name: 'the version is not that of the package', find: "'0.1.0'", replace: "'0.0.9'" },
  ],
};
