// Runs that go on with a file of records: what was made from the same picture with the same options
// is kept as it is, all else is made anew.

import assert from 'node:assert/strict';
import { readFileSync, writeFileSync } from 'node:fs';
import { rm, writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import { after, before, beforeEach, test } from 'node:test';
import { digestOf } from '../../command/digests.js';
import { sha256Of } from '../../lib/files.js';
import { VERSION } from '../../lib/version.js';
import {
  BLUE,
  command,
  makeFolder,
  MARKERS,
  parseRecords,
  png,
  writeMarkers,
} from './support/command.js';

const { folder, remove } = await makeFolder();
after(() => remove());
const target = join(folder, 'all.ndjson');
const NAMES = ['a.png', 'b.png', 'c.png'];

/** @param {string[]} more */
const resume = (...more) =>
  command(['--jobs', '1', ...more, '--resume', '-o', 'all.ndjson'], { cwd: folder });
const traced = (...more) => resume(...NAMES, '--kind', 'scatter', '--color', 'blue', ...more);

const lines = () => readFileSync(target, 'utf8').split(/(?<=\n)/);
const records = () => parseRecords(readFileSync(target, 'utf8'));

/** @type {string} */
let first;
before(async () => {
  await writeMarkers(folder, NAMES);
  const { status, stderr } = await traced();
  assert.equal(status, 0, stderr);
  first = readFileSync(target, 'utf8');
});
beforeEach(async () => {
  await writeMarkers(folder, NAMES);
  writeFileSync(target, first);
});

/** Marks the records, to tell the kept from the new. */
function mark() {
  const marked = records().map((record) => ({ ...record, height: 1 }));
  writeFileSync(target, marked.map((record) => `${JSON.stringify(record)}\n`).join(''));
}

const isKept = () => records().map(({ height }) => height === 1);

test('the same pictures and options: the records are kept to the last byte', async () => {
  mark();
  const written = lines();
  // How many at a time decides nothing.
  const { status, stderr } = await traced('--jobs', '2');
  assert.deepEqual([status, stderr], [0, '']);
  assert.deepEqual(lines(), written);
});

test('a digest is of the picture, of every option and of the version of the program', () => {
  const task = {
    file: 'a.png',
    settings: { colours: ['#0000ff'], select: {}, trace: { kind: 'bars' } },
  };
  const digest = digestOf(task, MARKERS);
  assert.match(digest, /^[0-9a-f]{64}$/);
  assert.equal(digestOf({ ...task, file: 'b.png', content: MARKERS }, MARKERS), digest);
  const written = JSON.stringify([VERSION, { settings: task.settings }, sha256Of(MARKERS)]);
  assert.equal(digest, sha256Of(Buffer.from(written)));
  const { settings } = task;
  for (const [other, content] of [
    [task, MARKERS.subarray(1)],
    [{ ...task, overlay: 'proof.png' }, MARKERS],
    [{ ...task, saveProject: 'a.json' }, MARKERS],
    [{ ...task, settings: { ...settings, colours: ['#0000fe'] } }, MARKERS],
    [{ ...task, settings: { ...settings, select: { tolerance: 6 } } }, MARKERS],
    [{ ...task, settings: { ...settings, trace: { kind: 'hbars' } } }, MARKERS],
  ])
    assert.notEqual(digestOf(other, content), digest);
});

for (const option of [
  ['--x', '12=0,42=30'],
  ['--overlay', 'proof-{name}.svg'],
])
  test(`another ${option[0]} makes all anew, and says so`, async () => {
    mark();
    const { status, stderr } = await traced(...option);
    assert.equal(status, 0, stderr);
    assert.match(stderr.replace(/\s+/g, ' '), /all\.ndjson: 3 of the records are made anew/);
    assert.deepEqual(isKept(), [false, false, false]);
  });

test('another picture under the same name is traced anew, in its place', async () => {
  mark();
  await writeFile(join(folder, 'b.png'), await png({}, [3, 3, 9, 9, BLUE]));
  const { stderr } = await traced();
  assert.match(stderr.replace(/\s+/g, ' '), /1 of the records are made anew/);
  assert.deepEqual(isKept(), [true, false, true]);
  assert.deepEqual(records()[1].series[0].pixels, [[6, 6]]);
});

test('the record of a picture that is gone is kept', async () => {
  mark();
  await rm(join(folder, 'b.png'));
  const { status } = await traced();
  assert.equal(status, 0);
  assert.deepEqual(isKept(), [true, true, true]);
});

test('records that do not say what they were made from are made anew', async () => {
  const plain = await command(
    [...NAMES, '--kind', 'scatter', '--color', 'blue', '--format', 'ndjson'],
    {
      cwd: folder,
    },
  );
  assert.ok(parseRecords(plain.stdout).every(({ digest }) => digest === undefined));
  writeFileSync(target, plain.stdout);
  const { stderr } = await traced();
  assert.match(stderr.replace(/\s+/g, ' '), /3 of the records are made anew/);
});

test('the records of other images stay, before those of this run', async () => {
  const other = '{"file":"other.png","series":[],"error":null}\n';
  writeFileSync(target, lines().concat(other).join(''));
  await traced();
  assert.deepEqual(
    records().map(({ file }) => file),
    ['other.png', ...NAMES],
  );
});

test('what is no record is left out', async () => {
  const whole = lines();
  const junk = [
    'null\n',
    '[1]\n',
    '{"file": 7, "error": null}\n',
    '\n',
    '\0\n',
    '{"file":"a.png"\n',
  ];
  writeFileSync(target, [...junk, ...whole].join(''));
  const { status, stderr } = await traced();
  assert.equal(status, 0, stderr);
  assert.deepEqual(lines(), whole);
});

test('an image that failed is tried again, and told as long as it fails', async () => {
  const list = [...NAMES, 'none.png', '--kind', 'scatter', '--color', 'blue'];
  for (const run of ['first', 'second']) {
    const { status, stderr } = await resume(...list);
    assert.equal(status, 1, run);
    assert.match(stderr, /^chart-trace: none\.png: no such file[^\n]*\n$/, run);
  }
  await writeMarkers(folder, ['none.png']);
  const { status, stderr } = await resume(...list);
  assert.equal(status, 0, stderr);
  assert.deepEqual(
    records().map(({ file, error }) => [file, error]),
    [...NAMES, 'none.png'].map((file) => [file, null]),
  );
});

test('a last record whose line has no end is made anew', async () => {
  writeFileSync(target, first.trimEnd());
  const { status, stderr } = await traced();
  assert.equal(status, 0, stderr);
  assert.equal(readFileSync(target, 'utf8'), first);
});

test('an image by the standard input counts by its content', async () => {
  await rm(target);
  const once = (input) =>
    command(['-', '--kind', 'scatter', '--color', 'blue', '--resume', '-o', 'all.ndjson'], {
      cwd: folder,
      input,
    });
  await once(MARKERS);
  mark();
  await once(MARKERS);
  assert.deepEqual(isKept(), [true]);
  await once(await png({}, [3, 3, 9, 9, BLUE]));
  assert.deepEqual(isKept(), [false]);
});
