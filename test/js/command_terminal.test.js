// What people see: colours, lines that fit, the progress of a run.

import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { makeMessages, wordsOf } from '../../command/messages.js';
import { line, makeProgress } from '../../command/progress.js';
import { canRewrite, columnsOf, hasColours, wrap } from '../../command/terminal.js';
import { didYouMean } from '../../command/usage.js';

/** A stream that remembers. */
function makeStream(more = {}) {
  const stream = { text: '', isTTY: true, columns: 80, ...more };
  return Object.assign(stream, { write: (text) => void (stream.text += text) });
}

test('colours are for terminals, unless NO_COLOR or a dumb terminal says otherwise', () => {
  assert.equal(hasColours({ isTTY: true }, {}), true);
  assert.equal(hasColours({ isTTY: true }, { NO_COLOR: '' }), true);
  assert.equal(hasColours({ isTTY: true }, { NO_COLOR: '1' }), false);
  assert.equal(hasColours({ isTTY: true }, { TERM: 'dumb' }), false);
  assert.equal(hasColours({ isTTY: false }, {}), false);
  assert.equal(hasColours({}, {}), false);
});

test('a line is written over on a terminal that can do it, and nowhere else', () => {
  assert.equal(canRewrite({ isTTY: true }, {}), true);
  assert.equal(canRewrite({ isTTY: true }, { TERM: 'dumb' }), false);
  assert.equal(canRewrite({}, {}), false);
});

test('a terminal that does not say how wide it is, or is hardly there, has 80 columns', () => {
  assert.equal(columnsOf({}), 80);
  assert.equal(columnsOf({ columns: 0 }), 80);
  assert.equal(columnsOf({ columns: 20 }), 80);
  assert.equal(columnsOf({ columns: 21 }), 21);
});

test('text is broken between words; a word that is too long stands alone', () => {
  assert.equal(wrap('one two three', 7), 'one two\nthree');
  assert.equal(wrap('one two three', 9, '  '), '  one two\n  three');
  assert.equal(wrap('one two three', 8, '  '), '  one\n  two\n  three');
  assert.equal(wrap('a wordthatistoolong b', 5), 'a\nwordthatistoolong\nb');
  assert.equal(wrap('', 5), '');
});

describe('messages', () => {
  test('name the image, tell the reason and what to do, on lines that fit', () => {
    const stream = makeStream({ isTTY: false });
    const words = wordsOf(
      Object.assign(new Error('long '.repeat(30).trim()), { code: 'ERR_X', hint: 'Do this.' }),
    );
    makeMessages({}, stream).error(words, 'a.png');
    const lines = stream.text.trimEnd().split('\n');
    assert.match(lines[0], /^chart-trace: a\.png: long long/);
    assert.equal(lines.at(-1), '  Do this.');
    assert.ok(lines.length > 2);
    for (const one of lines) assert.ok(one.length <= 80, one);
    for (const one of lines.slice(1)) assert.match(one, /^ {2}\S/);
  });

  test('are coloured on a terminal', () => {
    const stream = makeStream();
    makeMessages({}, stream).error(wordsOf(new Error('no')), 'a.png');
    assert.equal(
      stream.text,
      process.env.NO_COLOR || process.env.TERM === 'dumb'
        ? 'chart-trace: a.png: no\n'
        : '\x1b[1m\x1b[31mchart-trace: a.png:\x1b[39m\x1b[22m no\n',
    );
  });

  test('never let control characters through', () => {
    const stream = makeStream({ isTTY: false });
    const messages = makeMessages({}, stream);
    messages.error(wordsOf(new Error('\x1b[2J')), '\x07.png');
    messages.note('\x9b31m', 'b\r.png');
    // eslint-disable-next-line no-control-regex
    assert.doesNotMatch(stream.text, /[\x00-\x09\x0b-\x1f\x7f-\x9f]/);
  });

  test('say what went wrong with a file in words', () => {
    for (const [code, message] of [
      ['ENOENT', /no such file/],
      ['EACCES', /not allowed/],
      ['EISDIR', /folder/],
      ['ENOSPC', /no space/],
    ]) {
      const words = wordsOf(Object.assign(new Error('raw'), { code }));
      assert.equal(words.code, 'ERR_FILE');
      assert.match(words.message, message);
    }
  });
});

describe('the progress', () => {
  test('is a line as wide as the terminal at most', () => {
    for (const columns of [10, 21, 40, 80, 200])
      for (const [done, total] of [
        [0, 2],
        [3, 10],
        [99_999, 100_000],
      ])
        assert.ok(line(done, total, 1e7, columns).length < columns, `${columns}`);
    assert.equal(
      line(5, 10, 4000, 80),
      ` ${'█'.repeat(15)}${'░'.repeat(15)}  5 of 10 images, 4 s left`,
    );
    assert.equal(line(0, 10, 0, 80), ` ${'░'.repeat(30)}  0 of 10 images`);
    assert.doesNotMatch(line(1, 10, 20_000, 80), /left/, 'the first image takes longer');
    assert.match(line(2, 102, 20_000, 80), /17 min left$/);
    assert.match(line(2, 1002, 20_000, 80), /2 h 47 min left$/);
  });

  test('is shown now and then, and is gone in the end', () => {
    let time = 0;
    const stream = makeStream();
    const progress = makeProgress(1000, {}, stream, () => time);
    for (let i = 0; i < 1000; ++i) {
      time += 1;
      progress.step();
    }
    assert.equal(stream.text.match(/of 1000/g).length, 1 + 9);
    assert.ok(stream.text.endsWith('\r\x1b[K'));
    const before = stream.text;
    progress.clear();
    assert.equal(stream.text, before, 'what is not shown is not cleared');
  });

  for (const [why, total, options, more] of [
    ['in a pipe', 9, {}, { isTTY: false }],
    ['with --quiet', 9, { quiet: true }, {}],
    ['with --json', 9, { json: true }, {}],
    ['for a single image', 1, {}, {}],
  ])
    test(`is not shown ${why}`, () => {
      const stream = makeStream(more);
      const progress = makeProgress(total, options, stream);
      progress.step();
      progress.clear();
      assert.equal(stream.text, '');
    });
});

test('what was probably meant is the word that begins so, or the nearest', () => {
  const words = ['linear', 'log', 'log2', 'ln', 'date', 'category'];
  assert.equal(didYouMean('lin', words), 'Did you mean linear?');
  assert.equal(didYouMean('dtae', words), 'Did you mean date?');
  assert.equal(didYouMean('loge', words), 'Did you mean log?');
  assert.equal(didYouMean('catgory', words), 'Did you mean category?');
  assert.equal(didYouMean('quadratic', words), undefined);
  assert.equal(didYouMean('x', words), undefined);
});
