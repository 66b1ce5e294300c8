// Runs over one image and over many: what is written where, in what order, and how a run ends.

import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { once } from 'node:events';
import { existsSync, readdirSync, readFileSync } from 'node:fs';
import { appendFile, mkdir, writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import process from 'node:process';
import { after, before, describe, test } from 'node:test';
import { text } from 'node:stream/consumers';
import { pathToFileURL } from 'node:url';
import { inOrder } from '../../command/pool.js';
import { decodePicture } from '../../lib/pictures.js';
import { root } from './support/addon.js';
import { program } from './support/command.js';
import {
  begin,
  BLUE,
  command,
  makeFolder,
  MARKERS,
  png,
  parseRecords,
  writeMarkers,
} from './support/command.js';

// The program that gives another one a terminal, where it is the one of util-linux.
const hasScript = /util-linux/.test(
  spawnSync('script', ['--version'], { encoding: 'utf8' }).stdout,
);

let folder, remove;
before(async () => {
  ({ folder, remove } = await makeFolder());
  await writeMarkers(folder, ['a.png', 'b.png', 'c.png', '-dash.png']);
  await writeFile(join(folder, 'broken.png'), MARKERS.subarray(0, 60));
  await writeFile(join(folder, 'text.png'), 'no picture');
  await mkdir(join(folder, 'folder.png'));
});
after(() => remove());

const BLUES = ['--kind', 'scatter', '--color', 'blue', '--tolerance', '0'];

/** @param {string} line */
const words = (line) => line.split(' ');

/** Runs the command in the folder, for NDJSON. */
async function traced(args, options) {
  const list = [...args, '--format', 'ndjson'];
  const result = await command(list, { cwd: folder, ...options });
  return { ...result, records: parseRecords(result.stdout) };
}

describe('one image', () => {
  test('its record tells file, size, series and no error', async () => {
    const { status, stderr, records } = await traced(['a.png', ...BLUES]);
    assert.equal(status, 0, stderr);
    assert.equal(records.length, 1);
    const [{ file, width, height, series, error }] = records;
    assert.deepEqual(
      { file, width, height, error },
      { file: 'a.png', width: 60, height: 40, error: null },
    );
    assert.equal(series.length, 1);
    assert.equal(series[0].color, '#0000ff');
    assert.equal(series[0].mode, 'points-fission');
    assert.deepEqual(series[0].pixels, [
      [12, 12],
      [42, 22],
    ]);
    assert.equal(series[0].values, null);
    assert.match(stderr, /without --x and --y the result is in pixels/);
  });

  test('its axes give values', async () => {
    const axes = words('--x 12=0,42=30 --y 32=1,12=100 --y-scale log');
    const { status, stderr, records } = await traced(['a.png', ...BLUES, ...axes]);
    assert.equal(status, 0);
    assert.equal(stderr, '');
    assert.deepEqual(records[0].series[0].values, [
      [0, 100],
      [30, 10],
    ]);
  });

  test('names and dates are values too', async () => {
    const axes = words(
      '--x 12=left,42=right --x-scale category --y 12=2000-01-01,22=2000-01-02 --y-scale date',
    );
    const { records } = await traced(['a.png', ...BLUES, ...axes]);
    assert.deepEqual(records[0].series[0].values, [
      ['left', '2000-01-01T00:00:00.000Z'],
      ['right', '2000-01-02T00:00:00.000Z'],
    ]);
  });

  test('each colour that is asked for is a series', async () => {
    const { records } = await traced(['a.png', ...BLUES, '--color', 'f00']);
    assert.deepEqual(
      records[0].series.map(({ color, pixels }) => [color, pixels]),
      [
        [
          '#0000ff',
          [
            [12, 12],
            [42, 22],
          ],
        ],
        ['#ff0000', [[32, 32]]],
      ],
    );
  });

  test('a region leaves the rest of the picture out', async () => {
    const { records } = await traced(['a.png', ...BLUES, '--region', '20,0,59,39']);
    assert.deepEqual(records[0].series[0].pixels, [[42, 22]]);
  });

  test('without a colour every series is found', async () => {
    const { status, records } = await traced(['a.png', '--kind', 'scatter']);
    assert.equal(status, 0);
    assert.deepEqual(
      records[0].series.map(({ color, pixels }) => [color, pixels.length]),
      [
        ['#0000ff', 2],
        ['#ff0000', 1],
      ],
    );
  });

  test('a mask says where to look, and where not', async () => {
    const left = [{ include: { left: 0, top: 0, right: 29, bottom: 39 } }];
    const right = [
      {
        exclude: [
          [0, 0],
          [29, 0],
          [29, 39],
          [0, 39],
        ],
      },
    ];
    for (const [masks, found] of [
      [left, [[12, 12]]],
      [right, [[42, 22]]],
    ]) {
      await writeFile(join(folder, 'mask.json'), JSON.stringify(masks));
      const { records } = await traced(['a.png', ...BLUES, '--mask', 'mask.json']);
      assert.deepEqual(records[0].series[0].pixels, found);
    }
  });

  test('the tolerance, the background and colours to exclude decide on pixels', async () => {
    const grey = [128, 128, 128];
    const shades = await png(
      {},
      [0, 0, 59, 39, grey],
      [10, 10, 14, 14, BLUE],
      [30, 20, 34, 24, [0, 50, 255]],
    );
    await writeFile(join(folder, 'shades.png'), shades);
    const count = async (...options) => {
      const args = ['shades.png', '--kind', 'scatter', '--color', 'blue', ...options];
      const { records } = await traced(args);
      return records[0].series[0].pixels.length;
    };
    assert.equal(await count('--tolerance', '20'), 2);
    assert.equal(await count('--tolerance', '1'), 1);
    assert.equal(await count('--tolerance', '100'), 2);
    assert.equal(await count('--tolerance', '20', '--exclude', '#0032ff'), 1);
    assert.equal(
      await count(
        '--tolerance',
        '20',
        '--background',
        'gray',
        '--exclude',
        'red',
        '--exclude',
        'lime',
      ),
      2,
    );
  });

  test('bars grow where they are said to, and have another end', async () => {
    const args = words('a.png --kind bars --color blue --direction down --other-ends');
    const { records } = await traced(args);
    const [{ mode, pixels, bars }] = records[0].series;
    assert.equal(mode, 'bar_vertical-fission');
    assert.deepEqual(pixels, [
      [12, 14.5],
      [42, 24.5],
    ]);
    assert.deepEqual(bars[0].pixels, { end: [12, 14.5], otherEnd: [12, 9.5] });
  });

  test('kind, grouping, mode, stride, fraction and pixel step reach the trace', async () => {
    await writeFile(join(folder, 'line.png'), await png({}, [5, 20, 54, 21, BLUE]));
    const trace = async (file, line) => {
      const { records } = await traced([file, '--color', 'blue', ...words(line)]);
      return records[0].series[0];
    };
    assert.equal(
      (await trace('a.png', '--kind scatter --grouping horizontal')).mode,
      'points-horizontal',
    );
    assert.equal(
      (await trace('a.png', '--mode point_density --cluster-fraction 0.5')).mode,
      'point_density',
    );
    const whole = (await trace('line.png', '--kind curve')).pixels.length;
    const thin = (await trace('line.png', '--kind curve --stride 4')).pixels.length;
    const coded = (await trace('line.png', '--kind curve --cluster-fraction 0.052')).pixels.length;
    assert.ok(whole > 4 && thin < whole, `${whole}, ${thin}`);
    assert.equal(coded, thin);
    // So far apart, the pixels of both markers touch.
    assert.equal((await trace('a.png', '--kind bars --pixel-step 30')).pixels.length, 1);
  });

  test('an image comes by the standard input, whose name is -', async () => {
    const { status, records } = await traced(['-', ...BLUES], { input: MARKERS });
    assert.equal(status, 0);
    assert.equal(records[0].file, '-');
    assert.equal(records[0].series[0].pixels.length, 2);
  });

  test('a name that begins with - stands behind --', async () => {
    const args = [...BLUES, '--format', 'ndjson', '--', '-dash.png'];
    const { status, stdout } = await command(args, { cwd: folder });
    assert.equal(status, 0);
    assert.equal(parseRecords(stdout)[0].file, '-dash.png');
  });
});

describe('what goes wrong', () => {
  const FAILURES = [
    ['none.png', /none\.png: no such file/, 'ERR_FILE'],
    ['folder.png', /folder\.png: it is a folder/, 'ERR_FILE'],
    ['broken.png', /broken\.png: /, 'ERR_PICTURE'],
    ['text.png', /text\.png: /, 'ERR_PICTURE'],
  ];
  for (const [file, message, code] of FAILURES)
    test(`${file} fails with exit code 1, and its record has the error`, async () => {
      const { status, stderr, records } = await traced([file, ...BLUES]);
      assert.equal(status, 1);
      assert.match(stderr, message);
      assert.equal(records.length, 1);
      assert.equal(records[0].error.code, code);
      assert.deepEqual(records[0].series, []);
    });

  test('bad images do not stop the others, and the order stays', async () => {
    const files = ['a.png', 'none.png', 'b.png', 'text.png', 'broken.png', 'c.png', 'folder.png'];
    for (const jobs of ['1', '4']) {
      const { status, stderr, records } = await traced([...files, ...BLUES, '--jobs', jobs]);
      assert.equal(status, 1);
      assert.deepEqual(
        records.map(({ file }) => file),
        files,
      );
      const good = records.filter(({ error }) => error === null);
      assert.deepEqual(
        good.map(({ file }) => file),
        ['a.png', 'b.png', 'c.png'],
      );
      for (const { series } of good) assert.equal(series[0].pixels.length, 2);
      assert.equal(stderr.match(/^chart-trace: \w+\.png: /gm).length, 4);
    }
  });

  test('nothing found is exit code 1, and what was tried is said', async () => {
    const { status, stderr, records } = await traced([
      'a.png',
      '--kind',
      'scatter',
      '--color',
      'lime',
      '--tolerance',
      '0',
    ]);
    assert.equal(status, 1);
    assert.match(stderr, /a\.png: #00ff00: nothing found: 0 pixels/);
    assert.deepEqual(records[0].series[0].pixels, []);
    assert.equal(records[0].error, null);
  });

  test('with --json errors are lines of JSON, beside JSON', async () => {
    const args = ['none.png', 'a.png', ...BLUES, '--json'];
    const { status, stdout, stderr } = await command(args, { cwd: folder });
    assert.equal(status, 1);
    const { schemaVersion, images } = JSON.parse(stdout);
    assert.equal(schemaVersion, 1);
    assert.deepEqual(
      images.map(({ file }) => file),
      ['none.png', 'a.png'],
    );
    const [said, ...others] = stderr
      .trimEnd()
      .split('\n')
      .map((line) => JSON.parse(line));
    assert.equal(said.file, 'none.png');
    assert.equal(said.error.code, 'ERR_FILE');
    assert.deepEqual(others, []);
  });

  test('--quiet keeps errors and leaves out notes', async () => {
    const { stderr } = await traced(['none.png', 'a.png', ...BLUES, '--quiet']);
    assert.match(stderr, /^chart-trace: none\.png: .*\n$/);
  });

  test('control characters in a name do not reach the terminal', async () => {
    const { stderr } = await traced(['\x1b[31mred.png', ...BLUES]);
    assert.ok(!stderr.includes('\x1b'), stderr);
  });
});

describe('many images', () => {
  const names = Array.from({ length: 30 }, (_, i) => `many-${i}.png`);
  before(() => writeMarkers(folder, names));

  const isPosix = process.platform !== 'win32';
  test('go on behind a slow one, but not far ahead of it', { skip: !isPosix }, async () => {
    // The overlay of the first is a pipe, which cannot be written to before somebody reads it.
    const pipe = join(folder, 'drawn-many-0.svg');
    assert.equal(spawnSync('mkfifo', [pipe]).status, 0);
    const drawn = () => readdirSync(folder).filter((name) => name.startsWith('drawn-')).length - 1;
    const list = [...names, ...BLUES, '--jobs', '2', '--overlay', 'drawn-{name}.svg'];
    const run = traced(list);
    for (const end = Date.now() + 20_000; drawn() < 7 && Date.now() < end;)
      await new Promise((resolve) => setTimeout(resolve, 10));
    // Time enough for more of them.
    await new Promise((resolve) => setTimeout(resolve, 200));
    const ahead = drawn();
    spawnSync('cat', [pipe], { timeout: 60_000 });
    const { status, records } = await run;
    assert.equal(ahead, 7);
    assert.equal(status, 0);
    assert.deepEqual(
      records.map(({ file }) => file),
      names,
    );
  });
});

test('a task that a worker cannot do has its error for a result', async () => {
  const records = [];
  for await (const record of inOrder([{ file: 'a.png' }, { file: 'b.png' }], {
    name: 'no such work',
    jobs: 1,
    signal: new AbortController().signal,
    onDone: () => {},
    onFailure: ({ file }, error) => `${file}: ${error.message}`,
  }))
    records.push(record);
  assert.equal(records.length, 2);
  assert.match(records[0], /^a\.png: ./);
  assert.match(records[1], /^b\.png: ./);
});

describe('formats', () => {
  const print = async (...args) => {
    const { stdout } = await command(['a.png', 'none.png', 'b.png', ...BLUES, ...args], {
      cwd: folder,
    });
    return stdout;
  };

  test('a pipe gets CSV: names, then a row a point, one for a failure', async () => {
    const plain = await print();
    assert.equal(plain, await print('--format', 'csv'));
    const rows = plain.split('\r\n').map((row) => row.split(','));
    assert.deepEqual(rows.pop(), ['']);
    assert.deepEqual(
      rows.map(([file]) => file),
      ['file', 'a.png', 'a.png', 'none.png', 'b.png', 'b.png'],
    );
    const [head, first, , failure] = rows;
    const cell = (row, name) => row[head.indexOf(name)];
    assert.equal(cell(first, 'pixel_x'), '12');
    assert.equal(cell(first, 'color'), '#0000ff');
    assert.equal(cell(first, 'value_x'), '');
    assert.match(cell(failure, 'error'), /no such file/);
    assert.ok(!head.includes('other_pixel_x'));
  });

  test('tsv has the same cells', async () => {
    const commas = (await print()).replace(/\r\n$/, '').replaceAll('\r', '').split('\n');
    const tabs = (await print('--format', 'tsv')).replace(/\n$/, '').split('\n');
    assert.deepEqual(
      tabs,
      commas.map((row) => row.replaceAll(',', '\t')),
    );
  });

  test('json has the records of ndjson', async () => {
    const { schemaVersion, images } = JSON.parse(await print('--format', 'json'));
    assert.equal(schemaVersion, 1);
    assert.deepEqual(images, parseRecords(await print('--format', 'ndjson')));
  });

  test('a table in a pipe has no colours', async () => {
    const table = await print('--format', 'table');
    assert.ok(!table.includes('\x1b'));
    assert.match(table, /a\.png[^]*none\.png[^]*no such file[^]*b\.png/);
  });

  test('a blank line stands between the tables of two images', async () => {
    const alone = await Promise.all(
      ['a.png', 'none.png', 'b.png'].map((name) =>
        command([name, ...BLUES, '--format', 'table'], { cwd: folder }),
      ),
    );
    const tables = alone.map(({ stdout }) => stdout);
    assert.equal(await print('--format', 'table'), tables.join('\n'));
  });

  test('where there is no record, the names of the columns are all there is', () => {
    // As where a run is interrupted before its first image is begun.
    const [formats, output] = ['formats', 'output'].map((name) => join(root, `command/${name}.js`));
    const code = `
      import { traceWriter } from ${JSON.stringify(pathToFileURL(formats))};
      import { makeOutput } from ${JSON.stringify(pathToFileURL(output))};
      await (await makeOutput({}, traceWriter('csv', {}, ['scatter']), [])).end();`;
    const args = ['--input-type=module', '--eval', code];
    const { stdout } = spawnSync(process.execPath, args, { encoding: 'utf8' });
    assert.match(stdout, /^file,[^\n]*,error\r\n$/);
  });

  for (const [file, format] of [
    ['x.tsv', 'tsv'],
    ['x.json', 'json'],
    ['x.ndjson', 'ndjson'],
    ['x.csv', 'csv'],
    ['x.txt', 'csv'],
  ])
    test(`${file} holds ${format}`, async () => {
      assert.equal(await print('-o', file), '');
      assert.equal(readFileSync(join(folder, file), 'utf8'), await print('--format', format));
    });

  test('bars have columns for their other ends where these are asked for', async () => {
    const args = words('a.png --kind bars --color blue');
    const { stdout: plain } = await command(args, { cwd: folder });
    assert.ok(!plain.includes('other_'), plain);
    const both = await command([...args, '--other-ends', '--save-project', 'ends.json'], {
      cwd: folder,
    });
    assert.match(both.stdout, /^file,.*,other_pixel_x,other_pixel_y,/);
    const again = await command(['--project', 'ends.json'], { cwd: folder });
    assert.equal(again.stdout, both.stdout);
  });
});

describe('overlays', () => {
  test('a PNG shows the picture and what was found', async () => {
    const { status } = await command(['a.png', ...BLUES, '--overlay', 'proof.png'], {
      cwd: folder,
    });
    assert.equal(status, 0);
    const { width, height, data } = await decodePicture(join(folder, 'proof.png'));
    assert.deepEqual([width, height], [60, 40]);
    const original = (await decodePicture(MARKERS)).data;
    const changed = (x, y) =>
      !data
        .subarray(4 * (y * 60 + x), 4 * (y * 60 + x) + 3)
        .every((v, i) => v === original[4 * (y * 60 + x) + i]);
    assert.ok(
      changed(12, 5) || changed(12, 6) || changed(12, 7) || changed(12, 8),
      'an arm of the cross',
    );
    assert.ok(!changed(32, 32), 'the other series');
  });

  test('each of many images has its own', async () => {
    const args = ['a.png', 'none.png', 'b.png', ...BLUES, '--overlay', 'proof-{name}.svg'];
    const { status } = await command(args, { cwd: folder });
    assert.equal(status, 1);
    for (const name of ['a', 'b']) {
      const svg = readFileSync(join(folder, `proof-${name}.svg`), 'utf8');
      assert.match(svg, /^<svg [^]*href="data:image\/png;base64,/);
    }
    assert.ok(!existsSync(join(folder, 'proof-none.svg')));
  });

  test('a folder that is not there is told before any work', async () => {
    const args = ['a.png', ...BLUES, '--overlay', 'nowhere/proof.png'];
    const { status, stdout, stderr } = await command(args, { cwd: folder });
    assert.equal(status, 1);
    assert.equal(stdout, '');
    assert.match(stderr, /nowhere\/proof\.png: no such file/);
  });
});

describe('projects', () => {
  const axes = words('--x 12=0,42=30 --y 32=1,12=100 --y-scale log');

  test('say how an image was traced; run again, they give the same bytes', async () => {
    await mkdir(join(folder, 'kept'));
    await writeMarkers(join(folder, 'kept'), ['a.png']);
    const cwd = join(folder, 'kept');
    const args = ['a.png', '--kind', 'scatter', '--region', '0,0,59,28', ...axes, '--json'];
    const first = await command([...args, '--save-project', 'p.json'], { cwd });
    assert.equal(first.status, 0, first.stderr);
    const { image, series, options } = JSON.parse(readFileSync(join(cwd, 'p.json'), 'utf8'));
    assert.equal(image.file, 'a.png');
    assert.deepEqual(series, [{ color: '#0000ff' }]);
    assert.equal(options.kind, 'scatter');
    const again = await command(['--project', 'p.json', '--json'], { cwd });
    assert.equal(again.status, 0, again.stderr);
    assert.equal(again.stdout, first.stdout);
  });

  test('say which pixels each series has, and where the picture lies beside them', async () => {
    await mkdir(join(folder, 'elsewhere'));
    await writeMarkers(join(folder, 'elsewhere'), ['a.png']);
    const which = words(
      '--kind scatter --color blue --color red --tolerance 0 --region 20,0,59,39',
    );
    const args = ['elsewhere/a.png', ...which, '--json', '--save-project', 'elsewhere/p.json'];
    const first = JSON.parse((await command(args, { cwd: folder })).stdout).images[0];
    assert.deepEqual(
      first.series.map(({ pixels }) => pixels),
      [[[42, 22]], [[32, 32]]],
    );
    const { status, stdout } = await command(['--project', 'elsewhere/p.json', '--json'], {
      cwd: folder,
    });
    assert.equal(status, 0);
    assert.deepEqual(JSON.parse(stdout).images, [{ ...first, file: 'a.png' }]);
  });

  test('are applied to other images', async () => {
    const args = [
      'b.png',
      'none.png',
      'c.png',
      '--project',
      'kept/p.json',
      '--json',
      '--overlay',
      'by-{name}.png',
    ];
    const { status, stdout } = await command(args, { cwd: folder });
    assert.equal(status, 1);
    const { images } = JSON.parse(stdout);
    assert.deepEqual(
      images.map(({ file }) => file),
      ['b.png', 'none.png', 'c.png'],
    );
    assert.deepEqual(images[2].series[0].values, [
      [0, 100],
      [30, 10],
    ]);
    assert.ok(existsSync(join(folder, 'by-c.png')));
  });

  test('refuse a picture that is not theirs any more', async () => {
    await writeFile(join(folder, 'kept', 'a.png'), await png({}, [3, 3, 9, 9, BLUE]));
    const { status, stdout, stderr } = await command(['--project', 'kept/p.json'], { cwd: folder });
    assert.equal(status, 1);
    assert.equal(stdout, '');
    assert.match(stderr, /kept\/p\.json: .*a\.png is not the picture/);
  });

  for (const [what, content, message] of [
    ['no JSON', '{', /not JSON/],
    ['another kind of file', '{"a": 1}', /cannot be used/],
    ['a newer version', '{"schemaVersion": 99}', /version 99/],
  ])
    test(`that are ${what} are told`, async () => {
      await writeFile(join(folder, 'bad.json'), content);
      const { status, stderr } = await command(['a.png', '--project', 'bad.json'], { cwd: folder });
      assert.equal(status, 1);
      assert.match(stderr.replace(/\s+/g, ' '), message);
    });
});

describe('the colours of images', () => {
  const list = (...args) => command(['colors', 'a.png', 'none.png', ...args], { cwd: folder });

  test('are listed with their pixels, largest first', async () => {
    const { status, stdout, stderr } = await list('--format', 'ndjson');
    assert.equal(status, 1);
    assert.match(stderr, /none\.png: no such file/);
    const [found, failed] = parseRecords(stdout);
    assert.deepEqual(found, {
      file: 'a.png',
      width: 60,
      height: 40,
      colors: [
        { color: '#0000ff', pixels: 50, share: 50 / 2400 },
        { color: '#ff0000', pixels: 25, share: 25 / 2400 },
      ],
      error: null,
    });
    assert.deepEqual(failed.colors, []);
    assert.equal(failed.error.code, 'ERR_FILE');
  });

  test('are rows in a pipe, and a table for people', async () => {
    const { stdout } = await list();
    assert.equal(
      stdout,
      'file,color,pixels,share,error\r\n' +
        `a.png,#0000ff,50,${50 / 2400},\r\na.png,#ff0000,25,${25 / 2400},\r\n` +
        'none.png,,,,no such file (ENOENT)\r\n',
    );
    assert.equal(
      (await list('--format', 'tsv')).stdout,
      stdout.replaceAll(',', '\t').replaceAll('\r', ''),
    );
    assert.equal(
      (await list('--format', 'table')).stdout,
      'a.png  60 × 40 px\n  #0000ff  50 px    2.1 %\n  #ff0000  25 px    1.0 %\n\n' +
        'none.png\n  error: no such file (ENOENT)\n',
    );
    const { images } = JSON.parse((await list('--json')).stdout);
    assert.equal(images.length, 2);
  });

  test('are looked for in the region', async () => {
    const { stdout } = await list('--region', '20,28,59,39', '--format', 'ndjson');
    assert.deepEqual(
      parseRecords(stdout)[0].colors.map(({ color }) => color),
      ['#ff0000'],
    );
  });

  test('none at all is exit code 1', async () => {
    await writeFile(join(folder, 'white.png'), await png({}));
    const { status, stderr } = await command(['colours', 'white.png'], { cwd: folder });
    assert.equal(status, 1);
    assert.match(stderr, /white\.png: no colour of a series found/);
  });
});

describe('files', () => {
  const file = (name) => join(folder, name);

  test('-o - is the standard output', async () => {
    const plain = await command(['a.png', ...BLUES, '--json'], { cwd: folder });
    const dash = await command(['a.png', ...BLUES, '--json', '-o', '-'], { cwd: folder });
    assert.equal(dash.stdout, plain.stdout);
    assert.notEqual(dash.stdout, '');
  });

  test('-o FILE writes what would be printed, over what was there', async () => {
    await writeFile(file('out.json'), 'x'.repeat(1e5));
    const plain = await command(['a.png', ...BLUES, '--json'], { cwd: folder });
    const { status, stdout } = await command(['a.png', ...BLUES, '-o', 'out.json'], {
      cwd: folder,
    });
    assert.equal(status, 0);
    assert.equal(stdout, '');
    assert.equal(readFileSync(file('out.json'), 'utf8'), plain.stdout);
  });

  for (const [target, reason] of [
    ['nowhere/out.json', /no such file/],
    ['folder.png', /it is a folder/],
    ['a.png/out.json', /a folder in its path is a file/],
  ])
    test(`-o ${target} fails before any work`, async () => {
      const args = ['a.png', ...BLUES, '-o', target, '--overlay', 'early.png'];
      const { status, stderr, stdout } = await command(args, { cwd: folder });
      assert.equal(status, 1);
      assert.match(stderr, reason);
      assert.ok(stderr.includes(target), stderr);
      assert.equal(stdout, '');
      assert.ok(!existsSync(file('early.png')));
    });

  test('nothing but the output is left in its folder', async () => {
    await mkdir(file('clean'), { recursive: true });
    await command(['a.png', 'none.png', ...BLUES, '-o', 'clean/out.json'], { cwd: folder });
    assert.deepEqual(readdirSync(file('clean')), ['out.json']);
  });
});

describe('a run that is interrupted', () => {
  const many = 60;
  let names;
  before(async () => {
    names = Array.from({ length: many }, (_, i) => `big-${i}.png`);
    const big = await png({ width: 1200, height: 900 }, [100, 100, 1000, 800, BLUE]);
    for (const name of names) await writeFile(join(folder, name), big);
  });

  const args = () => [
    ...names,
    '--kind',
    'bars',
    '--color',
    'blue',
    '--tolerance',
    '0',
    '--jobs',
    '2',
  ];

  for (const [signal, code] of [
    ['SIGINT', 130],
    ['SIGTERM', 143],
  ])
    test(`by ${signal} prints what is finished, whole and in order, and ends with ${code}`, async () => {
      const child = begin([...args(), '--format', 'ndjson'], { cwd: folder });
      const stderr = text(child.stderr);
      let stdout = '';
      child.stdout.setEncoding('utf8').on('data', (part) => {
        if (stdout === '') child.kill(signal);
        stdout += part;
      });
      const [status] = await once(child, 'close');
      assert.equal(status, code);
      assert.ok(stdout.endsWith('\n'));
      const found = parseRecords(stdout);
      assert.ok(found.length > 0 && found.length < many, `${found.length} records`);
      assert.deepEqual(
        found.map(({ file }) => file),
        names.slice(0, found.length),
      );
      for (const { error } of found) assert.equal(error, null);
      assert.match(await stderr, /interrupted/);
    });

  test('by a second signal ends at once', { skip: process.platform === 'win32' }, async () => {
    const large = await png({ width: 4000, height: 3000 }, [500, 500, 3500, 2500, BLUE]);
    await writeFile(join(folder, 'large.png'), large);
    const child = begin(['none.png', 'large.png', ...BLUES, '--jobs', '1'], { cwd: folder });
    // The first message is that of none.png, the second that of the interruption.
    child.stderr.on('data', () => child.kill('SIGINT'));
    child.stdout.resume();
    const [status, signal] = await once(child, 'close');
    assert.deepEqual([status, signal], [null, 'SIGINT']);
  });

  test('writes a file that is whole, with what is finished', async () => {
    const child = begin(['none.png', ...args(), '-o', 'cut.json'], { cwd: folder });
    child.stderr.setEncoding('utf8').once('data', () => child.kill('SIGINT'));
    child.stdout.resume();
    const [status] = await once(child, 'close');
    assert.equal(status, 130);
    const { images } = JSON.parse(readFileSync(join(folder, 'cut.json'), 'utf8'));
    assert.ok(images.length > 0 && images.length <= many);
    assert.deepEqual(
      images.map(({ file }) => file),
      ['none.png', ...names].slice(0, images.length),
    );
  });

  test('goes on where it stopped, even when it was killed, and takes up again what failed', async () => {
    const target = join(folder, 'all.ndjson');
    const all = ['later.png', ...names];
    const list = ['later.png', ...args(), '--resume', '-o', 'all.ndjson'];
    const child = begin(list, { cwd: folder });
    child.stdout.resume();
    child.stderr.resume();
    while (!existsSync(target) || parseRecords(readFileSync(target, 'utf8')).length < 5)
      await new Promise((resolve) => setTimeout(resolve, 5));
    child.kill('SIGKILL');
    await once(child, 'close');
    const finished = readFileSync(target, 'utf8').split('\n').slice(1, 5);
    await appendFile(target, '{"file": "big-59.png", "series": [');
    await writeMarkers(folder, ['later.png']);

    const { status, stderr } = await command(list, { cwd: folder });
    assert.equal(status, 0, stderr);
    const lines = readFileSync(target, 'utf8');
    assert.deepEqual(lines.split('\n').slice(1, 5), finished);
    const found = parseRecords(lines);
    assert.deepEqual(
      found.map(({ file }) => file),
      all,
    );
    assert.ok(found.every(({ error }) => error === null));

    const again = await command(list, { cwd: folder });
    assert.equal(again.status, 0);
    assert.equal(again.stderr, '');
    assert.equal(readFileSync(target, 'utf8'), lines);
  });

  test('begins no image after the interruption', async () => {
    const interruption = new AbortController();
    const tasks = names.map((name) => ({
      file: join(folder, name),
      settings: { colours: ['#0000ff'], select: {}, trace: { kind: 'bars' } },
    }));
    const found = [];
    const options = { name: 'trace', jobs: 1, signal: interruption.signal };
    const onDone = () => interruption.abort();
    for await (const record of inOrder(tasks, { ...options, onDone })) found.push(record);
    // The one after the first may have begun before the first was known to be done.
    assert.ok(found.length === 1 || found.length === 2, `${found.length} images`);
  });

  test('goes on behind a record whose line has no end', async () => {
    const whole = await traced(['a.png', ...BLUES]);
    await writeFile(join(folder, 'cut.ndjson'), whole.stdout.trimEnd());
    const list = ['a.png', 'b.png', ...BLUES, '--resume', '-o', 'cut.ndjson'];
    const { status } = await command(list, { cwd: folder });
    assert.equal(status, 0);
    const found = parseRecords(readFileSync(join(folder, 'cut.ndjson'), 'utf8'));
    assert.deepEqual(
      found.map(({ file }) => file),
      ['a.png', 'b.png'],
    );
  });

  test('by a reader that has seen enough ends quietly, and soon', async () => {
    const list = [...args(), '--format', 'ndjson', '--overlay', 'seen-{name}.svg'];
    const child = begin(list, { cwd: folder });
    const stderr = text(child.stderr);
    child.stdout.once('data', () => child.stdout.destroy());
    const [status] = await once(child, 'close');
    assert.equal(status, 0);
    const drawn = readdirSync(folder).filter((name) => name.startsWith('seen-'));
    assert.ok(drawn.length < many, `${drawn.length} images`);
    assert.doesNotMatch(await stderr, /EPIPE|Error/);
  });
});

test('a closed standard input is no failure', async () => {
  const args = ['-c', '"$@" <&-', 'sh', process.execPath, program, 'a.png', ...BLUES, '-q'];
  const { status, stderr } = spawnSync('sh', args, { cwd: folder, encoding: 'utf8' });
  assert.equal(status, 0);
  assert.equal(stderr, '');
});

test(
  'NO_COLOR is honoured; a terminal gets a table in colours, a file one without',
  { skip: !hasScript },
  () => {
    const onTerminal = (env, ...more) => {
      const line = [process.execPath, program, 'a.png', ...BLUES, ...more]
        .map((word) => `'${word}'`)
        .join(' ');
      const args = ['-qec', line, '/dev/null'];
      const options = {
        cwd: folder,
        encoding: 'utf8',
        env: { PATH: process.env.PATH, TERM: 'xterm', ...env },
      };
      return spawnSync('script', args, options).stdout;
    };
    const coloured = onTerminal({});
    assert.ok(coloured.includes('\x1b[1m'), coloured);
    const plain = onTerminal({ NO_COLOR: '1' });
    assert.ok(!plain.includes('\x1b['), plain);
    assert.match(plain, /^a\.png[^]*#0000ff/);
    onTerminal({}, '--format', 'table', '-o', 'table.txt');
    assert.ok(!readFileSync(join(folder, 'table.txt'), 'utf8').includes('\x1b'));
  },
);
