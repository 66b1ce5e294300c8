// Tests the host boundary with the module built under the address, leak and undefined-behaviour
// sanitizers, then eight threads at once, and threads that start and end in any order, under the
// thread sanitizer. Linux with g++ only: their run-time library has to be there before Node.js starts.

import { execFileSync, spawnSync } from 'node:child_process';
import { readdirSync } from 'node:fs';
import { dirname, join } from 'node:path';
import process from 'node:process';
import { fileURLToPath } from 'node:url';

const root = dirname(dirname(fileURLToPath(import.meta.url)));
const tests = join(root, 'test/js');

/**
 * Runs a program in the project's folder and ends with its status when it fails.
 * @param {string} program
 * @param {string[]} args
 * @param {NodeJS.ProcessEnv} [env]
 */
function run(program, args, env = process.env) {
  const { status, error } = spawnSync(program, args, { cwd: root, env, stdio: 'inherit' });
  if (error) console.error(error.message);
  if (status !== 0) process.exit(status ?? 1);
}

/**
 * Where g++ has one of its libraries.
 * @param {string} name
 */
function libraryOfCompiler(name) {
  return execFileSync('g++', [`-print-file-name=${name}`], { encoding: 'utf8' }).trim();
}

run('cmake', ['--preset', 'addon-sanitize']);
run('cmake', ['--build', '--preset', 'addon-sanitize']);

// The record is left out: a sanitizer adds static initialisers of its own. Freed memory is held
// back for a while to catch its late use; as little of it as this leaves the memory tests valid.
const files = readdirSync(tests).filter((name) =>
  /^(trace_.*|addon_(loading|endurance))\.test\.js$/.test(name),
);
run('node', ['--test', ...files.map((name) => join(tests, name))], {
  ...process.env,
  CHART_TRACE_CALLS: process.env.CHART_TRACE_CALLS ?? '100000',
  CHART_TRACE_ADDON: join(root, 'build/addon-sanitize/cpp_code.node'),
  LD_PRELOAD: ['libasan.so', 'libstdc++.so'].map(libraryOfCompiler).join(' '),
  ASAN_OPTIONS: 'detect_leaks=1:quarantine_size_mb=1:thread_local_quarantine_size_kb=64',
  LSAN_OPTIONS: `suppressions=${join(tests, 'support/leaks.supp')}:print_suppressions=0`,
  UBSAN_OPTIONS: 'print_stacktrace=1',
});

run('cmake', ['--preset', 'addon-threads']);
run('cmake', ['--build', '--preset', 'addon-threads']);
// The host itself is not instrumented, so only what the module does is judged.
const module = join(root, 'build/addon-threads/cpp_code.node');
const seed = process.env.CHART_TRACE_SEED ?? '1';
for (const [script, ...more] of [['eight_workers.cjs'], ['workers_in_any_order.cjs', '40', seed]])
  run('node', [join(tests, 'support', script), module, ...more], {
    ...process.env,
    LD_PRELOAD: libraryOfCompiler('libtsan.so'),
    TSAN_OPTIONS: 'ignore_noninstrumented_modules=1:halt_on_error=1',
  });
