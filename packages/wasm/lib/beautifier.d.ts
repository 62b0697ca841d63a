/**
 * The beautifier in the browser: the interface of `scrivo/beautifier`, after one awaited
 * {@link start}.
 *
 * @module scrivo-wasm/beautifier
 */

export * from './scrivo-beautifier.js';

/**
 * A `WebAssembly.Module`. The standard declarations give it no members, so that anything else would
 * pass for one, and are missing in programs for Node.js.
 */
export interface CompiledModule {
  readonly arrayBuffer?: never;
  readonly href?: never;
  readonly length?: never;
  readonly then?: never;
}

/**
 * Where the WebAssembly module comes from: its address, the answer of a `fetch()`, its bytes, or
 * the compiled module.
 */
export type ModuleSource =
  string | URL | Response | PromiseLike<Response> | ArrayBuffer | ArrayBufferView | CompiledModule;

/**
 * Loads and starts the WebAssembly module. To be awaited once, before the first stroke; calls after
 * a successful one change nothing. A call that failed may be repeated.
 *
 * @param source by default the file `beautifier.wasm` beside this script; of the entry for both engines
 *   `scrivo.wasm`, or `scrivo-scalar.wasm` where there are no vector instructions (SIMD128)
 * @throws whatever loading and compiling throw: a `WebAssembly.CompileError` where the page's
 *   Content-Security-Policy lacks `'wasm-unsafe-eval'`
 */
export declare function start(source?: ModuleSource): Promise<void>;

/**
 * The same without waiting, for workers and scripts that have the bytes already. Some browsers
 * compile only small modules in this way on the page's own thread.
 */
export declare function startSync(source: ArrayBuffer | ArrayBufferView | CompiledModule): void;
