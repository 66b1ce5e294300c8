// The errors that callers act on: what their message says, whatever was received.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { checkNumber, ChartTraceError, LimitError, refuse } from '../../lib/errors.js';

/** The message about a value that was received. */
function messageAbout(received) {
  try {
    refuse('it', 'else', received);
  } catch (error) {
    return error.message;
  }
}

test('a refusal says what was expected and received, for people and for programs', () => {
  assert.throws(() => refuse('the colour', 'a name', 7, 'Say blue.'), {
    name: 'ChartTraceError',
    code: 'ERR_ARGUMENT',
    message: 'Expected the colour to be a name, but received 7.',
    expected: 'a name',
    received: 7,
    hint: 'Say blue.',
  });
});

test('whatever was received is shown, short', () => {
  const shown = (received) =>
    messageAbout(received).replace(/^Expected it to be else, but received (.*)\.$/s, '$1');
  assert.equal(shown('a'), "'a'");
  assert.equal(shown(null), 'null');
  assert.equal(shown(undefined), 'undefined');
  assert.equal(shown(Symbol('s')), 'Symbol(s)');
  assert.equal(shown([1, 2]), '[1,2]');
  const ofLength = (length) => 'a'.repeat(length - '[""]'.length);
  assert.equal(shown([ofLength(100)]), `["${ofLength(100)}"]`);
  assert.equal(shown([ofLength(101)]), '[object Array]');
});

test('a value that cannot be written down is named by its kind', () => {
  const circular = {};
  circular.self = circular;
  const failing = {
    toJSON() {
      throw new Error('no');
    },
  };
  for (const received of [circular, failing, [1n]]) {
    const kind = Array.isArray(received) ? 'Array' : 'Object';
    assert.match(messageAbout(received), new RegExp(`received \\[object ${kind}\\]`));
  }
});

test('a number has to be one, finite and fitting', () => {
  checkNumber('n', 0, true, 'a number');
  for (const [value, fits] of [
    ['1', true],
    [1n, true],
    [NaN, true],
    [Infinity, true],
    [1, false],
  ])
    assert.throws(() => checkNumber('n', value, fits, 'a number'), { code: 'ERR_ARGUMENT' });
});

test('the cause is there when there is one, and no property otherwise', () => {
  const details = { code: 'ERR_PICTURE', expected: 'e', received: 1, hint: 'h' };
  for (const Kind of [ChartTraceError, LimitError]) {
    assert.equal(new Kind('m', { ...details, cause: 5 }).cause, 5);
    assert.equal('cause' in new Kind('m', details), false);
  }
  const limit = new LimitError('m', details);
  assert.ok(limit instanceof RangeError);
  assert.deepEqual(
    { ...limit },
    { name: 'LimitError', code: 'ERR_LIMIT', expected: 'e', received: 1, hint: 'h' },
  );
});
