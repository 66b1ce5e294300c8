// Scripts that complete what is typed: the options, and the words that some of them take. Everything
// else is the name of a file, which the shell completes by itself.

import { SHELLS } from './program.js';

/** @typedef {import('commander').Command} Command */

/**
 * @typedef {object} Completed An option, or the command's argument.
 * @property {string[]} flags Such as `--output` and `-o`.
 * @property {string} help
 * @property {readonly string[]} words That it takes.
 * @property {boolean} takesFile
 * @property {boolean} takesValue
 */

/**
 * @param {Command} command
 * @returns {Completed[]}
 */
function completedOf(command) {
  const options = [...command.options];
  const help = { flags: ['--help', '-h'], help: 'print this help', words: [] };
  return [
    ...options.map(({ long, short, description, argChoices, flags, required }) => ({
      flags: [long, short].filter((flag) => flag !== undefined),
      help: description,
      words: argChoices ?? [],
      takesFile: flags.includes('<FILE>'),
      takesValue: Boolean(required),
    })),
    { ...help, takesFile: false, takesValue: false },
  ];
}

/**
 * @param {Command} program
 * @param {string} shell One of `SHELLS`.
 */
export function completionScript(program, shell) {
  return SCRIPTS[/** @type {typeof SHELLS[number]} */ (shell)](program);
}

/** @type {Record<typeof SHELLS[number], (program: Command) => string>} */
const SCRIPTS = { bash: bashScript, zsh: zshScript, fish: fishScript };

/** @param {Command} command */
const flagsOf = (command) => completedOf(command).flatMap(({ flags }) => flags);

/** @param {Command} command */
function bashCases(command) {
  return completedOf(command)
    .filter(({ takesValue }) => takesValue)
    .map(({ flags, words, takesFile }) => {
      const reply = takesFile ? '_chart_trace_files' : `_chart_trace_words "${words.join(' ')}"`;
      return `      ${flags.join('|')}) ${reply}; return ;;`;
    })
    .join('\n');
}

/** @param {Command} program */
function bashScript(program) {
  const [colors, completion] = program.commands;
  return `# Completes chart-trace in bash:  source <(chart-trace completion bash)
_chart_trace_words() { mapfile -t COMPREPLY < <(compgen -W "$1" -- "$current"); }
_chart_trace_files() { compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -- "$current"); }
_chart_trace() {
  local current=\${COMP_WORDS[COMP_CWORD]} previous=\${COMP_WORDS[COMP_CWORD - 1]}
  COMPREPLY=()
  case \${COMP_WORDS[1]} in
    completion)
      _chart_trace_words "${SHELLS.join(' ')}"; return ;;
    colors|colours)
    case $previous in
${bashCases(colors)}
    esac
    if [[ $current == -* ]]; then _chart_trace_words "${flagsOf(colors).join(' ')}"
    else _chart_trace_files; fi
    return ;;
  esac
  case $previous in
${bashCases(program).replaceAll('      -', '    -')}
  esac
  if [[ $current == -* ]]; then _chart_trace_words "${flagsOf(program).join(' ')}"; return; fi
  _chart_trace_files
  if ((COMP_CWORD == 1)); then
    mapfile -t -O "\${#COMPREPLY[@]}" COMPREPLY < <(compgen -W "${colors.name()} ${completion.name()}" -- "$current")
  fi
}
complete -F _chart_trace chart-trace
`;
}

/** @param {string} text Whole to zsh, which has no escapes between these quotes. */
const quoted = (text) => `'${text.replaceAll("'", "'\\''")}'`;

/** @param {string} text Whole to fish, which has escapes there. */
const quotedInFish = (text) => `'${text.replace(/[\\']/g, '\\$&')}'`;

/**
 * The arguments of the function _arguments of zsh.
 * @param {Command} command
 */
function zshArguments(command) {
  const escaped = (/** @type {string} */ text) => text.replace(/[[\]:\\]/g, '\\$&');
  return completedOf(command)
    .flatMap(({ flags, help, words, takesFile, takesValue }) => {
      const values = words.length > 0 ? `(${words.join(' ')})` : takesFile ? '_files' : ' ';
      const value = takesValue ? `:${escaped(flags[0].slice(2))}:${values}` : '';
      return flags.map((flag) => `    ${quoted(`*${flag}[${escaped(help)}]${value}`)} \\`);
    })
    .join('\n');
}

/** @param {Command} program */
function zshScript(program) {
  const [colors, completion] = program.commands;
  return `#compdef chart-trace
# Completes chart-trace in zsh:  chart-trace completion zsh > DIRECTORY-OF-FPATH/_chart-trace
_chart_trace_first() {
  local -a commands=(${[colors, completion].map((c) => quoted(`${c.name()}:${c.description()}`)).join(' ')})
  _describe command commands
  _files
}
_chart_trace() {
  case \${words[2]} in
    ${completion.name()}) _arguments '2:shell:(${SHELLS.join(' ')})' ;;
    ${colors.name()}|${colors.alias()}) _arguments \\
${zshArguments(colors)}
    '*:image:_files' ;;
    *) _arguments \\
${zshArguments(program)}
    '1:image or command:_chart_trace_first' '*:image:_files' ;;
  esac
}
if [[ $funcstack[1] = _chart-trace ]]; then _chart_trace "$@"; else compdef _chart_trace chart-trace; fi
`;
}

/**
 * @param {Command} command
 * @param {string} condition
 */
function fishLines(command, condition) {
  return completedOf(command).map(({ flags: [long, short], help, words, takesFile, takesValue }) =>
    [
      `complete -c chart-trace -n ${quotedInFish(condition)} -l ${long.slice(2)}`,
      ...(short ? [`-s ${short.slice(1)}`] : []),
      ...(takesValue ? [takesFile ? '-rF' : '-x'] : []),
      ...(words.length > 0 ? [`-a ${quotedInFish(words.join(' '))}`] : []),
      `-d ${quotedInFish(help)}`,
    ].join(' '),
  );
}

/** @param {Command} program */
function fishScript(program) {
  const [colors, completion] = program.commands;
  const named = `${colors.name()} ${colors.alias()} ${completion.name()}`;
  const first = '__fish_use_subcommand';
  return [
    '# Completes chart-trace in fish:  chart-trace completion fish | source',
    ...[colors, completion].map(
      (c) =>
        `complete -c chart-trace -n ${first} -a ${c.name()} -d ${quotedInFish(c.description())}`,
    ),
    `complete -c chart-trace -n '__fish_seen_subcommand_from ${completion.name()}' -f -a ${quotedInFish(SHELLS.join(' '))}`,
    ...fishLines(colors, `__fish_seen_subcommand_from ${colors.name()} ${colors.alias()}`),
    ...fishLines(program, `not __fish_seen_subcommand_from ${named}`),
    '',
  ].join('\n');
}
