'use strict';

// `npm run mutate`: puts small faults into the sources of the engines and of the C interface,
// one at a time, and prints those that no test notices. Works on a copy of the tree, in
// build/mutate.
//
//   npm run mutate -- --count 50 --seed 7    as many in either engine and the C interface
//   npm run mutate -- --file fit/Loop.cpp    only in sources whose path contains this
//   npm run mutate -- --again                those that the last run printed
//
// Faults that do not compile are not counted. Those that change no answer are listed in
// tools/equivalent-mutants.json, with the reason, and left out.

const fs = require('node:fs');
const path = require('node:path');
const { parseArgs } = require('node:util');
const { JOBS } = require('./build.js');
const { mutantsOf } = require('./support/mutants.js');
const { ROOT, capture, failure, heading, main, run } = require('./support/run.js');
const { createRandom } = require('../research/ink/random.js');

const WORK = path.join(ROOT, 'build', 'mutate');
const COPY = path.join(WORK, 'tree');
const SURVIVORS = path.join(WORK, 'survivors.json');
const EQUIVALENT = path.join(__dirname, 'equivalent-mutants.json');
const SOURCES = 'subproject/scrivo/';
/** For `release`, -O1 compiles faster; for answers the level does not matter. */
const CONFIGURE = {
  release: ['-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG', '-DSCRIVO_UNITY=OFF'],
  asan: [],
};
const MEGABYTES = 4000;

/** What to run, by target; `answers` are those of both modules, compared in Node. */
const PROGRAMS = {
  answers: [process.execPath, 'test/answers/answers.test.js'],
  scrivo_test: ['test/scrivo/scrivo_test'],
  beautifier_test: ['test/beautifier/beautifier_test'],
  allocation_test: ['test/scrivo/allocation_test'],
  fuzz_test: ['fuzz/fuzz_test'],
  compare: ['fuzz/compare', '1500'],
  c_test: ['test/c/c_test'],
};
const targetsOf = (test) => (test === 'answers' ? ['hello', 'beautifier'] : [test]);
/** The quickest first. */
const TESTS = {
  Scrivo: ['answers', 'compare', 'scrivo_test', 'fuzz_test', 'allocation_test'],
  Beautifier: ['answers', 'beautifier_test', 'fuzz_test', 'allocation_test'],
  C: ['c_test', 'fuzz_test'],
};
/** The folder of the source: an engine, or the C interface. */
const engineOf = ({ file }) => file.slice(SOURCES.length).split('/')[0];

/** Copies changed files alone: what is built stays. */
function copyTree() {
  const listed = capture('git', ['ls-files', '--cached', '--others', '--exclude-standard', '-z']);
  if (listed === null) throw failure('mutate: needs a git checkout to list the files');
  const isFile = (name) => name && fs.statSync(path.join(ROOT, name), { throwIfNoEntry: false });
  for (const name of new Set(listed.split('\0'))) {
    if (!isFile(name)) continue;
    const [from, to] = [ROOT, COPY].map((root) => path.join(root, name));
    const content = fs.readFileSync(from);
    if (fs.existsSync(to) && fs.readFileSync(to).equals(content)) continue;
    fs.mkdirSync(path.dirname(to), { recursive: true });
    fs.writeFileSync(to, content);
  }
}

/** Runs a command in the copy, without its output; `limits` are words for the shell's ulimit. */
function quietly(command, args, { limits = [], env = {} } = {}) {
  const script = [...limits.map((limit) => `ulimit ${limit}`), 'exec "$@"'].join('; ');
  const settings = { cwd: COPY, env, stdio: 'ignore' };
  return run('sh', ['-c', script, 'sh', command, ...args], settings);
}

const configure = (preset) =>
  run('cmake', ['--preset', preset, '-DSCRIVO_WERROR=OFF', ...CONFIGURE[preset]], { cwd: COPY });

const buildArgs = (preset, targets) => [
  ...['--build', '--preset', preset, '--parallel', JOBS],
  ...['--target', ...targets],
];

/** `seconds` of processor time end an endless mutant. */
async function runTest(preset, test, seconds) {
  const [program, ...args] = PROGRAMS[test];
  const command = test === 'answers' ? program : path.join(COPY, 'build', preset, program);
  const limits = [`-t ${seconds}`];
  // Sanitizers and Node reserve far more memory than they use.
  if (preset === 'release' && test !== 'answers') limits.push(`-v ${MEGABYTES * 1024}`);
  const env = {
    GTEST_FAIL_FAST: '1',
    ASAN_OPTIONS: `hard_rss_limit_mb=${MEGABYTES}:detect_leaks=0`,
  };
  return quietly(command, args, { limits, env });
}

const testsOf = (preset, engine) =>
  TESTS[engine].filter((test) => preset === 'release' || test !== 'answers');

/** Builds everything without a fault. Returns the limit of every test, in seconds. */
async function prepare(preset, engines) {
  heading(`Build the copy (${preset})`);
  if ((await configure(preset)) !== 0) throw failure('mutate: configuring failed');
  const tests = [...new Set(engines.flatMap((engine) => testsOf(preset, engine)))];
  const code = await run('cmake', buildArgs(preset, tests.flatMap(targetsOf)), { cwd: COPY });
  if (code !== 0) throw failure('mutate: the copy does not build');
  const limits = {};
  for (const test of tests) {
    const start = Date.now();
    if ((await runTest(preset, test, 600)) !== 0) throw failure(`mutate: ${test} fails as it is`);
    limits[test] = Math.ceil(10 + (4 * (Date.now() - start)) / 1000);
  }
  return limits;
}

