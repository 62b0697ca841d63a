// @ts-check

import * as scrivo from 'scrivo-wasm';
import bytes from 'scrivo-wasm/scrivo.wasm';
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
