// The module record, as a small program sees it that stands in for the host and has no other
// function of the host than the one that takes the record.

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { existsSync } from 'node:fs';
import { join } from 'node:path';
import process from 'node:process';
import { before, describe, test } from 'node:test';

import { addonFile, root } from './support/addon.js';

const buildFolder = join(root, 'build/addon');

const skip =
  process.platform !== 'linux'
    ? 'the program reads ELF files'
    : !existsSync(buildFolder) && 'the module was not built here';

describe('the module record', { skip }, () => {
  let captured;
  let record;
  let symbols;

  before(() => {
    const run = (...command) => execFileSync(command[0], command.slice(1), { encoding: 'utf8' });
    run('cmake', '--build', buildFolder, '--target', 'capture_record');
    captured = JSON.parse(run(join(buildFolder, 'capture_record'), addonFile));
    [record] = captured.records;
    symbols = new Map();
    for (const line of run('nm', '--defined-only', addonFile).split('\n')) {
      const [offset, , name] = line.split(' ');
      symbols.set(name, Number.parseInt(offset, 16));
    }
  });

  test('is registered once, while the file is loaded', () => {
    assert.equal(captured.records.length, 1);
  });

  test('is of version 1, without flags', () => {
    assert.equal(record.nm_version, 1);
    assert.equal(record.nm_flags, 0);
  });

  test('names the module cpp_code', () => {
    assert.equal(record.nm_modname, 'cpp_code');
  });

  test('names the source file, without the folder it was built in', () => {
    assert.equal(record.nm_filename, 't.cpp');
  });

  test('has the bridge __napi_Init as the function to call', () => {
    assert.ok(symbols.has('__napi_Init'));
    assert.equal(record.nm_register_func, symbols.get('__napi_Init'));
  });

  test('has no private data, and nothing in the reserved fields', () => {
    assert.equal(record.nm_priv, 0);
    assert.deepEqual(record.reserved, [0, 0, 0, 0]);
  });

  test('is registered by _register_cpp_code, the only static initialiser', () => {
    assert.ok(symbols.has('_register_cpp_code'));
    const ofTheToolchain = symbols.get('frame_dummy');
    assert.deepEqual(
      captured.initialisers.filter((offset) => offset !== ofTheToolchain),
      [symbols.get('_register_cpp_code')],
    );
  });

  test('is all that a host finds: no well-known symbol that newer hosts would take instead', () => {
    const exported = execFileSync('nm', ['-D', '--defined-only', addonFile], { encoding: 'utf8' });
    assert.doesNotMatch(exported, /napi_register_module|node_api_module/);
  });
});
