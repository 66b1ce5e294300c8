// The package as people meet it: what the tarball has, that it installs without a compiler and does
// its main job at once, what checkers of packages say, and that bundlers take it.

import assert from 'node:assert/strict';
import { readFileSync, renameSync, writeFileSync } from 'node:fs';
import process from 'node:process';
import { after, before, describe, test } from 'node:test';
import vm from 'node:vm';

import { nodeResolve } from '@rollup/plugin-node-resolve';
import { rollup } from '@rollup/wasm-node';
import * as esbuild from 'esbuild';
import { publint } from 'publint';
import webpack from 'webpack';
import { install, join, pack, root, run, runThere, workspace } from './installed.js';

/** @type {ReturnType<typeof workspace>} */
let space;
/** @type {ReturnType<typeof pack>} */
let packed;
/** @type {ReturnType<typeof install>} */
let installed;

before(() => {
  space = workspace();
  packed = pack(space.folder);
  installed = install(space.folder, packed.file);
});
after(() => space.remove());

test('the tarball has these files and is no larger than that', (t) => {
  const file = join(root, 'test/fixtures/package.json');
  t.diagnostic(`${packed.files.length} files, ${(packed.size / 1e3).toFixed(0)} kB`);
  // Types are made of what is in lib, one for one.
  const files = packed.files.filter((name) => !name.startsWith('types/'));
  if (process.env.UPDATE) {
    const sizeAtMost = Math.ceil(packed.size / 50e3) * 50e3;
    writeFileSync(file, `${JSON.stringify({ sizeAtMost, files }, null, 2)}\n`);
  }
  const expected = JSON.parse(readFileSync(file, 'utf8'));
  assert.deepEqual(files, expected.files);
  assert.ok(packed.size <= expected.sizeAtMost, `${packed.size} bytes`);
  for (const name of ['types/index.d.ts', 'types/index.d.cts', 'types/browser.d.ts'])
    assert.ok(packed.files.includes(name), name);
});

test('nothing runs when it is installed', () => {
  const { scripts } = JSON.parse(readFileSync(join(installed.package, 'package.json'), 'utf8'));
  for (const name of ['preinstall', 'install', 'postinstall'])
    assert.equal(scripts[name], undefined);
});

