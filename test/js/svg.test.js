// SVGs from anybody: nothing that they refer to is read or asked for, and none keeps the program busy
// or fills its memory.

import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { once } from 'node:events';
import { writeFileSync } from 'node:fs';
import { connect, createServer } from 'node:net';
import { join } from 'node:path';
import process from 'node:process';
import { after, before, describe, test } from 'node:test';
import { pathToFileURL } from 'node:url';
import { gzipSync } from 'node:zlib';
import { decodeContent, decodePicture, encodePng } from '../../lib/pictures.js';
import { drawSvg } from '../../lib/svg.js';
import { node } from './support/addon.js';
import { command, makeFolder, png, RED } from './support/command.js';
import { pngOf } from './support/png_chunks.js';

const SPACES =
  'xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" ' +
  'xmlns:xi="http://www.w3.org/2001/XInclude"';

/**
 * @param {string} content
 * @param {string} [head] What stands before it in the file.
 */
const svg = (content, head = '') => `${head}<svg ${SPACES} width="20" height="20">${content}</svg>`;

const dataUrl = (/** @type {string} */ text) =>
  `data:image/svg+xml;base64,${Buffer.from(text).toString('base64')}`;

/** @param {Uint8Array} data */
const hasRed = (data) => data.some((part, i) => i % 4 === 0 && part > 128 && data[i + 1] < 128);

/** Takes minutes to draw. */
const slow = svg(
  `<filter id="f"><feTurbulence baseFrequency="0.1" numOctaves="20"/>${'<feMorphology radius="100"/>'.repeat(
    99,
  )}</filter><rect width="1000" height="1000" filter="url(#f)"/>`,
).replaceAll('"20"', '"1000"');

const OPTIONS = { page: '#ffffff', maxPixels: 100e6 };

/**
 * A picture, or none where the SVG is refused as such.
 * @param {Promise<{data: Uint8Array}>} picture
 */
const drawn = (picture) =>
  picture.catch((error) => {
    assert.equal(error.code, 'ERR_PICTURE', error);
    return { data: new Uint8Array() };
  });

