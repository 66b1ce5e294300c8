// Counts the instructions of whole computations, which repeat where times do not: for each mode, the
// difference of three calls and one, two calls' worth, in instructions a point.
//
//   node bench/instructions.mjs [REGEX]     only the modes that match
//
// Needs valgrind and the benchmarks (scripts/bench.mjs builds them).

import { spawnSync } from 'node:child_process';
import process from 'node:process';
import { fileURLToPath } from 'node:url';

const program = fileURLToPath(new URL('../build/bench/bench/chart_trace_calls', import.meta.url));
const POINTS = 1e5;
const ORDERS = ['raster', 'columns', 'shuffled'];

/** The modes, each with the pixels it is made for; of modes that compute the same, one. */
const SUBJECTS = [
  ['points_curves-fission', 'discs'],
  ['points_curves-horizontal', 'discs'],
  ['point_density', 'discs'],
  ['points_curves-fission', 'curves'],
  ['bar_vertical-fission', 'bars'],
  ['bar_vertical-horizontal', 'bars'],
  ['histogram', 'areas'],
  ['step_size_graph', 'steps'],
];

/**
 * The instructions of a whole process.
 * @param {string[]} call
 */
function instructionsOf(call) {
  const options = ['--tool=callgrind', '--callgrind-out-file=/dev/null', program, ...call];
  const { stderr, error } = spawnSync('valgrind', options, { encoding: 'utf8' });
  const count = /Collected : (\d+)/.exec(stderr ?? '')?.[1];
  if (count === undefined) throw new Error(`valgrind failed: ${error?.message ?? stderr}`);
  return Number(count);
}

const wanted = new RegExp(process.argv[2] ?? '');
console.log(`Instructions a point, ${POINTS} pixels:\n`);
console.log(`| mode | pixels | ${ORDERS.join(' | ')} |`);
console.log('|---|---|---|---|---|');
for (const [mode, shape] of SUBJECTS.filter(([name]) => wanted.test(name))) {
  const counts = ORDERS.map((order) => {
    const [one, three] = ['1', '3'].map((times) =>
      instructionsOf([mode, shape, order, String(POINTS), times]),
    );
    return Math.round((three - one) / 2 / POINTS);
  });
  console.log(`| ${mode} | ${shape} | ${counts.join(' | ')} |`);
}
