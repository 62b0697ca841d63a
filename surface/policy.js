'use strict';

/** Lets the page compile WebAssembly. */
const WASM = "'wasm-unsafe-eval'";

/**
 * What the page may load.
 *
 * @param {{scripts?: string[], styles?: string[]}} [more] further sources
 */
const policy = ({ scripts = [], styles = [] } = {}) =>
  [
    "default-src 'none'",
    ["script-src 'self'", ...scripts].join(' '),
    ["style-src 'self'", ...styles].join(' '),
    "img-src 'self' data: blob:",
    "connect-src 'self'",
    "base-uri 'none'",
    "form-action 'none'",
  ].join('; ');

module.exports = { WASM, policy };
