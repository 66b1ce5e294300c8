// Projects: made, written, read, refused and run again.

import assert from 'node:assert/strict';
import { mkdir, mkdtemp, readFile, realpath, rm, symlink, writeFile } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import fc from 'fast-check';
import {
  ChartTraceError,
  decodePicture,
  formatProject,
  makeAxes,
  makeProject,
  makeReport,
  parseProject,
  pathFromProject,
  readProject,
  readProjectImage,
  sha256Of,
  toJson,
  traceChart,
  traceProject,
  VERSION,
  writeProject,
} from 'chart-trace';
import { staysInside } from '../../lib/projects/project.js';
import { nameInProject } from '../../lib/projects/project_files.js';
import { node, root } from './support/addon.js';

const charts = join(root, 'examples/charts');
const chart = join(charts, 'vadeaths-bars.png');

/** @type {string} */
let folder;
/** @type {import('../../lib/projects/project.js').Project} */
let project;
before(async () => {
  folder = await realpath(await mkdtemp(join(tmpdir(), 'chart-trace-')));
  await mkdir(join(folder, 'figures'));
  await writeFile(join(folder, 'figures/bars.png'), await readFile(chart));
  project = await makeProject(await partsOf('vadeaths-bars', 'figures/bars.png'));
});
after(() => rm(folder, { recursive: true }));

/**
 * What makes a project of a chart of the examples.
 * @param {string} name
 * @param {string} file
 */
async function partsOf(name, file) {
  const {
    axes,
    plot_box,
    series,
    file: original,
  } = JSON.parse(await readFile(join(charts, `${name}.json`), 'utf8'));
  const [{ colour, mode }] = series;
  const [left, top, right, bottom] = plot_box;
  const bytes = await readFile(join(charts, original));
  const { width, height } = await decodePicture(bytes);
  return {
    image: { file, sha256: sha256Of(bytes), width, height },
    axes,
    options: { box: { left, top, right, bottom }, exclude: '#ffffff' },
    series: [
      { colour, mode },
      { colours: [[1, 2, 3], 'white'], kind: 'scatter', background: [[255, 255, 255]] },
    ],
  };
}

test('a project says all there is to know, in a fixed order', async () => {
  const parts = await partsOf('vadeaths-bars', 'figures/bars.png');
  const made = await makeProject({
    ...parts,
    axes: makeAxes(parts.axes),
    series: [{ otherEnds: true, kind: 'bars', colour: [46, 125, 50] }],
  });
  assert.equal(
    JSON.stringify(made),
    JSON.stringify({
      schemaVersion: 1,
      tool: { name: 'chart-trace', version: VERSION },
      image: parts.image,
      axes: makeAxes(parts.axes).description,
      options: { exclude: '#ffffff', box: parts.options.box },
      series: [{ color: '#2e7d32', kind: 'bars', otherEnds: true }],
    }),
  );
  assert.deepEqual(project.series[1], {
    colors: ['#010203', 'white'],
    background: ['#ffffff'],
    kind: 'scatter',
  });
});

test('a project comes back from its text, and gives the same text again', async () => {
  const text = formatProject(project);
  const back = await parseProject(text);
  assert.deepEqual(back, project);
  assert.equal(formatProject(back), text);
  assert.deepEqual(await parseProject(`\ufeff${text}`), project);
});

test('options in any order give the same text', async () => {
  const parts = await partsOf('vadeaths-bars', 'a.png');
  const turned = (/** @type {object} */ object) =>
    Object.fromEntries(Object.entries(object).reverse());
  const other = { ...parts, options: turned(parts.options), series: parts.series.map(turned) };
  assert.equal(formatProject(await makeProject(other)), formatProject(await makeProject(parts)));
});

