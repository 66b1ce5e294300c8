// Projects: how the series of a chart were traced, as a file that says all of it. The same project
// and the same picture give the same result to the last byte, and a project can be applied to other
// pictures of its kind.

import { makeAxes } from '../axes/axes.js';
import { formatColour, parseColour } from '../selection/colours.js';
import { ChartTraceError } from '../errors.js';
import { formatJson } from '../json.js';
import { planOf } from '../tracing/options.js';
import { OPTION_NAMES, projectSchema } from '../schemas/project.js';
import { traceChart } from '../tracing/series.js';
import { VERSION } from '../version.js';

/** @typedef {import('../axes/axes.js').Axes} Axes */
/** @typedef {import('../axes/axes.js').AxesDescription} AxesDescription */
/** @typedef {import('../tracing/options.js').TraceOptions} TraceOptions */
/** @typedef {import('../selection/pixels.js').SelectionOptions} SelectionOptions */
/** @typedef {import('../reports/report.js').ImageResult} ImageResult */
/** @typedef {import('../selection/view.js').Picture} Picture */

/** The version of the project's shape. It grows when older programs would misread a project. */
export const PROJECT_VERSION = 1;

/**
 * The picture of a project.
 * @typedef {object} ProjectImage
 * @property {string} file Its path from the folder of the project, with / between folders.
 * @property {string} sha256 The SHA-256 of the file's bytes, in 64 small hexadecimal digits.
 * @property {number} width
 * @property {number} height
 * @property {string} [page] The colour under transparent pixels, for the decoder.
 */

/** @typedef {Omit<TraceOptions & SelectionOptions, 'axes'>} SeriesOptions As `traceChart` has them. */

/**
 * A project as plain data. Series and options hold what `traceChart` knows, with `color` for
 * `colour`; a series' own options go before those for all.
 * @typedef {object} Project
 * @property {number} schemaVersion
 * @property {{name: string, version: string}} tool
 * @property {ProjectImage} image
 * @property {AxesDescription | null} axes
 * @property {Record<string, any>} options
 * @property {Record<string, any>[]} series Each with `color`, or `colors` where it has several.
 */

/**
 * Makes a project.
 * @param {object} parts
 * @param {ProjectImage} parts.image
 * @param {Axes | AxesDescription | null} [parts.axes]
 * @param {SeriesOptions} [parts.options] What holds for every series.
 * @param {SeriesOptions[]} parts.series Each with its colour.
 * @returns {Promise<Project>}
 */
export async function makeProject({ image, axes = null, options = {}, series }) {
  const { file, sha256, width, height, page } = image;
  const project = {
    schemaVersion: PROJECT_VERSION,
    tool: { name: 'chart-trace', version: VERSION },
    image: { file, sha256, width, height, ...(page !== undefined && { page }) },
    axes: axes && ('toValue' in axes ? axes : makeAxes(axes)).description,
    options: inOrder(options),
    series: series.map(({ colour, colours, ...own }) => ({
      ...(colour !== undefined && { color: nameOf(colour) }),
      ...(colours !== undefined && { colors: colours.map(nameOf) }),
      ...inOrder(own),
    })),
  };
  return checked(JSON.parse(JSON.stringify(project)));
}

/**
 * Writes a project as JSON, the same text for the same project.
 * @param {Project} project
 * @returns {string} Ends with a line feed.
 */
export function formatProject({ schemaVersion, tool, image, axes, options, series }) {
  return formatJson({ schemaVersion, tool, image, axes, options, series });
}

/**
 * Reads a project.
 * @param {string} text
 * @returns {Promise<Project>}
 */
export async function parseProject(text) {
  let data;
  try {
    data = JSON.parse(text.replace(/^\ufeff/, ''));
  } catch (cause) {
    throw malformed(`it is not JSON: ${/** @type {Error} */ (cause).message}`, { cause });
  }
  const version = data?.schemaVersion;
  if (Number.isInteger(version) && version > PROJECT_VERSION)
    throw new ChartTraceError(
      `The project is of version ${version}, but this program reads ${PROJECT_VERSION}.`,
      {
        code: 'ERR_PROJECT_VERSION',
        expected: `a schemaVersion of at most ${PROJECT_VERSION}`,
        received: version,
        hint: `It was written by ${writerOf(data)}: use that version, or a newer one.`,
      },
    );
  return checked(data);
}

/** @param {any} data Of a newer version: nothing about it is certain. */
function writerOf(data) {
  const [name, version] = [data.tool?.name, data.tool?.version];
  return typeof name === 'string' && typeof version === 'string'
    ? `${name} ${version}`.slice(0, 80)
    : 'a newer version of chart-trace';
}

/**
 * Traces the series of a project in a picture, that of the project or another.
 * @param {Project} project
 * @param {Picture} picture
 * @param {{file?: string | null}} [options] `file`: what the result calls the picture, the project's
 *   own name for it by default.
 * @returns {ImageResult} For `makeReport`.
 */
