import assert from 'node:assert/strict';
import { test } from 'node:test';
import { formatDate, formatZone, parseDate, parseZone } from '../../lib/axes/dates.js';

const time = (/** @type {string} */ text) => parseDate(text)?.time;

test('a date is read to its first moment', () => {
  for (const [text, whole] of [
    ['1970', '1970-01-01T00:00:00Z'],
    ['1999-12', '1999-12-01T00:00:00Z'],
    ['2024-02-29', '2024-02-29T00:00:00Z'],
    ['2024-02-29T23:59', '2024-02-29T23:59:00Z'],
    ['2024-02-29 23:59:58', '2024-02-29T23:59:58Z'],
    ['2024-02-29T23:59:58.125Z', '2024-02-29T23:59:58.125Z'],
    ['2024-02-29T23:59:58,125', '2024-02-29T23:59:58.125Z'],
    ['2024-02-29T24:00', '2024-03-01T00:00:00Z'],
    ['2024-03-01T00:30+01:00', '2024-02-29T23:30:00Z'],
    ['2024-03-01T00:30-0230', '2024-03-01T03:00:00Z'],
    ['0099-01-01', '+000099-01-01T00:00:00Z'],
    ['-000753-04-21', '-000753-04-21T00:00:00Z'],
  ])
    assert.equal(time(text), Date.parse(whole), text);
});

test('a fraction of a millisecond is kept', () => {
  assert.equal(time('1970-01-01T00:00:00.0015Z'), 1.5);
  assert.equal(time('1970-01-01T00:00:00.001Z'), 1);
});

test('what is no date of the calendar is no date', () => {
  for (const text of [
    '2023-02-29',
    '1900-02-29',
    '2024-04-31',
    '2024-13',
    '2024-00',
    '2024-01-00',
    '2024-1-1',
    '2024-01-01T25:00',
    '2024-01-01T24:01',
    '2024-01-01T24:00:01',
    '2024-01-01T24:00:00.5',
    '2024-01-01T12:60',
    '2024-01-01T12:00:60',
    '2024-01-01T12',
    '2024-01-01T12:00+24:00',
    '2024-01-01T12:00+02:60',
    '99',
    '20240101',
    '01/02/2024',
    'May 2024',
    '',
    '+300000-01-01',
  ])
    assert.equal(parseDate(text), undefined, text);
});

test('the zone of a text goes before the one given', () => {
  assert.deepEqual(parseDate('1970-01-01T02:00', 120), { time: 0, zone: null });
  assert.deepEqual(parseDate('1970-01-01T02:00+02:00', -600), { time: 0, zone: 120 });
});

test('zones are read and written', () => {
  const zones = { Z: 0, UTC: 0, '+02:00': 120, '-05:30': -330, '+14': 840, '-0000': 0 };
  for (const [text, minutes] of Object.entries(zones)) assert.equal(parseZone(text), minutes, text);
  assert.equal(parseZone('CET'), undefined);
  assert.deepEqual([0, 120, -330].map(formatZone), ['Z', '+02:00', '-05:30']);
});

test('dates are written with as many digits as asked for, rounded', () => {
  assert.equal(formatDate(0), '1970-01-01T00:00:00.000Z');
  assert.equal(formatDate(-0.4), '1970-01-01T00:00:00.000Z');
  assert.equal(formatDate(-0.6), '1969-12-31T23:59:59.999Z');
  assert.equal(formatDate(1.5, { digits: 6 }), '1970-01-01T00:00:00.001500Z');
  assert.equal(formatDate(0.9999, { digits: 6 }), '1970-01-01T00:00:00.001000Z');
  assert.equal(formatDate(0, { zone: -330 }), '1969-12-31T18:30:00.000-05:30');
  assert.equal(formatDate(9e15), null);
  assert.equal(formatDate(NaN), null);
});

test('what is written is read again as the same moment', () => {
  for (let i = 0; i < 2000; ++i) {
    const moment = Math.round((i * 7919 * 86_399_999) % 8e15) - 4e15;
    const zone = ((i * 37) % 1600) - 800;
    const text = formatDate(moment, { zone });
    assert.deepEqual(parseDate(String(text)), { time: moment, zone }, String(text));
  }
});