describe('what an SVG refers to', () => {
  let folder, remove, server, port;
  let connections = 0;

  before(async () => {
    ({ folder, remove } = await makeFolder());
    const drawing = '<rect id="r" width="20" height="20" fill="#f00"/>';
    writeFileSync(join(folder, 'secret.png'), await png({}, [0, 0, 59, 39, RED]));
    writeFileSync(join(folder, 'secret.svg'), svg(drawing));
    writeFileSync(join(folder, 'secret.xml'), drawing.replace('<rect', `<rect ${SPACES}`));
    writeFileSync(join(folder, 'secret.css'), 'rect, text { fill: #f00 }');
    writeFileSync(join(folder, 'secret.dtd'), `<!ENTITY x '${drawing}'>`);
    server = createServer((socket) => {
      ++connections;
      socket.destroy();
    });
    await new Promise((listening) => server.listen(0, '127.0.0.1', listening));
    ({ port } = server.address());
  });
  after(async () => {
    server.close();
    await remove();
  });

  /** Every way to name a file. */
  const namesOf = (/** @type {string} */ name) => [
    name,
    `./${name}`,
    join(folder, name),
    pathToFileURL(join(folder, name)).href,
    `FILE://localhost${join(folder, name)}`,
    `http://127.0.0.1:${port}/${name}`,
    `//127.0.0.1:${port}/${name}`,
  ];

  /** @type {Record<string, [name: string, (url: string) => string]>} */
  const WAYS = {
    'an image': ['secret.png', (url) => svg(`<image xlink:href="${url}" width="20" height="20"/>`)],
    'an image by its newer name': [
      'secret.png',
      (url) => svg(`<image href="${url}" width="20" height="20"/>`),
    ],
    'an SVG as an image': [
      'secret.svg',
      (url) => svg(`<image href="${url}" width="20" height="20"/>`),
    ],
    'an image inside an image': [
      'secret.png',
      (url) => {
        const inner = svg(`<image href="${url}" width="20" height="20"/>`);
        return svg(`<image href="${dataUrl(inner)}" width="20" height="20"/>`);
      },
    ],
    'a part of another SVG': ['secret.svg', (url) => svg(`<use xlink:href="${url}#r"/>`)],
    'an image of a filter': [
      'secret.svg',
      (url) =>
        svg(
          `<filter id="f"><feImage xlink:href="${url}"/></filter>` +
            '<rect width="20" height="20" filter="url(#f)" fill="#fff"/>',
        ),
    ],
    'an image of HTML': [
      'secret.png',
      (url) =>
        svg(
          '<foreignObject width="20" height="20">' +
            `<img xmlns="http://www.w3.org/1999/xhtml" src="${url}"/></foreignObject>`,
        ),
    ],
    'a style sheet': [
      'secret.css',
      (url) =>
        svg(
          '<rect width="20" height="20" fill="#fff"/>',
          `<?xml-stylesheet type="text/css" href="${url}"?>`,
        ),
    ],
    'an imported style sheet': [
      'secret.css',
      (url) =>
        svg(`<style>@import url("${url}");</style><rect width="20" height="20" fill="#fff"/>`),
    ],
    'a font': [
      'secret.css',
      (url) =>
        svg(
          `<style>@font-face { font-family: x; src: url("${url}") } text { font-family: x }</style>` +
            '<text y="15">A</text>',
        ),
    ],
    'an included element': ['secret.xml', (url) => svg(`<xi:include href="${url}"/>`)],
    'included text': [
      'secret.xml',
      (url) => svg(`<text y="15" fill="#f00"><xi:include href="${url}" parse="text"/></text>`),
    ],
    'an entity': [
      'secret.xml',
      (url) => svg('&x;', `<!DOCTYPE svg [<!ENTITY x SYSTEM "${url}">]>`),
    ],
    'an entity as text': [
      'secret.xml',
      (url) =>
        svg('<text y="15" fill="#f00">&x;</text>', `<!DOCTYPE svg [<!ENTITY x SYSTEM "${url}">]>`),
    ],
    'entities of another file': [
      'secret.dtd',
      (url) => svg('&x;', `<!DOCTYPE svg [<!ENTITY % y SYSTEM "${url}"> %y;]>`),
    ],
    'a document type': ['secret.dtd', (url) => svg('&x;', `<!DOCTYPE svg SYSTEM "${url}">`)],
  };

  for (const [way, [name, write]] of Object.entries(WAYS))
    test(`${way} is not read, and no connection is made`, async () => {
      for (const drawing of namesOf(name).map(write)) {
        const { data } = await drawn(decodeContent(Buffer.from(drawing), OPTIONS));
        assert.ok(!hasRed(data), drawing);
      }
      assert.equal(connections, 0);
    });

  test('a file does not stand beside what it refers to', async () => {
    for (const way of ['a part of another SVG', 'a style sheet']) {
      const [name, write] = WAYS[way];
      const file = join(folder, `${way}.svg`);
      writeFileSync(file, write(name));
      assert.ok(!hasRed((await drawn(decodePicture(file))).data), write(name));
    }
  });

  test('what it holds itself is drawn: the test would see red', async () => {
    const inner = svg('<rect width="20" height="20" fill="#f00"/>');
    for (const drawing of [
      inner,
      svg(`<image href="${dataUrl(inner)}" width="20" height="20"/>`),
      svg('&x;', '<!DOCTYPE svg [<!ENTITY x \'<rect width="20" height="20" fill="red"/>\'>]>'),
    ])
      assert.ok(hasRed((await decodeContent(Buffer.from(drawing), OPTIONS)).data), drawing);
    // And the server counts.
    const earlier = connections;
    await once(connect(port, '127.0.0.1').resume(), 'close');
    assert.equal(connections, earlier + 1);
    connections = earlier;
  });

  test('a pipe is not waited for', { skip: process.platform === 'win32' }, async () => {
    assert.equal(spawnSync('mkfifo', [join(folder, 'pipe')]).status, 0);
    const file = join(folder, 'waits.svg');
    writeFileSync(file, svg('<image href="pipe" width="20" height="20"/>'));
    assert.equal((await decodePicture(file)).width, 20);
  });
});

