import figureType from '../../../lib/figure-type.js';
import { bindBeautifier } from './bind-beautifier.js';
import { bindTemplateEngine } from './bind-template-engine.js';
import { createEngine } from './engine.js';

/** The text at `from`, which ends with a zero. */
function textAt(memory, from) {
  const bytes = new Uint8Array(memory.buffer, from);
  return String.fromCharCode(...bytes.subarray(0, bytes.indexOf(0)));
}

/** A module whose only function returns a vector: valid where there are vector instructions. */
const VECTORS = Uint8Array.of(
  ...[0, 97, 115, 109, 1, 0, 0, 0, 1, 5, 1, 96, 0, 1, 123, 3, 2, 1, 0],
  ...[10, 10, 1, 8, 0, 65, 0, 253, 15, 253, 98, 11],
);

// Both addresses are written out for bundlers, which copy what they name.
const address = () =>
  WebAssembly.validate(VECTORS)
    ? new URL('./scrivo.wasm', import.meta.url)
    : new URL('./scrivo-scalar.wasm', import.meta.url);

const engine = createEngine(address, {
  printLine: (memory, text) => console.log(textAt(memory, text)),
});

export const { start, startSync } = engine;
export const { Beautifier, FIGURES, WISHES, outlineOf, resample } = bindBeautifier(engine);
export const { initScrivo, optimizeAStroke } = bindTemplateEngine(engine);
export const { FigureType } = figureType;
export { templates } from './bind-template-engine.js';
