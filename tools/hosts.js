'use strict';

// Runs the tests of the package in several hosts, each with the binary in prebuilds/
// for its system (for this system with the build, if there is no prebuilt one).
//
//   npm run test:hosts                    all hosts
//   npm run test:hosts -- node-18 deno    some hosts, by name
//
// Prints a table for docs/hosts.md. A host that cannot be started here is listed as
// not run, with the reason, and is no failure. Hosts of other systems need Debian
// packages: npm run setup -- hosts

const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { HOSTS, TEST_FILES } = require('./support/hosts.js');
const { TARGETS, hasPrebuilds, moduleNames, prebuiltFiles } = require('./support/modules.js');
const { installPackages } = require('./support/packages.js');
const { ROOT, failure, heading, main } = require('./support/run.js');

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
 * Runs one test file; returns its counts, with `failed` at least 1 if the host ended with an
 * error. The output goes to a file, since Node in Wine cannot write to a pipe.
 */
function runFile(host, { command, env, preload }, folder, file) {
  const [program, ...first] = command;
  const args = [...first, ...host.testArguments(`test/${file}`, preload)];
  const log = path.join(FOLDER, `${host.name}-${file.replace('/', '-')}.log`);
  const descriptor = fs.openSync(log, 'w');
  const { error, status, signal } = spawnSync(program, args, {
    cwd: folder,
    env: { ...process.env, NO_COLOR: '1', ...env },
    stdio: ['ignore', descriptor, descriptor],
    timeout: TIMEOUT_MS,
  });
  fs.closeSync(descriptor);
  const { passed, failed, skipped } = host.count(fs.readFileSync(log, 'utf8'));
  const ok = status === 0 && failed === 0 && passed + skipped > 0;
  console.log(`${file}: ${passed} passed, ${failed} failed, ${skipped} skipped`);
  const end = error?.message ?? `ended by ${signal ?? status}`;
  if (!ok) console.error(`${file}: ${end}, see ${path.relative(ROOT, log)}`);
  return { passed, failed: ok ? 0 : Math.max(failed, 1), skipped };
}

/** Tests one host; returns the sums of its counts, or why it was not run. */
async function testHost(host) {
  heading(`${host.label} ${host.version} (${host.target})`);
  const modules = modulesFor(host.target);
  if (!modules) return { why: `not built: npm run prebuilds -- ${host.target}` };
  const missing = host.needs.filter((file) => !fs.existsSync(file));
  if (missing.length > 0) return { why: `no ${missing.join(', ')}: npm run setup -- hosts` };
  await installPackages(FOLDER, { [host.name]: `${host.package}@${host.version}` });
  const program = path.join(FOLDER, 'node_modules', host.name, host.program);
  const launch = host.launch(program, FOLDER, host.name);
  const folder = stage(host.target, modules);
  const sum = { passed: 0, failed: 0, skipped: 0 };
  for (const file of TEST_FILES) {
    const counts = runFile(host, launch, folder, file);
    for (const key of Object.keys(sum)) sum[key] += counts[key];
  }
  return sum;
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
  const unknown = names.filter((name) => !HOSTS.some((host) => host.name === name));
  if (unknown.length > 0) {
    const known = HOSTS.map(({ name }) => name).join(', ');
    throw failure(`test:hosts: no host "${unknown.join('", "')}"; there are ${known}`);
  }
  if (THIS_TARGET !== 'linux-x64') {
    throw failure(`test:hosts: the hosts are those of linux-x64, this is ${THIS_TARGET}.`);
  }
  const results = [];
  for (const host of HOSTS.filter(({ name }) => names.length === 0 || names.includes(name))) {
    results.push({ host, ...(await testHost(host)) });
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
