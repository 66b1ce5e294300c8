// Loading the module: what it exports, a second time, from a second file, in workers, and how it
// takes being stopped.

import assert from 'node:assert/strict';
import { copyFile, mkdtemp, rm } from 'node:fs/promises';
import { createRequire } from 'node:module';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import process from 'node:process';
import test from 'node:test';
import { once } from 'node:events';
import { Worker } from 'node:worker_threads';

import { addonFile, node, root } from './support/addon.js';

const require = createRequire(import.meta.url);
const call = [[10, 20], [11, 21], 2, 1, 'bar_vertical-fission', 0.05];
const result = [10, 20, 11, 21];

/** A worker that runs `source`, a script that sees `trace`, `call` and `parentPort`. */
function worker(source) {
  const prelude = `
    const { parentPort, workerData } = require('node:worker_threads');
    const { trace } = require(workerData.addonFile);
    const { call } = workerData;`;
  return new Worker(`${prelude}\n${source}`, { eval: true, workerData: { addonFile, call } });
}

test('the module exports one function, trace, as a plain property', () => {
  const addon = require(addonFile);
  assert.deepEqual(Reflect.ownKeys(addon), ['trace']);
  assert.equal(typeof addon.trace, 'function');
  assert.equal(addon.trace.name, '');
  const { value, ...attributes } = Object.getOwnPropertyDescriptor(addon, 'trace');
  assert.equal(value, addon.trace);
  assert.deepEqual(attributes, { writable: true, enumerable: true, configurable: true });
});

test('loading it again gives the same module', () => {
  assert.equal(require(addonFile), require(addonFile));
});

test('it loads afresh after the cache was cleared, and the first function goes on', () => {
  const first = require(addonFile);
  for (let i = 0; i < 10; ++i) {
    delete require.cache[require.resolve(addonFile)];
    const again = require(addonFile);
    assert.notEqual(again, first);
    assert.notEqual(again.trace, first.trace);
    assert.deepEqual(again.trace(...call), result);
  }
  assert.deepEqual(first.trace(...call), result);
});

test('it loads into any object with exports', () => {
  const target = { exports: { kept: 1 } };
  process.dlopen(target, addonFile);
  assert.deepEqual(target.exports.trace(...call), result);
  assert.equal(target.exports.kept, 1);
});

test('exports that cannot be changed stay as they are', async () => {
  const source = `
    const target = { exports: Object.freeze({}) };
    process.dlopen(target, ${JSON.stringify(addonFile)});
    console.log(Object.keys(target.exports).length);`;
  const { status, signal, stdout } = await node(['-e', source]);
  assert.deepEqual({ status, signal, stdout }, { status: 0, signal: null, stdout: '0\n' });
});

test('an exception of the exports object reaches the one who loads', async () => {
  const source = `
    const exports = new Proxy({}, { set() { throw new Error('read only') } });
    try { process.dlopen({ exports }, ${JSON.stringify(addonFile)}) }
    catch (error) { console.log(error.message) }`;
  const { status, signal, stdout } = await node(['-e', source]);
  assert.deepEqual({ status, signal, stdout }, { status: 0, signal: null, stdout: 'read only\n' });
});

test('a copy of the file is a module of its own beside it', async () => {
  const folder = await mkdtemp(join(tmpdir(), 'chart-trace-'));
  try {
    const copy = join(folder, 'copy.node');
    await copyFile(addonFile, copy);
    assert.notEqual(require(copy).trace, require(addonFile).trace);
    assert.deepEqual(require(copy).trace(...call), result);
  } finally {
    await rm(folder, { recursive: true });
  }
});

test('workers one after another load it and trace', async () => {
  for (let i = 0; i < 3; ++i) {
    const [answer] = await once(worker('parentPort.postMessage(trace(...call))'), 'message');
    assert.deepEqual(answer, result);
  }
});

test('workers at the same time do not disturb each other', async () => {
  // Each has pixels of its own, and tells of the first result that is not its own.
  const workers = Array.from({ length: 6 }, (_, seed) =>
    worker(`
      const x = Array.from({ length: 50 }, (_, i) => (i + 1) * 10 + ${seed});
      const expected = [...x, ...x];
      let wrong;
      for (let i = 0; i < 300 && wrong === undefined; ++i) {
        const got = trace(x, x, x.length, 1, 'bar_vertical-fission', 0.05);
        if (JSON.stringify(got) !== JSON.stringify(expected)) wrong = got;
        try { trace(x, x, x.length + 1, 1, '', 0); wrong = 'no exception' } catch {}
      }
      parentPort.postMessage({ wrong });`),
  );
  const answers = await Promise.all(workers.map((each) => once(each, 'message')));
  assert.deepEqual(answers.flat(), Array(6).fill({ wrong: undefined }));
});

