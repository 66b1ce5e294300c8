// Builds the extension module, build/Release/cpp_code.node, and nothing else.
//
//   node scripts/build.mjs [CMake option...]     such as -DCHART_TRACE_NODE_HEADERS=system
//
// Needs CMake and a C++ compiler; uses Ninja where there is one, else Make. What is missing is
// named together with the one line that installs it.

import { spawnSync } from 'node:child_process';
import { existsSync, readFileSync, rmSync } from 'node:fs';
import { createRequire } from 'node:module';
import { availableParallelism } from 'node:os';
import { dirname, join } from 'node:path';
import process from 'node:process';
import { fileURLToPath } from 'node:url';
import { hasRecentCmake } from './cmake.mjs';

const root = dirname(dirname(fileURLToPath(import.meta.url)));
const buildFolder = join(root, 'build', 'addon');
const options = process.argv.slice(2);

/**
 * Ends the build with a message that says what to do, without a stack trace.
 * @param {string} message
 * @returns {never}
 */
function stop(message) {
  console.error(`chart-trace: ${message}`);
  process.exit(1);
}

/**
 * What `program --version` prints, or undefined when it does not run.
 * @param {string} program
 */
function versionOf(program) {
  const { status, stdout } = spawnSync(program, ['--version'], { encoding: 'utf8' });
  return status === 0 ? stdout : undefined;
}

/** The line that installs the build tools on this system. */
function installLine() {
  if (process.platform === 'darwin') return 'xcode-select --install; brew install cmake ninja';
  if (existsSync('/usr/bin/apt-get')) {
    const apt = process.getuid?.() === 0 ? 'apt-get' : 'sudo apt-get';
    return `${apt} update && ${apt} install -y cmake ninja-build g++`;
  }
  if (existsSync('/usr/bin/dnf')) return 'sudo dnf install -y cmake ninja-build gcc-c++';
  return 'install CMake 3.21 or newer and a C++17 compiler';
}

/** Stops unless everything that the build needs is there. */
function requireTools() {
  const compilers = process.env.CXX ? [process.env.CXX.split(' ')[0]] : ['c++', 'g++', 'clang++'];
  const missing = [];
  if (!hasRecentCmake()) missing.push('CMake 3.21 or newer');
  if (process.platform !== 'win32' && !compilers.some(versionOf))
    missing.push(`a C++ compiler (tried ${compilers.join(', ')})`);
  if (missing.length > 0)
    stop(`the module cannot be built without ${missing.join(' and ')}. Type:\n  ${installLine()}`);

  const fromNpm = !options.includes('-DCHART_TRACE_NODE_HEADERS=system');
  if (fromNpm && !['node-addon-api', 'node-api-headers'].every(isInstalled))
    stop(
      'the packages with the Node-API headers are not installed. ' +
        `Type in ${root}:\n  npm install --ignore-scripts`,
    );
}

/**
 * Whether Node.js finds a package from here, in whatever folder npm has put it.
 * @param {string} name
 */
function isInstalled(name) {
  try {
    createRequire(import.meta.url).resolve(`${name}/package.json`);
    return true;
  } catch {
    return false;
  }
}

/**
 * Forgets a configuration of another folder or another generator, which CMake would refuse.
 * @param {string} generator
 */
function dropStaleConfiguration(generator) {
  const cache = join(buildFolder, 'CMakeCache.txt');
  if (!existsSync(cache)) return;
  const text = readFileSync(cache, 'utf8');
  const fits =
    text.includes(`CMAKE_HOME_DIRECTORY:INTERNAL=${root}\n`) &&
    text.includes(`CMAKE_GENERATOR:INTERNAL=${generator}\n`);
  if (!fits) rmSync(buildFolder, { recursive: true });
}

/** @param {string[]} args */
function cmake(...args) {
  const { status } = spawnSync('cmake', args, { cwd: root, stdio: 'inherit' });
  if (status !== 0) stop(`\`cmake ${args.join(' ')}\` failed; its messages are above.`);
}

requireTools();
const generator = versionOf('ninja') ? 'Ninja' : 'Unix Makefiles';
dropStaleConfiguration(generator);
cmake('--preset', 'addon', '-G', generator, ...options);
cmake('--build', '--preset', 'addon', '--parallel', String(availableParallelism()));