for (const name of ['vadeaths-bars', 'faithful-histogram', 'mtcars-fit', 'nile-stairs']) {
  test(`run again, in another process, ${name} gives the same bytes`, async () => {
    const original = JSON.parse(await readFile(join(charts, `${name}.json`), 'utf8')).file;
    await writeFile(join(folder, original), await readFile(join(charts, original)));
    const parts = await partsOf(name, original);
    const path = join(folder, `${name}.project.json`);
    await writeProject(path, await makeProject({ ...parts, series: parts.series.slice(0, 1) }));

    const picture = await decodePicture(join(charts, original));
    const traced = traceChart(picture, {
      ...parts.options,
      ...parts.series[0],
      axes: parts.axes,
    });
    assert.ok(traced.pixels.length > 0);
    const { width, height } = picture;
    const first = toJson(makeReport([{ file: original, width, height, series: [traced] }]));

    const program = `
      import { decodePicture, makeReport, readProject, readProjectImage, toJson, traceProject }
        from 'chart-trace';
      const path = ${JSON.stringify(path)};
      const project = await readProject(path);
      const picture = await decodePicture(await readProjectImage(project, path));
      process.stdout.write(toJson(makeReport([traceProject(project, picture)])));`;
    const { stdout, stderr } = await node(['--input-type=module', '-e', program], { cwd: root });
    assert.equal(stderr, '');
    assert.equal(stdout, first);
  });
}

test('a project applies to other pictures, and notes that their size differs', async () => {
  const only = { ...project, series: project.series.slice(0, 1) };
  const picture = await decodePicture(chart);
  const [same] = traceProject(only, picture, { file: 'other.png' }).series;
  assert.equal(traceProject(only, picture, { file: 'other.png' }).file, 'other.png');
  const height = picture.height - 10;
  const data = picture.data.subarray(0, 4 * picture.width * height);
  const [lower] = traceProject(only, { width: picture.width, height, data }).series;
  assert.deepEqual(lower.pixels, same.pixels);
  assert.doesNotMatch(same.notes.join(), /that of the project/);
  assert.match(lower.notes[0], /^the picture is 640 x 470 px, that of the project 640 x 480 px/);
});

test("a series' own options go before those for all", async () => {
  const picture = await decodePicture(chart);
  const nowhere = { left: 0, top: 0, right: 5, bottom: 5 };
  const [series] = project.series;
  const run = (/** @type {object} */ changes) =>
    traceProject({ ...project, ...changes }, picture).series[0].pixels.length;
  assert.equal(run({ options: { box: nowhere }, series: [series] }), 0);
  assert.equal(run({ options: { box: nowhere }, series: [{ ...series, ...project.options }] }), 5);
});

/** @param {(data: any) => void} change */
function changed(change) {
  const data = structuredClone(project);
  change(data);
  return JSON.stringify(data);
}

test('what is no project is refused with what is wrong', async () => {
  /** @type {[string, RegExp][]} */
  const cases = [
    ['', /it is not JSON/],
    ['{', /it is not JSON/],
    ['null', /it must be object/],
    ['[]', /it must be object/],
    ['{}', /must have required property 'schemaVersion'/],
    [changed((data) => (data.schemaVersion = '1')), /schemaVersion must be equal to constant: 1/],
    [changed((data) => (data.schemaVersion = 0)), /schemaVersion must be equal to constant: 1/],
    [changed((data) => (data.more = 1)), /must NOT have additional properties: more/],
    [changed((data) => (data.options.colour = 'red')), /options .*additional properties: colour/],
    [changed((data) => (data.options.stride = 3)), /options.stride must be .*: 1, 2, 4, 8, 16/],
    [changed((data) => (data.options.box.left = null)), /options.box.left must be number/],
    [changed((data) => (data.options.masks = [{}])), /options.masks.0 must NOT have fewer/],
    [changed((data) => (data.image.sha256 = 'ABC')), /image.sha256 must match/],
    [changed((data) => (data.image.width = 0)), /image.width must be >= 1/],
    [changed((data) => (data.series = [])), /series must NOT have fewer than 1/],
    [changed((data) => delete data.series[0].color), /series.0 must .*color/],
    [changed((data) => (data.series[0].color = 'bluish')), /series 1: Expected a CSS colour/],
    [changed((data) => (data.series[0].mode = 'pie')), /series 1: .*pie/],
    [changed((data) => (data.series[1].stride = 2)), /series 2: Expected stride to be left out/],
    [changed((data) => (data.axes.y.pixel = [1])), /axes.y.pixel must NOT have fewer than 2/],
    [changed((data) => (data.axes.y.pixel = [1, 1])), /series 1: .*y axis/],
    [changed((data) => (data.axes.y.scale = 'cubic')), /axes.y.scale must be .*: linear, log/],
    [changed((data) => (data.axes = {})), /axes must NOT have fewer than 1/],
    [changed((data) => (data.axes = { pixel: [], x: {}, y: {}, value: [] })), /axes/],
    ['{"__proto__": {"polluted": 1}, "schemaVersion": 1}', /must/],
    ['['.repeat(1e5), /it is not JSON/],
  ];
  for (const [text, message] of cases)
    await assert.rejects(parseProject(text), (error) => {
      assert.ok(error instanceof ChartTraceError, text);
      assert.equal(error.code, 'ERR_PROJECT', text);
      assert.match(error.message, message);
      return true;
    });
});

