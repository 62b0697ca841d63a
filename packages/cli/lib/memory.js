'use strict';

const v8 = require('node:v8');
const { MessageChannel } = require('node:worker_threads');

// Percent of the memory in use that may become garbage before the collector runs.
const GARBAGE = 30;

// What is transferred to a closed port is freed.
const { port1: closed } = new MessageChannel();
closed.close();

/**
 * Frees bytes that nobody needs any more, unless their buffer holds others as well. The garbage
 * collector would let 64 MB of them come together in each thread before it runs.
 *
 * @param {Uint8Array} bytes
 */
function free({ length, buffer }) {
  if (length > 0 && length === buffer.byteLength) closed.postMessage(undefined, [buffer]);
}

/**
 * Bounds the garbage of all threads, which by default is several times the memory in use. What is
 * parsed for one stroke is small, so that this takes no time worth mentioning.
 */
function boundGarbage() {
  // Others have another collector, and may not have the function.
  if (process.versions.bun || process.versions.deno) return;
  v8.setFlagsFromString(`--heap-growing-percent=${GARBAGE}`);
}

module.exports = { boundGarbage, free };
