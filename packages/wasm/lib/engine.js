// One instance of a WebAssembly module of the core, started once and replaced when a call fails.

/** Beyond this, memory that a long stroke has taken is given back by a new instance. */
const MOST_BYTES = 64 * 1024 * 1024;

const NOT_STARTED =
  'scrivo-wasm has not been started: call `await start()` once, before the first stroke';

/** Thrown through a call whose memory has run out. */
export class OutOfMemoryError extends RangeError {
  constructor() {
    super('scrivo-wasm is out of memory: the stroke is too long');
  }
}
OutOfMemoryError.prototype.name = 'RangeError';

const isModule = (source) => source instanceof WebAssembly.Module;
const isResponse = (source) => typeof source?.arrayBuffer === 'function' && 'headers' in source;

/** The bytes of a file, for Node, whose fetch() does not read files. */
async function readFile(url) {
  // Bundlers leave an import alone whose name they do not see.
  const name = 'node:fs/promises';
  const { readFile } = await import(/* webpackIgnore: true */ /* @vite-ignore */ name);
  return readFile(url);
}

const isFileInNode = (url) =>
  url.protocol === 'file:' && globalThis.process?.versions?.node !== undefined;

async function compileResponse(response) {
  if (!response.ok) {
    throw new Error(`scrivo-wasm could not be loaded: ${response.url} answered ${response.status}`);
  }
  const isTyped = response.headers.get('content-type')?.startsWith('application/wasm');
  return isTyped
    ? WebAssembly.compileStreaming(response)
    : WebAssembly.compile(await response.arrayBuffer());
}

async function compile(given, defaultUrl) {
  const source = (await given) ?? defaultUrl;
  if (isModule(source)) return source;
  if (isResponse(source)) return compileResponse(source);
  if (typeof source !== 'string' && !(source instanceof URL)) return WebAssembly.compile(source);
  const url = new URL(source, globalThis.location?.href ?? defaultUrl);
  return isFileInNode(url)
    ? WebAssembly.compile(await readFile(url))
    : compileResponse(await fetch(url));
}

/**
 * @param {() => URL} defaultUrl where the module is unless `start` is told otherwise
 * @param {object} imports functions for the module besides `outOfMemory`; they are given its memory
 */
export function createEngine(defaultUrl, imports = {}) {
  let module = null;
  let exports = null;
  let starting = null;
  /** Arguments of calls that a new instance has to repeat. */
  const kept = [];

  function instantiate() {
    const outOfMemory = () => {
      throw new OutOfMemoryError();
    };
    const bound = Object.entries(imports).map(([name, body]) => [
      name,
      (...args) => body(exports.memory, ...args),
    ]);
    const scrivo = { outOfMemory, ...Object.fromEntries(bound) };
    exports = new WebAssembly.Instance(module, { scrivo }).exports;
    exports._initialize();
    for (const [name, numbers] of kept) run(name, numbers);
  }

  /** Passes numbers to an exported function; returns where its answer is. */
  function run(name, numbers) {
    const at = exports.reserve(numbers.length) >>> 0;
    new Float64Array(exports.memory.buffer, at, numbers.length).set(numbers);
    return exports[name](at) >>> 0;
  }

  function use(compiled) {
    module = compiled;
    instantiate();
  }

  return {
    /** Compiles and starts the module. Later calls change nothing. */
    start(source) {
      starting ??= compile(source, defaultUrl())
        .then((compiled) => void (module ?? use(compiled)))
        .catch((error) => {
          starting = null;
          throw error;
        });
      return starting;
    },

    startSync(source) {
      if (module === null) use(isModule(source) ? source : new WebAssembly.Module(source));
    },

    /**
     * Calls an exported function. `read` gets the numbers of the answer, in the memory of the
     * instance, and must copy what it returns. Whatever fails leaves nothing behind: the next call
     * gets a new instance.
     */
    call(name, numbers, read) {
      if (module === null) throw new Error(NOT_STARTED);
      try {
        if (exports === null) instantiate();
        const at = run(name, numbers);
        const { buffer } = exports.memory;
        const answer = read(new Float64Array(buffer, at));
        if (buffer.byteLength > MOST_BYTES) exports = null;
        return answer;
      } catch (error) {
        exports = null;
        throw error;
      }
    },

    /** The same for a call that every later instance repeats. */
    keep(name, numbers) {
      this.call(name, numbers, () => {});
      kept.push([name, numbers]);
    },
  };
}
