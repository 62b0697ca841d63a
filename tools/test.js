'use strict';

// `npm test`: sets up, builds and runs every suite. A suite that fails or runs no test
// does not stop the others, but fails the run.
//
//   npm test                    everything
//   npm test -- node browser    some suites, by name, one after the other, without setting up
//   npm test -- asan --results FILE    writes the counts as JSON instead of showing them

const fs = require('node:fs');
const path = require('node:path');
const { parseArgs } = require('node:util');
const { JOBS, build } = require('./build.js');
const { buildWasm } = require('./build-wasm.js');
const { QUICK_CHECKS, lint } = require('./lint.js');
const { setup } = require('./setup.js');
const { ROOT, capture, failure, heading, main, run } = require('./support/run.js');
const { countJunit, countTap } = require('./support/test-counts.js');

const REPORTS = path.join(ROOT, 'build', 'reports');
const NODE_TEST_TIMEOUT_MS = 300_000;

function readReport(file) {
  return fs.existsSync(file) ? fs.readFileSync(file, 'utf8') : '';
}

function newReport(name) {
  fs.mkdirSync(REPORTS, { recursive: true });
  const file = path.join(REPORTS, name);
  fs.rmSync(file, { force: true }); // an earlier run's report must not count
  return file;
}

/** The results of builds that suites share. */
const builds = new Map();

/** Builds what several suites need once. */
function once(name, make) {
  if (!builds.has(name)) builds.set(name, make());
  return builds.get(name);
}

async function ctest(preset) {
  await once(preset, () => build(preset));
  heading(`Tests of the core (${preset})`);
  const report = newReport(`ctest-${preset}.xml`);
  const args = ['--preset', preset, '--parallel', JOBS, '--output-junit', report];
  const code = await run('ctest', args);
  return { code, ...countJunit(readReport(report)) };
}

/** Paths from the root. */
function testFiles(folder) {
  const found = fs.readdirSync(path.join(ROOT, folder), { withFileTypes: true });
  return found.flatMap((entry) => {
    const file = `${folder}/${entry.name}`;
    if (entry.isDirectory()) return testFiles(file);
    return /\.test\.m?js$/.test(entry.name) ? [file] : [];
  });
}

async function nodeTest(name, isOfSuite, env = {}) {
  heading(`Tests of JavaScript (${name})`);
  const files = testFiles('test').filter(isOfSuite).sort();
  if (files.length === 0) return { code: 0, passed: 0, failed: 0, skipped: 0 };
  const report = newReport(`node-${name}.tap`);
  const reporters = { spec: 'stdout', tap: report };
  const flags = Object.entries(reporters).flatMap(([reporter, destination]) => [
    `--test-reporter=${reporter}`,
    `--test-reporter-destination=${destination}`,
  ]);
  if (Number.parseInt(process.versions.node, 10) >= 20) {
    // By default one processor is left to the runner, which hardly needs it.
    flags.push(`--test-timeout=${NODE_TEST_TIMEOUT_MS}`, `--test-concurrency=${JOBS}`);
  }
  const code = await run(process.execPath, ['--test', ...flags, ...files], { env });
  return { code, ...countTap(readReport(report)) };
}

const isOfPackage = (file) => file.startsWith('test/package/');
const isOfWasm = (file) => file.startsWith('test/wasm/');
const isOfBrowser = (file) => file.includes('.browser.test.');

/** Node's tests of these files, which need the package for browsers. */
async function wasmTest(name, isOfSuite) {
  await once('wasm', buildWasm);
  return nodeTest(name, isOfSuite);
}

/** In clang's names. */
const MACHINES = { x64: 'x86_64', arm64: 'aarch64' };

/** Tests that call the native modules. */
const isOfModules = (file) =>
  /^test\/((lib|src|answers)\/|properties\/(package|lines)\.)/.test(file);

/** Those tests with modules under the address sanitizer, whose runtime Node has to load first. */
async function sanitizedNodeTest() {
  await once('asan', () => build('asan'));
  const library = `libclang_rt.asan-${MACHINES[process.arch]}.so`;
  const runtime = capture('clang++', [`-print-file-name=${library}`]);
  if (runtime === null) throw failure('test: clang++ is needed for its address sanitizer');
  return nodeTest('node-asan', isOfModules, {
    LD_PRELOAD: fs.realpathSync(runtime.trim()),
    NODE_OPTIONS: `--require ${path.join(ROOT, 'test', 'support', 'sanitized.js')}`,
    // Node itself leaves memory to the system at its end. What is freed must not add up: some
    // tests watch the memory.
    ASAN_OPTIONS: 'detect_leaks=0:quarantine_size_mb=8',
  });
}

