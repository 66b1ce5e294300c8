// Loaded before a program, tells on the standard error how much memory its process had at most.

import { writeSync } from 'node:fs';
import process from 'node:process';
import { isMainThread } from 'node:worker_threads';

if (isMainThread)
  process.on('exit', () => writeSync(2, `peak ${1024 * process.resourceUsage().maxRSS} bytes\n`));
