// The shape of a report, as a JSON schema. Fields that are not required are there for the kinds of
// charts that have them.

const orNull = (/** @type {string} */ type) => ({ type: [type, 'null'] });
const pixelPair = { type: 'array', items: orNull('number'), minItems: 2, maxItems: 2 };
const axisValue = { type: ['number', 'string', 'null'] };
const valuePair = { type: 'array', items: axisValue, minItems: 2, maxItems: 2 };

/**
 * An object all of whose fields are there, and no others.
 * @param {Record<string, object>} properties
 * @param {string[]} [optional]
 */
const object = (properties, optional = []) => ({
  type: 'object',
  properties,
  required: Object.keys(properties).filter((name) => !optional.includes(name)),
  additionalProperties: false,
});

const count = { type: 'integer', minimum: 0 };
const kind = { enum: ['scatter', 'curve', 'points+curve', 'bars', 'hbars', 'histogram', 'steps'] };

export const reportSchema = {
  $schema: 'https://json-schema.org/draft/2020-12/schema',
  $id: 'urn:chart-trace:report:1',
  title: 'A report of the series found in pictures of charts',
  ...object({
    schemaVersion: { const: 1 },
    images: { type: 'array', items: { $ref: '#/$defs/image' } },
  }),
  $defs: {
    image: {
      description: 'One picture. Such an object is a line of NDJSON.',
      ...object(
        {
          file: orNull('string'),
          width: { type: ['integer', 'null'], minimum: 1 },
          height: { type: ['integer', 'null'], minimum: 1 },
          series: { type: 'array', items: { $ref: '#/$defs/series' } },
          error: { anyOf: [{ type: 'null' }, { $ref: '#/$defs/error' }] },
          digest: {
            description: 'Of the picture and the options, in files that a run can go on with.',
            type: 'string',
          },
        },
        ['digest'],
      ),
    },
    series: object(
      {
        color: orNull('string'),
        kind,
        mode: { type: 'string' },
        pixels: {
          description: 'The points. The centre of the top left pixel is [0, 0], y grows downwards.',
          type: 'array',
          items: pixelPair,
        },
        values: {
          description: 'The points in the values of the axes, in the order of pixels.',
          type: ['array', 'null'],
          items: valuePair,
        },
        notes: { type: 'array', items: { type: 'string' } },
        selected: { ...count, description: 'How many pixels were traced.' },
        markers: { ...count, description: 'How many of the points, the first ones, are markers.' },
        bars: { type: 'array', items: { $ref: '#/$defs/bar' } },
        bins: { type: 'array', items: { $ref: '#/$defs/bin' } },
      },
      ['selected', 'markers', 'bars', 'bins'],
    ),
    bar: {
      description: 'Both ends of a bar, in the order of pixels.',
      ...object({
        pixels: object({ end: pixelPair, otherEnd: { anyOf: [{ type: 'null' }, pixelPair] } }),
        values: {
          anyOf: [
            { type: 'null' },
            object({ end: valuePair, otherEnd: { anyOf: [{ type: 'null' }, valuePair] } }),
          ],
        },
      }),
    },
    bin: {
      description: "The borders and the top of a histogram's bar, in the order of pixels.",
      ...object({
        pixels: object({
          left: orNull('number'),
          right: orNull('number'),
          top: orNull('number'),
        }),
        values: {
          anyOf: [{ type: 'null' }, object({ left: axisValue, right: axisValue, top: axisValue })],
        },
      }),
    },
    error: object({
      code: orNull('string'),
      message: { type: 'string' },
      expected: orNull('string'),
      received: orNull('string'),
      hint: orNull('string'),
    }),
  },
};
