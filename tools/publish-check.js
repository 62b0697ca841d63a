'use strict';

// `npm run publish:check`: what must hold before `npm publish`. All checks run,
// whatever fails; nothing is changed.

const fs = require('node:fs');
const path = require('node:path');
const { TARGETS, hasPrebuilds, prebuiltFiles } = require('./support/modules.js');
const { ROOT, capture, heading, main, nodeTool, run } = require('./support/run.js');

const MAX_PACKED_BYTES = 10e6;

const read = (name) => fs.readFileSync(path.join(ROOT, name), 'utf8');

/** Complaints about versions that differ: `texts` maps the three files to contents. */
function compareVersions(texts) {
  const version = JSON.parse(texts['package.json']).version;
  const core = /^project\(scrivo\s+VERSION\s+([\d.]+)/m.exec(texts['CMakeLists.txt'])?.[1];
  const entry = /^## \[([^\]]+)\]/m.exec(texts['CHANGELOG.md'])?.[1];
  const found = { 'CMakeLists.txt': core, 'CHANGELOG.md': entry };
  return Object.entries(found)
    .filter(([, other]) => other !== version)
    .map(([file, other]) => `${file} says ${other}, package.json ${version}`);
}

const missingPrebuilds = () =>
  Object.keys(TARGETS)
    .filter((target) => !hasPrebuilds(target))
    .map((target) => `prebuilds/${target} is not complete: npm run prebuilds -- ${target}`);

/** Complaints about prebuilt files that are older than what they were built from. */
function oldPrebuilds() {
  const changed = capture('git', ['log', '-1', '--format=%ct', '--', 'src', 'subproject', 'cmake']);
  const isOld = (file) => fs.statSync(file).mtimeMs < 1000 * Number(changed);
  const folder = path.join(ROOT, 'prebuilds');
  const names = fs.existsSync(folder) ? fs.readdirSync(folder, { recursive: true }) : [];
  return names
    .filter((name) => name.endsWith('.node') && isOld(path.join(folder, name)))
    .map((name) => `prebuilds/${name} is older than the sources: npm run prebuilds`);
}

/** The newest glibc that the Linux files may ask for: what docs/hosts.md promises. */
const NEWEST_GLIBC = { 'linux-x64': 34, 'linux-arm64': 28 };

function glibc() {
  const symbols = (file) => capture('objdump', ['-T', file]);
  return Object.entries(NEWEST_GLIBC).flatMap(([target, newest]) =>
    prebuiltFiles(target)
      .filter((file) => fs.existsSync(file))
      .map((file) => [path.relative(ROOT, file), symbols(file)?.matchAll(/GLIBC_2\.(\d+)/g)])
      .map(([name, found]) => [name, found && Math.max(...[...found].map(([, minor]) => minor))])
      .filter(([, minor]) => minor === undefined || minor > newest)
      .map(([name, minor]) => `${name} asks for glibc 2.${minor}, not 2.${newest}`),
  );
}

function licence() {
  const { license } = JSON.parse(read('package.json'));
  return read('LICENSE').startsWith(`${license} License`) ? [] : [`LICENSE is not ${license}`];
}

function cleanTree() {
  const status = capture('git', ['status', '--porcelain']);
  if (status === null) return ['git does not answer'];
  return status
    .split('\n')
    .filter(Boolean)
    .map((line) => `not committed: ${line}`);
}

function archive() {
  const { size } = JSON.parse(capture('npm', ['pack', '--dry-run', '--json']) ?? '[{}]')[0];
  console.log(`${(size / 1e6).toFixed(1)} MB packed`);
  return size <= MAX_PACKED_BYTES ? [] : [`at most ${MAX_PACKED_BYTES / 1e6} MB were expected`];
}

/** A check by a program that came with npm: its complaints are what it prints. */
async function byTool(name, script, ...args) {
  const [node, ...tool] = nodeTool(name, script);
  return (await run(node, [...tool, ...args])) === 0 ? [] : ['see above'];
}

const publint = () => byTool('publint', 'src/cli.js', 'run', '--strict', '--pack', 'npm');

/**
 * Whether types and code are found and agree. Without the way in which Node 10
 * and TypeScript before 4.7 looked for them: it knows no `exports`.
 */
const types = () =>
  byTool('@arethetypeswrong/cli', 'dist/index.js', '--pack', '.', '--profile', 'node16');

const CHECKS = {
  versions: () => {
    const names = ['package.json', 'CMakeLists.txt', 'CHANGELOG.md'];
    return compareVersions(Object.fromEntries(names.map((name) => [name, read(name)])));
  },
  licence,
  'committed tree': cleanTree,
  prebuilds: () => [...missingPrebuilds(), ...oldPrebuilds()],
  glibc,
  archive,
  publint,
  types,
};

async function publishCheckMain() {
  const failed = [];
  for (const [name, check] of Object.entries(CHECKS)) {
    heading(`Check: ${name}`);
    const complaints = await check();
    complaints.forEach((complaint) => console.error(complaint));
    if (complaints.length > 0) failed.push(name);
    else console.log('ok');
  }
  const verdict = failed.length === 0 ? 'all ok' : `failed: ${failed.join(', ')}`;
  console.log(`\nChecks before publishing: ${verdict}`);
  return failed.length === 0 ? 0 : 1;
}

module.exports = { compareVersions };

if (require.main === module) main(publishCheckMain);
