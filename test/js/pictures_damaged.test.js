// Picture files that are cut off, changed or something else altogether: whatever a file holds, its
// picture comes whole or the caller gets an error of the package.

import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { mkdirSync } from 'node:fs';
import { writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import process from 'node:process';
import { test } from 'node:test';
import sharp from 'sharp';
import { ChartTraceError, LimitError } from '../../lib/errors.js';
import { decodePicture } from '../../lib/pictures.js';
import { command, makeFolder } from './support/command.js';
import { encodedPictures } from './support/encoded.js';
import { randomNumbers } from './support/random.js';

/**
 * The picture, or undefined where it is refused as it should be.
 * @param {Uint8Array} content
 * @param {string} what For the message.
 */
async function decoded(content, what) {
  try {
    return await decodePicture(content);
  } catch (error) {
    assert.ok(
      error instanceof LimitError ||
        (error instanceof ChartTraceError && error.code === 'ERR_PICTURE'),
      `${what}: ${error}`,
    );
    return undefined;
  }
}

const encoded = await encodedPictures();

for (const [name, file] of encoded)
  test(`${name}, cut off anywhere, is refused or was whole already`, async (t) => {
    const seed = Date.now() % 1e9;
    t.diagnostic(`seed ${seed}`);
    const random = randomNumbers(seed);
    const { data } = await decodePicture(file);
    const ends = Array.from({ length: 20 }, (_, i) => file.length - 1 - i);
    const elsewhere = Array.from({ length: 25 }, () => Math.floor(random() * file.length));
    let refused = 0;
    for (const length of [...ends, ...elsewhere]) {
      const part = await decoded(file.subarray(0, length), `${length} bytes, seed ${seed}`);
      if (part)
        assert.deepEqual(part.data, data, `${length} of ${file.length} bytes, seed ${seed}`);
      else ++refused;
    }
    assert.ok(refused >= 20, `${refused} refused`);
  });

for (const [name, file] of encoded)
  test(`${name} with bytes changed is a picture or refused`, async (t) => {
    const seed = Date.now() % 1e9;
    t.diagnostic(`seed ${seed}`);
    const random = randomNumbers(seed);
    const { data } = await decodePicture(file);
    for (let i = 0; i < 25; ++i) {
      const changed = Buffer.from(file);
      const at = Math.floor(random() * file.length);
      changed[at] ^= 1 << Math.floor(random() * 8);
      const picture = await decoded(changed, `byte ${at}, seed ${seed}`);
      if (!picture) continue;
      assert.equal(picture.data.length, 4 * picture.width * picture.height, `seed ${seed}`);
      // The only format that has a checksum over everything.
      if (name.startsWith('png')) assert.deepEqual(picture.data, data, `byte ${at}, seed ${seed}`);
    }
  });

test('a TIFF whose pixels come last is refused where they are cut off', async () => {
  const entries = [
    [256, 4],
    [257, 4],
    [258, 8],
    [259, 1],
    [262, 1],
    [273, 8 + 2 + 9 * 12 + 4],
    [277, 1],
    [278, 4],
    [279, 16],
  ];
  const numbers = entries.map(([tag, value]) =>
    Buffer.from(Uint32Array.of(tag | (4 << 16), 1, value).buffer),
  );
  const head = Buffer.from('II*\0\x08\0\0\0\x09\0', 'latin1');
  const whole = Buffer.concat([head, ...numbers, Buffer.alloc(4), Buffer.alloc(16, 99)]);
  assert.deepEqual([...(await decodePicture(whole)).data.subarray(-4)], [99, 99, 99, 255]);
  for (let length = 0; length < whole.length; ++length)
    assert.equal(await decoded(whole.subarray(0, length), `${length} bytes`), undefined);
});

test('what is of no known kind never reaches a decoder', async () => {
  for (const content of [
    '',
    'P6 1 1 255 abc',
    '%PDF-1.4',
    '#?RADIANCE\n',
    'BM',
    'SIMPLE  =                    T',
    '\0\0\0\x0cjP  \r\n\x87\n',
    '1 1 1\n255',
  ])
    await assert.rejects(decodePicture(Buffer.from(content, 'latin1')), {
      code: 'ERR_PICTURE',
      message: /decoded: it is (empty|of no kind)/,
    });
});

test('no file, a folder, a pipe and devices are told at once', async (t) => {
  const { folder, remove } = await makeFolder();
  t.after(remove);
  mkdirSync(join(folder, 'folder'));
  const files = ['none', 'folder'];
  if (process.platform !== 'win32') {
    assert.equal(spawnSync('mkfifo', [join(folder, 'pipe')]).status, 0);
    files.push('pipe', '/dev/zero', '/dev/null');
  }
  await writeFile(join(folder, 'empty'), '');
  files.push('empty');
  const args = [...files, '--kind', 'scatter', '--json'];
  const { status, stdout } = await command(args, {
    cwd: folder,
    timeout: 120_000,
    killSignal: 'SIGKILL',
  });
  assert.equal(status, 1);
  const codes = JSON.parse(stdout).images.map(({ file, error }) => [
    file,
    error.code,
    error.message,
  ]);
  for (const [file, code, message] of codes) {
    const [wanted, words] = {
      none: ['ERR_FILE', /no such file/],
      folder: ['ERR_FILE', /is a folder/],
      empty: ['ERR_PICTURE', /it is empty/],
    }[file] ?? ['ERR_FILE', /is no file but a pipe or a device/];
    assert.equal(code, wanted, file);
    assert.match(message, words);
  }
  assert.equal(codes.length, files.length);
  for (const file of files.slice(1, -1))
    await assert.rejects(decodePicture(join(folder, file)), /ERR_FILE|EISDIR|no file but|decoded/);
});

test('what the decoder says of a picture is a single line', async () => {
  const jpeg = await sharp({ create: { width: 600, height: 400, channels: 3, background: 'red' } })
    .jpeg()
    .toBuffer();
  await assert.rejects(decodePicture(jpeg.subarray(0, 20)), {
    code: 'ERR_PICTURE',
    message: /^The picture cannot be decoded: [^\n]+\.$/,
  });
});
