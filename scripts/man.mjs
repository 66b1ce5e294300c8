// Writes the manual page of the command, man/chart-trace.1, from the description of its options.

import { mkdirSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { manual } from '../command/manual.js';
import { makeProgram } from '../command/program.js';
import { root } from './setup.mjs';

const nothing = async () => {};
mkdirSync(join(root, 'man'), { recursive: true });
writeFileSync(
  join(root, 'man', 'chart-trace.1'),
  manual(makeProgram({ trace: nothing, colors: nothing, completion: nothing })),
);
