// What the command says about itself, and about a command line that is wrong.

import assert from 'node:assert/strict';
import { existsSync, readdirSync, readFileSync } from 'node:fs';
import { mkdir, symlink, writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import process from 'node:process';
import { after, before, describe, test } from 'node:test';
import { KINDS, makeProgram } from '../../command/program.js';
import { asUsageError } from '../../command/usage.js';
import { MODES } from '../../lib/tracing/modes.js';
import { root } from './support/addon.js';
import { command, makeFolder, writeMarkers } from './support/command.js';

const { version } = JSON.parse(readFileSync(join(root, 'package.json'), 'utf8'));
const nothing = async () => {};
const description = makeProgram({ trace: nothing, colors: nothing, completion: nothing });

test('the kinds are those of the modes', () => {
  assert.deepEqual([...KINDS].sort(), [...new Set(MODES.map(({ kind }) => kind))].sort());
});

describe('the help', () => {
  for (const args of [['--help'], ['-h'], ['chart.png', '--kind', 'curve', '--help']])
    test(`${args.join(' ')} shows examples, then every option, on lines of 80 columns`, async () => {
      const { status, stdout, stderr } = await command(args);
      assert.equal(status, 0);
      assert.equal(stderr, '');
      assert.ok(stdout.indexOf('Examples:') < stdout.indexOf('--kind <KIND>'));
      for (const { long } of description.options) assert.ok(stdout.includes(`${long} `), long);
      for (const line of stdout.split('\n')) assert.ok(line.length <= 80, line);
      assert.ok(!stdout.includes('\x1b'), 'no colours in a pipe');
    });

  for (const name of ['colors', 'completion'])
    test(`${name} --help tells of ${name}`, async () => {
      const { status, stdout } = await command([name, '--help']);
      assert.equal(status, 0);
      assert.match(stdout, new RegExp(`^Usage: chart-trace ${name} `));
      assert.doesNotMatch(stdout, /Examples:|Exit codes:/);
    });

  test('--version prints the version of the package', async () => {
    const { status, stdout } = await command(['--version']);
    assert.equal(status, 0);
    assert.equal(stdout, `${version}\n`);
  });
});

describe('a wrong command line', () => {
  let folder, remove;
  before(async () => {
    ({ folder, remove } = await makeFolder());
    await writeMarkers(folder, ['a.png', 'b.png']);
    await writeFile(join(folder, 'broken.json'), '{');
    await writeFile(join(folder, 'shape.json'), '[{"inside": [[0, 0], [1, 1]]}]');
  });
  after(() => remove());

  /** @type {[args: string, message: RegExp][]} */
  const WRONG = [
    ['', /IMAGE: expected the file of a chart, but it is missing/],
    ['a.png', /--kind: expected what the chart shows, one of scatter, .* but it is missing/],
    ['a.png --kind scater', /--kind: expected one of scatter, .*'scater'.*Did you mean scatter\?/],
    ['a.png --kind', /option '--kind <KIND>' argument missing/],
    ['a.png --kin curve', /unknown option '--kin'.*Did you mean --kind\?/],
    ['a.png --mode points-fision', /--mode: expected one of .*Did you mean points-fission\?/],
    ['a.png --kind curve --mode curves-fission', /--kind: .*left out where a mode is given/],
    ['a.png --kind histogram --grouping fission', /--grouping: .*compartments/],
    ['a.png --kind scatter --stride 4', /--stride: .*does not matter to points-fission/],
    ['a.png --kind curve --stride 3', /--stride: expected one of 1, 2, 4, 8, 16.*'3'/],
    ['a.png --kind curve --cluster-fraction 0', /--cluster-fraction: expected a number above 0/],
    ['a.png --kind curve --cluster-fraction 2', /--cluster-fraction: expected a number above 0/],
    ['a.png --kind curve --cluster-fraction 0.3', /--cluster-fraction: .*0\.051/],
    ['a.png --kind curve --pixel-step 0', /--pixel-step: expected a number above 0.*'0'/],
    ['a.png --kind curve --pixel-step=', /--pixel-step: expected a number above 0.*''/],
    ['a.png --kind bars --direction left', /--direction: .*up, down/],
    ['a.png --kind bars --direction lft', /--direction: .*Did you mean left\?/],
    ['a.png --kind curve --other-ends', /--other-ends: .*does not matter to curves-fission/],
    ['a.png --kind scatter --color blu', /--color: expected a CSS colour.*'blu'/],
    ['a.png --kind scatter --color red --color x', /--color: expected a CSS colour.*'x'/],
    ['a.png --kind scatter --exclude x', /--exclude: expected a CSS colour/],
    ['a.png --kind scatter --background x', /--background: expected a CSS colour/],
    ['a.png --kind curve --pixel-step Infinity', /--pixel-step: expected a number above 0/],
    ['a.png --kind scatter --tolerance=', /--tolerance: expected a number from 0 to 100.*''/],
    ['a.png --kind scatter --tolerance x', /--tolerance: expected a number from 0 to 100.*'x'/],
    ['a.png --kind scatter --tolerance -1', /--tolerance: expected a number from 0 to 100.*'-1'/],
    ['a.png --kind scatter --region 1,2,3', /--region: expected LEFT,TOP,RIGHT,BOTTOM/],
    ['a.png --kind scatter --region 1,2,3,x', /--region: expected LEFT,TOP,RIGHT,BOTTOM/],
    ['a.png --kind scatter --region 9,2,3,4', /--region: expected LEFT,TOP,RIGHT,BOTTOM/],
    ['a.png --kind scatter --region 1,9,3,4', /--region: expected LEFT,TOP,RIGHT,BOTTOM/],
    ['a.png --kind scatter --region 1,2,3,4,5', /--region: expected LEFT,TOP,RIGHT,BOTTOM/],
    ['a.png --kind scatter --mask none.json', /--mask: expected a file.*no such file/],
    ['a.png --kind scatter --mask broken.json', /--mask: expected a JSON list of shapes/],
    ['a.png --kind scatter --mask shape.json', /--mask: expected a JSON list.*masks\[0\]/],
    ['a.png --kind scatter --x 1=2', /--x: expected two references or more, such as/],
    ['a.png --kind scatter --x 1=2,3', /--x: expected two references or more.*'1=2,3'/],
    ['a.png --kind scatter --x 1=2,3=', /^chart-trace: --x, reference 2: expected PIXEL=VALUE/],
    ['a.png --kind scatter --y 1=2,3=x', /--y, reference 2 \(3=x\): expected a number/],
    ['a.png --kind scatter --x 1=0,3=1 --x-scale log', /--x, reference 1 .*number above 0/],
    ['a.png --kind scatter --x-scale log', /--x-scale: expected --x beside it/],
    ['a.png --kind scatter --x 1=0,3=1 --x-scale lin', /--x-scale: .*Did you mean linear\?/],
    ['a.png --kind scatter --format cvs', /--format: .*Did you mean csv\?/],
    ['a.png --kind scatter --jobs 0', /--jobs: expected a whole number from 1 to 256.*'0'/],
    ['a.png --kind scatter --jobs 1.5', /--jobs: expected a whole number from 1 to 256.*'1.5'/],
    ['a.png --kind scatter --resume', /--resume: expected -o FILE and --format ndjson/],
    ['a.png --kind scatter --resume -o x.csv --format csv', /--resume: expected -o FILE/],
    ['a.png --kind scatter --overlay x.gif', /--overlay: expected a file that ends in .png/],
    ['a.png b.png --kind scatter --overlay x.png', /--overlay: expected another file.*\{name\}/],
    ['a.png --kind scatter --overlay a.png', /expected another file than the image/],
    ['a.png --kind scatter -o a.png', /-o: expected another file than the image/],
    ['a.png --kind scatter -o x.svg --overlay x.svg', /--overlay: expected another file than -o/],
    ['- - --kind scatter', /IMAGE: expected - once/],
    ['a.png --project p.json --kind curve', /--kind: expected nothing beside --project/],
    ['a.png --project p.json --x-scale log', /--x-scale: expected nothing beside --project/],
    ['a.png --project p.json --save-project q.json', /--save-project: expected nothing beside/],
    ['a.png b.png --kind scatter --save-project q.json', /--save-project: expected a single image/],
    ['- --kind scatter --save-project q.json', /--save-project: expected a single image.*'-'/],
    ['a.png --kind scatter --save-project q.txt', /--save-project: .*ends in \.json/],
    ['a.png --kind scatter -o q.json --save-project q.json', /another file than -o has/],
    ['colors', /missing required argument 'IMAGE'/],
    ['colors a.png --kind curve', /unknown option '--kind'/],
    ['completion', /missing required argument 'SHELL'/],
    ['completion fsih', /completion: expected one of bash, zsh, fish.*Did you mean fish\?/],
    ['completion bash zsh', /too many arguments/],
  ];

  for (const [args, message] of WRONG) {
    const list = args.split(' ').filter((arg) => arg !== '');
    test(`'${args}' is told, with exit code 2 and nothing done`, async () => {
      const { status, stdout, stderr } = await command(list, { cwd: folder });
      assert.match(stderr.replace(/\s+/g, ' '), message);
      assert.match(stderr, /^chart-trace: /);
      assert.equal(status, 2);
      assert.equal(stdout, '');
    });
  }

  test('a project that could not open its image again is not saved, and nothing is done', async () => {
    await mkdir(join(folder, 'saved/below'), { recursive: true });
    const cwd = join(folder, 'saved');
    const images = ['../a.png'];
    if (process.platform !== 'win32') {
      await symlink('../../a.png', join(cwd, 'below/link.png'));
      await symlink('..', join(cwd, 'up'));
      images.push('below/link.png', 'up/a.png');
    }
    for (const image of images) {
      const args = [image, '--kind', 'scatter', '-o', 'o.csv', '--overlay', 'o.png'];
      args.push('--save-project', 'below/../p.json');
      const { status, stdout, stderr } = await command(args, { cwd });
      assert.equal(status, 2, stderr);
      const words = stderr.replace(/\s+/g, ' ');
      const start = `chart-trace: --save-project: the picture ${image} lies outside the folder of its`;
      assert.ok(words.startsWith(`${start} project, ${cwd}. `), words);
      assert.ok(
        words.includes(`Save the project in ${folder}, or copy the picture to ${cwd}.`),
        words,
      );
      assert.equal(stdout, '');
      assert.deepEqual(
        readdirSync(cwd).filter((name) => name.includes('.')),
        [],
      );
    }
  });

  test('an image or a folder that is not there is told as such beside a project to save', async () => {
    for (const [image, path, told] of [
      ['none.png', 'p.json', /none\.png: no such file/],
      ['a.png', 'nowhere/p.json', /nowhere\/p\.json: no such file/],
      ['../none.png', 'p.json', /none\.png: no such file/],
    ]) {
      const args = [image, '--kind', 'scatter', '--save-project', path];
      const { status, stderr } = await command(args, { cwd: folder });
      assert.equal(status, 1);
      assert.match(stderr, told);
      assert.ok(!existsSync(join(folder, 'p.json')));
    }
  });

  for (const args of ['a.png', 'a.png --kin curve', 'a.png --kind scatter --format csv', 'colors'])
    test(`'${args} --json' is told as one line of JSON`, async () => {
      const list = [...args.split(' '), '--json'];
      const { status, stdout, stderr } = await command(list, { cwd: folder });
      assert.match(stderr, /^[^\n]*\n$/);
      const { error } = JSON.parse(stderr);
      assert.equal(error.code, 'ERR_USAGE');
      assert.equal(typeof error.message, 'string');
      assert.equal(stdout, '');
      assert.equal(status, 2);
    });
});

test('an error that no option is to blame for is not put down to one', () => {
  const error = new RangeError('Array buffer allocation failed');
  assert.equal(asUsageError('--x', error), error);
});
