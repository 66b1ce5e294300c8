// Tests the host boundary with the WebAssembly build in place of the native module: the same tests, so
// the same function, exceptions and bits.

import { spawnSync } from 'node:child_process';
import { readdirSync } from 'node:fs';
import { join } from 'node:path';
import process from 'node:process';
import { root } from './setup.mjs';

// Loading is left out: the file of a native module is no concern of this one.
const tests = join(root, 'test/js');
const files = readdirSync(tests)
  .filter((name) => /^(trace_.*|addon_endurance)\.test\.js$/.test(name))
  .map((name) => join(tests, name));
const { status } = spawnSync(
  process.execPath,
  ['--test', '--test-reporter=spec', ...files, join(root, 'test/wasm/wasm.test.js')],
  {
    cwd: root,
    stdio: 'inherit',
    env: { ...process.env, CHART_TRACE_ADDON: join(tests, 'support/wasm_addon.cjs') },
  },
);
process.exit(status ?? 1);
