'use strict';
// Loads the extension module, for CommonJS and for the ES modules of this folder alike.

const { join } = require('node:path');

const root = join(__dirname, '..');
const file = join(root, 'build', 'Release', 'cpp_code.node');

function load() {
  try {
    return require(file);
  } catch (error) {
    const [reason] = (error instanceof Error ? error.message : String(error)).split('\n');
    throw new Error(
      `chart-trace cannot load its native module: tried ${file} (${reason}). ` +
        `Build it with \`npm run build\` in ${root}.`,
      { cause: error },
    );
  }
}

const { trace } = load();

module.exports = { trace };