// None ends before all have answered: the host can lose sight of a module that one thread unloads
// while another loads it, whichever module it is, and the package's loader asks again then.
test('workers that load it first, all at once, in a fresh process', async () => {
  const source = `
    const { Worker } = require('node:worker_threads');
    const code = ${JSON.stringify(
      `const { trace } = require(${JSON.stringify(addonFile)});
       const { parentPort } = require('node:worker_threads');
       parentPort.once('message', () => {});
       parentPort.postMessage(trace(...${JSON.stringify(call)}))`,
    )};
    const workers = Array.from({ length: 6 }, () => new Worker(code, { eval: true }));
    let answers = 0;
    for (const worker of workers)
      worker.on('message', (answer) => {
        console.log(String(answer));
        if (++answers === 6) for (const each of workers) each.postMessage('all have answered');
      });`;
  const { status, signal, stdout } = await node(['-e', source]);
  assert.deepEqual(
    { status, signal, stdout },
    { status: 0, signal: null, stdout: `${result}\n`.repeat(6) },
  );
});

test('eight workers trace in all modes at once, and answer alike', async () => {
  const script = join(root, 'test/js/support/eight_workers.cjs');
  const { status, signal, stdout } = await node([script, addonFile]);
  assert.deepEqual({ status, signal, stdout }, { status: 0, signal: null, stdout: '8\n' });
});

const seed = process.env.CHART_TRACE_SEED ?? '1';
test(`workers load, trace, unload and are stopped in any order (seed ${seed})`, async () => {
  const script = join(root, 'test/js/support/workers_in_any_order.cjs');
  const { status, signal, stdout, stderr } = await node([script, addonFile, '24', seed]);
  assert.deepEqual({ status, signal, stderr }, { status: 0, signal: null, stderr: '' });
  assert.ok(JSON.parse(stdout).answers > 24, stdout);
});

// A worker that is stopped cannot be thrown into any more. That must end it, not the process.
const stops = {
  'terminated while a getter runs': `
    const w = new Worker(code('parentPort.postMessage(0); for (;;) {}'), { eval: true });
    w.on('message', () => w.terminate());`,
  'ended by process.exit() in a getter': `
    const w = new Worker(code('process.exit(1)'), { eval: true });`,
  'terminated between getters that never stop': `
    const w = new Worker(code('if (key === "1") parentPort.postMessage(0); return 10 * key'), { eval: true });
    w.on('message', () => w.terminate());`,
  'out of memory in a getter': `
    const w = new Worker(code('for (let all = null; ; ) all = { all }'), {
      eval: true, resourceLimits: { maxOldGenerationSizeMb: 16 },
    });
    w.on('error', () => {});`,
};
for (const [name, start] of Object.entries(stops)) {
  const asked = name.includes('between')
    ? ['x_values', 'y_values']
    : ['x_values', 'y_values', 'mode'];
  for (const argument of asked) {
    test(`a worker ${name}, reading ${argument}, leaves the process whole`, async () => {
      const source = `
      const { Worker } = require('node:worker_threads');
      const code = (body) => \`
        const { parentPort } = require('node:worker_threads');
        const { trace } = require(${JSON.stringify(addonFile)});
        const get = (target, key) => { \${body} };
        const hostile = new Proxy({}, { get });
        const argument = { x_values: [], y_values: [], mode: '' };
        argument['${argument}'] = hostile;
        const x = '${argument}' === 'x_values' ? hostile : new Proxy({}, { get: () => 1 });
        const y = '${argument}' === 'y_values' ? hostile : new Proxy({}, { get: () => 1 });
        const mode = '${argument}' === 'mode' ? { toString: () => get({}, "0") } : '';
        trace(x, y, '${argument}' === 'mode' ? 0 : Infinity, 1, mode, 0);\`;
      ${start}
      w.on('exit', (status) => {
        const { trace } = require(${JSON.stringify(addonFile)});
        console.log(String(trace(...${JSON.stringify(call)})));
      });`;
      const { status, signal, stdout } = await node(['-e', source]);
      assert.deepEqual(
        { status, signal, stdout },
        { status: 0, signal: null, stdout: `${result}\n` },
      );
    });
  }
}

test('process.exit() in a getter ends the process with its status', async () => {
  const source = `
    const { trace } = require(${JSON.stringify(addonFile)});
    trace({ get 0() { process.exit(7) } }, [1], 1, 1, '', 0);`;
  // Under a leak checker: the heap that the host drops in the middle of its work is no leak.
  const env = { ...process.env, LSAN_OPTIONS: 'detect_leaks=0' };
  const { status, signal, stderr } = await node(['-e', source], { env });
  assert.deepEqual({ status, signal, stderr }, { status: 7, signal: null, stderr: '' });
});
