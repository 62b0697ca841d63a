import { bindBeautifier } from './bind-beautifier.js';
import { createEngine, hasVectors } from './engine.js';

// Both addresses are written out for bundlers, which copy what they name.
const address = () =>
  hasVectors()
    ? new URL('./beautifier.wasm', import.meta.url)
    : new URL('./beautifier-scalar.wasm', import.meta.url);

const engine = createEngine(address);

export const { start, startSync } = engine;
export const { Beautifier, FIGURES, WISHES, outlineOf, resample } = bindBeautifier(engine);
