import { bindBeautifier } from './bind-beautifier.js';
import { createEngine } from './engine.js';

const engine = createEngine(() => new URL('./beautifier.wasm', import.meta.url));

export const { start, startSync } = engine;
export const { Beautifier, FIGURES, WISHES, outlineOf, resample } = bindBeautifier(engine);
