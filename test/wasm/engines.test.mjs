// The tests of the engines, unchanged, with scrivo-wasm in the place of the native modules.

import { createRequire } from 'node:module';
import * as wasm from 'scrivo-wasm';

const require = createRequire(import.meta.url);
const { TEST_FILES, asNative } = require('./tested.js');

function replace(file, exports) {
  const filename = require.resolve(file);
  require.cache[filename] = { id: filename, filename, loaded: true, exports };
}

process.env.SCRIVO_TESTED = 'wasm';
await wasm.start();
replace('../../lib/index.js', asNative(wasm));
replace('../../lib/beautifier.js', wasm);

for (const file of TEST_FILES) require(`../${file}`);
