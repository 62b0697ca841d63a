'use strict';

const fs = require('node:fs');
const path = require('node:path');
const { ROOT } = require('./run.js');

/**
 * The targets of prebuilt files: the folder in prebuilds/ and Zig's name. null stands for
 * g++ on Debian 12, whose results are the reference to the last bit; the sines and cosines
 * of Zig's libraries differ.
 */
const TARGETS = {
  'linux-x64': null,
  'linux-arm64': 'aarch64-linux-gnu.2.28',
  'linux-x64-musl': 'x86_64-linux-musl',
  'linux-arm64-musl': 'aarch64-linux-musl',
  'darwin-x64': 'x86_64-macos.11.0',
  'darwin-arm64': 'aarch64-macos.11.0',
  'win32-x64': 'x86_64-windows-gnu',
  'win32-arm64': 'aarch64-windows-gnu',
};

/** Names of the Node-API modules, as src/CMakeLists.txt adds them. */
function moduleNames() {
  const text = fs.readFileSync(path.join(ROOT, 'src', 'CMakeLists.txt'), 'utf8');
  return [...text.matchAll(/^scrivo_add_node_module\((\w+)/gm)].map(([, name]) => name);
}

/** Paths of the files for a target, whether they exist or not. */
function prebuiltFiles(target) {
  return moduleNames().map((name) => path.join(ROOT, 'prebuilds', target, `${name}.node`));
}

const hasPrebuilds = (target) => prebuiltFiles(target).every((file) => fs.existsSync(file));

const ELF_PROCESSORS = { 62: 'x64', 183: 'arm64' };
const MACH_O_PROCESSORS = { 0x01000007: 'x64', 0x0100000c: 'arm64' };
const PE_PROCESSORS = { 0x8664: 'x64', 0xaa64: 'arm64' };

/** The target that the bytes of a shared library are for, or undefined. */
function targetOf(bytes) {
  const name = (system, processor) => processor && `${system}-${processor}`;
  if (bytes.toString('latin1', 0, 4) === '\x7fELF') {
    // Only glibc gives its functions versions.
    const target = name('linux', ELF_PROCESSORS[bytes.readUInt16LE(18)]);
    return target && !bytes.includes('GLIBC_') ? `${target}-musl` : target;
  }
  if (bytes.readUInt32LE(0) === 0xfeedfacf) {
    return name('darwin', MACH_O_PROCESSORS[bytes.readUInt32LE(4)]);
  }
  if (bytes.toString('latin1', 0, 2) === 'MZ') {
    return name('win32', PE_PROCESSORS[bytes.readUInt16LE(bytes.readUInt32LE(0x3c) + 4)]);
  }
  return undefined;
}

module.exports = { TARGETS, hasPrebuilds, moduleNames, prebuiltFiles, targetOf };
