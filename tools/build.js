'use strict';

// Configures and builds presets of CMakePresets.json.
//
//   npm run build                  the release preset
//   npm run build -- dev asan      other presets

const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { ROOT, capture, failure, heading, main, run } = require('./support/run.js');
const { LEVELS, installedPackages } = require('./setup.js');

const JOBS = String(os.availableParallelism?.() ?? os.cpus().length);

function presetNames() {
  const { buildPresets } = JSON.parse(fs.readFileSync(path.join(ROOT, 'CMakePresets.json')));
  return buildPresets.map(({ name }) => name);
}

/** Whether this is a clone: the installed package has no tests. */
const IS_CLONE = fs.existsSync(path.join(ROOT, 'test'));

function isInstalled(packageName) {
  try {
    return Boolean(require.resolve(`${packageName}/package.json`, { paths: [ROOT] }));
  } catch {
    return false;
  }
}

function checkTools() {
  const tools = ['cmake', 'ninja'].filter((tool) => capture(tool, ['--version']) === null);
  const headers = ['node-addon-api', 'node-api-headers'].filter((name) => !isInstalled(name));
  if (tools.length + headers.length === 0) return;
  const forUsers = [
    ...(tools.length > 0
      ? [`A build needs these or their equivalents: ${LEVELS.run.join(', ')}.`]
      : []),
    ...(headers.length > 0
      ? [`Run \`npm install --save-dev ${headers.join(' ')}\` in your project.`]
      : []),
  ];
  const advice = IS_CLONE ? ['Run `npm run setup`.'] : forUsers;
  throw failure([`Not found: ${[...tools, ...headers].join(', ')}.`, ...advice].join(' '));
}

/** Whether the libraries of the tests and benchmarks are known to be installed. */
function testLibrariesInstalled() {
  const installed = installedPackages(LEVELS.test);
  return installed !== null && LEVELS.test.every((name) => installed.has(name));
}

/** Configures and builds one preset, with more options for either step. */
async function buildPreset(preset, configure = [], compile = []) {
  heading(`Configure (${preset})`);
  if ((await run('cmake', ['--preset', preset, ...configure])) !== 0) {
    throw failure(`Configuring "${preset}" failed.`);
  }
  heading(`Build (${preset}, ${JOBS} jobs)`);
  const args = ['--build', '--preset', preset, '--parallel', JOBS, ...compile];
  if ((await run('cmake', args)) !== 0) throw failure(`Building "${preset}" failed.`);
}

/**
 * Builds one preset. `modulesOnly` builds the Node modules alone, and does not
 * require the libraries of the tests; `keepGoing` shows the errors of all files.
 */
async function build(preset, { modulesOnly = false, keepGoing = false } = {}) {
  checkTools();
  const developer = IS_CLONE && (!modulesOnly || testLibrariesInstalled()) ? 'ON' : 'OFF';
  const configure = [`-DSCRIVO_DEVELOPER=${developer}`];
  if (!IS_CLONE) configure.push('-DSCRIVO_WERROR=OFF'); // users have other compilers
  const compile = [];
  if (modulesOnly) compile.push('--target', 'src/all');
  if (keepGoing) compile.push('--', '-k', '0');
  await buildPreset(preset, configure, compile);
}

async function buildMain(presets) {
  const known = presetNames();
  const unknown = presets.filter((name) => !known.includes(name));
  if (unknown.length > 0) {
    throw failure(`build: no preset "${unknown.join('", "')}"; there are ${known.join(', ')}`);
  }
  for (const preset of presets.length > 0 ? presets : ['release']) await build(preset);
  return 0;
}

module.exports = { JOBS, build, buildPreset };

if (require.main === module) main(buildMain);
