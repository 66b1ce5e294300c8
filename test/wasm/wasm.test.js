// The WebAssembly build: how it is chosen, what becomes of it after a failure, and workers. That it
// gives what the native module gives is tested by running that one's tests on it.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { join } from 'node:path';
import process from 'node:process';
import test, { describe } from 'node:test';

import { traceOf } from '../../lib/tracing/wasm.js';
import { node, root } from '../js/support/addon.js';

const require = createRequire(import.meta.url);
const emnapi = { ...require('@emnapi/core'), ...require('@emnapi/runtime') };
const bytes = readFileSync(join(root, 'prebuilds/wasm32/cpp_code.wasm'));

const call = [[10, 20], [11, 21], 2, 1, 'bar_vertical-fission', 0.05];
const result = [10, 20, 11, 21];

/** What a script prints that runs in the package's folder, with WebAssembly chosen. */
async function withWasm(script) {
  const env = { ...process.env, CHART_TRACE_ENGINE: 'wasm' };
  const { status, stdout, stderr } = await node(['-e', script], { cwd: root, env });
  assert.equal(status, 0, stderr);
  return stdout.trim();
}

test('it is what the package has where it is chosen', async () => {
  const script = `import('chart-trace').then(({ engine, trace }) =>
    console.log(engine, JSON.stringify(trace(...${JSON.stringify(call)}))))`;
  assert.equal(await withWasm(script), `wasm ${JSON.stringify(result)}`);
});

test('workers have it, several at once', async () => {
  const worker = `require('node:worker_threads').parentPort.postMessage(
    require('chart-trace').trace(...${JSON.stringify(call)}))`;
  const script = `const { Worker } = require('node:worker_threads');
    for (let i = 0; i < 4; ++i)
      new Worker(${JSON.stringify(worker)}, { eval: true }).on('message', (m) => console.log(String(m)))`;
  assert.equal(await withWasm(script), Array(4).fill(String(result)).join('\n'));
});

test('the module asks its host for Node-API and for the throwing of exceptions, nothing else', () => {
  const imports = WebAssembly.Module.imports(new WebAssembly.Module(bytes));
  const strange = imports.filter(({ module, name }) => module !== 'napi' && !/napi/.test(name));
  assert.deepEqual(strange, [{ module: 'chart_trace', name: 'fail', kind: 'function' }]);
});

describe('memory that runs out is a RangeError, and the next call has new memory', () => {
  const x = Array.from({ length: 1e5 }, (_, i) => i);
  const modes = { here: 'point_density', 'by the module': { toString: () => 'point_density' } };
  for (const [reader, mode] of Object.entries(modes))
    test(`points read ${reader}`, () => {
      /** @type {WebAssembly.Memory[]} */
      const memories = [];
      const trace = traceOf(() => bytes, {
        ...emnapi,
        instantiateNapiModuleSync(...args) {
          const made = emnapi.instantiateNapiModuleSync(...args);
          memories.push(made.instance.exports.memory);
          return made;
        },
      });
      // All else that the machine can address is taken, once the allocator knows its own part.
      assert.deepEqual(trace(...call), result);
      memories[0].grow(2 ** 16 - memories[0].buffer.byteLength / 2 ** 16);
      const full = () => trace(x, x, x.length, 1, mode, 0.05);
      assert.throws(full, { name: 'RangeError', message: 'std::bad_alloc' });
      assert.deepEqual(trace(...call), result);
      assert.equal(memories.length, 2);
      assert.ok(memories[1].buffer.byteLength < 2 ** 24);
    });
});

test('a failure in a call from a getter leaves the outer call whole', () => {
  const trace = traceOf(() => bytes, emnapi);
  let inner;
  const mode = {
    toString() {
      try {
        trace([0, 1000], [1, 1], 2, 1e-9, 'histogram', 1);
      } catch (error) {
        inner = error.message;
      }
      return 'bar_vertical-fission';
    },
  };
  const [x, y, count, pixelStep, , fraction] = call;
  assert.deepEqual(trace(x, y, count, pixelStep, mode, fraction), result);
  assert.equal(inner, 'there are more compartments than a 32-bit count can tell');
});

test('instances that were given up leave no listener behind', () => {
  const trace = traceOf(() => bytes, emnapi);
  const before = process.listenerCount('beforeExit');
  for (let i = 0; i < 20; ++i)
    assert.throws(() => trace([0, 1000], [1, 1], 2, 1e-9, 'histogram', 1), RangeError);
  assert.equal(process.listenerCount('beforeExit'), before);
});

test('long arrays come out the same whichever side reads them', () => {
  const trace = traceOf(() => bytes, emnapi);
  const x = Array.from({ length: 5000 }, (_, i) => i % 100);
  const y = Array.from({ length: 5000 }, (_, i) => Math.floor(i / 100));
  const readHere = trace(x, y, 5000, 1, 'bar_vertical-fission', 0.05);
  const readThere = trace(x, y, 5000, 1, { toString: () => 'bar_vertical-fission' }, 0.05);
  assert.deepEqual(readHere, [49.5, 0]);
  assert.deepEqual(readThere, readHere);
});
