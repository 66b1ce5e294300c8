'use strict';
// node attempt.cjs ADDON SOURCE: runs SOURCE, a script that sees `trace`, and prints the value of
// its last expression, or what it threw, as JSON.

const vm = require('node:vm');

const [addonFile, source] = process.argv.slice(2);
globalThis.trace = require(addonFile).trace;

function outcome() {
  try {
    return { returned: vm.runInThisContext(source) };
  } catch (error) {
    return { threw: error instanceof Error ? `${error.name}: ${error.message}` : typeof error };
  }
}

console.log(JSON.stringify(outcome()));
