import assert from 'node:assert/strict';
import { test } from 'node:test';
import { clip, openPixels } from '../../lib/selection/masks.js';

const box = { left: 2, top: 1, right: 8, bottom: 5 };

/**
 * The open pixels as text, a row a line.
 * @param {import('../../lib/selection/masks.js').Mask[]} masks
 */
function drawn(masks) {
  const open = openPixels(masks, box);
  assert.ok(open);
  const rows = [];
  for (let at = 0; at < open.length; at += 7)
    rows.push(Array.from(open.subarray(at, at + 7), (value) => (value ? '#' : '.')).join(''));
  return rows;
}

test('a box takes the pixels whose centres it holds, and reaches no further than the picture', () => {
  const picture = { width: 10, height: 6 };
  assert.deepEqual(clip(undefined, picture), { left: 0, top: 0, right: 9, bottom: 5 });
  assert.deepEqual(clip({ left: 0.2, top: 1, right: 3.9, bottom: 99 }, picture), {
    left: 1,
    top: 1,
    right: 3,
    bottom: 5,
  });
  assert.deepEqual(clip({ left: -Infinity, top: -7, right: Infinity, bottom: 2 }, picture), {
    left: 0,
    top: 0,
    right: 9,
    bottom: 2,
  });
});

test('without masks every pixel is open', () => {
  assert.equal(openPixels(undefined, box), undefined);
  assert.equal(openPixels([], box), undefined);
});

test('rectangles are taken in or left out, edges included', () => {
  const inner = { left: 3, top: 2, right: 5, bottom: 3 };
  assert.deepEqual(drawn([{ include: inner }]), [
    '.......',
    '.###...',
    '.###...',
    '.......',
    '.......',
  ]);
  assert.deepEqual(drawn([{ exclude: inner }]), [
    '#######',
    '#...###',
    '#...###',
    '#######',
    '#######',
  ]);
});

test('a rectangle may be endless, and one that is turned round holds nothing', () => {
  const endless = { left: -Infinity, top: 3, right: Infinity, bottom: 3 };
  const want = ['.......', '.......', '#######', '.......', '.......'];
  assert.deepEqual(drawn([{ include: endless }]), want);
  const turned = { left: 5, top: 3, right: 3, bottom: 2 };
  assert.ok(drawn([{ include: turned }]).every((row) => row === '.......'));
});

test('what is left out stays out whatever else takes it in, in either order', () => {
  const masks = [
    { exclude: { left: 4, top: 0, right: 4, bottom: 9 } },
    { include: { left: 3, top: 2, right: 5, bottom: 3 } },
    { include: { left: 0, top: 5, right: 2, bottom: 9 } },
  ];
  const want = ['.......', '.#.#...', '.#.#...', '.......', '#......'];
  assert.deepEqual(drawn(masks), want);
  assert.deepEqual(drawn(masks.reverse()), want);
});

test('a polygon holds its corners and edges', () => {
  /** @type {[number, number][]} */
  const diamond = [
    [5, 1],
    [7, 3],
    [5, 5],
    [3, 3],
  ];
  assert.deepEqual(drawn([{ include: diamond }]), [
    '...#...',
    '..###..',
    '.#####.',
    '..###..',
    '...#...',
  ]);
});

test('a polygon may be concave, reach beyond the box, and turn either way', () => {
  /** @type {[number, number][]} */
  const letterU = [
    [3, -9],
    [4, -9],
    [4, 3],
    [6, 3],
    [6, -9],
    [7, -9],
    [7, 4],
    [3, 4],
  ];
  const want = ['.##.##.', '.##.##.', '.#####.', '.#####.', '.......'];
  assert.deepEqual(drawn([{ include: letterU }]), want);
  assert.deepEqual(drawn([{ include: [...letterU].reverse() }]), want);
});

test('a polygon without a height is a line, which it holds', () => {
  /** @type {[number, number][]} */
  const flat = [
    [7, 3],
    [4, 3],
    [5, 3],
  ];
  const want = ['.......', '.......', '..####.', '.......', '.......'];
  assert.deepEqual(drawn([{ include: flat }]), want);
});

test('where a polygon overlaps itself evenly it is open again', () => {
  /** @type {[number, number][]} */
  const bow = [
    [2, 1],
    [8, 5],
    [8, 1],
    [2, 5],
  ];
  assert.deepEqual(drawn([{ include: bow }]), [
    '#.....#',
    '##...##',
    '#######',
    '##...##',
    '#.....#',
  ]);
});

test('a shape that is none is an error that names it', () => {
  const inner = { left: 3, top: 2, right: 5, bottom: 3 };
  for (const [masks, name] of /** @type {[any, string][]} */ ([
    [[{ include: inner, exclude: inner }], 'masks[0] '],
    [[{ include: inner }, { only: inner }], 'masks[1] '],
    [[null], 'masks[0] '],
    [[{ include: { left: 3, top: 2, right: 5 } }], 'masks[0].include '],
    [
      [
        {
          exclude: [
            [1, 2],
            [3, 4],
          ],
        },
      ],
      'masks[0].exclude ',
    ],
    [
      [
        {
          exclude: [
            [1, 2],
            [3, 4],
            [5, NaN],
          ],
        },
      ],
      'masks[0].exclude ',
    ],
    [[{ exclude: [[1, 2], [3, 4], [5]] }], 'masks[0].exclude '],
  ]))
    assert.throws(
      () => openPixels(masks, box),
      (/** @type {any} */ error) =>
        error.code === 'ERR_ARGUMENT' && error.message.includes(name) && error.expected !== '',
      name,
    );
  // @ts-expect-error masks that are no array are what is tried
  assert.throws(() => openPixels({ include: box }, box), /Expected masks to be an array/);
  // @ts-expect-error an edge that is a word is what is tried
  assert.throws(() => clip({ ...box, top: 'high' }, { width: 9, height: 9 }), /Expected box/);
  assert.throws(() => clip({ ...box, left: NaN }, { width: 9, height: 9 }), /Expected box/);
});
