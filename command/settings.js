// From what was typed to what the library is asked for: plain data that a worker can be sent.

import { readFileSync } from 'node:fs';
import { makeAxis } from '../lib/axes/axes.js';
import { ChartTraceError } from '../lib/errors.js';
import { openPixels } from '../lib/selection/masks.js';
import { planOf, TRACE_OPTIONS } from '../lib/tracing/options.js';
import { wordsOf } from './messages.js';
import { KINDS } from './program.js';
import { asUsageError, usageError } from './usage.js';

/** @typedef {import('../lib/tracing/options.js').TraceOptions} TraceOptions */

/**
 * How the images of a run are traced.
 * @typedef {object} Settings
 * @property {string[]} [colours] Of the series; without them, every colour found.
 * @property {Record<string, any>} select Which pixels are a series: `exclude`, `background`,
 *   `tolerance`, `box`, `masks`.
 * @property {TraceOptions} trace
 */

const SELECT = /** @type {const} */ (['exclude', 'background', 'tolerance']);

/**
 * Checks options and gives what they ask for.
 * @param {Record<string, any>} options As the parser read them.
 * @returns {Settings}
 */
export function settingsOf(options) {
  const axes = axesOf(options);
  const trace = { ...picked(options, TRACE_OPTIONS), ...(axes && { axes }) };
  checkTrace(trace);
  return {
    ...(options.color && { colours: options.color }),
    select: selectionOf(options),
    trace,
  };
}

/**
 * @param {Record<string, any>} options
 * @returns {Record<string, any>}
 */
export function selectionOf(options) {
  return {
    ...picked(options, SELECT),
    ...(options.region && { box: options.region }),
    ...(options.mask && { masks: readMasks(options.mask) }),
  };
}

/**
 * @param {Record<string, any>} from
 * @param {readonly string[]} names
 */
const picked = (from, names) =>
  Object.fromEntries(names.filter((name) => from[name] !== undefined).map((n) => [n, from[n]]));

/** @param {Record<string, any>} options */
function axesOf(options) {
  const axes = /** @type {const} */ (['x', 'y']).flatMap((name) => {
    const references = options[name];
    const scale = options[`${name}Scale`];
    if (!references) {
      if (scale !== undefined)
        throw usageError(
          `--${name}-scale`,
          `--${name} beside it`,
          scale,
          `Say which pixels have which values: --${name} PIXEL=VALUE,PIXEL=VALUE.`,
        );
      return [];
    }
    const axis = { scale: scale ?? 'linear', ...references };
    try {
      makeAxis(axis, `--${name}`);
    } catch (error) {
      throw asUsageError(`--${name}`, error);
    }
    return [[name, axis]];
  });
  return axes.length > 0 ? Object.fromEntries(axes) : undefined;
}

/** @param {Record<string, any>} trace */
function checkTrace(trace) {
  if (trace.kind === undefined && trace.mode === undefined)
    throw usageError(
      '--kind',
      `what the chart shows, one of ${KINDS.join(', ')}`,
      undefined,
      'Add for example --kind scatter.',
    );
  try {
    planOf(trace);
  } catch (error) {
    throw asUsageError(optionAbout(error), error);
  }
}

/**
 * The option that an error of the library is about, which its message names first.
 * @param {any} error
 */
function optionAbout(error) {
  const [, name = 'kind'] = /^Expected (\w+)/.exec(error?.message) ?? [];
  return `--${name.replace(/[A-Z]/g, (letter) => `-${letter.toLowerCase()}`)}`;
}

const MASKS =
  'a JSON list of shapes, such as [{"exclude": {"left": 60, "top": 5, "right": 90, "bottom": 20}}]';

/** @param {string} path */
function readMasks(path) {
  const content = readOption('--mask', path);
  try {
    const masks = JSON.parse(content);
    openPixels(masks, { left: 0, top: 0, right: 0, bottom: 0 });
    return masks;
  } catch (error) {
    const hint = error instanceof ChartTraceError ? error.message : undefined;
    throw usageError('--mask', MASKS, path, hint);
  }
}

/**
 * Reads a file that an option names.
 * @param {string} option
 * @param {string} path
 */
export function readOption(option, path) {
  try {
    return readFileSync(path, 'utf8');
  } catch (error) {
    throw usageError(option, 'a file', path, `It cannot be read: ${wordsOf(error).message}.`);
  }
}