test('whatever stands in a file, it is a project or is refused', async () => {
  await fc.assert(
    fc.asyncProperty(fc.jsonValue(), fc.nat(), async (value, place) => {
      const data = structuredClone(project);
      // Puts the value in the place of any part of a good project.
      const parts = [[data, 'image']];
      for (const [holder, name] of parts)
        if (holder[name] && typeof holder[name] === 'object')
          parts.push(...Object.keys(holder[name]).map((key) => [holder[name], key]));
      for (const name of ['axes', 'options', 'series', 'tool']) parts.push([data, name]);
      const [holder, name] = parts[place % parts.length];
      holder[name] = value;
      const text = JSON.stringify(data);
      const read = await parseProject(text).catch((error) => {
        assert.equal(error.code, 'ERR_PROJECT', text);
      });
      if (read) assert.deepEqual(read, JSON.parse(text));
    }),
  );
});

test('a project of a newer version is refused by its version, whatever else it holds', async () => {
  const newer = JSON.stringify({
    schemaVersion: 2,
    tool: { name: 'chart-trace', version: '9.1.0' },
  });
  await assert.rejects(parseProject(newer), {
    code: 'ERR_PROJECT_VERSION',
    received: 2,
    hint: 'It was written by chart-trace 9.1.0: use that version, or a newer one.',
  });
  await assert.rejects(parseProject('{"schemaVersion": 3}'), { code: 'ERR_PROJECT_VERSION' });
});

test('options that make no sense together are refused when a project is made', async () => {
  const parts = await partsOf('vadeaths-bars', 'a.png');
  const wrong = [{ colour: '#2e7d32', kind: 'bars', stride: 2 }];
  await assert.rejects(makeProject({ ...parts, series: /** @type {any} */ (wrong) }), {
    code: 'ERR_PROJECT',
  });
  const unknown = { ...parts, options: /** @type {any} */ ({ boxes: 1 }) };
  await assert.rejects(makeProject(unknown), /additional properties: boxes/);
});

test('the picture is found beside the project, and only the one it was made for', async () => {
  const path = join(folder, 'p.json');
  await writeProject(path, project);
  const read = await readProject(path);
  assert.deepEqual(await readProjectImage(read, path), await readFile(chart));
  assert.equal(pathFromProject(path, join(folder, 'figures', 'bars.png')), 'figures/bars.png');
  await assert.rejects(readProjectImage(read, join(folder, 'figures/p.json')), { code: 'ENOENT' });
  const other = { ...read, image: { ...read.image, sha256: '0'.repeat(64) } };
  await assert.rejects(readProjectImage(other, path), {
    code: 'ERR_PROJECT_IMAGE',
    received: read.image.sha256,
  });
});

test('a picture outside the folder of the project is not read unless that is allowed', async () => {
  const inside = join(folder, 'inside');
  await mkdir(inside, { recursive: true });
  const path = join(inside, 'p.json');
  const at = (/** @type {string} */ file) => ({ ...project, image: { ...project.image, file } });
  for (const file of ['../figures/bars.png', join(folder, 'figures/bars.png')]) {
    await assert.rejects(readProjectImage(at(file), path), {
      code: 'ERR_PROJECT_FOLDER',
      received: file,
    });
    const bytes = await readProjectImage(at(file), path, { anywhere: true });
    assert.equal(bytes.length, (await readFile(chart)).length);
  }
  // Not even whether it is there is told.
  await assert.rejects(readProjectImage(at('../missing.png'), path), {
    code: 'ERR_PROJECT_FOLDER',
  });
  if (process.platform === 'win32') return;
  await symlink(join(folder, 'figures'), join(inside, 'link'));
  await assert.rejects(readProjectImage(at('link/bars.png'), path), { code: 'ERR_PROJECT_FOLDER' });
});

