// @ts-check

import * as scrivo from 'scrivo-wasm';
// Runs in every browser, with or without SIMD128.
import bytes from 'scrivo-wasm/scrivo-scalar.wasm';
import { createAnswerer } from './answerer.mjs';

/** The engines in the page, as WebAssembly. @implements {Engine} */
export class WasmEngine {
  name = 'WebAssembly, in this page';
  #ready = scrivo.start(bytes).then(() => {
    scrivo.initScrivo(scrivo.templates);
    return createAnswerer(scrivo);
  });

  /** @param {EngineRequest} request */
  async ask(request) {
    const answer = await this.#ready;
    return answer(request);
  }
}
