// The package's entry, as ES modules and CommonJS see it, and what it says when it cannot load.

import assert from 'node:assert/strict';
import { cp, mkdir, mkdtemp, realpath, rm, symlink, writeFile } from 'node:fs/promises';
import { createRequire } from 'node:module';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import process from 'node:process';
import { after, before, describe, test } from 'node:test';

import * as entry from 'chart-trace';
import { node, root } from './support/addon.js';

const call = [[10, 20], [11, 21], 2, 1, 'bar_vertical-fission', 0.05];
const result = [10, 20, 11, 21];

test('import gives trace', () => {
  assert.deepEqual(entry.trace(...call), result);
});

test('every name of the package is there', () => {
  assert.deepEqual(Object.keys(entry).sort(), [
    'COLUMN_NAMES',
    'ChartTraceError',
    'LimitError',
    'MODES',
    'VERSION',
    'checkHash',
    'chroma',
    'colourDistance',
    'columnsFor',
    'contrastingColour',
    'decodePicture',
    'encodePng',
    'engine',
    'errorReport',
    'findColours',
    'findSeriesColours',
    'formatColour',
    'formatProject',
    'makeAxes',
    'makeAxis',
    'makeProject',
    'makeReport',
    'overlaySvg',
    'parseColour',
    'parseProject',
    'parseReferences',
    'pathFromProject',
    'readProject',
    'readProjectImage',
    'selectPixels',
    'selectSeries',
    'sha256Of',
    'splitResult',
    'toCsv',
    'toJson',
    'toNdjson',
    'toOverlay',
    'toTable',
    'toTsv',
    'trace',
    'traceChart',
    'tracePixels',
    'traceProject',
    'writePng',
    'writeProject',
    'writeWhole',
  ]);
});

test('the version is that of the package', () => {
  const { version } = createRequire(import.meta.url)('chart-trace/package.json');
  assert.equal(entry.VERSION, version);
});

test('the native module is taken where there is one', () => {
  assert.equal(entry.engine, 'native');
});

test('CHART_TRACE_ENGINE chooses what runs', async () => {
  const statement =
    "import('chart-trace').then(({ engine }) => console.log(engine), (e) => console.log(e.message))";
  const said = async (CHART_TRACE_ENGINE) => {
    const env = { ...process.env, CHART_TRACE_ENGINE };
    return (await node(['-e', statement], { cwd: root, env })).stdout.trim();
  };
  assert.equal(await said('native'), 'native');
  // WebAssembly need not have been built.
  assert.match(await said('wasm'), /^wasm$|^chart-trace cannot load its module: tried\n {2}wasm: /);
  assert.equal(await said('other'), "CHART_TRACE_ENGINE must be native or wasm, but is 'other'.");
});

test('require gives the very same things by the same names', () => {
  const required = createRequire(import.meta.url)('chart-trace');
  assert.deepEqual(Object.keys(required).sort(), Object.keys(entry).sort());
  for (const name of Object.keys(entry)) assert.equal(required[name], entry[name], name);
});

test('require gives trace where Node.js cannot require ES modules', async () => {
  const statement = `console.log(require('chart-trace').trace(${call.map((a) => JSON.stringify(a))}))`;
  const { stdout } = await node(['--no-experimental-require-module', '-e', statement], {
    cwd: root,
  });
  assert.equal(stdout.trim(), '[ 10, 20, 11, 21 ]');
});

test('a module that the host lost sight of is loaded again, any other failure is told at once', () => {
  const { loadRegistered } = createRequire(import.meta.url)('../../lib/tracing/native.cjs');
  const failures = (count, message) => {
    let calls = 0;
    const loadOnce = () => {
      if (++calls <= count) throw new Error(message);
      return 'loaded';
    };
    return { loadOnce, calls: () => calls };
  };
  const lost = failures(2, "Module did not self-register: 'cpp_code.node'.");
  assert.equal(loadRegistered(lost.loadOnce), 'loaded');
  const forGood = failures(Infinity, "Module did not self-register: 'cpp_code.node'.");
  assert.throws(() => loadRegistered(forGood.loadOnce), /did not self-register/);
  assert.equal(forGood.calls(), 5);
  const missing = failures(1, 'no such file');
  assert.throws(() => loadRegistered(missing.loadOnce), /no such file/);
  assert.equal(missing.calls(), 1);
});

describe('a package whose module was not built', () => {
  let folder;
  before(async () => {
    folder = await realpath(await mkdtemp(join(tmpdir(), 'chart-trace-')));
    for (const part of ['lib', 'package.json'])
      await cp(join(root, part), join(folder, part), { recursive: true });
    await symlink(join(root, 'node_modules'), join(folder, 'node_modules'), 'junction');
  });
  after(() => rm(folder, { recursive: true }));

  /** How the copied package fails to load, by way of `statement`. */
  async function failure(statement) {
    const { status, stderr } = await node(['-e', statement], { cwd: folder });
    assert.equal(status, 1);
    return stderr;
  }

  for (const statement of ["require('chart-trace')", "import('chart-trace')"]) {
    test(`${statement} tells all that was tried and the command to run`, async () => {
      const told = await failure(statement);
      assert.ok(told.includes(`wasm: ${join(folder, 'prebuilds/wasm32/cpp_code.wasm')}`), told);
      assert.ok(
        told.includes(`native: No native build was found for platform=${process.platform}`),
        told,
      );
      assert.ok(told.includes(`npm run build\` in ${folder}`), told);
    });
  }

  test('a file that is no module is told with the reason', async () => {
    await mkdir(join(folder, 'build/Release'), { recursive: true });
    await writeFile(join(folder, 'build/Release/cpp_code.node'), 'no module');
    const told = await failure("require('chart-trace')");
    assert.match(
      told,
      /native: .*cpp_code\.node \(.*(file too short|invalid ELF|not a valid|slice)/,
    );
    assert.match(told, /npm run build/);
  });
});