/** The first test that fails, `null` if none does, `undefined` if the fault does not compile. */
async function firstFailure(preset, limits, mutant) {
  const file = path.join(COPY, mutant.file);
  const source = fs.readFileSync(file);
  fs.writeFileSync(file, mutant.text);
  try {
    for (const test of testsOf(preset, engineOf(mutant))) {
      if ((await quietly('cmake', buildArgs(preset, targetsOf(test)))) !== 0) return undefined;
      if ((await runTest(preset, test, limits[test])) !== 0) return test;
    }
    return null;
  } finally {
    fs.writeFileSync(file, source);
  }
}

const isSame = (a) => (b) => a.file === b.file && a.before === b.before && a.after === b.after;

function readEquivalent(sources) {
  const entries = JSON.parse(fs.readFileSync(EQUIVALENT, 'utf8'));
  for (const { file, before } of entries) {
    if (!sources.get(file)?.includes(before)) {
      console.log(`equivalent-mutants.json: ${file} no longer contains ${before}`);
    }
  }
  return entries;
}

function allMutants() {
  const names = fs.readdirSync(path.join(ROOT, SOURCES), { recursive: true });
  const files = names.filter((name) => name.endsWith('.cpp')).map((name) => SOURCES + name);
  const read = (file) => [file, fs.readFileSync(path.join(ROOT, file), 'utf8')];
  const sources = new Map(files.sort().map(read));
  const equivalent = readEquivalent(sources);
  return [...sources]
    .flatMap(([file, source]) => mutantsOf(source).map((mutant) => ({ file, ...mutant })))
    .filter((mutant) => !equivalent.some(isSame(mutant)));
}

function shuffled(list, seed) {
  const { integer } = createRandom(seed);
  const rest = [...list];
  return Array.from(rest, () => rest.splice(integer(0, rest.length - 1), 1)[0]);
}

/** Mutants in the order in which they are tried, of every folder in turn. */
function* inTurn(mutants, seed) {
  const queues = Object.keys(TESTS).map((engine) =>
    shuffled(
      mutants.filter((mutant) => engineOf(mutant) === engine),
      seed,
    ),
  );
  while (queues.some((queue) => queue.length > 0)) {
    yield* queues.flatMap((queue) => queue.splice(0, 1));
  }
}

const describe = ({ file, line, before, after }) =>
  `${file.slice(SOURCES.length)}:${line}\n    ${before}\n    ${after}`;

/** Tries mutants until `count` of them have been built. */
async function tryAll(preset, limits, mutants, count) {
  const survivors = [];
  const tried = Object.fromEntries(Object.keys(TESTS).map((engine) => [engine, 0]));
  let left = count;
  for (const mutant of mutants) {
    if (left === 0) break;
    const failed = await firstFailure(preset, limits, mutant);
    if (failed === undefined) continue;
    left -= 1;
    tried[engineOf(mutant)] += 1;
    if (failed === null) survivors.push(mutant);
    console.log(`${failed ?? 'SURVIVES'}: ${describe(mutant)}`);
  }
  return { tried, survivors };
}

/** Reads out of range show only under the address sanitizer. */
async function withSanitizers(mutants) {
  if (mutants.length === 0) return [];
  const limits = await prepare('asan', [...new Set(mutants.map(engineOf))]);
  return (await tryAll('asan', limits, mutants, mutants.length)).survivors;
}

function report(tried, survivors) {
  heading('Not noticed');
  for (const mutant of survivors) console.log(describe(mutant));
  for (const [engine, count] of Object.entries(tried)) {
    if (count === 0) continue;
    const missed = survivors.filter((mutant) => engineOf(mutant) === engine).length;
    const rate = ((100 * (count - missed)) / count).toFixed(1);
    console.log(`${engine}: ${count - missed} of ${count} noticed, ${rate} %`);
  }
}

function readOptions(args) {
  const { values } = parseArgs({
    args,
    options: {
      count: { type: 'string', default: '40' },
      seed: { type: 'string', default: '1' },
      file: { type: 'string', default: '' },
      again: { type: 'boolean', default: false },
    },
  });
  const wrong = ['count', 'seed'].find((name) => !/^[1-9]\d{0,5}$/.test(values[name]));
  if (wrong) throw failure(`mutate: --${wrong} needs a positive number`);
  return { ...values, count: Number(values.count), seed: Number(values.seed) };
}

/** The mutants to try. */
function chosen({ seed, file, again }) {
  const all = allMutants().filter((mutant) => mutant.file.includes(file));
  if (!again) return [...inTurn(all, seed)];
  const last = JSON.parse(fs.readFileSync(SURVIVORS, 'utf8'));
  return all.filter((mutant) => last.some(isSame(mutant)));
}

async function mutateMain(args) {
  const options = readOptions(args);
  copyTree();
  const mutants = chosen(options);
  if (mutants.length === 0) throw failure('mutate: nothing to try');
  const limits = await prepare('release', [...new Set(mutants.map(engineOf))]);
  heading('Mutants: what noticed them, where, the line before and after');
  const { tried, survivors } = await tryAll('release', limits, mutants, options.count);
  const unnoticed = await withSanitizers(survivors);
  const places = unnoticed.map(({ file, before, after }) => ({ file, before, after }));
  fs.writeFileSync(SURVIVORS, JSON.stringify(places));
  report(tried, unnoticed);
  return 0;
}

main(mutateMain);
