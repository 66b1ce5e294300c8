// The CMake that the build needs, asked for by set-up and by the build itself.

import { spawnSync } from 'node:child_process';
import process from 'node:process';

/** Whether CMake is there and knows the presets: version 3.21 or newer. */
export function hasRecentCmake() {
  // On Windows a program may be a batch file, which only a shell runs.
  const shell = process.platform === 'win32';
  const { stdout } = spawnSync('cmake', ['--version'], { encoding: 'utf8', shell });
  const [, major, minor] = (/version (\d+)\.(\d+)/.exec(stdout ?? '') ?? []).map(Number);
  return major > 3 || (major === 3 && minor >= 21);
}
