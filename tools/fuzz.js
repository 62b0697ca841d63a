'use strict';

// `npm run fuzz`: runs every target of fuzz/: those in C++ under libFuzzer and the
// sanitizers, from the corpora in fuzz/corpus, and the properties in test/properties. What
// libFuzzer finds is left in build/fuzz/found.
//
//   npm run fuzz -- --seconds 600          for each target or property; 60 by default
//   npm run fuzz -- beautify readers       some targets
//   npm run fuzz -- --keep                 add inputs that reach more to fuzz/corpus
//   npm run fuzz -- --renew                replace the corpora, when inputs mean something else

const fs = require('node:fs');
const path = require('node:path');
const { parseArgs } = require('node:util');
const { build } = require('./build.js');
const { fromLines, toLines } = require('./support/corpus.js');
const { ROOT, failure, heading, main, run } = require('./support/run.js');

const CORPUS = path.join(ROOT, 'fuzz', 'corpus');
const BUILD = path.join(ROOT, 'build', 'fuzz');
const FOUND = path.join(BUILD, 'found');
const MAX_BYTES = 400;
/** Inputs of a target that are kept. */
const MAX_KEPT = 60;

const corpusFile = (target) => path.join(CORPUS, `${target}.txt`);
const program = (target) => path.join(BUILD, 'fuzz', `fuzz_${target}`);
const TARGETS = fs.readdirSync(CORPUS).map((name) => path.basename(name, '.txt'));
/** Files of test/properties with properties of any values. */
const PROPERTIES = ['lines', 'package', 'readers'];

function emptyFolder(...names) {
  const folder = path.join(BUILD, ...names);
  fs.rmSync(folder, { recursive: true, force: true });
  fs.mkdirSync(folder, { recursive: true });
  return folder;
}

const filesOf = (folder) => fs.readdirSync(folder).map((name) => path.join(folder, name));

/** Writes a corpus as files, as libFuzzer reads it, which adds to them. */
function unpack(target) {
  const folder = emptyFolder('corpus', target);
  const { inputs } = fromLines(fs.readFileSync(corpusFile(target), 'utf8'));
  inputs.forEach((input, k) => fs.writeFileSync(path.join(folder, `kept-${k}`), input));
  return folder;
}

/**
 * Adds small inputs that reach more than the corpus, as far as there is room. `renew` replaces
 * all but those with comments.
 */
async function keep(target, folder, renew) {
  const file = corpusFile(target);
  const { inputs, noted } = fromLines(fs.readFileSync(file, 'utf8'));
  const known = renew ? [] : inputs;
  const merged = emptyFolder('merged', target);
  known.forEach((input, k) => fs.writeFileSync(path.join(merged, `kept-${k}`), input));
  await run(program(target), ['-merge=1', `-max_len=${MAX_BYTES}`, '-verbosity=0', merged, folder]);
  const isNew = (name) => !path.basename(name).startsWith('kept-');
  const found = filesOf(merged)
    .filter(isNew)
    .map((name) => fs.readFileSync(name));
  found.sort((a, b) => a.length - b.length);
  const room = Math.max(0, MAX_KEPT - known.length);
  fs.writeFileSync(file, toLines(noted, [...known, ...spread(found, room)]));
}

/** `count` of a list, evenly from first to last. */
function spread(list, count) {
  if (list.length <= count) return list;
  return Array.from({ length: count }, (_, k) => list[Math.floor((k * list.length) / count)]);
}

function check(property, seconds) {
  const file = path.join(ROOT, 'test', 'properties', `${property}.test.js`);
  return run(process.execPath, ['--test', '--test-reporter=spec', file], {
    env: { SCRIVO_FUZZ_SECONDS: String(seconds) },
  });
}

async function fuzz(target, { seconds, ...kept }) {
  heading(`Fuzz ${target} for ${seconds} s`);
  if (PROPERTIES.includes(target)) return check(target, seconds);
  const folder = unpack(target);
  const limits = [`-max_total_time=${seconds}`, `-max_len=${MAX_BYTES}`, '-len_control=0'];
  const options = [...limits, '-print_final_stats=1'];
  const artifacts = `-artifact_prefix=${path.join(FOUND, `${target}-`)}`;
  const code = await run(program(target), [...options, '-verbosity=0', artifacts, folder]);
  if (code === 0 && (kept.keep || kept.renew)) await keep(target, folder, kept.renew);
  return code;
}

async function fuzzMain(args) {
  const { values, positionals } = parseArgs({
    args,
    options: {
      seconds: { type: 'string', default: '60' },
      keep: { type: 'boolean' },
      renew: { type: 'boolean' },
    },
    allowPositionals: true,
  });
  const seconds = Number(values.seconds);
  if (!(Number.isInteger(seconds) && seconds > 0)) throw failure('fuzz: --seconds needs a number');
  const known = [...TARGETS, ...PROPERTIES];
  const unknown = positionals.filter((name) => !known.includes(name));
  if (unknown.length > 0) throw failure(`fuzz: no target ${unknown}; there are ${known}`);
  const wanted = positionals.length > 0 ? positionals : known;
  if (wanted.some((name) => TARGETS.includes(name))) await build('fuzz');
  if (wanted.some((name) => PROPERTIES.includes(name))) {
    await build('release', { modulesOnly: true });
  }
  fs.mkdirSync(FOUND, { recursive: true });
  const failed = [];
  for (const target of wanted) {
    if ((await fuzz(target, { ...values, seconds })) !== 0) failed.push(target);
  }
  if (failed.length > 0) console.log(`\nFailed: ${failed.join(', ')}; see ${FOUND}`);
  return failed.length > 0 ? 1 : 0;
}

main(fuzzMain);
