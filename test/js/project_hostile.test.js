// Project files from anybody: whatever stands in one, it is a project that can be traced or it is
// refused with a reason, and only pictures in its own folder are read.

import assert from 'node:assert/strict';
import { mkdirSync, symlinkSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import process from 'node:process';
import { after, before, test } from 'node:test';
import fc from 'fast-check';
import { ChartTraceError, LimitError } from '../../lib/errors.js';
import {
  formatProject,
  makeProject,
  parseProject,
  traceProject,
} from '../../lib/projects/project.js';
import { readProject, readProjectImage } from '../../lib/projects/project_files.js';
import { sha256Of } from '../../lib/files.js';
import { command, makeFolder, MARKERS } from './support/command.js';
import { bar, canvas, paint } from './support/drawing.js';

const picture = canvas(40, 30);
paint(picture, '#0000ff', bar(10, 10, 14, 20));

const image = { file: 'a.png', sha256: sha256Of(MARKERS), width: 40, height: 30, page: '#ffffff' };
const box = { left: 0, top: 0, right: 39, bottom: 29 };

/** Projects that say something in every place. */
const PROJECTS = await Promise.all([
  makeProject({
    image,
    axes: {
      x: { scale: 'log', base: 10, pixel: [0, 30], value: [1, 1000] },
      y: { scale: 'date', zone: 'UTC', pixel: [29, 0], value: ['2000-01-01', '2001-01-01'] },
    },
    options: {
      box,
      masks: [
        { include: box },
        {
          exclude: [
            [0, 0],
            [3, 0],
            [3, 3],
          ],
        },
      ],
      tolerance: 5,
    },
    series: [
      { colour: 'blue', kind: 'bars', direction: 'up', otherEnds: true, exclude: ['red'] },
      { colours: ['#00f', 'navy'], mode: 'points-fission', background: 'white', coverage: 0.5 },
    ],
  }),
  makeProject({
    image,
    axes: {
      x: { scale: 'linear' },
      y: { scale: 'category', categories: ['a', 'b'] },
      pixel: [
        [0, 0],
        [30, 0],
        [0, 20],
      ],
      value: [
        [0, 'a'],
        [1, 'a'],
        [0, 'b'],
      ],
    },
    options: { kind: 'curve', grouping: 'fission', stride: 2, pixelStep: 1 },
    series: [{ colour: '#0000ff' }, { colour: 'blue', stride: 4, grouping: 'horizontal' }],
  }),
]);

/**
 * Every place in data, as the keys that lead there.
 * @param {any} data
 * @returns {string[][]}
 */
const placesIn = (data) =>
  data === null || typeof data !== 'object'
    ? [[]]
    : [
        [],
        ...Object.keys(data).flatMap((key) => placesIn(data[key]).map((rest) => [key, ...rest])),
      ];

/**
 * @param {any} data
 * @param {string[]} place
 * @param {(before: any) => any} change
 */
function changed(data, [key, ...rest], change) {
  if (key === undefined) return change(data);
  const copy = Array.isArray(data) ? [...data] : { ...data };
  copy[key] = changed(copy[key], rest, change);
  return copy;
}

/** @param {unknown} error */
const isOurs = (error) => error instanceof ChartTraceError || error instanceof LimitError;

/**
 * Reads a project and traces it, as far as it goes.
 * @param {string} text
 */
async function tryOut(text) {
  try {
    const project = await parseProject(text);
    const { series } = traceProject(project, picture);
    assert.equal(series.length, project.series.length);
    assert.deepEqual(await parseProject(formatProject(project)), project);
  } catch (error) {
    if (!isOurs(error)) throw error;
    const { code, message } = /** @type {ChartTraceError} */ (error);
    assert.match(code, /^ERR_/);
    assert.ok(message.length < 500, message);
  }
}

const anything = fc.oneof(
  fc.jsonValue({ maxDepth: 3 }),
  fc.constantFrom(null, true, '', 'NaN', '1e999', -0, 1e308, -1e308, 5e-324, 2 ** 53, [], {}, [[]]),
  fc.constantFrom(
    'linear',
    'log',
    'date',
    'category',
    'curve',
    'histogram',
    'step_size_graph',
    '#00f',
  ),
  fc.double({ noDefaultInfinity: true, noNaN: true }),
);

test('any value in any place of a project is taken or refused with a reason', async () => {
  const changes = fc.record({
    project: fc.constantFrom(...PROJECTS),
    at: fc.nat(),
    value: anything,
  });
  await fc.assert(
    fc.asyncProperty(fc.array(changes, { minLength: 1, maxLength: 2 }), async (list) => {
      let { project } = list[0];
      for (const { at, value } of list) {
        const places = placesIn(project);
        project = changed(project, places[at % places.length], () => value) ?? null;
      }
      await tryOut(JSON.stringify(project));
    }),
    { numRuns: 400 },
  );
});

test('a project without any of its parts, or with one more, is taken or refused', async () => {
  for (const project of PROJECTS)
    for (const place of placesIn(project).filter((keys) => keys.length > 0)) {
      const without = changed(project, place, () => undefined);
      await tryOut(JSON.stringify(without));
      for (const name of ['extra', '__proto__', 'constructor', 'toString']) {
        const more = JSON.stringify(
          changed(project, place, (part) =>
            part !== null && typeof part === 'object' && !Array.isArray(part)
              ? { more: 'HERE', ...part }
              : part,
          ),
        );
        if (more.includes('HERE'))
          await assert.rejects(parseProject(more.replace('"more":"HERE"', `"${name}":{"a":1}`)), {
            code: 'ERR_PROJECT',
          });
      }
    }
  assert.equal(/** @type {any} */ ({}).a, undefined);
});

test('text that is cut off or changed is taken or refused', async () => {
  const text = formatProject(PROJECTS[0]);
  await fc.assert(
    fc.asyncProperty(fc.nat(text.length - 2), fc.string({ maxLength: 3 }), async (at, other) => {
      await assert.rejects(parseProject(text.slice(0, at)), { code: 'ERR_PROJECT' });
      await tryOut(text.slice(0, at) + other + text.slice(at + 1));
    }),
    { numRuns: 100 },
  );
});

test('nesting without end is refused', async () => {
  for (const nested of [
    '['.repeat(1e6),
    `${'['.repeat(1e5)}${']'.repeat(1e5)}`,
    '{"a":'.repeat(1e6),
  ]) {
    await assert.rejects(parseProject(nested), isOurs);
    const inside = formatProject(PROJECTS[0]).replace('"blue"', nested);
    await assert.rejects(parseProject(inside), isOurs);
  }
  const deep = `${'[{"include":'.repeat(1e4)}1${'}]'.repeat(1e4)}`;
  await assert.rejects(
    parseProject(JSON.stringify({ ...PROJECTS[0], options: { masks: 'M' } }).replace('"M"', deep)),
    isOurs,
  );
});

test('of a key that stands twice the last counts', async () => {
  const text = formatProject(PROJECTS[1]).replace('"stride": 2', '"stride": 2, "stride": 4');
  assert.equal((await parseProject(text)).options.stride, 4);
});

test('versions are whole numbers, and newer ones are told', async () => {
  for (const [version, code] of [
    [2, 'ERR_PROJECT_VERSION'],
    [1e308, 'ERR_PROJECT_VERSION'],
    [0, 'ERR_PROJECT'],
    [1.5, 'ERR_PROJECT'],
    ['1', 'ERR_PROJECT'],
    [null, 'ERR_PROJECT'],
    [[1], 'ERR_PROJECT'],
  ])
    await assert.rejects(parseProject(JSON.stringify({ ...PROJECTS[0], schemaVersion: version })), {
      code,
    });
});

let folder, remove;
before(async () => {
  ({ folder, remove } = await makeFolder());
  mkdirSync(join(folder, 'inside', 'deeper'), { recursive: true });
  writeFileSync(join(folder, 'secret.png'), MARKERS);
  writeFileSync(join(folder, 'inside', 'a.png'), MARKERS);
});
after(() => remove());

/** @param {string} file What the project calls its picture. */
async function imageOf(file) {
  const path = join(folder, 'inside', 'p.json');
  writeFileSync(path, formatProject({ ...PROJECTS[0], image: { ...image, file } }));
  return readProjectImage(await readProject(path), path);
}

test(
  'pictures outside the folder are not read, by whatever way',
  { skip: process.platform === 'win32' },
  async () => {
    const inside = join(folder, 'inside');
    symlinkSync('../secret.png', join(inside, 'link.png'));
    symlinkSync(join(folder, 'secret.png'), join(inside, 'absolute.png'));
    symlinkSync('..', join(inside, 'up'));
    symlinkSync('link.png', join(inside, 'twice.png'));
    for (const file of [
      '../secret.png',
      'deeper/../../secret.png',
      './/..//secret.png',
      'up/secret.png',
      'link.png',
      'absolute.png',
      'twice.png',
      join(folder, 'secret.png'),
      `${join(folder, 'inside')}/../secret.png`,
      '..\\secret.png',
      'C:\\secret.png',
      'a.png\0/../../secret.png',
    ])
      await assert.rejects(imageOf(file), { code: 'ERR_PROJECT_FOLDER' }, file);
    symlinkSync('../a.png', join(inside, 'deeper', 'link.png'));
    for (const file of [
      'a.png',
      './a.png',
      'deeper/../a.png',
      'deeper/link.png',
      'up/inside/a.png',
    ])
      assert.deepEqual(await imageOf(file), MARKERS, file);
  },
);

test('names of pictures that are nothing are told, and reach no terminal as they are', async () => {
  for (const file of ['none.png', '.', 'deeper', 'x'.repeat(300)])
    await assert.rejects(imageOf(file), { code: /^(ENOENT|EISDIR|ENAMETOOLONG)$/ });
  await assert.rejects(imageOf('a\n\x1b[31m\u202e.png'), { code: 'ENOENT' });
  const { status, stdout, stderr } = await command(['--project', 'p.json'], {
    cwd: join(folder, 'inside'),
  });
  assert.deepEqual([status, stdout], [1, '']);
  // eslint-disable-next-line no-control-regex
  assert.doesNotMatch(stderr.replace(/\n$/, ''), /[\x00-\x09\x0b-\x1f\u202e]/);
});
