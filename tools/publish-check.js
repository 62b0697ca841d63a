'use strict';

// `npm run publish:check`: checks that the packages are ready for `npm publish`. All checks
// run, even after a failure; nothing is changed.

const fs = require('node:fs');
const path = require('node:path');
const { MODULES, PACKED: PACKED_WASM } = require('./build-wasm.js');
const { TARGETS, hasPrebuilds, prebuiltFiles, targetOf } = require('./support/modules.js');
const { ROOT, capture, heading, main, nodeTool, run } = require('./support/run.js');
const { PACKED } = require('../surface/pack.js');

const MAX_PACKED_BYTES = 6e6;

const read = (name) => fs.readFileSync(path.join(ROOT, name), 'utf8');

const COMMAND = 'packages/cli';
const WASM = 'packages/wasm';
const FOLDERS = ['', COMMAND, WASM];

/** Complaints about versions that differ: `texts` maps the five files to contents. */
function compareVersions(texts) {
  const version = JSON.parse(texts['package.json']).version;
  const command = JSON.parse(texts[`${COMMAND}/package.json`]);
  const core = /^project\(scrivo\s+VERSION\s+([\d.]+)/m.exec(texts['CMakeLists.txt'])?.[1];
  const entry = /^## \[([^\]]+)\]/m.exec(texts['CHANGELOG.md'])?.[1];
  const found = {
    'CMakeLists.txt': core,
    'CHANGELOG.md': entry,
    [`${COMMAND}/package.json`]: command.version,
    [`${WASM}/package.json`]: JSON.parse(texts[`${WASM}/package.json`]).version,
    [`the dependency of ${COMMAND}`]: command.dependencies.scrivo.replace('^', ''),
  };
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

/** Paths of the prebuilt files of some targets that exist. */
const builtFor = (targets) => targets.flatMap(prebuiltFiles).filter((file) => fs.existsSync(file));

/** Complaints about files in the folder of another system, and about files that are no modules. */
function systems() {
  return builtFor(Object.keys(TARGETS)).flatMap((file) => {
    const bytes = fs.readFileSync(file);
    const name = path.relative(ROOT, file);
    const [wanted, found] = [path.basename(path.dirname(file)), targetOf(bytes)];
    if (found !== wanted) return [`${name} is for ${found ?? 'no known system'}`];
    return bytes.includes('napi_register_module_v1') ? [] : [`${name} is no Node-API module`];
  });
}

/** The newest versions that files for glibc may require, as docs/hosts.md states. */
const NEWEST = { GLIBC_2: 17, 'GLIBCXX_3.4': 21 };

function libraries() {
  return builtFor(['linux-x64', 'linux-arm64']).flatMap((file) => {
    const name = path.relative(ROOT, file);
    const symbols = capture('objdump', ['-T', file]);
    if (!symbols) return [`objdump could not read ${name}`];
    const asked = (prefix) => [...symbols.matchAll(new RegExp(`\\b${prefix}\\.(\\d+)`, 'g'))];
    return Object.entries(NEWEST)
      .map(([prefix, newest]) => [prefix, newest, Math.max(...asked(prefix).map(([, n]) => n))])
      .filter(([, newest, most]) => most > newest)
      .map(([prefix, newest, most]) => `${name} requires ${prefix}.${most}, more than .${newest}`);
  });
}

function licence() {
  return FOLDERS.flatMap((folder) => {
    const file = path.join(folder, 'LICENSE');
    const { license } = JSON.parse(read(path.join(folder, 'package.json')));
    return read(file).startsWith(`${license} License`) ? [] : [`${file} is not ${license}`];
  });
}

function cleanTree() {
  const status = capture('git', ['status', '--porcelain']);
  if (status === null) return ['git does not answer'];
  return status
    .split('\n')
    .filter(Boolean)
    .map((line) => `not committed: ${line}`);
}

/** Complaints about the content of an archive: files must be `tracked` by git or `prebuilt`. */
function checkContents(packed, tracked, prebuilt) {
  const known = new Set([...tracked, ...prebuilt]);
  const isOfTests = (name) =>
    /(^|\/)(test|bench|surface|research|packages)\/|\.test\.|\.ndjson/.test(name);
  const has = new Set(packed);
  return [
    ...packed.filter((name) => !known.has(name)).map((name) => `${name} is a stray file`),
    ...packed.filter(isOfTests).map((name) => `${name} is no part of the package`),
    ...prebuilt.filter((name) => !has.has(name)).map((name) => `${name} is missing`),
  ];
}

/** What is built into an archive, besides prebuilt files. */
const BUILT = { [COMMAND]: PACKED, [WASM]: PACKED_WASM };

const archives = () => FOLDERS.flatMap(archive);

/** Complaints about the archive of the package in a folder. */
function archive(folder) {
  const isWithin = (name) => name.startsWith(`${folder}/`);
  const all = capture('git', ['ls-files', '-z'])?.split('\0');
  const place = folder ? [`./${folder}`] : [];
  const [packed] = JSON.parse(capture('npm', ['pack', '--dry-run', '--json', ...place]) ?? '[]');
  if (!all || !packed) return ['git or `npm pack` does not answer'];
  const tracked = folder
    ? all.filter(isWithin).map((name) => path.posix.relative(folder, name))
    : all;
  const names = packed.files.map((file) => file.path);
  const prebuilt = folder ? [] : Object.keys(TARGETS).flatMap(prebuiltFiles);
  console.log(`${packed.name}: ${names.length} files, ${(packed.size / 1e6).toFixed(1)} MB packed`);
  return [
    ...checkContents(names, tracked, [
      ...prebuilt.map((file) => path.relative(ROOT, file).replaceAll(path.sep, '/')),
      ...(BUILT[folder] ?? []),
    ]),
    ...(packed.size > MAX_PACKED_BYTES ? [`at most ${MAX_PACKED_BYTES / 1e6} MB expected`] : []),
  ];
}

/** Installs the archives in empty projects: the tests of test/package. */
async function installed() {
  return (await run(process.execPath, ['tools/test.js', 'package'])) === 0 ? [] : ['see above'];
}

/** A check by an installed program, which prints its complaints. */
async function byTool(name, script, ...args) {
  const [node, ...tool] = nodeTool(name, script);
  return (await run(node, [...tool, ...args])) === 0 ? [] : ['see above'];
}

async function publint() {
  const found = [];
  for (const folder of FOLDERS) {
    const args = ['run', folder || '.', '--strict', '--pack', 'npm'];
    found.push(...(await byTool('publint', 'src/cli.js', ...args)));
  }
  return found;
}

/** Whether types are found and agree with the code in every mode of resolution. */
async function types() {
  const check = (...args) => byTool('@arethetypeswrong/cli', 'dist/index.js', '--pack', ...args);
  // The package for browsers has ES modules alone.
  const wasm = [WASM, '--profile', 'esm-only', '--exclude-entrypoints', ...MODULES];
  return [...(await check('.')), ...(await check(...wasm))];
}

const CHECKS = {
  versions: () => {
    const manifests = ['package.json', `${COMMAND}/package.json`, `${WASM}/package.json`];
    const names = [...manifests, 'CMakeLists.txt', 'CHANGELOG.md'];
    return compareVersions(Object.fromEntries(names.map((name) => [name, read(name)])));
  },
  licence,
  'committed tree': cleanTree,
  prebuilds: () => [...missingPrebuilds(), ...oldPrebuilds()],
  systems,
  libraries,
  archives,
  publint,
  types,
  installed,
};

/** What the publisher has to add. */
function reminders() {
  return FOLDERS.flatMap((folder) => {
    const file = path.join(folder, 'package.json');
    const manifest = JSON.parse(read(file));
    const unsaid = ['repository', 'bugs', 'homepage'].filter((name) => !manifest[name]);
    return unsaid.map((name) => `${file} has no ${name} yet`);
  });
}

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
  reminders().forEach((reminder) => console.log(reminder));
  return failed.length === 0 ? 0 : 1;
}

module.exports = { checkContents, compareVersions };

if (require.main === module) main(publishCheckMain);
