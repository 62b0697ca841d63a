import figureType from '../../../lib/figure-type.js';
import { bindBeautifier } from './bind-beautifier.js';
import { bindTemplateEngine } from './bind-template-engine.js';
import { createEngine, hasVectors } from './engine.js';

/** The text at `from`, which ends with a zero. */
function textAt(memory, from) {
  const bytes = new Uint8Array(memory.buffer, from);
  return String.fromCharCode(...bytes.subarray(0, bytes.indexOf(0)));
}

// Both addresses are written out for bundlers, which copy what they name.
const address = () =>
  hasVectors()
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
