'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const { createRequire } = require('node:module');
const os = require('node:os');
const path = require('node:path');
const { after, describe, test } = require('node:test');

const { builtModule: BUILT, root } = require('../support/native.js');

describe('finding the native module', () => {
  const made = [];
  after(() => {
    if (process.platform === 'win32') return; // a loaded library cannot be deleted there
    made.forEach((folder) => fs.rmSync(folder, { recursive: true }));
  });

  const loadFrom = (folder) => createRequire(path.join(folder, 'x.js'))('./lib/index.js');

  /** A copy of the package's JavaScript with these files: name to content, or BUILT. */
  function copyWith(files) {
    const folder = fs.realpathSync(fs.mkdtempSync(path.join(os.tmpdir(), 'scrivo Jörg 図-')));
    made.push(folder);
    fs.mkdirSync(path.join(folder, 'lib'));
    // On Windows, cpSync of Node 22 garbles letters that are not ASCII.
    for (const name of fs.readdirSync(path.join(root, 'lib'))) {
      fs.copyFileSync(path.join(root, 'lib', name), path.join(folder, 'lib', name));
    }
    fs.copyFileSync(path.join(root, 'package.json'), path.join(folder, 'package.json'));
    for (const [name, content] of Object.entries(files)) {
      const file = path.join(folder, name);
      fs.mkdirSync(path.dirname(file), { recursive: true });
      if (content === BUILT) fs.copyFileSync(BUILT, file);
      else fs.writeFileSync(file, content);
    }
    return { folder, load: () => loadFrom(folder) };
  }

  /** The folder of prebuilt files, on a system with glibc or without. */
  function target(glibc) {
    const musl = process.platform === 'linux' && !glibc ? '-musl' : '';
    return `prebuilds/${process.platform}-${process.arch}${musl}`;
  }

  /** Calls `body` while the process report names glibc, or does not. */
  function withLibrary(glibc, body) {
    const { getReport } = process.report;
    process.report.getReport = () => ({ header: glibc ? { glibcVersionRuntime: '2.36' } : {} });
    try {
      return body();
    } finally {
      process.report.getReport = getReport;
    }
  }

  test('takes a build of the checkout first, then a prebuilt file', () => {
    const built = copyWith({
      'build/release/hello.node': BUILT,
      [`${target(true)}/hello.node`]: '',
    });
    assert.equal(built.load().initScrivo([]), true);
    for (const glibc of [true, false]) {
      const files = {
        'prebuilds/other-cpu/hello.node': '',
        [`${target(glibc)}/hello.node`]: BUILT,
      };
      const shipped = copyWith(files);
      assert.equal(withLibrary(glibc, shipped.load).initScrivo([]), true);
    }
  });

  test('asks for the process report once, for all modules', () => {
    const files = Object.fromEntries(
      ['hello', 'beautifier'].map((name) => [`${target(true)}/${name}.node`, BUILT]),
    );
    const { folder } = copyWith(files);
    const { findNative } = createRequire(path.join(folder, 'x.js'))('./lib/native.js');
    withLibrary(true, () => {
      const { getReport } = process.report;
      let count = 0;
      process.report.getReport = () => (count++, getReport());
      for (const name of ['hello', 'beautifier']) {
        assert.equal(findNative(name), path.join(folder, target(true), `${name}.node`));
      }
      assert.equal(count, process.platform === 'linux' ? 1 : 0);
    });
  });

  test('lists the files tried and how to build if there is none', () => {
    for (const glibc of [true, false]) {
      const { folder, load } = copyWith({ 'build/debug/hello.node': '' });
      const sources = path.join(folder, 'CMakeLists.txt');
      const tried = ['build/release', target(glibc)].map((place) => path.join(folder, place));
      const lines = tried.map((place) => `  ${path.join(place, 'hello.node')}\n`).join('');
      const assertAdvice = (advice) =>
        assert.throws(
          () => withLibrary(glibc, load),
          ({ code, message }) =>
            code === 'MODULE_NOT_FOUND' && message.includes(`Tried:\n${lines}${advice}`),
        );
      assertAdvice(
        'The package is incomplete. Bundlers and single-file programs must leave scrivo out',
      );
      fs.writeFileSync(sources, '');
      assertAdvice(`Build it from the sources: (cd ${JSON.stringify(folder)} && npm run build)`);
    }
  });

  test('takes only the files beside the archive of a desktop host', () => {
    for (const archive of ['app.asar', 'app-arm64.asar']) {
      const packed = `${archive}/node_modules/scrivo`;
      const beside = `${archive}.unpacked/node_modules/scrivo`;
      const { folder } = copyWith({
        [`${beside}/${target(true)}/hello.node`]: BUILT,
        [`${packed}/${target(true)}/hello.node`]: 'not seen by native code',
      });
      fs.renameSync(path.join(folder, 'lib'), path.join(folder, packed, 'lib'));
      const { templates } = withLibrary(true, () => loadFrom(path.join(folder, packed)));
      for (const file of templates) {
        assert.equal(path.dirname(file), path.join(folder, beside, 'templates'));
      }
    }
  });

  test('reports a file that cannot be loaded instead of trying the next', () => {
    const files = { 'build/release/hello.node': 'broken', [`${target(true)}/hello.node`]: BUILT };
    const { folder, load } = copyWith(files);
    assert.throws(load, (error) => {
      assert.equal(error.code, 'ERR_DLOPEN_FAILED');
      assert.ok(error.message.includes(path.join(folder, 'build', 'release', 'hello.node')));
      assert.ok(error.cause instanceof Error);
      return true;
    });
  });
});