test('a picture is named so that its project opens it again', async () => {
  await mkdir(join(folder, 'names/scans/raw'), { recursive: true });
  await writeFile(join(folder, 'names/scans/a.png'), await readFile(chart));
  const cases = [
    ['names/p.json', 'names/scans/a.png', 'scans/a.png'],
    ['names/scans/p.json', 'names/scans/raw/../a.png', 'a.png'],
    ['names/scans/raw/../p.json', 'names/scans/a.png', 'a.png'],
  ];
  if (process.platform !== 'win32') {
    await symlink(join(folder, 'names/scans'), join(folder, 'names/link'));
    await symlink('a.png', join(folder, 'names/scans/latest.png'));
    await symlink(join(folder, 'names/scans/raw'), join(folder, 'raw'));
    // Of a link that is there under the name `a.png`, but is another picture.
    await writeFile(join(folder, 'a.png'), 'another');
    cases.push(
      // As it was given, where that leads there from the folder of the project.
      ['names/p.json', 'names/link/latest.png', 'link/latest.png'],
      ['names/link/p.json', 'names/link/a.png', 'a.png'],
      // The folder of both, by two names.
      ['names/scans/p.json', 'names/link/a.png', 'a.png'],
      ['names/link/p.json', 'names/scans/latest.png', 'a.png'],
      // The folder above a link is that above what it leads to.
      ['p.json', 'raw/../a.png', 'names/scans/a.png'],
    );
  }
  for (const [saved, image, name] of cases) {
    const [path, picture] = [`${folder}/${saved}`, `${folder}/${image}`];
    const file = await nameInProject(path, picture);
    assert.equal(file, name, `${saved} of ${image}`);
    await writeProject(path, { ...project, image: { ...project.image, file } });
    assert.deepEqual(await readProjectImage(await readProject(path), path), await readFile(chart));
  }
});

test('a picture that its project would not open is refused when it is named', async () => {
  const [inside, elsewhere] = [join(folder, 'saved'), join(folder, 'elsewhere')];
  for (const place of [inside, elsewhere]) await mkdir(place);
  const target = join(elsewhere, 'a.png');
  await writeFile(target, await readFile(chart));
  const images = [target, `${inside}/../elsewhere/a.png`];
  if (process.platform !== 'win32') {
    await symlink(target, join(inside, 'link.png'));
    await symlink(elsewhere, join(inside, 'link'));
    images.push(join(inside, 'link.png'), join(inside, 'link/a.png'));
  }
  for (const image of images)
    await assert.rejects(nameInProject(join(inside, 'p.json'), image), {
      code: 'ERR_PROJECT_FOLDER',
      message: `The picture ${image} lies outside the folder of its project, ${inside}.`,
      received: target,
      hint:
        `A project opens no picture elsewhere. Save the project in ${elsewhere}, or copy the ` +
        `picture to ${inside}.`,
    });
  await assert.rejects(nameInProject(join(inside, 'p.json'), join(inside, 'none.png')), {
    code: 'ENOENT',
  });
});

test('paths that may leave a folder are known', () => {
  for (const file of ['a.png', 'a/b.png', './a.png', 'a/../b.png', '..a/b', 'a..', '...'])
    assert.ok(staysInside(file), file);
  for (const file of [
    '../a.png',
    'a/../../b.png',
    '..',
    '/a.png',
    '\\a.png',
    'C:\\a.png',
    'c:a.png',
    '..\\a.png',
    'a\\..\\..\\b',
    '\\\\server\\a.png',
    'a\0.png',
  ])
    assert.ok(!staysInside(file), file);
});

test('a huge file is not read as a project', async () => {
  const path = join(folder, 'huge.json');
  await writeFile(path, ' '.repeat(2 ** 26 + 1));
  await assert.rejects(readProject(path), { code: 'ERR_LIMIT', received: 2 ** 26 + 1 });
  await rm(path);
});
