'use strict';

const { MessageChannel } = require('node:worker_threads');

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

module.exports = { free };
