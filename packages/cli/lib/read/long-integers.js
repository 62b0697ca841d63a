'use strict';

/**
 * Identifiers are often integers of 64 bits, which JSON.parse rounds to the 53 bits of a double.
 * They are kept as marked strings between reading and writing.
 */

const STRING_OR_LONG_INTEGER = /"(?:[^"\\]|\\.)*"|(?<![\w.+-])-?\d{16,}(?![\w.])/g;

const MARK = '\u0000integer ';
const MARKED = /"\\u0000integer (-?\d{16,})"/g;

/**
 * The fields of a line, long integers marked. Coordinates are never marked.
 *
 * @param {string} text a JSON object
 * @param {object} parsed what JSON.parse makes of it
 */
function keepIntegers(text, parsed) {
  const { points, others, ...rest } = parsed;
  if (!isRounded(rest)) return parsed;
  const mark = (token) => (token.startsWith('"') ? token : JSON.stringify(MARK + token));
  const marked = JSON.parse(text.replace(STRING_OR_LONG_INTEGER, mark));
  return { ...marked, points, ...(others && { others }) };
}

/** Whether a value has an integer that may have been rounded. */
function isRounded(value) {
  if (typeof value === 'number') return Number.isInteger(value) && !Number.isSafeInteger(value);
  return value !== null && typeof value === 'object' && Object.values(value).some(isRounded);
}

/** The JSON text of a value that may hold marked integers. */
function stringify(value) {
  const text = JSON.stringify(value);
  return text.includes('integer ') ? text.replace(MARKED, '$1') : text;
}

/** A value in formats that have only text: strings as they are, others as JSON. */
function toText(value) {
  const isText = typeof value === 'string' && !value.startsWith(MARK);
  return isText ? value : stringify(value);
}

module.exports = { keepIntegers, stringify, toText };
