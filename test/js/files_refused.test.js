// Files that cannot be written: what was there stays, and nothing is left beside it.

import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import {
  chmodSync,
  copyFileSync,
  existsSync,
  lstatSync,
  mkdirSync,
  readdirSync,
  readFileSync,
  readlinkSync,
  symlinkSync,
  writeFileSync,
} from 'node:fs';
import { join } from 'node:path';
import process from 'node:process';
import { after, before, test } from 'node:test';
import { writeWhole } from '../../lib/files.js';
import { root } from './support/addon.js';
import { makeFolder } from './support/command.js';

const isPosix = process.platform !== 'win32';
const isRoot = process.getuid?.() === 0;

let folder, remove;
before(async () => {
  ({ folder, remove } = await makeFolder());
  // For any user.
  chmodSync(folder, 0o755);
  for (const name of ['files.js', 'errors.js'])
    copyFileSync(join(root, 'lib', name), join(folder, name));
  writeFileSync(join(folder, 'package.json'), '{"type": "module"}');
});
after(() => remove());

/**
 * Writes in another process, and tells the code of the error.
 * @param {string} path
 * @param {number} bytes
 * @param {{limit?: string, uid?: number}} [options] `limit`: of the shell, such as `-f 100`.
 */
function codeOf(path, bytes, { limit = '-f unlimited', uid } = {}) {
  const program = `
    import { writeWhole } from './files.js';
    await writeWhole(${JSON.stringify(path)}, new Uint8Array(${bytes})).then(
      () => console.log('written'), (error) => console.log(error.code));`;
  const line = `ulimit ${limit}; exec "$0" --input-type=module -e "$1"`;
  const { stdout, stderr } = spawnSync('sh', ['-c', line, process.execPath, program], {
    cwd: folder,
    encoding: 'utf8',
    // Whoever counts the lines that tests run would want to write files of its own.
    env: { ...process.env, NODE_V8_COVERAGE: '' },
    ...(uid !== undefined && { uid, gid: uid }),
  });
  assert.equal(stderr, '');
  return stdout.trim();
}

test('a disk that is full leaves what was there', { skip: !isPosix }, () => {
  mkdirSync(join(folder, 'full'));
  const path = join(folder, 'full', 'kept.txt');
  writeFileSync(path, 'kept');
  // The shell counts in blocks: a file must not grow beyond them, as if there were no more.
  assert.equal(codeOf(path, 1e6, { limit: '-f 100' }), 'EFBIG');
  assert.equal(readFileSync(path, 'utf8'), 'kept');
  assert.deepEqual(readdirSync(join(folder, 'full')), ['kept.txt']);
  assert.equal(codeOf(path, 1000, { limit: '-f 100' }), 'written');
});

test('a folder that may only be read leaves what was there', { skip: !isPosix }, () => {
  const closed = join(folder, 'closed');
  mkdirSync(closed);
  writeFileSync(join(closed, 'kept.txt'), 'kept');
  chmodSync(closed, 0o555);
  // Nobody, since nothing is closed to the system's keeper.
  const user = isRoot ? { uid: 65_534 } : {};
  assert.equal(codeOf(join(closed, 'kept.txt'), 10, user), 'EACCES');
  assert.equal(codeOf(join(closed, 'new.txt'), 10, user), 'EACCES');
  chmodSync(closed, 0o755);
  assert.deepEqual(readdirSync(closed), ['kept.txt']);
  assert.equal(readFileSync(join(closed, 'kept.txt'), 'utf8'), 'kept');
});

test('a link to what is not there yet stays a link', { skip: !isPosix }, async () => {
  mkdirSync(join(folder, 'links'));
  const link = join(folder, 'links', 'link.txt');
  symlinkSync('../later.txt', link);
  await writeWhole(link, 'new');
  assert.ok(lstatSync(link).isSymbolicLink());
  assert.equal(readlinkSync(link), '../later.txt');
  assert.equal(readFileSync(join(folder, 'later.txt'), 'utf8'), 'new');
  assert.deepEqual(readdirSync(join(folder, 'links')), ['link.txt']);
});

test('links that lead nowhere or round in a circle are errors', { skip: !isPosix }, async () => {
  symlinkSync('circle', join(folder, 'circle'));
  await assert.rejects(writeWhole(join(folder, 'circle'), 'x'), { code: 'ELOOP' });
  symlinkSync('none/file.txt', join(folder, 'nowhere'));
  await assert.rejects(writeWhole(join(folder, 'nowhere'), 'x'), { code: 'ENOENT' });
  assert.ok(!existsSync(join(folder, 'none')));
  assert.ok(readdirSync(folder).every((name) => !name.endsWith('.tmp')));
});