export function traceProject(project, picture, { file = project.image.file } = {}) {
  const { width, height } = picture;
  const made = project.image;
  const notes =
    width === made.width && height === made.height
      ? []
      : [
          `the picture is ${width} x ${height} px, that of the project ${made.width} x ` +
            `${made.height} px: boxes, masks and axes are where they were in that one`,
        ];
  const series = project.series.map((_, i) => {
    const traced = traceChart(picture, optionsOf(project, i));
    return { ...traced, notes: [...notes, ...traced.notes] };
  });
  return { file, width, height, series };
}

/**
 * Refuses a picture file that is not the one of the project.
 * @param {Project} project
 * @param {string} sha256 Of the file's bytes.
 */
export function checkHash({ image }, sha256) {
  if (sha256 === image.sha256) return;
  throw new ChartTraceError(`${image.file} is not the picture that the project was made for.`, {
    code: 'ERR_PROJECT_IMAGE',
    expected: `a file whose SHA-256 is ${image.sha256}`,
    received: sha256,
    hint: 'Put the picture back, or apply the project to this one by naming it.',
  });
}

/**
 * Whether the path of a project's picture stays inside the folder of the project, as far as the path
 * alone can tell: it is relative and never climbs out.
 * @param {string} file
 */
export function staysInside(file) {
  if (/^[/\\]|^[a-z]:|\0/i.test(file)) return false;
  let depth = 0;
  for (const part of file.split(/[/\\]/)) {
    if (part === '..') --depth;
    else if (part !== '' && part !== '.') ++depth;
    if (depth < 0) return false;
  }
  return true;
}

/**
 * What `traceChart` is given for a series.
 * @param {Project} project
 * @param {number} i Which series.
 * @returns {TraceOptions & SelectionOptions}
 */
function optionsOf({ axes, options, series }, i) {
  const { color, colors, ...own } = series[i];
  return {
    ...options,
    ...own,
    ...(color !== undefined && { colour: color }),
    ...(colors !== undefined && { colours: colors }),
    ...(axes && { axes }),
  };
}

/** @param {string | import('../selection/colours.js').Rgb} colour */
const nameOf = (colour) => (typeof colour === 'string' ? colour : formatColour(colour));

/**
 * Options in the order in which they are written, colours by their names. Unknown ones come last,
 * to be refused by their names.
 * @param {Record<string, any>} options
 */
function inOrder(options) {
  const names = [...OPTION_NAMES, ...Object.keys(options)];
  const entries = [...new Set(names)].map((name) => [name, options[name]]);
  return Object.fromEntries(
    entries
      .filter(([, option]) => option !== undefined)
      .map(([name, option]) => [name, COLOURS.includes(name) ? namesOf(option) : option]),
  );
}

const COLOURS = ['exclude', 'background'];

/** @param {any} option A colour or several. */
const namesOf = (option) =>
  Array.isArray(option) && typeof option[0] !== 'number' ? option.map(nameOf) : nameOf(option);

/** @type {import('ajv').ValidateFunction | undefined} */
let validate;

/**
 * Refuses what is no project.
 * @param {any} data
 * @returns {Promise<Project>} The same data.
 */
async function checked(data) {
  // Only those who have projects wait for the library to load.
  if (!validate) {
    const { Ajv2020 } = await import('ajv/dist/2020.js');
    validate = new Ajv2020({ strict: true, strictTypes: false, strictRequired: false }).compile(
      projectSchema,
    );
  }
  if (!validate(data)) throw faultOf(/** @type {any} */ (validate.errors), data);
  const project = /** @type {Project} */ (data);
  for (const i of project.series.keys()) checkSeries(project, i);
  return project;
}

/**
 * @param {Project} project
 * @param {number} i Which series.
 */
function checkSeries(project, i) {
  try {
    const { colour, colours = [], exclude, background, ...options } = optionsOf(project, i);
    for (const one of [colour, ...colours, exclude, background].flat())
      if (typeof one === 'string') parseColour(one);
    planOf(options);
  } catch (cause) {
    const { message, expected, received } = /** @type {ChartTraceError} */ (cause);
    throw malformed(`series ${i + 1}: ${message}`, { expected, received, cause });
  }
}

/**
 * What is wrong first, in words.
 * @param {import('ajv').ErrorObject[]} errors
 * @param {any} data
 */
function faultOf([{ instancePath, message = '', params }], data) {
  const keys = instancePath.split('/').slice(1);
  const received = keys.reduce((part, key) => part?.[key], data);
  const more = params.additionalProperty ?? params.allowedValues?.join(', ') ?? params.allowedValue;
  const expected = more === undefined ? message : `${message}: ${more}`;
  return malformed(`${keys.join('.') || 'it'} ${expected}`, { expected, received });
}

/**
 * @param {string} reason
 * @param {{expected?: string, received?: unknown, cause?: unknown}} [details]
 */
function malformed(reason, details) {
  return new ChartTraceError(`The project cannot be used: ${reason}.`.replace(/\.+$/, '.'), {
    code: 'ERR_PROJECT',
    hint: 'The file schemas/project.schema.json of the package describes projects.',
    ...details,
  });
}
