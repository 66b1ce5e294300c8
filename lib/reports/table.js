// Reports as tables for people at a terminal. Numbers are rounded here to what one can read off a
// chart; the other formats have them in full.

import { parseColour } from '../selection/colours.js';
import { checkNumber } from '../errors.js';

/** @typedef {import('./report.js').ErrorReport} ErrorReport */
/** @typedef {import('./report.js').ImageReport} ImageReport */
/** @typedef {import('./report.js').Report} Report */
/** @typedef {import('./report.js').SeriesReport} SeriesReport */

/** @typedef {string | number | null | undefined} Cell */
/** @typedef {{head: string, cells: Cell[]}} Column */

/**
 * @typedef {object} TableOptions
 * @property {boolean} [colour] Whether to use the colours of a terminal; false by default.
 * @property {number} [limit] How many points of a series to show, the first and the last ones; all
 *   by default.
 */

/** @typedef {ReturnType<typeof makeInk>} Ink */

/**
 * Writes a report as tables.
 * @param {Report} report
 * @param {TableOptions} [options]
 * @returns {string} Ends with a line feed unless there is nothing.
 */
export function toTable({ images }, { colour = false, limit = Infinity } = {}) {
  if (limit !== Infinity)
    checkNumber('limit', limit, Number.isInteger(limit) && limit >= 0, 'a whole number');
  const ink = makeInk(colour);
  const blocks = images.map((image) => imageLines(image, limit, ink));
  return blocks.map((lines) => lines.map((line) => `${line.trimEnd()}\n`).join('')).join('\n');
}

/**
 * @param {ImageReport} image
 * @param {number} limit
 * @param {Ink} ink
 */
function imageLines({ file, width, height, series, error }, limit, ink) {
  const size = width === null || height === null ? '' : `  ${width} × ${height} px`;
  return [
    ink.bold(visible(file ?? 'picture')) + ink.dim(size),
    ...series.flatMap((one, i) => ['', ...seriesLines(one, i + 1, limit, ink)]),
    ...(error ? errorLines(error, ink) : []),
  ];
}

/**
 * @param {ErrorReport} error
 * @param {Ink} ink
 */
const errorLines = ({ message, hint }, ink) => [
  `  ${ink.red('error:')} ${visible(message)}`,
  ...(hint ? [`  ${ink.dim('hint:')}  ${visible(hint)}`] : []),
];

/**
 * @param {SeriesReport} series
 * @param {number} number
 * @param {number} limit
 * @param {Ink} ink
 */
function seriesLines(series, number, limit, ink) {
  const { color, kind, mode, pixels, values, notes } = series;
  const what = color === null ? '' : `${color}  `;
  const sign = color === null ? '' : `${ink.inColour('●', color)} `;
  return [
    `  ${sign}${ink.bold(`series ${number}`)}  ${what}${kind} (${mode}), ${countOf(series)}`,
    ...(values === null && pixels.length > 0 ? [ink.dim('    in pixels: no axes are given')] : []),
    ...notes.map((note) => `    ${ink.yellow('note:')} ${visible(note)}`),
    ...tableLines(columnsOf(series), pixels.length, limit, ink).map((line) => `    ${line}`),
  ];
}

/** @param {SeriesReport} series */
function countOf({ pixels, markers, selected }) {
  const from = selected === undefined ? '' : ` from ${counted(selected, 'pixel')}`;
  const of = markers === undefined ? '' : ` (${counted(markers, 'marker')}, the others the curve)`;
  return counted(pixels.length, 'point') + of + from;
}

/**
 * @param {number} count
 * @param {string} noun
 */
const counted = (count, noun) => `${count} ${noun}${count === 1 ? '' : 's'}`;

/**
 * @param {SeriesReport} series
 * @returns {Column[]}
 */
function columnsOf({ pixels, values, markers, bars, bins }) {
  /** @type {Column[]} */
  const columns = [{ head: '#', cells: pixels.map((_, i) => i + 1) }];
  const add = (/** @type {string} */ head, /** @type {Cell[]} */ cells) =>
    columns.push({ head, cells });
  if (markers !== undefined)
    add(
      'part',
      pixels.map((_, i) => (i < markers ? 'marker' : 'curve')),
    );
  for (const [k, name] of ['x', 'y'].entries())
    add(
      `pixel ${name}`,
      pixels.map((pair) => pair[k]),
    );
  for (const [k, name] of ['x', 'y'].entries())
    if (values)
      add(
        name,
        values.map((pair) => pair[k]),
      );
  for (const [k, name] of ['x', 'y'].entries())
    if (bars)
      add(
        values ? `other ${name}` : `other pixel ${name}`,
        bars.map((bar) => (values ? bar.values : bar.pixels)?.otherEnd?.[k]),
      );
  for (const side of /** @type {const} */ (['left', 'right']))
    if (bins)
      add(
        values ? side : `${side} pixel`,
        bins.map((bin) => (values ? bin.values : bin.pixels)?.[side]),
      );
  return columns;
}