describe('what an SVG costs', () => {
  const entities = (/** @type {number} */ depth) =>
    Array.from({ length: depth }, (_, i) => `<!ENTITY a${i + 1} "${`&a${i};`.repeat(10)}">`).join(
      '',
    );

  /** @type {Record<string, string>} */
  const REFUSED = {
    'entities of entities': svg(
      '<text>&a12;</text>',
      `<!DOCTYPE svg [<!ENTITY a0 "aaaaaaaaaa">${entities(12)}]>`,
    ),
    'a long entity, often': svg(
      `<text>${'&a;'.repeat(20_000)}</text>`,
      `<!DOCTYPE svg [<!ENTITY a "${'a'.repeat(100_000)}">]>`,
    ),
    'elements in elements': svg(['<g>', '</g>'].map((tag) => tag.repeat(100_000)).join('')),
    'a size that is none': svg('').replace('"20"', '"-20"'),
  };
  for (const [what, drawing] of Object.entries(REFUSED))
    test(`${what}: refused`, () =>
      assert.rejects(decodeContent(Buffer.from(drawing), OPTIONS), { code: 'ERR_PICTURE' }));

  test('too many pixels are refused before they are drawn', async () => {
    for (const sized of [
      svg('').replaceAll('"20"', '"20000"'),
      svg('').replace('width="20" height="20"', 'viewBox="0 0 100000 100000"'),
    ])
      await assert.rejects(decodePicture(Buffer.from(sized)), { code: 'ERR_LIMIT' });
  });

  test('a width that the renderer cannot hold is an error, not another width', async () => {
    const wide = svg('').replace('width="20"', 'width="1000000000"');
    await assert.rejects(decodePicture(Buffer.from(wide)), { code: 'ERR_PICTURE' });
  });

  test('a picture inside that claims too much is left out', async () => {
    const claim = pngOf({ width: 100_000, height: 100_000, rows: Buffer.alloc(9) });
    const href = `data:image/png;base64,${claim.toString('base64')}`;
    const { data } = await decodePicture(
      Buffer.from(svg(`<image href="${href}" width="20" height="20"/>`)),
    );
    assert.ok(data.every((part) => part === 255));
  });

  test('one that takes too long is given up', async () => {
    await assert.rejects(drawSvg(Buffer.from(slow), OPTIONS, { seconds: 1, bytes: 2 ** 30 }), {
      name: 'LimitError',
      code: 'ERR_LIMIT',
      message: /too long/,
      expected: 'at most 1 seconds',
    });
  });

  test('one that takes too much memory is given up', async () => {
    const packed = gzipSync(svg(' '.repeat(2 ** 27)), { level: 1 });
    await assert.rejects(drawSvg(packed, OPTIONS, { seconds: 60, bytes: 2 ** 27 }), {
      code: 'ERR_LIMIT',
      message: /too much memory/,
    });
  });

  test('a process that dies leaves an error', async () => {
    const { NODE_OPTIONS } = process.env;
    try {
      for (const fatal of [
        '--no-such-option',
        // Between the answer and the pixels.
        '--import=data:text/javascript,process.stdout.end=()=>process.exit()',
      ]) {
        process.env.NODE_OPTIONS = fatal;
        await assert.rejects(drawSvg(Buffer.from(svg('')), OPTIONS), {
          code: 'ERR_PICTURE',
          message: /process that draws SVGs has died/,
        });
      }
    } finally {
      if (NODE_OPTIONS === undefined) delete process.env.NODE_OPTIONS;
      else process.env.NODE_OPTIONS = NODE_OPTIONS;
    }
  });
});

