// Writes what the module gives in the pinned cases, as JSON.
//
//   node test/pinned/run.mjs MODULE [FILE]     to standard output when no FILE is named

import { writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { resolve } from 'node:path';
import process from 'node:process';
import { pinnedResults } from './cases.js';

const [module, file] = process.argv.slice(2);
const { trace } = createRequire(import.meta.url)(resolve(module));
const text = JSON.stringify({ arch: process.arch, results: pinnedResults(trace) });
if (file) writeFileSync(file, text);
else process.stdout.write(text);
