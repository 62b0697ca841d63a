'use strict';

/**
 * Identifiers are often integers of 64 bits, which JSON.parse rounds to the 53 bits of a double.
 * They are kept as marked strings between reading and writing.
 */

// No integer of 15 digits is rounded.
const LONG_INTEGER = /(?<![\w.+-])-?\d{16,}(?![\w.])/;
const STRING_OR_LONG_INTEGER = new RegExp(`"(?:[^"\\\\]|\\\\.)*"|${LONG_INTEGER.source}`, 'g');

const MARK = '\u0000integer ';
const MARKED = /"\\u0000integer (-?\d{16,})"/g;

/** The value of a JSON text, its long integers marked. */
function parseKeepingIntegers(text, value = JSON.parse(text)) {
  if (!LONG_INTEGER.test(text)) return value;
  const mark = (token) => (token.startsWith('"') ? token : JSON.stringify(MARK + token));
  return JSON.parse(text.replace(STRING_OR_LONG_INTEGER, mark));
}

/** The JSON text of a value that may hold marked integers. */
function stringifyKeepingIntegers(value) {
  return JSON.stringify(value).replace(MARKED, '$1');
}

/** The text of a value in formats that have nothing else: strings as they are, others as JSON. */
function toText(value) {
  return typeof value === 'string' && !value.startsWith(MARK)
    ? value
    : stringifyKeepingIntegers(value);
}

module.exports = { parseKeepingIntegers, stringifyKeepingIntegers, toText };
