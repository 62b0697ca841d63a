'use strict';

const fs = require('node:fs');
const path = require('node:path');

/**
 * A file outside archives. Desktop hosts keep JavaScript in an archive, such as app.asar, whose
 * files native code cannot open: then this is the unpacked copy beside the archive. The host could
 * load the modules from the archive, but the core could not read the templates there and would
 * recognise no closed figure.
 */
const unpacked = (file) => file.replace(/\.asar(?=[\\/])/, '.asar.unpacked');

/** The root of the checkout or of the installed package. */
const root = unpacked(path.join(__dirname, '..'));

/**
 * The shipped modules. Each path is written out: tools that collect the files of a program for a
 * server search the sources for them.
 */
const SHIPPED = {
  'darwin-arm64': {
    hello: path.join(__dirname, '../prebuilds/darwin-arm64/hello.node'),
    beautifier: path.join(__dirname, '../prebuilds/darwin-arm64/beautifier.node'),
  },
  'darwin-x64': {
    hello: path.join(__dirname, '../prebuilds/darwin-x64/hello.node'),
    beautifier: path.join(__dirname, '../prebuilds/darwin-x64/beautifier.node'),
  },
  'linux-arm64': {
    hello: path.join(__dirname, '../prebuilds/linux-arm64/hello.node'),
    beautifier: path.join(__dirname, '../prebuilds/linux-arm64/beautifier.node'),
  },
  'linux-arm64-musl': {
    hello: path.join(__dirname, '../prebuilds/linux-arm64-musl/hello.node'),
    beautifier: path.join(__dirname, '../prebuilds/linux-arm64-musl/beautifier.node'),
  },
  'linux-x64': {
    hello: path.join(__dirname, '../prebuilds/linux-x64/hello.node'),
    beautifier: path.join(__dirname, '../prebuilds/linux-x64/beautifier.node'),
  },
  'linux-x64-musl': {
    hello: path.join(__dirname, '../prebuilds/linux-x64-musl/hello.node'),
    beautifier: path.join(__dirname, '../prebuilds/linux-x64-musl/beautifier.node'),
  },
  'win32-arm64': {
    hello: path.join(__dirname, '../prebuilds/win32-arm64/hello.node'),
    beautifier: path.join(__dirname, '../prebuilds/win32-arm64/beautifier.node'),
  },
  'win32-x64': {
    hello: path.join(__dirname, '../prebuilds/win32-x64/hello.node'),
    beautifier: path.join(__dirname, '../prebuilds/win32-x64/beautifier.node'),
  },
};

/**
 * Whether the C library is musl, which has files of its own. Only glibc puts its
 * version into the process report.
 */
function isMusl() {
  if (process.platform !== 'linux' || !process.report) return false;
  const { excludeNetwork } = process.report;
  process.report.excludeNetwork = true; // avoids a reverse DNS lookup of every address
  try {
    return !process.report.getReport().header.glibcVersionRuntime;
  } finally {
    process.report.excludeNetwork = excludeNetwork;
  }
}

let suffix; // the same for every module; a report takes milliseconds

/** This system, as a folder of prebuilds/. */
function target() {
  suffix ??= isMusl() ? '-musl' : '';
  return `${process.platform}-${process.arch}${suffix}`;
}

/** Where NAME.node may be: first the build of a checkout, then the shipped file. */
function* candidates(name) {
  yield path.join(root, 'build', 'release', `${name}.node`);
  const shipped = SHIPPED[target()]?.[name];
  yield shipped ? unpacked(shipped) : path.join(root, 'prebuilds', target(), `${name}.node`);
}

/**
 * The file to load NAME.node from.
 *
 * @param {string} name file name without the extension
 * @returns {string} its absolute path
 * @throws {Error} `MODULE_NOT_FOUND`, with the list of the files tried
 */
function findNative(name) {
  const tried = [...candidates(name)];
  const found = tried.find((file) => fs.existsSync(file));
  if (found) return found;
  const error = new Error(
    `Cannot find the native module ${name}.node. Tried:\n` +
      tried.map((file) => `  ${file}\n`).join('') +
      advice(),
  );
  throw Object.assign(error, { code: 'MODULE_NOT_FOUND' });
}

/** The package contains the sources. If they are missing, a bundler has moved this file. */
const advice = () =>
  fs.existsSync(path.join(root, 'CMakeLists.txt'))
    ? `Build it from the sources: (cd ${JSON.stringify(root)} && npm run build)`
    : 'The package is incomplete. Bundlers and single-file programs must leave scrivo out (as an ' +
      'external module), and archives its folders prebuilds and templates: see docs/embedding.md.';

/**
 * Loads the native module NAME.node.
 *
 * @param {string} name file name without the extension
 * @returns {object} the module's exports
 * @throws {Error} as {@link findNative}; `ERR_DLOPEN_FAILED`, with the path, when the file
 *   cannot be loaded: trying the next one would hide a broken build
 */
const loadNative = (name) => open(findNative(name));

function open(file) {
  try {
    return require(file);
  } catch (cause) {
    const error = new Error(`Cannot load the native module ${file}: ${cause.message}`, { cause });
    throw Object.assign(error, { code: cause.code ?? 'ERR_DLOPEN_FAILED' });
  }
}

module.exports = { SHIPPED, findNative, loadNative, root, unpacked };
