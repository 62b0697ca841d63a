'use strict';

// `npm run fuzz`: runs every target of test/fuzz under libFuzzer and the sanitizers, from
// the corpora in test/fuzz/corpus. What is found is left in build/fuzz/found.
//
//   npm run fuzz -- --seconds 600          for each target; 60 by default
//   npm run fuzz -- beautify outlineOf     some targets
//   npm run fuzz -- --keep                 write the smallest new corpora to test/fuzz/corpus

const fs = require('node:fs');
const path = require('node:path');
const { parseArgs } = require('node:util');
const { build } = require('./build.js');
const { fromLines, toLines } = require('./support/corpus.js');
const { ROOT, failure, heading, main, run } = require('./support/run.js');

const CORPUS = path.join(ROOT, 'test', 'fuzz', 'corpus');
const BUILD = path.join(ROOT, 'build', 'fuzz');
const FOUND = path.join(BUILD, 'found');
const MAX_BYTES = 400;
/** Inputs of a target that are kept. */
const MAX_KEPT = 60;

const corpusFile = (target) => path.join(CORPUS, `${target}.txt`);
const program = (target) => path.join(BUILD, 'test', 'fuzz', `fuzz_${target}`);
const TARGETS = fs.readdirSync(CORPUS).map((name) => path.basename(name, '.txt'));

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

/** Replaces a corpus by few small inputs that reach as much; comments and theirs stay. */
async function keep(target, folder) {
  const merged = emptyFolder('merged', target);
  await run(program(target), ['-merge=1', `-max_len=${MAX_BYTES}`, '-verbosity=0', merged, folder]);
  const inputs = filesOf(merged).map((file) => fs.readFileSync(file));
  inputs.sort((a, b) => a.length - b.length);
  const file = corpusFile(target);
  const { noted } = fromLines(fs.readFileSync(file, 'utf8'));
  fs.writeFileSync(file, toLines(noted, spread(inputs, MAX_KEPT)));
}

/** `count` of a list, evenly from first to last. */
function spread(list, count) {
  if (list.length <= count) return list;
  return Array.from({ length: count }, (_, k) => list[Math.floor((k * list.length) / count)]);
}

async function fuzz(target, seconds, isKept) {
  heading(`Fuzz ${target} for ${seconds} s`);
  const folder = unpack(target);
  const limits = [`-max_total_time=${seconds}`, `-max_len=${MAX_BYTES}`, '-len_control=0'];
  const options = [...limits, '-print_final_stats=1'];
  const artifacts = `-artifact_prefix=${path.join(FOUND, `${target}-`)}`;
  const code = await run(program(target), [...options, '-verbosity=0', artifacts, folder]);
  if (code === 0 && isKept) await keep(target, folder);
  return code;
}

async function fuzzMain(args) {
  const { values, positionals } = parseArgs({
    args,
    options: { seconds: { type: 'string', default: '60' }, keep: { type: 'boolean' } },
    allowPositionals: true,
  });
  const seconds = Number(values.seconds);
  if (!(Number.isInteger(seconds) && seconds > 0)) throw failure('fuzz: --seconds needs a number');
  const unknown = positionals.filter((name) => !TARGETS.includes(name));
  if (unknown.length > 0) throw failure(`fuzz: no target ${unknown}; there are ${TARGETS}`);
  await build('fuzz');
  fs.mkdirSync(FOUND, { recursive: true });
  const failed = [];
  for (const target of positionals.length > 0 ? positionals : TARGETS) {
    if ((await fuzz(target, seconds, values.keep)) !== 0) failed.push(target);
  }
  if (failed.length > 0) console.log(`\nFailed: ${failed.join(', ')}; see ${FOUND}`);
  return failed.length > 0 ? 1 : 0;
}

main(fuzzMain);
