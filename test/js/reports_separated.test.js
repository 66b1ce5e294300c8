// CSV and tab-separated values, read back by a reader of their own.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import fc from 'fast-check';
import { COLUMN_NAMES, columnsFor, makeReport, MODES, toCsv, toTsv } from 'chart-trace';
import {
  bars,
  histogram,
  histogramWithValues,
  markersAndCurve,
  seriesOf,
} from './support/reports.js';
import { readSeparated } from './support/separated_reader.js';

/** @param {object[]} series */
const reportOf = (...series) => makeReport([{ file: 'a.png', width: 9, height: 9, series }]);

/**
 * The rows of a report, each as an object of its columns.
 * @param {string} text
 * @param {{separator?: string, end?: string}} [syntax]
 */
function read(text, syntax) {
  const [head, ...rows] = readSeparated(text, syntax);
  return rows.map((row) => {
    assert.equal(row.length, head.length);
    return Object.fromEntries(head.map((name, i) => [name, row[i]]));
  });
}

const tabs = { separator: '\t', end: '\n' };

test('a scatter chart in full', () => {
  assert.equal(
    toCsv(reportOf(seriesOf({ notes: ['one', 'two, "quoted"'] }))),
    [
      'file,series,color,kind,mode,selected,point,pixel_x,pixel_y,value_x,value_y,notes,error',
      'a.png,1,#1f77b4,scatter,points-fission,18,1,10.5,20,1,0.1,"one; two, ""quoted""",',
      'a.png,1,#1f77b4,scatter,points-fission,18,2,30,40.25,2,1e-7,,',
      '',
    ].join('\r\n'),
  );
});

test('each kind has the columns that it fills', () => {
  const common = columnsFor(['scatter']);
  for (const { kind } of MODES) {
    const own = columnsFor([kind]).filter((name) => !common.includes(name));
    const expected = {
      'points+curve': /^part$/,
      bars: /^other_/,
      hbars: /^other_/,
      histogram: /^(left|right)_/,
    }[kind];
    assert.equal(own.length > 0, expected !== undefined, kind);
    for (const name of own) assert.match(name, expected);
  }
  assert.deepEqual(columnsFor(['histogram', 'bars', 'points+curve']), [...COLUMN_NAMES]);
});

test('bars have their other ends beside them', () => {
  const [first, second] = read(toCsv(reportOf(bars)));
  assert.deepEqual(
    [first.other_pixel_x, first.other_pixel_y, first.other_value_x, first.other_value_y],
    ['10.5', '90', 'ash', '0'],
  );
  assert.deepEqual([second.value_x, second.other_pixel_x, second.other_value_y], ['oak', '', '']);
});

test('the bars of a histogram have their borders beside them', () => {
  const [, second] = read(toCsv(reportOf(histogramWithValues)));
  assert.deepEqual(
    [second.left_pixel_x, second.right_pixel_x, second.left_value_x, second.right_value_x],
    ['20.5', '39.5', '1', '2'],
  );
  const [, inPixels] = read(toCsv(reportOf(histogram)));
  assert.deepEqual([inPixels.right_pixel_x, inPixels.right_value_x], ['39.5', '']);
});

test('markers and curve are told apart', () => {
  const rows = read(toCsv(reportOf(markersAndCurve)));
  assert.deepEqual(
    rows.map(({ part }) => part),
    ['marker', 'curve'],
  );
});

test('a series without points and a picture without series have a row each', () => {
  const report = makeReport([
    { file: 'a.png', series: [seriesOf({ pixels: [], values: null, notes: ['nothing found'] })] },
    { file: 'b.png', error: Object.assign(new Error('Broken.'), { hint: 'Mend it.' }) },
    { file: 'c.png', series: [seriesOf()], error: new Error('Half.') },
    { file: 'd.png' },
  ]);
  const rows = read(toCsv(report)).map((row) => [
    row.file,
    row.series,
    row.point,
    row.notes,
    row.error,
  ]);
  assert.deepEqual(rows, [
    ['a.png', '1', '', 'nothing found', ''],
    ['b.png', '', '', '', 'Broken. Mend it.'],
    ['c.png', '1', '1', '', ''],
    ['c.png', '1', '2', '', ''],
    ['c.png', '', '', '', 'Half.'],
    ['d.png', '', '', '', ''],
  ]);
});

test('columns are chosen by name, and the header can be left out', () => {
  const report = reportOf(seriesOf());
  assert.equal(
    toCsv(report, { columns: ['value_y', 'value_x'], header: false }),
    '0.1,1\r\n1e-7,2\r\n',
  );
  assert.throws(() => toCsv(report, { columns: ['value_z'] }), {
    code: 'ERR_ARGUMENT',
    received: 'value_z',
  });
});

