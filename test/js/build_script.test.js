// What the build says when something it needs is missing.

import assert from 'node:assert/strict';
import { chmod, cp, mkdir, mkdtemp, readFile, rm, symlink, writeFile } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import { delimiter, join } from 'node:path';
import process from 'node:process';
import { after, before, describe, test } from 'node:test';

import { node, root } from './support/addon.js';

describe('the build script', { skip: process.platform === 'win32' && 'uses a POSIX shell' }, () => {
  let folder;
  let tools;

  before(async () => {
    folder = await mkdtemp(join(tmpdir(), 'chart-trace-'));
    tools = join(folder, 'tools');
    await mkdir(tools);
    // What the published package has of the scripts: the build needs no others.
    const { files } = JSON.parse(await readFile(join(root, 'package.json'), 'utf8'));
    for (const file of files.filter((name) => name.startsWith('scripts/')))
      await cp(join(root, file), join(folder, file));
  });
  after(() => rm(folder, { recursive: true }));

  /** Puts a program on the PATH of the build that prints `output`, whatever it is asked. */
  async function install(program, output) {
    const file = join(tools, program);
    await writeFile(file, `#!/bin/sh\necho '${output}'\n`);
    await chmod(file, 0o755);
  }

  /** What the build prints; it must fail, in its own words. */
  async function complaint(...options) {
    const env = { ...process.env, PATH: [tools, '/bin-of-nothing'].join(delimiter), CXX: '' };
    const script = join(folder, 'scripts/build.mjs');
    const { status, signal, stdout, stderr } = await node([script, ...options], { env });
    assert.deepEqual({ status, signal, stdout }, { status: 1, signal: null, stdout: '' });
    assert.doesNotMatch(stderr, /\n +at |node:internal/, 'no stack trace');
    return stderr;
  }

  test('names CMake and a compiler, and the line that installs them', async () => {
    const told = await complaint();
    assert.match(told, /without CMake 3\.21 or newer and a C\+\+ compiler/);
    assert.match(told, /Type:\n {2}\S.*cmake/i);
    // A fresh system has no list of packages yet.
    if (told.includes('apt-get')) assert.match(told, /apt-get update && (sudo )?apt-get install/);
  });

  test('refuses a CMake that is too old', async () => {
    await install('cmake', 'cmake version 3.20.6');
    await install('c++', 'c++ 12');
    assert.match(await complaint(), /without CMake 3\.21 or newer\. Type:/);
  });

  test('names a missing compiler alone', async () => {
    await install('cmake', 'cmake version 3.25.1');
    await rm(join(tools, 'c++'));
    assert.match(await complaint(), /without a C\+\+ compiler \(tried c\+\+, g\+\+, clang\+\+\)/);
  });

  test('names missing headers and the command that fetches them', async () => {
    await install('cmake', 'cmake version 10.0.0');
    await install('c++', 'c++ 12');
    const told = await complaint();
    assert.match(told, /headers are not installed\. Type in .*:\n {2}npm install --ignore-scripts/);
  });

  test('does not ask for headers of npm when those of the system are wanted', async () => {
    await rm(join(tools, 'cmake'));
    await symlink('/bin/false', join(tools, 'ninja'));
    await writeFile(
      join(tools, 'cmake'),
      '#!/bin/sh\ncase "$1" in --version) echo cmake version 4.0;; *) exit 3;; esac\n',
      { mode: 0o755 },
    );
    const told = await complaint('-DCHART_TRACE_NODE_HEADERS=system');
    assert.match(
      told,
      /`cmake --preset addon -G Unix Makefiles -DCHART_TRACE_NODE_HEADERS=system` failed/,
    );
  });
});
