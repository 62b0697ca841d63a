'use strict';

// Makes a fresh clone ready: npm packages and, on Debian, system packages.
// Only what comes with Node is used here, since nothing else is installed yet.
//
//   node tools/setup.js          all that building, testing and linting need
//   node tools/setup.js run      only what building and `npm start` need
//   node tools/setup.js hosts    what `npm run test:hosts` also needs: emulators

const fs = require('node:fs');
const path = require('node:path');
const { ROOT, capture, failure, heading, main, run } = require('./support/run.js');

const PACKAGES = {
  run: ['g++', 'cmake', 'ninja-build', 'libeigen3-dev'],
  test: [
    'libgtest-dev',
    'libgmock-dev',
    'libbenchmark-dev',
    'nlohmann-json3-dev', // for the case files
    'locales', // a test builds one with a decimal comma
    'doxygen', // npm run docs
    'pkgconf', // examples of the C interface
    'python3',
    'parallel', // an example of the command line's page
    'chromium', // browser tests
    ...['clang', 'libclang-rt-14-dev'], // sanitizers, clang-tidy
    // scrivo-wasm
    ...['lld', 'wasi-libc', 'libclang-rt-14-dev-wasm32', 'libc++-14-dev-wasm32'],
    ...['binaryen', 'libsimde-dev'],
    'clang-format',
    'clang-tidy',
    'git', // lists the files for the linters
  ],
  // One line per system.
  hosts: [
    ...['qemu-user', 'libc6-arm64-cross', 'libstdc++6-arm64-cross'],
    ...['musl:amd64', 'musl:arm64', 'g++-aarch64-linux-gnu'],
    'wine64',
    ...['chromium', 'firefox-esr', 'libwebkit2gtk-4.1-0', 'xvfb', 'xauth'],
  ],
};
const LEVELS = {
  run: PACKAGES.run,
  test: [...PACKAGES.run, ...PACKAGES.test],
  hosts: [...PACKAGES.run, ...PACKAGES.hosts],
};

const OLDEST_NODE = 18;
const TOOLS_NODE = 20;

/** An error or a warning about this version of Node, if there is one. */
function checkNode(version) {
  const major = Number.parseInt(version, 10);
  if (major < OLDEST_NODE) {
    return { error: `Node ${version} is too old: install Node ${OLDEST_NODE} or later.` };
  }
  if (major < TOOLS_NODE) {
    return { warning: `Node ${version} runs scrivo, but its linters need ${TOOLS_NODE} or later.` };
  }
  return {};
}

/**
 * Whether node_modules holds what package-lock.json lists. `installed` is the
 * record that npm keeps in node_modules, or null. Optional packages are for other
 * platforms and may be missing.
 */
function matchesLock(lock, installed) {
  if (!installed) return false;
  const have = installed.packages;
  const want = Object.entries(lock.packages).filter(([place]) => place !== '');
  const same = ([place, entry]) =>
    have[place]
      ? have[place].version === entry.version && have[place].integrity === entry.integrity
      : entry.optional === true || entry.devOptional === true;
  return want.every(same) && Object.keys(have).every((place) => place in lock.packages);
}

function readJson(file) {
  try {
    return JSON.parse(fs.readFileSync(path.join(ROOT, file), 'utf8'));
  } catch {
    return null;
  }
}

async function installNpmPackages() {
  if (matchesLock(readJson('package-lock.json'), readJson('node_modules/.package-lock.json'))) {
    console.log('npm packages: in place');
    return;
  }
  heading('npm ci: installing the npm packages of package-lock.json');
  if ((await run('npm', ['ci'])) !== 0) throw failure('`npm ci` failed, see above.');
}

/** Names of the packages that dpkg reports as installed; null without dpkg. */
function installedPackages(names) {
  if (capture('dpkg-query', ['--version']) === null) return null;
  const query = (name) => capture('dpkg-query', ['-W', '-f', '${db:Status-Status}', name]);
  return new Set(names.filter((name) => query(name) === 'installed'));
}

/**
 * Plans the installation of system packages: `wanted` names; `installed` a set
 * of names or null (no dpkg here); `root` whether we are root; `sudo` whether
 * sudo works without a password.
 * Returns `missing` and either the `commands` to run or `advice` to print.
 */
function planSystemPackages({ wanted, installed, root, sudo }) {
  if (installed === null) {
    const advice =
      'This is not a Debian system: packages were not checked. Needed are the equivalents of\n' +
      `  ${wanted.join(' ')}`;
    return { missing: [], commands: [], advice };
  }
  const missing = wanted.filter((name) => !installed.has(name));
  if (missing.length === 0) return { missing, commands: [] };
  const architectures = new Set(missing.flatMap((name) => name.split(':').slice(1)));
  const enable = [...architectures].map((name) => ['dpkg', '--add-architecture', name]);
  if (!root && !sudo) {
    const steps = [
      ...enable,
      ['apt-get', 'update'],
      ['apt-get', 'install', '--no-install-recommends', ...missing],
    ];
    const advice =
      `Missing system packages: ${missing.join(' ')}\nInstall them and start again:\n` +
      `  ${steps.map((step) => ['sudo', ...step].join(' ')).join(' && ')}`;
    return { missing, commands: [], advice };
  }
  const prefix = root ? [] : ['sudo', '-n'];
  const apt = ['env', 'DEBIAN_FRONTEND=noninteractive', 'apt-get', '-o', 'DPkg::Lock::Timeout=300'];
  const commands = [
    ...enable.map((step) => [...prefix, ...step]),
    [...prefix, ...apt, 'update'],
    [...prefix, ...apt, 'install', '-y', '--no-install-recommends', ...missing],
  ];
  return { missing, commands };
}

async function installSystemPackages(wanted) {
  const installed = installedPackages(wanted);
  const root = process.getuid?.() === 0;
  const sudo = !root && capture('sudo', ['-n', 'true']) !== null;
  const { missing, commands, advice } = planSystemPackages({ wanted, installed, root, sudo });
  if (advice && missing.length > 0) throw failure(advice);
  if (advice) console.log(advice);
  else if (missing.length === 0) console.log('system packages: in place');
  for (const [command, ...args] of commands) {
    heading([command, ...args].join(' '));
    if ((await run(command, args)) !== 0) {
      throw failure(`Could not install ${missing.join(' ')}, see above.`);
    }
  }
}

/** Everything for `level`: 'run' (build and drawing page), 'test' (and linters) or 'hosts'. */
async function setup(level) {
  heading(`Setup (${level})`);
  const { error, warning } = checkNode(process.versions.node);
  if (error) throw failure(error);
  console.log(warning ?? `Node ${process.versions.node}`);
  await installSystemPackages(LEVELS[level]);
  await installNpmPackages();
}

async function setupMain([level = 'test']) {
  if (!(level in LEVELS)) {
    throw failure(`setup: unknown level "${level}", expected "run", "test" or "hosts"`);
  }
  await setup(level);
  return 0;
}

module.exports = { LEVELS, checkNode, installedPackages, matchesLock, planSystemPackages, setup };

if (require.main === module) main(setupMain);
