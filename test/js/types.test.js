// The declarations that are generated from the JSDoc, as a TypeScript program that uses the package
// sees them.

import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import {
  cpSync,
  mkdirSync,
  mkdtempSync,
  readdirSync,
  readFileSync,
  rmSync,
  writeFileSync,
} from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { root } from './support/addon.js';

/** @param {string[]} args */
const tsc = (args, cwd = root) =>
  spawnSync(process.execPath, [join(root, 'node_modules/typescript/bin/tsc'), ...args], {
    cwd,
    encoding: 'utf8',
  });

/** @type {string} */
let folder;
before(() => {
  folder = mkdtempSync(join(tmpdir(), 'chart-trace-'));
  const installed = join(folder, 'node_modules/chart-trace');
  mkdirSync(installed, { recursive: true });
  for (const part of ['package.json', 'lib'])
    cpSync(join(root, part), join(installed, part), { recursive: true });
  const { status, stdout } = tsc([
    '--project',
    'tsconfig.types.json',
    '--outDir',
    join(installed, 'types'),
  ]);
  assert.equal(status, 0, stdout);
});
after(() => rmSync(folder, { recursive: true }));

/**
 * Checks a program, with no types but those of the package.
 * @param {string} name
 * @param {string} program
 */
function check(name, program) {
  writeFileSync(join(folder, name), program);
  const options = ['--strict', '--noEmit', '--module', 'nodenext', '--target', 'es2022'];
  const { status, stdout } = tsc([...options, '--types', '', name], folder);
  return { status, stdout };
}

const use = `
const points = { x: [1, 2], y: [3, 4] };
const flat: number[] = trace(points.x, points.y, 2, 1, 'histogram', 0.05);
const series: Series = traceChart(points, { kind: 'bars', direction: 'down', otherEnds: true });
const [[x, y]]: [number, number][] = series.pixels;
const axis = makeAxis({ scale: 'date', pixel: [1, 2], value: ['1999', '2000'] });
const at: number = axis.toPixel('1999-12');
const error: string = new ChartTraceError('', { code: 'ERR_ARGUMENT' }).code;
const names: readonly string[] = MODES.map(({ mode }) => mode);
export { flat, x, y, at, error, names };
`;
const names = 'ChartTraceError, makeAxis, MODES, trace, traceChart';

test('an ES module finds all types', () => {
  const program = `import { ${names}, type Series } from 'chart-trace';\n${use}`;
  assert.deepEqual(check('program.mts', program), { status: 0, stdout: '' });
});

test('a CommonJS module finds the same types', () => {
  const program =
    `import chartTrace = require('chart-trace');\n` +
    `type Series = ReturnType<typeof chartTrace.traceChart>;\n` +
    `const { ${names} } = chartTrace;\n${use}`;
  assert.deepEqual(check('program.cts', program), { status: 0, stdout: '' });
});

test('wrong arguments are errors of types', () => {
  for (const wrong of [
    "trace([1], [1], 1, 1, 'histogram')",
    "traceChart({ x: [1], y: [1] }, { kind: 'pie' })",
    "traceChart({ x: [1], y: [1] }, { kind: 'curve', stride: 3 })",
    "makeAxis({ scale: 'cubic', pixel: [1, 2], value: [1, 2] })",
    'traceAll()',
  ]) {
    const program = `import * as all from 'chart-trace';\nall.${wrong};\n`;
    const { status, stdout } = check('wrong.mts', program);
    assert.notEqual(status, 0, wrong);
    assert.match(stdout, /^wrong\.mts\(2,/, wrong);
  }
});

test('the declarations need no other package', () => {
  const types = join(folder, 'node_modules/chart-trace/types');
  const files = readdirSync(types, { encoding: 'utf8', recursive: true });
  for (const file of files.filter((name) => /\.d\.c?ts$/.test(name)))
    assert.doesNotMatch(
      readFileSync(join(types, file), 'utf8'),
      /(?:from |import\()['"](?!\.)|reference types/,
      file,
    );
});
