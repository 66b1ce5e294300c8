'use strict';
// node eight_workers.cjs ADDON: eight threads load the module and trace in all modes at once, from
// plain and from typed arrays. Prints how many of them gave one and the same answer. None ends before
// all have answered.

const { Worker, isMainThread, parentPort, workerData: task } = require('node:worker_threads');

function traceAll({ file, modes }) {
  const { trace } = require(file);
  const pixels = 3000; // read in stretches when they come in plain arrays
  const x = Array.from({ length: pixels }, (_, i) => i % 100);
  const y = Array.from({ length: pixels }, (_, i) => Math.floor(i / 100) + (i % 7 === 0 ? 40 : 0));
  const answers = modes.flatMap((mode) => [
    trace(x, y, pixels, 1, mode, 0.05),
    trace(Float64Array.from(x), Float64Array.from(y), pixels, 1, mode, 0.05),
  ]);
  return JSON.stringify(answers);
}

async function main(file) {
  const { MODES: modes } = await import('../../pinned/cases.js');
  const workerData = { file, modes };
  const workers = Array.from({ length: 8 }, () => new Worker(__filename, { workerData }));
  const answers = [];
  for (const worker of workers)
    worker.on('message', (answer) => {
      answers.push(answer);
      if (answers.length < workers.length) return;
      console.log(answers.filter((each) => each === answers[0]).length);
      for (const each of workers) each.postMessage('all have answered');
    });
}

if (isMainThread) main(process.argv[2]);
else {
  parentPort.once('message', () => {});
  for (let round = 0; round < 3; ++round) traceAll(task);
  parentPort.postMessage(traceAll(task));
}
