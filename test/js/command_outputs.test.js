// Where the command can write and where it cannot: what is there already, and runs that end before
// their time.

import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { once } from 'node:events';
import { existsSync, readdirSync, readFileSync, statSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import process from 'node:process';
import { after, before, test } from 'node:test';
import { text } from 'node:stream/consumers';
import {
  begin,
  BLUE,
  command,
  makeFolder,
  parseRecords,
  png,
  program,
  writeMarkers,
} from './support/command.js';

const isPosix = process.platform !== 'win32';
const BLUES = ['--kind', 'scatter', '--color', 'blue', '--tolerance', '0'];

let folder, remove;
const small = Array.from({ length: 20 }, (_, i) => `small-${i}.png`);
const names = Array.from({ length: 30 }, (_, i) => `${i}.png`);
before(async () => {
  ({ folder, remove } = await makeFolder());
  await writeMarkers(folder, ['a.png', ...small]);
  const large = await png({ width: 700, height: 700 }, [100, 100, 500, 600, BLUE]);
  for (const name of names) writeFileSync(join(folder, name), large);
});
after(() => remove());

/** @param {string} name */
const read = (name) => readFileSync(join(folder, name), 'utf8');

test('a pipe gets the records and stays a pipe', { skip: !isPosix }, async () => {
  const pipe = join(folder, 'pipe');
  assert.equal(spawnSync('mkfifo', [pipe]).status, 0);
  const child = begin(['a.png', ...BLUES, '-o', 'pipe', '--format', 'ndjson'], { cwd: folder });
  // The other end is in another process, for the first who opens a pipe waits.
  const { stdout } = spawnSync('cat', [pipe], { encoding: 'utf8', timeout: 60_000 });
  await once(child, 'close');
  assert.equal(parseRecords(stdout)[0].file, 'a.png');
  assert.ok(statSync(pipe).isFIFO());
});

test('/dev/stdout is the standard output', { skip: !isPosix }, async () => {
  const args = ['a.png', ...BLUES, '--format', 'csv'];
  const plain = await command(args, { cwd: folder });
  const line = '"$0" "$@" -o /dev/stdout | cat';
  const { stdout } = spawnSync('sh', ['-c', line, process.execPath, program, ...args], {
    cwd: folder,
    encoding: 'utf8',
  });
  assert.match(stdout, /^file,.*\r\na\.png,/);
  assert.equal(stdout, plain.stdout);
});

/**
 * Runs the command where no file may grow beyond some kilobytes, as if the disk were full then.
 * @param {string[]} args
 */
const onSmallDisk = (args) =>
  spawnSync('sh', ['-c', 'ulimit -f 4; exec "$0" "$@"', process.execPath, program, ...args], {
    cwd: folder,
    encoding: 'utf8',
  });

test('a full disk is told, and leaves the file that was there', { skip: !isPosix }, () => {
  writeFileSync(join(folder, 'kept.json'), 'kept');
  const { status, stderr } = onSmallDisk([...small, ...BLUES, '-o', 'kept.json']);
  assert.equal(status, 1);
  assert.match(stderr, /too large|no space/);
  assert.equal(read('kept.json'), 'kept');
  assert.deepEqual(
    readdirSync(folder).filter((name) => name.endsWith('.tmp')),
    [],
  );
});

test('a run that fills the disk goes on where there is more', { skip: !isPosix }, async () => {
  const args = [...small, ...BLUES, '--resume', '-o', 'grows.ndjson'];
  const { status } = onSmallDisk(args);
  assert.equal(status, 1);
  const written = read('grows.ndjson');
  const whole = written.slice(0, written.lastIndexOf('\n') + 1);
  assert.ok(parseRecords(whole).length > 0 && parseRecords(whole).length < small.length);
  const again = await command(args, { cwd: folder });
  assert.equal(again.status, 0, again.stderr);
  assert.ok(read('grows.ndjson').startsWith(whole));
  assert.deepEqual(
    parseRecords(read('grows.ndjson')).map(({ file }) => file),
    small,
  );
});

for (const signal of /** @type {const} */ (['SIGKILL', 'SIGHUP']))
  test(`a table in a file, ended by ${signal}, is what was there or has what is finished`, async () => {
    writeFileSync(join(folder, 'cut.csv'), 'before');
    const args = ['none.png', ...names, ...BLUES, '-o', 'cut.csv', '--jobs', '1'];
    const child = begin(args, { cwd: folder });
    // The first image fails, which is said at once.
    child.stderr.once('data', () => child.kill(signal));
    const [, [code, by]] = await Promise.all([text(child.stdout), once(child, 'close')]);
    const found = read('cut.csv');
    if (by === 'SIGKILL') assert.equal(found, 'before');
    // On a machine that is busy the run may be over before the signal is sent.
    else {
      assert.ok(found.includes('none.png') && found.endsWith('\r\n'), found);
      assert.equal(found.includes(String(names.at(-1))), code !== 129, found);
    }
  });

test('an interruption leaves no file beside', () => {
  assert.ok(existsSync(join(folder, 'cut.csv')));
  assert.deepEqual(
    readdirSync(folder).filter((name) => name.startsWith('.')),
    [],
  );
});
