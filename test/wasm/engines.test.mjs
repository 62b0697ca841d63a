// The tests of the engines, unchanged, with scrivo-wasm in the place of the native modules.

import fs from 'node:fs';
import { createRequire } from 'node:module';
import * as wasm from 'scrivo-wasm';

const require = createRequire(import.meta.url);

/** Reads the files that the tests name, as a page would. */
function read(element) {
  const isFile =
    typeof element === 'string' && element.endsWith('.template') && fs.existsSync(element);
  return isFile ? { name: element, content: fs.readFileSync(element) } : element;
}

const initScrivo = (...args) =>
  Array.isArray(args[0]) && args[0].every((element) => typeof element === 'string')
    ? wasm.initScrivo(args[0].map(read))
    : wasm.initScrivo(...args);

function replace(file, exports) {
  const filename = require.resolve(file);
  require.cache[filename] = { id: filename, filename, loaded: true, exports };
}

process.env.SCRIVO_TESTED = 'wasm';
await wasm.start();
replace('../../lib/index.js', { ...wasm, initScrivo });
replace('../../lib/beautifier.js', wasm);

for (const file of ['cases', 'beautifier', 'figures']) require(`../lib/${file}.test.js`);
for (const file of ['scrivo', 'point-transfer']) require(`../src/${file}.test.js`);
