'use strict';

const fs = require('node:fs');
const path = require('node:path');
const { ROOT } = require('./run.js');

/** What prebuilt files are made for: the folder in prebuilds/, and the compiler's name for it. */
const TARGETS = {
  'linux-x64': 'x86_64-linux-gnu.2.28',
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

/** Where the files for a target are kept: those of every module, whether there or not. */
function prebuiltFiles(target) {
  return moduleNames().map((name) => path.join(ROOT, 'prebuilds', target, `${name}.node`));
}

const hasPrebuilds = (target) => prebuiltFiles(target).every((file) => fs.existsSync(file));

module.exports = { TARGETS, hasPrebuilds, moduleNames, prebuiltFiles };
