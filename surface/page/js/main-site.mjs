// @ts-check
// The page without a server.

import { WasmEngine } from './engine/wasm-engine.mjs';
import { start } from './main.mjs';

start(new WasmEngine());