/**
 * @param {Column[]} columns
 * @param {number} count How many rows.
 * @param {number} limit
 * @param {Ink} ink
 */
function tableLines(columns, count, limit, ink) {
  if (count === 0) return [];
  const isCut = count > limit;
  const first = isCut ? Math.ceil(limit / 2) : count;
  const last = isCut ? limit - first : 0;
  const shown = (/** @type {Cell[]} */ cells) => [
    ...cells.slice(0, first),
    ...cells.slice(count - last),
  ];
  const aligned = columns.map(({ head, cells }) => alignedColumn(head, shown(cells)));
  const rows = Array.from({ length: first + last + 1 }, (_, i) =>
    aligned.map((cells) => cells[i]).join('  '),
  );
  const lines = [ink.dim(rows[0]), ...rows.slice(1)];
  if (isCut) lines.splice(1 + first, 0, ink.dim(`… ${count - limit} more points`));
  return lines;
}

/**
 * A column as cells of equal width, its head first: numbers stand one point below the other, texts
 * begin below one another.
 * @param {string} head
 * @param {Cell[]} cells
 */
function alignedColumn(head, cells) {
  const isText = cells.some((cell) => typeof cell === 'string');
  const texts = cells.map((cell) => (typeof cell === 'string' ? visible(cell) : readable(cell)));
  const bodies = isText ? texts : withPointsAligned(texts);
  const width = Math.max(...[head, ...bodies].map(widthOf));
  return [head, ...bodies].map((body) => {
    const blanks = ' '.repeat(width - widthOf(body));
    return isText ? body + blanks : blanks + body;
  });
}

/** @param {string[]} texts */
function withPointsAligned(texts) {
  const after = texts.map((text) => text.length - `${text}.`.indexOf('.'));
  const most = Math.max(...after);
  return texts.map((text, i) => text + ' '.repeat(most - after[i]));
}

/**
 * A number of at most six digits.
 * @param {number | null | undefined} number
 */
function readable(number) {
  if (number === null || number === undefined) return '–';
  const short = Number(number.toPrecision(6));
  const size = Math.abs(short);
  if (size !== 0 && (size < 1e-4 || size >= 1e9)) return short.toExponential().replace('e+', 'e');
  return String(short);
}

// Two columns wide: East Asian characters and emoji. None: marks that join the character before.
const WIDE =
  /[\u1100-\u115f\u2e80-\u303e\u3041-\ua4cf\uac00-\ud7a3\uf900-\ufaff\ufe30-\ufe6f\uff01-\uff60\uffe0-\uffe6]|\p{Emoji_Presentation}/u;
const MARK = /\p{Mark}|\u200d/u;

/** @param {string} text */
function widthOf(text) {
  if (/^[ -~]*$/.test(text)) return text.length;
  let width = 0;
  for (const character of text) width += MARK.test(character) ? 0 : WIDE.test(character) ? 2 : 1;
  return width;
}

/**
 * A text whose control characters are written out: the names of files and categories may come from
 * anywhere, and a terminal obeys such characters. Those that turn the direction of writing count, and
 * those that nobody sees, but for the two that join letters.
 * @param {string} text
 */
export const visible = (text) =>
  text.replace(/(?![\u200c\u200d])[\p{Cc}\p{Cf}\u2028\u2029]/gu, (character) => {
    const code = Number(character.codePointAt(0)).toString(16);
    if (code.length > 4) return `\\u{${code}}`;
    return code.length > 2 ? `\\u${code.padStart(4, '0')}` : `\\x${code.padStart(2, '0')}`;
  });

/** @param {boolean} colour */
function makeInk(colour) {
  const style =
    (/** @type {number} */ on, /** @type {number} */ off) => (/** @type {string} */ s) =>
      colour && s ? `\x1b[${on}m${s}\x1b[${off}m` : s;
  return {
    bold: style(1, 22),
    dim: style(2, 22),
    red: style(31, 39),
    yellow: style(33, 39),
    inColour: (/** @type {string} */ text, /** @type {string} */ name) =>
      colour ? `\x1b[38;2;${parseColour(name).join(';')}m${text}\x1b[39m` : text,
  };
}
