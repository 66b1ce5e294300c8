// Every example of the README runs as it stands, and says what the README says.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { mkdirSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { fileURLToPath } from 'node:url';
import { test } from 'node:test';

const root = new URL('../../', import.meta.url);
const readme = readFileSync(new URL('README.md', root), 'utf8');
const examples = [...readme.matchAll(/```js\n(.*?)```/gs)].map(([, code]) => code);

/**
 * Runs a program that imports the package by its name, from the root of the tree.
 * @param {string} name
 * @param {string} code
 * @returns {string} What it printed.
 */
function run(name, code) {
  const file = fileURLToPath(new URL(`${name}.mjs`, build));
  writeFileSync(file, code);
  const { status, stdout, stderr } = spawnSync(process.execPath, [file], {
    cwd: fileURLToPath(root),
    encoding: 'utf8',
  });
  assert.equal(status, 0, stderr);
  return stdout;
}

const build = new URL('build/readme/', root);
mkdirSync(build, { recursive: true });

/** @param {string} sign What only this example holds. */
function exampleWith(sign) {
  const example = examples.find((code) => code.includes(sign));
  assert.ok(example, `an example has ${sign}`);
  return example;
}

test('the example of the library prints the 19 values of the chart, near the published ones', () => {
  const said = `console.log(series.pixels, series.values, series.notes); // 19 points, no notes`;
  const example = exampleWith(said);
  const table = run('library', example);
  assert.match(table, /19 points/);
  const { pixels, values, notes } = JSON.parse(
    run('library', example.replace(/console[^]*/, 'console.log(JSON.stringify(series))')),
  );
  assert.equal(pixels.length, 19);
  assert.deepEqual(notes, []);
  // Markers come in the order of their first pixel: the topmost one is the hottest.
  values.forEach(([temperature], i) => {
    const published = 20 * (values.length - 1 - i);
    assert.ok(
      Math.abs(temperature - published) < 1,
      `${temperature} is about ${published} degrees`,
    );
  });
});

test('the example of a project gives the same bytes when run again', () => {
  assert.equal(run('project', exampleWith('makeProject')), 'true\n');
});

test('the lines of the command run as they stand and print what is shown', () => {
  const shown = /```csv\n(.*?)```/s.exec(readme)?.[1];
  const lines = [...readme.matchAll(/```sh\n(.*?)```/gs)].map(([, code]) => code);
  const [first, more] = lines.filter((code) => code.includes('chart-trace '));
  const command = (code) =>
    spawnSync('bash', ['-euc', `chart-trace() { node bin/chart-trace.js "$@"; }\n${code}`], {
      cwd: fileURLToPath(root),
      encoding: 'utf8',
    });
  const printed = command(first);
  assert.equal(printed.status, 0, printed.stderr);
  assert.ok(printed.stdout.endsWith(shown.replace(/\n/g, '\r\n')), printed.stdout);
  for (const name of ['pressure.csv', 'pressure.png', 'scatter.ndjson'])
    rmSync(new URL(name, build), { force: true });
  const written = command(more);
  assert.equal(written.status, 0, written.stderr);
  const records = readFileSync(new URL('scatter.ndjson', build), 'utf8').trim().split('\n');
  assert.deepEqual(
    records.map((record) => JSON.parse(record).file),
    ['examples/charts/cars-discs.png', 'examples/charts/penguins-triangles-dark.png'],
  );
  assert.equal(readFileSync(new URL('pressure.csv', build), 'utf8').trim().split('\n').length, 20);
});

test('the table of charts is the one that the tests pin', () => {
  const pinned = readFileSync(new URL('test/fixtures/command/charts.md', root), 'utf8');
  assert.ok(readme.includes(pinned.trim()), 'the README quotes test/fixtures/command/charts.md');
});

test('the example of trace returns what its comment says', () => {
  const native = examples.find((code) => code.includes('trace(x, y'));
  assert.ok(native, 'the README shows trace');
  const call = /^(trace\(.*\)); \/\/ (\[.*?\]).*$/m.exec(native);
  assert.ok(call, 'the call says its result');
  const printed = run('trace', native.replace(call[0], `console.log(JSON.stringify(${call[1]}))`));
  assert.deepEqual(JSON.parse(printed), JSON.parse(call[2]));
});
