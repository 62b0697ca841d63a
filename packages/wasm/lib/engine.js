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

/** A module whose only function returns a vector: valid where there are vector instructions. */
const VECTORS = Uint8Array.of(
  ...[0, 97, 115, 109, 1, 0, 0, 0, 1, 5, 1, 96, 0, 1, 123, 3, 2, 1, 0],
  ...[10, 10, 1, 8, 0, 65, 0, 253, 15, 253, 98, 11],
);

/** Whether there are vector instructions (SIMD128). */
export const hasVectors = () => WebAssembly.validate(VECTORS);

const BYTES = Float64Array.BYTES_PER_ELEMENT;

/** The index of an address, which is a signed number, among all numbers of the memory. */
const indexOf = (address) => (address >>> 0) / BYTES;

const isModule = (source) => source instanceof WebAssembly.Module;
const isResponse = (source) => typeof source?.arrayBuffer === 'function' && 'headers' in source;

/** The bytes of a file, for Node, whose fetch() does not read files. */
async function readFile(url) {
  // Bundlers leave an import alone whose name they do not see (and that tools/build-wasm.js
  // marks); a constant would be inlined.
  const name = ['node:fs', 'promises'].join('/');
  const { readFile } = await import(name);
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

/** How many numbers lists of numbers hold. */
export const lengthOf = (lists) => lists.reduce((sum, { length }) => sum + length, 0);

/** Puts lists of numbers one after the other into the heap. */
export function writeAll(heap, at, lists) {
  for (const list of lists) {
    heap.set(list, at);
    at += list.length;
  }
}

/**
 * @param {() => URL} defaultUrl where the module is unless `start` is told otherwise
 * @param {object} imports functions for the module besides `outOfMemory`; they are given its memory
 */
export function createEngine(defaultUrl, imports = {}) {
  let module = null;
  let exports = null;
  let starting = null;
  /** All of the instance's memory; detached when that has grown. */
  let heap = null;
  /** Where arguments are written, as an index of the heap, and how many there is room for. */
  let room = { at: 0, count: 0 };
  /** Calls that a new instance has to repeat. */
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
    heap = new Float64Array(exports.memory.buffer);
    room = { at: 0, count: 0 };
    for (const { name, count, write } of kept) run(name, count, write);
  }

  function refreshHeap() {
    if (heap.length === 0) heap = new Float64Array(exports.memory.buffer);
  }

  /** Passes `count` numbers to an exported function; returns where its answer is. */
  function run(name, count, write) {
    if (room.count < count) {
      room = { at: indexOf(exports.reserve(count)), count };
      refreshHeap();
    }
    write(heap, room.at);
    const answer = indexOf(exports[name](room.at * BYTES));
    refreshHeap();
    return answer;
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

    /** The same without waiting. */
    startSync(source) {
      if (module === null) use(isModule(source) ? source : new WebAssembly.Module(source));
    },

    /**
     * Calls an exported function. `write` puts `count` numbers into the heap from an index on, `read`
     * returns what it copies of the answer from an index on. Whatever fails leaves nothing behind:
     * the next call gets a new instance.
     */
    call(name, count, write, read) {
      if (module === null) throw new Error(NOT_STARTED);
      try {
        if (exports === null) instantiate();
        const at = run(name, count, write);
        const answer = read(heap, at);
        if (heap.byteLength > MOST_BYTES) exports = null;
        return answer;
      } catch (error) {
        exports = null;
        throw error;
      }
    },

    /** The same for a call without an answer that every later instance repeats. */
    keep(name, count, write) {
      this.call(name, count, write, () => {});
      kept.push({ name, count, write });
    },
  };
}
