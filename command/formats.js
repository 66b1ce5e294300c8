// The formats of records.

import process from 'node:process';
import { parseColour } from '../lib/selection/colours.js';
import { columnsFor } from '../lib/reports/columns.js';
import { toJson, toNdjson } from '../lib/reports/json.js';
import { REPORT_VERSION } from '../lib/reports/report.js';
import { csvRow, toCsv, toTsv, tsvRow } from '../lib/reports/separated.js';
import { toTable } from '../lib/reports/table.js';
import { hasColours, swatch, visible } from './terminal.js';

/** @typedef {import('../lib/reports/report.js').ImageReport} ImageReport */
/** @typedef {import('./output.js').Writer} Writer */
/** @typedef {typeof import('./program.js').FORMATS[number]} Format */

/** @param {any[]} images */
const report = (images) => ({ schemaVersion: REPORT_VERSION, images });

/** @param {Record<string, any>} options */
const isColoured = ({ output = '-' }) => output === '-' && hasColours(process.stdout);

/**
 * What writes traced images.
 * @param {Format} format
 * @param {Record<string, any>} options
 * @param {import('../lib/tracing/modes.js').Kind[]} kinds Of the series.
 * @returns {Writer}
 */
export function traceWriter(format, options, kinds) {
  // The same columns for every image, whatever was found in it.
  const hasOtherEnds = options.otherEnds || options.project !== undefined;
  const columns = columnsFor(kinds).filter((name) => hasOtherEnds || !name.startsWith('other_'));
  /** @type {Record<Format, Writer>} */
  const writers = {
    table: between('\n', (images) => toTable(report(images), { colour: isColoured(options) })),
    csv: headed((images, header) => toCsv(report(images), { columns, header })),
    tsv: headed((images, header) => toTsv(report(images), { columns, header })),
    json: whole((images) => toJson(report(images))),
    ndjson: between('', (images) => toNdjson(report(images))),
  };
  return writers[format];
}

/**
 * @param {(images: any[], header: boolean) => string} write
 * @returns {Writer}
 */
const headed = (write) => ({ isStream: true, write });

/**
 * @param {string} separator
 * @param {(images: any[]) => string} write
 * @returns {Writer}
 */
const between = (separator, write) => ({
  isStream: true,
  write: (images, isFirst) => (isFirst ? '' : separator) + write(images),
});

/**
 * @param {(images: any[]) => string} write
 * @returns {Writer}
 */
const whole = (write) => ({ isStream: false, write });

const COLOUR_COLUMNS = ['file', 'color', 'pixels', 'share', 'error'];

/**
 * What writes the colours of images.
 * @param {Format} format
 * @param {Record<string, any>} options
 * @returns {Writer}
 */
export function colourWriter(format, options) {
  /** @type {(images: any[], header: boolean, row: typeof csvRow) => string} */
  const rows = (images, header, row) =>
    [...(header ? [COLOUR_COLUMNS] : []), ...colourRows(images)]
      .map((cells) => row(cells))
      .join('');
  /** @type {Record<Format, Writer>} */
  const writers = {
    table: between('\n', (images) =>
      images.map((image) => colourTable(image, isColoured(options))).join('\n'),
    ),
    csv: headed((images, header) => rows(images, header, csvRow)),
    tsv: headed((images, header) => rows(images, header, tsvRow)),
    json: whole((images) => toJson(report(images))),
    ndjson: between('', (images) => toNdjson(report(images))),
  };
  return writers[format];
}

/**
 * The colours of an image for people.
 * @param {any} image
 * @param {boolean} inColour
 */
function colourTable({ file, width, height, colors, error }, inColour) {
  const size = width === null ? '' : `  ${width} × ${height} px`;
  const head = `${visible(file)}${size}`;
  const digits = Math.max(0, ...colors.map((/** @type {any} */ { pixels }) => `${pixels}`.length));
  const lines = colors.map((/** @type {any} */ { color, pixels, share }) => {
    const sample = inColour ? `${swatch(parseColour(color))} ` : '';
    const percent = (100 * share).toFixed(1).padStart(5);
    return `  ${sample}${color}  ${String(pixels).padStart(digits)} px  ${percent} %`;
  });
  const none = error ? `  error: ${visible(error.message)}` : '  no colour of a series found';
  return `${[head, ...(lines.length > 0 ? lines : [none])].join('\n')}\n`;
}

/**
 * The colours of images in rows: at least one for each image.
 * @param {any[]} images
 * @returns {import('../lib/reports/columns.js').Cell[][]}
 */
const colourRows = (images) =>
  images.flatMap(({ file, colors, error }) =>
    colors.length === 0
      ? [[file, null, null, null, error?.message ?? null]]
      : colors.map((/** @type {any} */ c) => [file, c.color, c.pixels, c.share, null]),
  );
