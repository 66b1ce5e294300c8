// The shape of a project file, as a JSON schema. What shapes cannot say, such as references that
// agree with one another, the library checks besides.

const colour = { type: 'string', minLength: 1, description: 'A colour in any notation of CSS.' };
const colours = { anyOf: [colour, { type: 'array', items: colour }] };
const number = { type: 'number' };
const pair = { type: 'array', items: number, minItems: 2, maxItems: 2 };
const value = { type: ['number', 'string'] };
const box = {
  type: 'object',
  description: 'A rectangle of pixel positions, edges included. The top left pixel is (0, 0).',
  properties: { left: number, top: number, right: number, bottom: number },
  required: ['left', 'top', 'right', 'bottom'],
  additionalProperties: false,
};
const shape = {
  description: 'A rectangle, or the corners of a polygon.',
  if: { type: 'array' },
  then: { items: pair, minItems: 3 },
  else: { $ref: '#/$defs/box' },
};

/** The options that decide what is selected and how it is traced, without the colour itself. */
const options = {
  exclude: colours,
  background: colours,
  tolerance: number,
  coverage: number,
  box: { $ref: '#/$defs/box' },
  masks: {
    type: 'array',
    items: {
      type: 'object',
      properties: { include: { $ref: '#/$defs/shape' }, exclude: { $ref: '#/$defs/shape' } },
      minProperties: 1,
      maxProperties: 1,
      additionalProperties: false,
    },
  },
  kind: { enum: ['scatter', 'curve', 'points+curve', 'bars', 'hbars', 'histogram', 'steps'] },
  mode: { type: 'string' },
  grouping: { enum: ['fission', 'horizontal', 'compartments', 'clusters'] },
  stride: { enum: [1, 2, 4, 8, 16] },
  clusterFraction: number,
  pixelStep: number,
  direction: { enum: ['up', 'down', 'left', 'right'] },
  otherEnds: { type: 'boolean' },
  ends: { enum: ['edge', 'centre'] },
};

const scale = {
  scale: { enum: ['linear', 'log', 'log10', 'log2', 'ln', 'date', 'category'] },
  base: number,
  zone: { type: 'string' },
  categories: { type: 'array', items: { type: 'string' } },
};

/** The names of the options, in the order in which they are written. */
export const OPTION_NAMES = Object.keys(options);

export const projectSchema = {
  $schema: 'https://json-schema.org/draft/2020-12/schema',
  $id: 'urn:chart-trace:project:1',
  title: 'A project: a picture of a chart and how its series are traced',
  type: 'object',
  properties: {
    schemaVersion: { const: 1 },
    tool: {
      type: 'object',
      description: 'What wrote the project.',
      properties: { name: { const: 'chart-trace' }, version: { type: 'string', minLength: 1 } },
      required: ['name', 'version'],
      additionalProperties: false,
    },
    image: {
      type: 'object',
      properties: {
        file: {
          type: 'string',
          minLength: 1,
          description: "The picture's path from the folder of the project, with / between folders.",
        },
        sha256: {
          type: 'string',
          pattern: '^[0-9a-f]{64}$',
          description: "The SHA-256 of the picture file's bytes.",
        },
        width: { type: 'integer', minimum: 1 },
        height: { type: 'integer', minimum: 1 },
        page: { ...colour, description: 'The colour under transparent pixels.' },
      },
      required: ['file', 'sha256', 'width', 'height'],
      additionalProperties: false,
    },
    axes: {
      description: 'The axes; null for results in pixels alone.',
      if: { type: 'null' },
      else: {
        type: 'object',
        if: { required: ['pixel'] },
        then: { $ref: '#/$defs/plane' },
        else: { $ref: '#/$defs/straight' },
      },
    },
    options: {
      type: 'object',
      description: 'What holds for every series that says nothing else.',
      properties: options,
      additionalProperties: false,
    },
    series: {
      type: 'array',
      minItems: 1,
      items: {
        type: 'object',
        properties: {
          color: colour,
          colors: { type: 'array', items: colour, minItems: 1 },
          ...options,
        },
        oneOf: [{ required: ['color'] }, { required: ['colors'] }],
        additionalProperties: false,
      },
    },
  },
  required: ['schemaVersion', 'tool', 'image', 'axes', 'options', 'series'],
  additionalProperties: false,
  $defs: {
    box,
    shape,
    scale: {
      type: 'object',
      properties: scale,
      required: ['scale'],
      additionalProperties: false,
    },
    axis: {
      type: 'object',
      properties: {
        ...scale,
        pixel: { type: 'array', items: number, minItems: 2 },
        value: { type: 'array', items: value, minItems: 2 },
      },
      required: ['scale', 'pixel', 'value'],
      additionalProperties: false,
    },
    straight: {
      description: 'Axes along the columns and rows of the picture.',
      properties: { x: { $ref: '#/$defs/axis' }, y: { $ref: '#/$defs/axis' } },
      minProperties: 1,
      additionalProperties: false,
    },
    plane: {
      description: 'Axes that are turned or skewed against the picture.',
      properties: {
        x: { $ref: '#/$defs/scale' },
        y: { $ref: '#/$defs/scale' },
        pixel: { type: 'array', items: pair, minItems: 3 },
        value: {
          type: 'array',
          items: { type: 'array', items: value, minItems: 2, maxItems: 2 },
          minItems: 3,
        },
      },
      required: ['x', 'y', 'pixel', 'value'],
      additionalProperties: false,
    },
  },
};
