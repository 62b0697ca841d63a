import figureType from '../../../lib/figure-type.js';
import { bindBeautifier } from './bind-beautifier.js';
import { bindTemplateEngine } from './bind-template-engine.js';
import { createEngine } from './engine.js';

/** The text at `from`, which ends with a zero. */
function textAt(memory, from) {
  const bytes = new Uint8Array(memory.buffer, from);
  return String.fromCharCode(...bytes.subarray(0, bytes.indexOf(0)));
}

const engine = createEngine(() => new URL('./scrivo.wasm', import.meta.url), {
  printLine: (memory, text) => console.log(textAt(memory, text)),
});

export const { start, startSync } = engine;
export const { Beautifier, FIGURES, WISHES, outlineOf, resample } = bindBeautifier(engine);
export const { initScrivo, optimizeAStroke } = bindTemplateEngine(engine);
export const { FigureType } = figureType;
export { templates } from './bind-template-engine.js';