test('written picture by picture a report is the same as in one go', () => {
  const images = [seriesOf(), bars, histogram].map((series, i) => ({
    file: `${i}.png`,
    series: [series],
  }));
  const columns = columnsFor(['scatter', 'bars', 'histogram']);
  for (const write of [toCsv, toTsv])
    assert.equal(
      images.map((image, i) => write(makeReport([image]), { columns, header: i === 0 })).join(''),
      write(makeReport(images)),
    );
});

test('every double and every text comes back from CSV', () => {
  const number = fc.double({ noNaN: true, noDefaultInfinity: true });
  const text = fc.string({ unit: fc.constantFrom(...'a1;=\'"", \t\r\n\\é漢'), maxLength: 8 });
  const points = fc.array(fc.tuple(number, number, fc.oneof(number, text), number), {
    minLength: 1,
  });
  fc.assert(
    fc.property(points, text, (drawn, file) => {
      const series = seriesOf({
        pixels: drawn.map(([x, y]) => [x, y]),
        values: drawn.map(([, , x, y]) => [x, y]),
      });
      const rows = read(toCsv(makeReport([{ file, series: [series] }]), { guard: false }));
      assert.equal(rows.length, drawn.length);
      for (const [i, [x, y, valueX, valueY]] of drawn.entries()) {
        const row = rows[i];
        assert.equal(row.file, file);
        assert.deepEqual([row.pixel_x, row.pixel_y, row.value_y].map(Number), [
          x + 0,
          y + 0,
          valueY + 0,
        ]);
        if (typeof valueX === 'string') assert.equal(row.value_x, valueX);
        else assert.equal(Number(row.value_x), valueX + 0);
      }
    }),
  );
});

test('a row of tab-separated values is one line whatever the texts are', () => {
  const text = fc.string({ unit: fc.constantFrom(...'a="\t\r\n ') });
  fc.assert(
    fc.property(text, text, (file, name) => {
      const series = seriesOf({ pixels: [[1, 2]], values: [[name, 2]] });
      const written = toTsv(makeReport([{ file, series: [series] }]), { guard: false });
      assert.equal(written.split('\n').length, 3);
      const [row] = read(written, tabs);
      const inLine = (/** @type {string} */ s) => s.replace(/\r\n|[\t\r\n]/g, ' ');
      assert.equal(row.file, inLine(file));
      assert.equal(row.value_x, inLine(name));
      assert.equal(row.value_y, '2');
    }),
  );
});

/** Texts that a spreadsheet would run, or that lead it to. */
const formulas = [
  '=1+1',
  '+1+1',
  '-1+1',
  '@SUM(A1)',
  '=cmd|" /C calc"!A0',
  '\t=1',
  '\r=1',
  '\n=1',
  ' =1',
  '\uff1d1',
  '\uff0b1',
  '\uff0d1',
  '\uff201',
  '-000044-03-15',
  '\u200b=1',
  '\u202e\x01=1',
];

test('no text begins as a formula does, in whatever cell it stands', () => {
  for (const formula of formulas) {
    const series = seriesOf({
      values: [
        [formula, 1],
        [formula, 2],
      ],
      notes: [formula],
    });
    const report = makeReport([
      { file: formula, series: [series] },
      { file: 'b', error: new Error(formula) },
    ]);
    for (const [write, syntax] of [
      [toCsv, undefined],
      [toTsv, tabs],
    ]) {
      const rows = read(write(report), syntax);
      for (const cell of [rows[0].file, rows[0].value_x, rows[0].notes, rows[2].error])
        assert.ok(cell.startsWith("'"), `${JSON.stringify(formula)} came out as ${cell}`);
    }
  }
});

test('whatever a text is made of, it is a number, or no formula', () => {
  const text = fc.string({ unit: fc.constantFrom(...'=+-@\uff1d\t\r\n \0\u200b\ufeff"\',;1e.a') });
  fc.assert(
    fc.property(text, (file) => {
      const report = makeReport([{ file, series: [seriesOf({})] }]);
      const [{ file: cell }] = read(toCsv(report));
      const seen = cell.replace(/^[\s\0\u200b]+/, '');
      const isNumber = cell !== '' && Number.isFinite(Number(cell));
      assert.ok(isNumber || !/^[=+\-@\uff1d]/.test(seen), JSON.stringify(cell));
      assert.equal(cell.replace(/^'/, ''), file.replace(/^'/, ''));
    }),
  );
});

test('numbers, plain texts and signs inside them are left as they are', () => {
  const texts = ['-5', '+5.5', '-1e-7', 'a=b', '2020-01-01', "it's", '#1f77b4', ''];
  for (const text of texts) {
    const report = reportOf(
      seriesOf({
        values: [
          [text, -5],
          [text, -1e-7],
        ],
      }),
    );
    const rows = read(toCsv(report));
    assert.equal(rows[0].value_x, text);
    assert.equal(rows[0].value_y, '-5');
    assert.equal(rows[1].value_y, '-1e-7');
  }
});