/** Static checks pass or fail as a whole; they count no tests. */
async function checks() {
  return { code: (await lint(QUICK_CHECKS)) ? 0 : 1, isCheck: true };
}

const SUITES = {
  release: () => ctest('release'),
  node: () =>
    nodeTest('node', (file) => !isOfPackage(file) && !isOfWasm(file) && !isOfBrowser(file)),
  package: () => wasmTest('package', isOfPackage),
  browser: () => wasmTest('browser', (file) => isOfBrowser(file) && !isOfWasm(file)),
  wasm: () => wasmTest('wasm', isOfWasm),
  lint: checks,
  asan: () => ctest('asan'),
  'node-asan': sanitizedNodeTest,
  tsan: () => ctest('tsan'),
};
/** Run beside the others when all are run. */
const ASIDE = ['lint', 'asan', 'node-asan', 'tsan'];
const AT_LOW_PRIORITY = process.platform === 'win32' ? [] : ['nice', '-n', '19'];

function verdict({ code, passed, failed, isCheck }) {
  if (code !== 0 || failed > 0) return 'FAILED';
  return isCheck || passed > 0 ? 'ok' : 'FAILED: no test was run';
}

async function runSuite(name) {
  const start = Date.now();
  let result = { code: 1 };
  try {
    result = await SUITES[name]();
  } catch (error) {
    console.error(error.expected ? error.message : error);
  }
  const { passed = 0, failed = 0, skipped = 0 } = result;
  return { name, passed, failed, skipped, verdict: verdict(result), ms: Date.now() - start };
}

function summarise(results) {
  heading('Summary');
  for (const { name, passed, failed, skipped, verdict: said, ms } of results) {
    const counts = `${passed} passed, ${failed} failed, ${skipped} skipped`;
    console.log(`${name.padEnd(9)} ${counts.padEnd(36)} ${(ms / 1000).toFixed(1)} s  ${said}`);
  }
  const sum = (key) => results.reduce((total, result) => total + result[key], 0);
  const broken = results.filter((result) => result.verdict !== 'ok');
  if (broken.length > 0) console.log(`\nFailed: ${broken.map(({ name }) => name).join(', ')}`);
  console.log(`\n${sum('passed')} passed, ${sum('failed')} failed, ${sum('skipped')} skipped`);
  return broken.length === 0 ? 0 : 1;
}

async function runInTurn(names) {
  const results = [];
  for (const name of names) results.push(await runSuite(name));
  return results;
}

/** Runs suites in a process of their own, whose output is shown when the last has ended. */
async function runAside(names) {
  const results = newReport('aside.json');
  const log = newReport('aside.log');
  const output = fs.openSync(log, 'w');
  const args = [...AT_LOW_PRIORITY, process.execPath, __filename, ...names, '--results', results];
  const code = await run(args[0], args.slice(1), { stdio: output });
  fs.closeSync(output);
  return () => {
    process.stdout.write(fs.readFileSync(log));
    if (fs.existsSync(results)) return JSON.parse(fs.readFileSync(results, 'utf8'));
    throw failure(`test: the process of ${names.join(', ')} ended with code ${code}`);
  };
}

/** All suites: those that mostly compile beside those that mostly wait, to keep all cores busy. */
async function runAll() {
  const aside = runAside(ASIDE);
  const main = await runInTurn(Object.keys(SUITES).filter((name) => !ASIDE.includes(name)));
  console.log(`\nStill running: ${ASIDE.join(', ')}`);
  return [...main, ...(await aside)()];
}

function readArguments(args) {
  const options = { results: { type: 'string' } };
  const { values, positionals } = parseArgs({ args, options, allowPositionals: true });
  const unknown = positionals.filter((name) => !(name in SUITES));
  if (unknown.length > 0) {
    const known = Object.keys(SUITES).join(', ');
    throw failure(`test: no suite "${unknown.join('", "')}"; there are ${known}`);
  }
  return { names: positionals, file: values.results };
}

async function testMain(args) {
  const { names, file } = readArguments(args);
  if (names.length === 0) await setup('test');
  const results = names.length > 0 ? await runInTurn(names) : await runAll();
  if (!file) return summarise(results);
  fs.writeFileSync(file, JSON.stringify(results));
  return results.every((result) => result.verdict === 'ok') ? 0 : 1;
}

main(testMain);
