import assert from 'node:assert/strict';
import { spawn, spawnSync } from 'node:child_process';
import {
  chmodSync,
  readdirSync,
  readFileSync,
  statSync,
  symlinkSync,
  writeFileSync,
} from 'node:fs';
import { mkdtemp, open, readFile, rm } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import process from 'node:process';
import { after, before, test } from 'node:test';
import { pathToFileURL } from 'node:url';
import { readStream, sha256Of, writeWhole } from '../../lib/files.js';
import { root } from './support/addon.js';

let folder;
before(async () => {
  folder = await mkdtemp(join(tmpdir(), 'chart-trace-'));
});
after(() => rm(folder, { recursive: true }));

test('a file is made, and written over', async () => {
  const path = join(folder, 'a.txt');
  await writeWhole(path, 'long content');
  assert.equal(readFileSync(path, 'utf8'), 'long content');
  await writeWhole(path, Uint8Array.of(1, 2));
  assert.deepEqual([...readFileSync(path)], [1, 2]);
  assert.deepEqual(readdirSync(folder), ['a.txt']);
});

test('the rights of a file stay', { skip: process.platform === 'win32' }, async () => {
  const path = join(folder, 'mode.txt');
  writeFileSync(path, 'before');
  for (const mode of [0o600, 0o666]) {
    chmodSync(path, mode);
    await writeWhole(path, 'after');
    assert.equal(statSync(path).mode & 0o777, mode);
  }
});

test('a link stays a link, to the new content', async () => {
  const path = join(folder, 'target.txt');
  writeFileSync(path, 'before');
  symlinkSync(path, join(folder, 'link.txt'));
  await writeWhole(join(folder, 'link.txt'), 'after');
  assert.equal(readFileSync(path, 'utf8'), 'after');
  assert.ok(
    readdirSync(folder, { withFileTypes: true })
      .find((e) => e.name === 'link.txt')
      .isSymbolicLink(),
  );
});

// Not a device: a function that replaces what it should write to would break the machine.
test('a pipe is written to and not replaced', { skip: process.platform === 'win32' }, async () => {
  const pipe = join(folder, 'pipe');
  assert.equal(spawnSync('mkfifo', [pipe]).status, 0);
  // Open for both, so that neither end waits for the other.
  const ends = await open(pipe, 'r+');
  try {
    await writeWhole(pipe, 'x');
    assert.ok(statSync(pipe).isFIFO());
    assert.equal((await ends.read(Buffer.alloc(1), 0, 1)).buffer.toString(), 'x');
  } finally {
    await ends.close();
    await rm(pipe);
  }
});

test('a failure leaves what was there, and nothing else', async () => {
  const path = join(folder, 'kept.txt');
  await writeWhole(path, 'kept');
  const files = readdirSync(folder);
  // No content: the file beside is made, and then cannot be filled.
  await assert.rejects(writeWhole(path, /** @type {any} */ (42)), TypeError);
  assert.equal(readFileSync(path, 'utf8'), 'kept');
  await assert.rejects(writeWhole(folder, 'x'), { code: 'EISDIR' });
  await assert.rejects(writeWhole(join(folder, 'none', 'x'), 'x'), { code: 'ENOENT' });
  await assert.rejects(writeWhole(join(path, 'x'), 'x'), { code: 'ENOTDIR' });
  assert.deepEqual(readdirSync(folder), files);
});

test('a process that dies while it writes leaves what was there', async () => {
  const path = join(folder, 'dies.txt');
  await writeWhole(path, 'before');
  const program = `
    import { writeWhole } from ${JSON.stringify(pathToFileURL(join(root, 'lib/files.js')).href)};
    const big = new Uint8Array(1 << 28);
    setTimeout(() => process.kill(process.pid, 'SIGKILL'), 5);
    await writeWhole(${JSON.stringify(path)}, big);
    console.log('written');`;
  const { signal, stdout } = spawnSync(process.execPath, ['--input-type=module', '-e', program], {
    encoding: 'utf8',
  });
  assert.equal(signal, 'SIGKILL', stdout);
  assert.equal(readFileSync(path, 'utf8'), 'before');
});

test('whoever looks while it is written sees the old content or the new', async () => {
  const old = 'a'.repeat(3e6);
  const other = 'b'.repeat(4e6);
  const path = join(folder, 'looked-at.txt');
  writeFileSync(path, old);
  const program = `
    const { writeWhole } = await import(${JSON.stringify(new URL('../../lib/files.js', import.meta.url))});
    process.stdout.write('ready');
    for (;;) for (const [letter, count] of [['b', 4e6], ['a', 3e6]])
      await writeWhole(process.argv[1], letter.repeat(count));`;
  const child = spawn(process.execPath, ['--input-type=module', '-e', program, path], {
    cwd: root,
    stdio: ['ignore', 'pipe', 'inherit'],
  });
  const ended = new Promise((done) => child.once('exit', done));
  await new Promise((done) => child.stdout.once('data', done));
  for (let i = 0; i < 50; ++i) {
    const seen = await readFile(path, 'utf8');
    assert.ok(seen === old || seen === other, `${seen.length} characters`);
  }
  child.kill('SIGKILL');
  await ended;
  const seen = await readFile(path, 'utf8');
  assert.ok(seen === old || seen === other, `${seen.length} characters`);
});

test('the hash of a file is its SHA-256', () => {
  assert.equal(
    sha256Of(Buffer.from('abc')),
    'ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad',
  );
});

test('a stream is read to its end, unless that is too far', async () => {
  const parts = () => ['ab', '', 'c'].map((text) => Buffer.from(text));
  assert.equal(String(await readStream(parts(), 3)), 'abc');
  await assert.rejects(readStream(parts(), 2), { code: 'ERR_LIMIT', received: 3 });
  assert.equal((await readStream([])).length, 0);
});
