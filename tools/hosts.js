'use strict';

// Runs the tests of the package in several hosts, each with the binary in prebuilds/
// for its system (for this system with the build, if there is no prebuilt one), and those of
// the engines with scrivo-wasm in browsers.
//
//   npm run test:hosts                       all hosts
//   npm run test:hosts -- node-18 firefox    some hosts, by name
//
// Prints a table for docs/hosts.md. A host that cannot be started here is listed as
// not run, with the reason, and is no failure. Hosts of other systems need Debian
// packages: npm run setup -- hosts

const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { buildWasm } = require('./build-wasm.js');
const { BROWSERS, HOSTS, TEST_FILES } = require('./support/hosts.js');
const { countTap } = require('./support/test-counts.js');
const { TARGETS, hasPrebuilds, moduleNames, prebuiltFiles } = require('./support/modules.js');
const { installPackages } = require('./support/packages.js');
const { ROOT, capture, failure, heading, main } = require('./support/run.js');

const FOLDER = path.join(ROOT, 'build', 'hosts');
const TIMEOUT_MS = 900_000;
const THIS_TARGET = `${process.platform}-${process.arch}`;

/** The modules to test for a target, or null when they were not built. */
function modulesFor(target) {
  if (hasPrebuilds(target)) return prebuiltFiles(target);
  const built = moduleNames().map((name) => path.join(ROOT, 'build', 'release', `${name}.node`));
  return target === THIS_TARGET && built.every((file) => fs.existsSync(file)) ? built : null;
}

/**
 * A copy of the package as it is installed, for one target, with its tests, but without
 * the modules of other targets and the build of the checkout.
 */
function stage(target, modules) {
  const folder = path.join(FOLDER, 'stage', target);
  fs.rmSync(folder, { recursive: true, force: true });
  const tests = ['cases', 'cli', 'lib', 'src', 'support'].map((name) => `test/${name}`);
  const command = ['bin', 'lib', 'package.json'].map((name) => `packages/cli/${name}`);
  const places = ['package.json', 'lib', 'templates', 'research/ink', ...command, ...tests];
  for (const place of places.filter((name) => fs.existsSync(path.join(ROOT, name)))) {
    fs.cpSync(path.join(ROOT, place), path.join(folder, place), { recursive: true });
  }
  const prebuilds = path.join(folder, 'prebuilds', target);
  fs.mkdirSync(prebuilds, { recursive: true });
  for (const file of modules) fs.copyFileSync(file, path.join(prebuilds, path.basename(file)));
  linkPackages(path.join(ROOT, 'node_modules'), path.join(folder, 'node_modules'));
  // Modules for this target must return the same bits as the core.
  const core = 'build/release/test/scrivo/case_results';
  if (target === THIS_TARGET && fs.existsSync(path.join(ROOT, core))) {
    fs.mkdirSync(path.join(folder, path.dirname(core)), { recursive: true });
    fs.copyFileSync(path.join(ROOT, core), path.join(folder, core));
  }
  return folder;
}

/** Links what the tests need; for `scrivo`, the copy instead of the clone. */
function linkPackages(from, to) {
  fs.mkdirSync(to);
  for (const name of fs.readdirSync(from)) {
    fs.symlinkSync(
      name === 'scrivo' ? path.dirname(to) : path.join(from, name),
      path.join(to, name),
    );
  }
}

/**
 * Runs a program; returns the counts that it prints, with `failed` at least 1 if it ended with an
 * error. The output goes to a file, since Node in Wine cannot write to a pipe.
 */
function runCounted(name, count, [program, ...args], { cwd, env }) {
  const log = path.join(FOLDER, `${name.replaceAll('/', '-')}.log`);
  const descriptor = fs.openSync(log, 'w');
  const { error, status, signal } = spawnSync(program, args, {
    cwd,
    env: { ...process.env, NO_COLOR: '1', ...env },
    stdio: ['ignore', descriptor, descriptor],
    timeout: TIMEOUT_MS,
  });
  fs.closeSync(descriptor);
  const { passed, failed, skipped } = count(fs.readFileSync(log, 'utf8'));
  const ok = status === 0 && failed === 0 && passed + skipped > 0;
  console.log(`${name}: ${passed} passed, ${failed} failed, ${skipped} skipped`);
  const end = error?.message ?? `ended by ${signal ?? status}`;
  if (!ok) console.error(`${name}: ${end}, see ${path.relative(ROOT, log)}`);
  return { passed, failed: ok ? 0 : Math.max(failed, 1), skipped };
}

