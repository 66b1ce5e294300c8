'use strict';
// node workers_in_any_order.cjs ADDON WORKERS SEED: threads that load the module, trace and unload it
// start and end in an order that the seed draws, some of them stopped in the middle of a call; the
// main thread loads it before, between or after them. Prints the seed, how many threads did what, and
// throws at the first wrong answer.

const assert = require('node:assert');
const { once } = require('node:events');
const { setTimeout: wait } = require('node:timers/promises');
const { Worker, isMainThread, parentPort, workerData } = require('node:worker_threads');

const WAYS = ['ends', 'exits in a call', 'is terminated in a call', 'loads again and ends'];

/**
 * The host can lose sight of a module that one thread unloads while another loads it; it is asked
 * again then, as the package's loader does.
 */
function load(file) {
  for (let tries = 0; ; ++tries) {
    try {
      return require(file).trace;
    } catch (error) {
      if (tries === 100 || !/did not self-register/.test(error.message)) throw error;
    }
  }
}

function traceAll(trace) {
  const x = Array.from({ length: 2000 }, (_, i) => i % 50);
  const y = Array.from({ length: 2000 }, (_, i) => Math.floor(i / 50));
  return ['points-fission', 'curves-horizontal', 'histogram', 'point_density']
    .map((mode) => trace(x, y, x.length, 1, mode, 0.05))
    .join();
}

async function work({ file, way }) {
  let trace = load(file);
  if (way === 'loads again and ends') {
    delete require.cache[require.resolve(file)];
    trace = load(file);
  }
  parentPort.postMessage(traceAll(trace));
  const last = { 'exits in a call': () => process.exit(), 'is terminated in a call': () => 1 }[way];
  if (last) for (;;) trace(new Proxy({}, { get: last }), [2], 1, 1, 'histogram', 0);
  await once(parentPort, 'message');
  parentPort.close();
}

async function main(file, count, seed) {
  let state = seed;
  const below = (limit) => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return Math.floor((state / 2 ** 32) * limit);
  };
  const seen = {};
  const alive = [];
  const expected = [];
  const start = () => {
    const way = WAYS[below(WAYS.length)];
    const worker = new Worker(__filename, { workerData: { file, way } });
    const answered = once(worker, 'message').then(([answer]) => expected.push(answer));
    alive.push({ way, worker, answered, ended: once(worker, 'exit') });
    seen[way] = (seen[way] ?? 0) + 1;
  };
  const end = async () => {
    const [{ way, worker, answered, ended }] = alive.splice(below(alive.length), 1);
    await answered;
    if (way === 'is terminated in a call') worker.terminate();
    else worker.postMessage('end');
    // Mostly the next thread starts or ends while this one is on its way out.
    if (below(4) === 0) await ended;
  };
  const mainLoadsAt = below(count + 1);
  for (let started = 0; started < count || alive.length > 0;) {
    if (started === mainLoadsAt) expected.push(traceAll(load(file)));
    if (started < count && (alive.length === 0 || (alive.length < 6 && below(2) === 0))) {
      start();
      ++started;
    } else {
      await end();
    }
    await wait(below(3));
  }
  expected.push(traceAll(load(file)));
  for (const answer of expected) assert.strictEqual(answer, expected[0]);
  console.log(JSON.stringify({ seed, answers: expected.length, ...seen }));
}

if (isMainThread) {
  const [file, count, seed] = process.argv.slice(2);
  main(file, Number(count), Number(seed));
} else {
  work(workerData);
}
