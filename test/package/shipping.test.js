'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const { describe, test } = require('node:test');

const manifest = require('../../package.json');
const commandManifest = require('../../packages/cli/package.json');
const { findNative } = require('../../lib/native.js');
const { checkContents, compareVersions } = require('../../tools/publish-check.js');
const { targetOf } = require('../../tools/support/modules.js');

describe('what is shipped', () => {
  test('is for the system whose folder it is in', () => {
    const built = targetOf(fs.readFileSync(findNative('hello')));
    assert.equal(built, `${process.platform}-${process.arch}`);
    const header = (text, ...numbers) => {
      const bytes = Buffer.alloc(256);
      bytes.write(text, 'latin1');
      for (const [at, value] of numbers) bytes.writeUInt32LE(value, at);
      return bytes;
    };
    const names = [
      header('\x7fELF', [18, 183]),
      header('\xcf\xfa\xed\xfe', [4, 0x01000007]),
      header('\xcf\xfa\xed\xfe', [4, 0x0100000c]),
      header('MZ', [0x3c, 0x80], [0x84, 0x8664]),
      header('MZ', [0x3c, 0x80], [0x84, 0xaa64]),
      header('\x7fELF', [18, 40]),
      header('!<arch>'),
    ].map(targetOf);
    const known = ['linux-arm64-musl', 'darwin-x64', 'darwin-arm64', 'win32-x64', 'win32-arm64'];
    assert.deepEqual(names, [...known, undefined, undefined]);
  });

  test('is what git tracks and the modules of every target', () => {
    const shipped = ['lib/index.js', 'docs/hosts.md'];
    const tracked = [...shipped, 'test/a.test.js', 'README.md'];
    const prebuilt = ['prebuilds/linux-x64/hello.node', 'prebuilds/win32-x64/hello.node'];
    assert.deepEqual(checkContents([...shipped, ...prebuilt], tracked, prebuilt), []);
    const packed = [prebuilt[0], 'test/a.test.js', 'lib/index.js.orig'];
    assert.deepEqual(checkContents(packed, tracked, prebuilt), [
      'lib/index.js.orig is a stray file',
      'test/a.test.js is no part of the package',
      'prebuilds/win32-x64/hello.node is missing',
    ]);
  });

  test('has one version', () => {
    const texts = (core, entry, command = '1.2.3') => ({
      'package.json': '{ "version": "1.2.3" }',
      'CMakeLists.txt': `cmake_minimum_required(VERSION 3.25)\nproject(scrivo VERSION ${core} X)`,
      'packages/cli/package.json': `{
        "version": "${command}", "dependencies": { "scrivo": "^${command}" } }`,
      'packages/wasm/package.json': `{ "version": "${command}" }`,
      'CHANGELOG.md': `# Changelog\n\n## [${entry}] - 2026-01-01\n\n## [1.2.2]\n`,
    });
    assert.deepEqual(compareVersions(texts('1.2.3', '1.2.3')), []);
    assert.deepEqual(compareVersions(texts('1.2.2', 'Unreleased')), [
      'CMakeLists.txt says 1.2.2, package.json 1.2.3',
      'CHANGELOG.md says Unreleased, package.json 1.2.3',
    ]);
    assert.deepEqual(compareVersions(texts('1.2.3', '1.2.3', '1.2.2')), [
      'packages/cli/package.json says 1.2.2, package.json 1.2.3',
      'packages/wasm/package.json says 1.2.2, package.json 1.2.3',
      'the dependency of packages/cli says 1.2.2, package.json 1.2.3',
    ]);
  });

  test('has no script that npm would run unasked', () => {
    const unasked = ({ scripts = {} }) => {
      const names = Object.keys(scripts);
      const events = [...names, 'install', 'pack', 'publish', 'version', 'prepare'];
      const hooks = events.flatMap((name) => [`pre${name}`, `post${name}`]);
      return [...hooks, 'install', 'prepare'].filter((name) => names.includes(name));
    };
    assert.deepEqual(unasked(manifest), []);
    // Its archive holds the drawing page, which is built while packing.
    assert.deepEqual(unasked(commandManifest), ['prepack', 'postpack']);
  });
});