const whyMissing = (host) => {
  const missing = host.needs.filter((file) => !fs.existsSync(file));
  return missing.length > 0 ? `no ${missing.join(', ')}: npm run setup -- hosts` : null;
};

/** Tests one host; returns the sums of its counts, or why it was not run. */
async function testHost(host) {
  heading(`${host.label} ${host.version} (${host.target})`);
  const modules = modulesFor(host.target);
  if (!modules) return { why: `not built: npm run prebuilds -- ${host.target}` };
  const why = whyMissing(host);
  if (why) return { why };
  await installPackages(FOLDER, { [host.name]: `${host.package}@${host.version}` });
  const program = path.join(FOLDER, 'node_modules', host.name, host.program);
  const { command, env, preload } = host.launch(program, FOLDER, host.name);
  const folder = stage(host.target, modules);
  const sum = { passed: 0, failed: 0, skipped: 0 };
  for (const file of TEST_FILES) {
    const args = host.testArguments(`test/${file}`, preload);
    const name = `${host.name}/${file}`;
    const counts = runCounted(name, host.count, [...command, ...args], { cwd: folder, env });
    for (const key of Object.keys(sum)) sum[key] += counts[key];
  }
  return sum;
}

/** Tests scrivo-wasm in a browser. */
async function testBrowser(browser) {
  const [program, ...first] = browser.start;
  browser.version = /\d[\d.]+/.exec(capture(program, [...first, '--version']))?.[0] ?? '';
  heading(`${browser.label} ${browser.version}`);
  const why = whyMissing(browser);
  if (why) return { why };
  await buildWasm();
  fs.mkdirSync(FOLDER, { recursive: true });
  const script = path.join(ROOT, 'test', 'wasm', 'page', 'main.js');
  const command = [process.execPath, script, ...browser.start, ...browser.args];
  return runCounted(browser.name, countTap, command, { cwd: ROOT });
}

function row(host, { why, passed, failed, skipped }) {
  const counts = why
    ? `not run (${why})`
    : `${passed} passed, ${failed} failed, ${skipped} skipped`;
  return `| ${host.label} ${host.version} | \`${host.target}\` | ${host.how} | ${counts} |`;
}

/** Rows for targets without a host. */
const rowsOfTheRest = () =>
  Object.keys(TARGETS)
    .filter((target) => !HOSTS.some((host) => host.target === target))
    .map((target) => `| none | \`${target}\` | - | ${hasPrebuilds(target) ? '' : 'not '}built |`);

async function hostsMain(names) {
  const all = [...HOSTS, ...BROWSERS];
  const unknown = names.filter((name) => !all.some((host) => host.name === name));
  if (unknown.length > 0) {
    const known = all.map(({ name }) => name).join(', ');
    throw failure(`test:hosts: no host "${unknown.join('", "')}"; there are ${known}`);
  }
  if (THIS_TARGET !== 'linux-x64') {
    throw failure(`test:hosts: the hosts are those of linux-x64, this is ${THIS_TARGET}.`);
  }
  const results = [];
  for (const host of all.filter(({ name }) => names.length === 0 || names.includes(name))) {
    const test = BROWSERS.includes(host) ? testBrowser : testHost;
    results.push({ host, ...(await test(host)) });
  }
  heading('Hosts');
  console.log('| host | binary | run | tests |\n| --- | --- | --- | --- |');
  for (const result of results) console.log(row(result.host, result));
  rowsOfTheRest().forEach((line) => console.log(line));
  const sum = (key) => results.reduce((total, result) => total + (result[key] ?? 0), 0);
  console.log(`\n${sum('passed')} passed, ${sum('failed')} failed, ${sum('skipped')} skipped`);
  return sum('failed') > 0 || sum('passed') === 0 ? 1 : 0;
}

main(hostsMain);
