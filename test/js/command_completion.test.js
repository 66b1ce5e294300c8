// The completions of the shells and the manual page, all made from the description of the options.

import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { after, describe, test } from 'node:test';
import { completionScript } from '../../command/completion.js';
import { manual } from '../../command/manual.js';
import { makeProgram } from '../../command/program.js';
import { root } from './support/addon.js';
import { command, makeFolder } from './support/command.js';

const nothing = async () => {};
const description = makeProgram({ trace: nothing, colors: nothing, completion: nothing });

const { folder, remove } = await makeFolder();
after(remove);

/** @param {string} shell Or another program. */
const hasShell = (shell) => spawnSync(shell, ['--version']).status === 0;

for (const shell of ['bash', 'zsh', 'fish'])
  describe(
    `the completion of ${shell}`,
    { skip: !hasShell(shell) && `there is no ${shell}` },
    () => {
      test('is a script that the shell takes, with every option', async () => {
        const { status, stdout } = await command(['completion', shell]);
        assert.equal(status, 0);
        const file = join(folder, `script.${shell}`);
        writeFileSync(file, stdout);
        const { status: checked, stderr } = spawnSync(shell, ['-n', file], { encoding: 'utf8' });
        assert.equal(checked, 0, stderr);
        const words = new Set(stdout.split(/[^-\w]+/));
        for (const { long, short } of description.options) {
          if (shell === 'fish') assert.ok(stdout.includes(` -l ${long.slice(2)} `), long);
          else assert.ok(words.has(long), long);
          if (short && shell === 'fish') assert.ok(stdout.includes(` -s ${short[1]} `), short);
          else if (short) assert.ok(words.has(short), short);
        }
      });

      test('is a script that the shell takes whatever a help text says', () => {
        const program = makeProgram({ trace: nothing, colors: nothing, completion: nothing });
        program.option('--odd <A>', "it's [one]: two\\");
        const script = completionScript(program, shell);
        const file = join(folder, `odd.${shell}`);
        writeFileSync(file, script);
        const { status, stderr } = spawnSync(shell, ['-n', file], { encoding: 'utf8' });
        assert.equal(status, 0, stderr);
        if (shell === 'zsh')
          assert.ok(script.includes("'*--odd[it'\\''s \\[one\\]\\: two\\\\]:odd: '"));
      });
    },
  );

/** @type {[line: string, words: string[]][]} */
const COMPLETED = [
  ['chart-trace co', ['colors', 'completion']],
  ['chart-trace x.png --ki', ['--kind']],
  ['chart-trace x.png --kind s', ['scatter', 'steps']],
  ['chart-trace x.png --x-scale l', ['linear', 'ln', 'log', 'log2']],
  ['chart-trace x.png --resu', ['--resume']],
  ['chart-trace completion f', ['fish']],
  ['chart-trace colors x.png --fo', ['--format']],
  ['chart-trace colors x.png --format j', ['json']],
  ['chart-trace x.png --json packa', ['package-lock.json', 'package.json']],
  ['chart-trace x.png -o packa', ['package-lock.json', 'package.json']],
];

/** What bash offers at the end of a line. */
function completedByBash(script, line) {
  const words = line.split(' ').map((word) => `'${word}'`);
  const program = `${script}
    compopt() { :; }
    COMP_WORDS=(${words.join(' ')}); COMP_CWORD=${words.length - 1}; _chart_trace
    printf '%s\\n' "\${COMPREPLY[@]}"`;
  return spawnSync('bash', ['-c', program], { cwd: root, encoding: 'utf8' }).stdout;
}

/** What fish offers at the end of a line. */
function completedByFish(script, line) {
  const program = `${script}\ncomplete -C '${line}'`;
  const { stdout } = spawnSync('fish', ['-c', program], { cwd: root, encoding: 'utf8' });
  return stdout.replace(/\t.*/g, '');
}

for (const [shell, complete] of [
  ['bash', completedByBash],
  ['fish', completedByFish],
])
  test(`${shell} completes commands, options and words`, { skip: !hasShell(shell) }, async () => {
    const { stdout: script } = await command(['completion', shell]);
    for (const [line, words] of COMPLETED) {
      // Where an image may stand, the files of the folder are offered too.
      const isFile = (word) => /^(command\/?|CONTRIBUTING\.md)$/.test(word);
      const offered = complete(script, line)
        .split('\n')
        .filter((word) => word && !isFile(word));
      assert.deepEqual([...new Set(offered)].sort(), words, line);
    }
  });

describe('the manual', () => {
  const page = readFileSync(join(root, 'man', 'chart-trace.1'), 'utf8');

  test('is the one that `npm run man` writes', () => {
    assert.equal(page, manual(description));
  });

  test('has every option of every command', () => {
    for (const part of [description, ...description.commands])
      for (const { long } of part.options)
        assert.ok(page.includes(long.replaceAll('-', '\\-')), long);
  });

  test('is set without a warning', { skip: !hasShell('groff') && 'there is no groff' }, () => {
    const { status, stderr } = spawnSync('groff', ['-man', '-ww', '-z'], {
      input: page,
      encoding: 'utf8',
    });
    assert.equal(status, 0);
    assert.equal(stderr, '');
  });
});
