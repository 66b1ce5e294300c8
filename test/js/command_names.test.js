// Names that a terminal would obey, or a spreadsheet run: what the command writes has them in a form
// that does nothing.

import assert from 'node:assert/strict';
import { writeFileSync } from 'node:fs';
import { join } from 'node:path';
import process from 'node:process';
import { after, test } from 'node:test';
import { command, makeFolder, MARKERS, parseRecords } from './support/command.js';
import { readSeparated } from './support/separated_reader.js';

const { folder, remove } = await makeFolder();
after(() => remove());

// Colours, the bell, a title, the cursor to the left, an eight-bit escape, letters from right to left.
const OBEYED = '\x1b[31m\x07\x1b]0;title\x1b\\\r\b\x9b2J\u202egpj\u2066\u200b';
const RUN = "=cmd|' !A0.png";
const good = `good${OBEYED}.png`;
const bad = `bad${OBEYED}.png`;
// Windows has no such names.
const options = { skip: process.platform === 'win32' };
if (!options.skip) {
  for (const name of [good, RUN]) writeFileSync(join(folder, name), MARKERS);
  writeFileSync(join(folder, bad), 'no picture');
}

// eslint-disable-next-line no-control-regex
const DOES_SOMETHING = /[\0-\x09\x0b-\x1f\x7f-\x9f\u200b\u200e\u200f\u2028-\u202e\u2066-\u2069]/;

/** @param {string[]} args */
async function written(...args) {
  const { stdout, stderr } = await command(args, { cwd: folder });
  assert.doesNotMatch(stderr, DOES_SOMETHING);
  return stdout;
}

test('tables and messages show what is in a name', options, async () => {
  const BLUES = ['--kind', 'scatter', '--color', 'blue', '--format', 'table'];
  for (const table of [
    await written(good, bad, `none${OBEYED}.png`, ...BLUES),
    await written('colors', good, bad, '--format', 'table'),
  ]) {
    assert.doesNotMatch(table, DOES_SOMETHING);
    assert.match(
      table,
      /good\\x1b\[31m\\x07\\x1b\]0;title\\x1b\\\\x0d\\x08\\x9b2J\\u202egpj\\u2066\\u200b\.png/,
    );
  }
});

test('errors of the command line show it too', options, async () => {
  for (const args of [
    [good, '--kind', OBEYED],
    [good, '--kind', 'scatter', '-o', `${OBEYED}/out.csv`],
    ['--project', OBEYED],
    [`--${OBEYED}`],
  ])
    assert.equal(await written(...args), '');
});

test('JSON has the name in full, by escapes', options, async () => {
  const line = await written(good, bad, '--kind', 'scatter', '--format', 'ndjson', '--json');
  assert.doesNotMatch(line, DOES_SOMETHING);
  assert.deepEqual(
    parseRecords(line).map(({ file }) => file),
    [good, bad],
  );
});

test('no name of a picture is run by a spreadsheet', options, async () => {
  const traced = await written(RUN, '--kind', 'scatter', '--format', 'csv');
  const listed = await written('colors', RUN, '--format', 'csv');
  for (const text of [traced, listed])
    for (const [first] of readSeparated(text).slice(1)) assert.equal(first, `'${RUN}`);
  const x = ['--x', '12==1+1,42=@b,32=-c', '--x-scale', 'category'];
  const rows = readSeparated(await written(RUN, '--kind', 'scatter', '--format', 'csv', ...x));
  const column = rows[0].indexOf('value_x');
  assert.deepEqual(
    rows.slice(1).map((row) => row[column]),
    ["'=1+1", "'@b", "'-c"],
  );
});
