// What the prebuilt modules ask of the system that loads them. Node.js 20 itself asks for glibc 2.28
// and the C++ library of GCC 8, so these may not ask for more.

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { join } from 'node:path';
import test from 'node:test';

import { root } from '../../scripts/setup.mjs';

const MOST = { GLIBC: [2, 28], GLIBCXX: [3, 4, 25], CXXABI: [1, 3, 11], GCC: [8, 0] };

/**
 * The versions of symbols that a Linux library needs, such as 'GLIBC_2.17'.
 * @param {string} file
 */
function neededVersions(file) {
  const text = execFileSync('readelf', ['--version-info', '--wide', file], { encoding: 'utf8' });
  const [, needs] = text.split('.gnu.version_r');
  return [...needs.matchAll(/Name: (\w+)_([\d.]+) /g)].map(([, library, version]) => ({
    library,
    version: version.split('.').map(Number),
  }));
}

/**
 * @param {number[]} a
 * @param {number[]} b
 */
function isNewer(a, b) {
  const i = a.findIndex((part, at) => part !== (b[at] ?? 0));
  return i >= 0 && a[i] > (b[i] ?? 0);
}

for (const platform of ['linux-x64', 'linux-arm64']) {
  test(`the module of ${platform} needs no newer libraries than Node.js 20`, () => {
    const needed = neededVersions(join(root, 'prebuilds', platform, 'cpp_code.glibc.node'));
    assert.ok(needed.some(({ library }) => library === 'GLIBC'));
    for (const { library, version } of needed) {
      assert.ok(library in MOST, library);
      assert.ok(!isNewer(version, MOST[library]), `${library} ${version.join('.')}`);
    }
  });
}

test('the module of Windows needs what every Windows has, and its host', () => {
  const file = join(root, 'prebuilds/win32-x64/cpp_code.node');
  const text = execFileSync('objdump', ['--private-headers', file], { encoding: 'utf8' });
  const libraries = [...text.matchAll(/DLL Name: (\S+)/g)].map(([, name]) => name.toLowerCase());
  assert.deepEqual(libraries.sort(), ['kernel32.dll', 'msvcrt.dll', 'node.exe']);
});
