'use strict';

// scrivo-wasm as the tests of the engines call the native modules.

const fs = require('node:fs');

/** The tests of the engines, paths from the folder test. */
const TEST_FILES = [
  'lib/cases.test.js',
  'lib/beautifier.test.js',
  'lib/figures.test.js',
  'src/scrivo.test.js',
  'src/point-transfer.test.js',
];

/** Reads the files that the tests name, as a page would. */
function read(element) {
  const isFile =
    typeof element === 'string' && element.endsWith('.template') && fs.existsSync(element);
  return isFile ? { name: element, content: fs.readFileSync(element, 'utf8') } : element;
}

const isNames = (value) =>
  Array.isArray(value) && value.every((element) => typeof element === 'string');

/** The exports in the place of those of lib/index.js. */
const asNative = (wasm) => ({
  ...wasm,
  initScrivo: (...args) =>
    isNames(args[0]) ? wasm.initScrivo(args[0].map(read)) : wasm.initScrivo(...args),
});

module.exports = { TEST_FILES, asNative };
