// Writes what the module gives in the pinned cases to a file, as JSON.
//
//   node test/pinned/run.mjs MODULE FILE
//
// The global process, and no standard output: there is none for Node.js under wine.

import { writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { resolve } from 'node:path';
import { pinnedResults } from './cases.js';

const [module, file] = process.argv.slice(2);
const { trace } = createRequire(import.meta.url)(resolve(module));
const { platform, arch } = process;
writeFileSync(file, JSON.stringify({ host: `${platform}-${arch}`, results: pinnedResults(trace) }));
