// The pinned cases where the native module of this machine does not run: other processors and
// systems, emulated, and WebAssembly in a browser. Everywhere the same bits.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { join } from 'node:path';
import test from 'node:test';

import { build } from 'esbuild';
import { chromium } from 'playwright-core';
import { root } from '../../scripts/setup.mjs';
import { HOSTS, pinnedResultsOn } from './hosts.js';

const expected = JSON.parse(readFileSync(join(root, 'test/fixtures/pinned.json'), 'utf8'));

for (const host of HOSTS) {
  test(`the prebuilt module of ${host.name} gives the same bits in ${host.package}`, () => {
    const { host: told, results } = pinnedResultsOn(host);
    assert.equal(told, host.name);
    assert.deepEqual(results, expected);
  });
}

test('WebAssembly gives the same bits in Chromium', async () => {
  const { outputFiles } = await build({
    stdin: {
      contents: `import { engine, trace } from './lib/browser.js';
        import { pinnedResults } from './test/pinned/cases.js';
        globalThis.told = { engine, results: pinnedResults(trace) };`,
      resolveDir: root,
    },
    bundle: true,
    platform: 'browser',
    write: false,
  });
  const browser = await chromium.launch({
    executablePath: '/usr/bin/chromium',
    args: ['--no-sandbox', '--disable-gpu', '--disable-background-networking', '--disable-sync'],
  });
  try {
    const page = await browser.newPage();
    await page.addScriptTag({ content: outputFiles[0].text });
    const { engine, results } = await page.evaluate('told');
    assert.equal(engine, 'wasm');
    assert.deepEqual(results, expected);
  } finally {
    await browser.close();
  }
});
