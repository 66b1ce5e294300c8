// Puts known bugs into a copy of the code, one at a time, and demands that the tests fail on each: a
// test that no bug can fail proves nothing.
//
//   node test/planted_bugs/run.mjs            all bugs: those of the core half an hour, those of the
//                                             library and the command as long
//   node test/planted_bugs/run.mjs fission    only those whose file or name contains the word
//   node test/planted_bugs/run.mjs t.cpp      those of a file
//   node test/planted_bugs/run.mjs lib/ command/ bin/    those of JavaScript
//   node test/planted_bugs/run.mjs --sample   every 150th, others each day
//   node test/planted_bugs/run.mjs --check    whether each bug still finds its place; builds nothing
//   node test/planted_bugs/run.mjs --list     how many there are of each file
//
// The copies stand in build/planted_bugs. A crash and a run that takes too long or too much memory
// count as caught. Exits with 1 when a bug survives, does not compile or no longer finds its place.

import process from 'node:process';
import { bugs as bugsOfCpp } from './bugs.mjs';
import { bugs as bugsOfJavaScript } from './bugs_js.mjs';
import { misplaced, stop } from './copy.mjs';
import * as cpp from './cpp.mjs';
import * as host from './host.mjs';
import * as javascript from './javascript.mjs';

/** @typedef {import('./copy.mjs').Bug} Bug */

/**
 * @typedef {object} Workbench
 * @property {(planted: Bug[]) => void | Promise<void>} prepare Demands that all is well without bugs.
 * @property {(bug: Bug) => Judgement | Promise<Judgement>} judge
 */

/** @typedef {{isCaught: boolean, how: string}} Judgement */

const { 't.cpp': bugsOfHost, ...bugsOfCore } = bugsOfCpp;
/** @type {{workbench: Workbench, bugs: typeof bugsOfCpp}[]} */
const LANGUAGES = [
  { workbench: cpp, bugs: bugsOfCore },
  { workbench: host, bugs: { 't.cpp': bugsOfHost } },
  { workbench: javascript, bugs: bugsOfJavaScript },
];

// A sample has one bug of so many.
const SAMPLE = 150;

const options = process.argv.slice(2).filter((word) => word.startsWith('--'));
const words = process.argv.slice(2).filter((word) => !word.startsWith('--'));
const unknown = options.find((option) => !['--sample', '--check', '--list'].includes(option));
if (unknown) stop(`There is no option ${unknown}; the head of run.mjs names those there are.`);

/** @param {string} word */
const isFile = (word) => word in bugsOfCpp || word in bugsOfJavaScript;

/**
 * The bugs that the command line asks for and that this machine can be tried on.
 * @param {typeof bugsOfCpp} bugs
 * @returns {Bug[]}
 */
const chosenOf = (bugs) =>
  Object.entries(bugs)
    .flatMap(([file, ofFile]) => ofFile.map((bug) => ({ file, ...bug })))
    .filter(({ arch = process.arch }) => arch === process.arch)
    .filter(
      ({ file, name }) =>
        words.length === 0 ||
        words.some((word) =>
          isFile(word) ? file === word : file.includes(word) || name.includes(word),
        ),
    );

const chosen = LANGUAGES.map((language) => ({ ...language, chosen: chosenOf(language.bugs) }));
const all = chosen.flatMap((language) => language.chosen);
if (all.length === 0) stop(`No bug has a name or a file with ${words.join(' or ')}.`);

const misplacements = all.flatMap((bug) => {
  const wrong = misplaced(bug);
  return wrong ? [`  ${bug.file}: ${bug.name}: ${wrong}`] : [];
});
if (misplacements.length > 0) stop(`Bugs that lost their place:\n${misplacements.join('\n')}`);
if (options.includes('--list')) {
  for (const file of new Set(all.map((bug) => bug.file)))
    console.log(`${String(all.filter((bug) => bug.file === file).length).padStart(4)}  ${file}`);
}
if (options.includes('--check') || options.includes('--list')) {
  console.log(`All ${all.length} planted bugs find their place.`);
  process.exit(0);
}

const start = performance.now();
const day = Math.floor(Date.now() / 86_400_000);
const survivors = [];
let count = 0;
for (const { workbench, chosen: ofLanguage } of chosen) {
  const planted = options.includes('--sample')
    ? ofLanguage.filter((_, k) => k % SAMPLE === day % SAMPLE)
    : ofLanguage;
  if (planted.length === 0) continue;
  await workbench.prepare(planted);
  for (const bug of planted) {
    const { isCaught, how } = await workbench.judge(bug);
    if (!isCaught) survivors.push(bug);
    console.log(`${isCaught ? 'caught' : 'MISSED'}  ${bug.file}: ${bug.name}\n        ${how}`);
  }
  count += planted.length;
}
const seconds = ((performance.now() - start) / 1000).toFixed(0);
console.log(`${count - survivors.length} of ${count} caught in ${seconds} s`);
if (survivors.length > 0) {
  const list = survivors.map(({ file, name }) => `  ${file}: ${name}`);
  stop(`Not caught:\n${list.join('\n')}`);
}