describe('installed offline, without scripts and compilers', () => {
  // The main job: a real chart, from its file to values on its axes.
  const job = (/** @type {string} */ load) => `
    ${load}
    const picture = await decodePicture(${JSON.stringify(join(root, 'examples/charts/pressure-squares-log.png'))});
    const box = { left: 77, top: 54, right: 651, bottom: 461 };
    const pixels = selectPixels(picture, parseColour('#d35400'), { box, tolerance: 125 });
    const { x, y } = tracePixels(pixels, 'points-fission');
    const pressure = makeAxis({ scale: 'log10', pixel: [410.78, 104.65], value: [1e-3, 1e3] });
    console.log(JSON.stringify({ engine, x, values: y.map((each) => pressure.toValue(each)) }));`;
  const names = 'decodePicture, engine, makeAxis, parseColour, selectPixels, tracePixels';
  const fixture = readFileSync(
    join(root, 'test/fixtures/charts/pressure-squares-log.json'),
    'utf8',
  );

  /** @param {string} printed */
  function checkJob(printed, engine = 'native') {
    const told = JSON.parse(printed);
    assert.equal(told.engine, engine);
    assert.deepEqual(told.x, JSON.parse(fixture)['points-fission'].traced.x);
    assert.ok(
      Math.abs(told.values[0] - 806) < 25,
      `${told.values[0]} mm of mercury at 360 degrees`,
    );
    return told;
  }

  const esm = job(`import { ${names} } from 'chart-trace';`);
  const commonJs = `(async () => {${job(`const { ${names} } = require('chart-trace');`)}})()`;

  test('there is no compiler on the PATH', () => {
    for (const compiler of ['c++', 'cc', 'g++', 'gcc', 'clang++', 'cmake', 'make'])
      assert.throws(
        () =>
          run('node', ['-e', `require('child_process').execFileSync('${compiler}')`], {
            env: installed.env,
          }),
        /ENOENT/,
      );
  });

  test('an ES module does the main job', (t) => {
    t.diagnostic(`installed in ${installed.seconds.toFixed(1)} s`);
    const start = performance.now();
    checkJob(runThere(installed, esm));
    t.diagnostic(`done in ${((performance.now() - start) / 1000).toFixed(1)} s`);
  });

  test('a CommonJS module does it', () => {
    checkJob(runThere(installed, commonJs, { esm: false }));
  });

  test('WebAssembly gives the same numbers when it is asked for', () => {
    const native = checkJob(runThere(installed, esm));
    const wasm = checkJob(
      runThere(installed, esm, { env: { CHART_TRACE_ENGINE: 'wasm' } }),
      'wasm',
    );
    assert.deepEqual(wasm.values, native.values);
  });

  test('workers do it, with both engines', () => {
    const source = `
      const { Worker } = require('node:worker_threads');
      const body = "const { engine, trace } = require('chart-trace');" +
        "require('node:worker_threads').parentPort.postMessage(" +
        "[engine, ...trace([10, 20], [11, 21], 2, 1, 'bar_vertical-fission', 0.05)])";
      for (let i = 0; i < 3; ++i)
        new Worker(body, { eval: true }).on('message', (m) => console.log(String(m)));`;
    for (const engine of ['native', 'wasm']) {
      const printed = runThere(installed, source, {
        esm: false,
        env: { CHART_TRACE_ENGINE: engine },
      });
      assert.equal(printed, `${engine},10,20,11,21\n`.repeat(3));
    }
  });

  test('the command runs', () => {
    const command = join(installed.place, 'node_modules/.bin/chart-trace');
    const { version } = JSON.parse(readFileSync(join(root, 'package.json'), 'utf8'));
    const printed = run(command, ['--version'], { cwd: installed.place, env: installed.env });
    assert.ok(printed.includes(version), printed);
  });

  describe('on a platform without a native module', () => {
    const [from, to] = ['prebuilds', 'prebuilds-away'];
    const move = (/** @type {string} */ name, /** @type {string} */ place) =>
      renameSync(join(installed.package, name), join(installed.package, place));

    test('WebAssembly is taken', () => {
      move('prebuilds/linux-x64', 'other');
      try {
        checkJob(runThere(installed, esm), 'wasm');
      } finally {
        move('other', 'prebuilds/linux-x64');
      }
    });

    test('a native module that does not load makes room for WebAssembly', () => {
      const file = join(installed.package, 'prebuilds/linux-x64/cpp_code.glibc.node');
      const bytes = readFileSync(file);
      writeFileSync(file, 'not a module');
      try {
        checkJob(runThere(installed, esm), 'wasm');
      } finally {
        writeFileSync(file, bytes);
      }
    });

    test('without either, the error lists what was tried and how to build', () => {
      move(from, to);
      try {
        assert.throws(
          () => runThere(installed, esm),
          ({ message }) =>
            /tried\n +native: No native build was found for platform=linux arch=x64/.test(
              message,
            ) &&
            /\n +wasm: \S+cpp_code\.wasm \(ENOENT/.test(message) &&
            /Build it from source with `npm run build` in /.test(message),
        );
      } finally {
        move(to, from);
      }
    });
  });
});

describe('checkers of packages find nothing', () => {
  test('publint', async () => {
    const { messages } = await publint({ pkgDir: installed.package, pack: false, strict: true });
    assert.deepEqual(messages, []);
  });

  test('are the types wrong: in no way of resolving modules', () => {
    const program = join(root, 'node_modules/@arethetypeswrong/cli/dist/index.js');
    const printed = run(process.execPath, [program, packed.file, '--format', 'json'], {});
    assert.deepEqual(JSON.parse(printed).problems ?? {}, {});
  });
});

describe('a program for browsers is made by', () => {
  const program = `
    import { engine, makeAxis, trace } from 'chart-trace';
    const traced = trace([10, 20], [11, 21], 2, 1, 'bar_vertical-fission', 0.05);
    globalThis.told = JSON.stringify([engine, ...traced, makeAxis({ scale: 'linear', pixel: [0, 1], value: [5, 6] }).toValue(2)]);`;
  let entry = '';
  before(() => {
    entry = join(installed.place, 'program.js');
    writeFileSync(entry, program);
  });

  /**
   * Runs a bundle where there is nothing of Node.js, as in a browser.
   * @param {string} code
   */
  function check(code) {
    assert.doesNotMatch(code, /from ?["']node:|require\(["']node:/);
    const browser = vm.createContext({ atob, TextDecoder, TextEncoder, console, URL });
    vm.runInContext(code, browser);
    assert.equal(browser.told, '["wasm",10,20,11,21,7]');
  }

  test('esbuild', async (t) => {
    const { outputFiles } = await esbuild.build({
      entryPoints: [entry],
      bundle: true,
      minify: true,
      platform: 'browser',
      write: false,
    });
    t.diagnostic(`${(outputFiles[0].contents.length / 1e3).toFixed(0)} kB`);
    check(outputFiles[0].text);
  });

  test('rollup', async () => {
    const bundle = await rollup({ input: entry, plugins: [nodeResolve({ browser: true })] });
    const { output } = await bundle.generate({ format: 'iife' });
    await bundle.close();
    assert.equal(output.length, 1);
    check(output[0].code);
  });

  test('webpack', async () => {
    const folder = join(installed.place, 'webpack');
    const compiler = webpack({
      context: installed.place,
      entry,
      mode: 'production',
      target: 'web',
      output: { path: folder, filename: 'bundle.js' },
    });
    const stats = await new Promise((resolve, reject) =>
      compiler.run((error, result) => (error ? reject(error) : resolve(result))),
    );
    assert.deepEqual(stats.toJson({ all: false, errors: true }).errors, []);
    check(readFileSync(join(folder, 'bundle.js'), 'utf8'));
  });
});

test('the entry for browsers has all that needs no Node.js', async () => {
  const [here, there] = await Promise.all([import('chart-trace'), import('../../lib/browser.js')]);
  const onlyHere = Object.keys(here).filter((name) => !(name in there));
  const ofFiles = ['decodePicture', 'encodePng', 'writePng', 'sha256Of', 'writeWhole'];
  const ofProjects = ['pathFromProject', 'readProject', 'readProjectImage', 'writeProject'];
  assert.deepEqual(onlyHere.sort(), [...ofFiles, ...ofProjects].sort());
});