describe('the process that draws', { skip: process.platform === 'win32' }, () => {
  /**
   * Runs a script in a process group of its own, until it and all that hold its output have ended.
   * @param {string} source Sees `drawSvg`, which shows the process as soon as it is there.
   * @param {string} drawing
   */
  const run = (source, drawing) => {
    const head = `
      import cp from 'node:child_process';
      import { syncBuiltinESMExports } from 'node:module';
      import process from 'node:process';
      const { spawn } = cp;
      const drawSvg = async (whenBegun, limits) => {
        cp.spawn = (program, args, options) => {
          const child = spawn(program, args, { ...options, stdio: ['pipe', 'pipe', 2, 'pipe'] });
          whenBegun(child);
          return child;
        };
        syncBuiltinESMExports();
        const { drawSvg } = await import(${JSON.stringify(new URL('../../lib/svg.js', import.meta.url))});
        return drawSvg(Buffer.from(process.argv[1]), ${JSON.stringify(OPTIONS)}, limits);
      };`;
    return node(['--input-type=module', '--eval', `${head}${source}`, drawing], { detached: true });
  };

  test('goes on when a signal comes to the whole group, as Ctrl-C sends it', async () => {
    const source = `
      let isHeard = false;
      process.once('SIGINT', () => (isHeard = true));
      const { width } = await drawSvg(() => process.kill(0, 'SIGINT'));
      console.log(width, isHeard);`;
    const { stdout, stderr } = await run(source, svg(''));
    assert.equal(stdout, '20 true\n', stderr);
  });

  test('ends with the process that wants the picture', async () => {
    const source = `
      await drawSvg((child) =>
        child.stdin.on('finish', () => process.kill(process.pid, 'SIGKILL')));`;
    const began = performance.now();
    const { signal } = await run(source, slow);
    assert.equal(signal, 'SIGKILL');
    // By itself it ends after 20 seconds.
    assert.ok(performance.now() - began < 15_000);
  });

  test('ends at its limit when nobody listens any more', async () => {
    const source = `
      const whenBegun = (child) => {
        child.stdin.on('finish', () => child.stdio[3].destroy());
        const timer = setTimeout(() => child.kill('SIGTERM'), 15_000);
        child.on('exit', (code, signal) => {
          clearTimeout(timer);
          console.log(signal);
        });
      };
      await drawSvg(whenBegun, { seconds: 1, bytes: 2 ** 30 }).catch(({ code }) => console.log(code));`;
    const { stdout } = await run(source, slow);
    assert.equal(stdout, 'ERR_STREAM_PREMATURE_CLOSE\nSIGKILL\n');
  });
});

test('the command draws an SVG beside other pictures', async (t) => {
  const { folder, remove } = await makeFolder();
  t.after(remove);
  writeFileSync(
    join(folder, 'a.svg'),
    svg('<rect x="5" y="5" width="10" height="10" fill="#f00"/>', '\ufeff\n'),
  );
  writeFileSync(join(folder, 'b.png'), await png({}, [5, 5, 14, 14, RED]));
  const args = ['a.svg', 'b.png', '--kind', 'scatter', '--json'];
  const { stdout, stderr } = await command(args, { cwd: folder });
  for (const { series } of JSON.parse(stdout).images)
    assert.deepEqual(series[0].pixels, [[9.5, 9.5]], stderr);
});

test('an SVG is drawn by a process of its own, other pictures are not', async () => {
  const processes = () =>
    process.getActiveResourcesInfo().filter((resource) => resource === 'ProcessWrap');
  /** Whether there was another process before the picture was there. */
  const hasProcess = async (picture) => {
    while (processes().length > 0) await new Promise(setImmediate);
    let isThere = false;
    let wasSeen = false;
    const decoded = decodePicture(picture).then(() => (isThere = true));
    while (!isThere) {
      wasSeen ||= processes().length > 0;
      await new Promise(setImmediate);
    }
    await decoded;
    return wasSeen;
  };
  assert.equal(await hasProcess(Buffer.from(svg(''))), true);
  const pixels = await encodePng({ width: 4, height: 3, data: new Uint8Array(48) });
  assert.equal(await hasProcess(pixels), false);
});
