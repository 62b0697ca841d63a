'use strict';

/**
 * Reads lines of the usual form, whose points are arrays of numbers, from their bytes. Most of a
 * line is points, and parsing these as JSON costs more than recognising the figure. All other lines
 * are left to parseLine, which also says what is wrong with them.
 */

const [LINE_FEED, TAB, RETURN, SPACE] = [10, 9, 13, 32];
const [QUOTE, COMMA, MINUS, POINT, ZERO, COLON] = Buffer.from('",-.0:');
const [OPEN, BACKSLASH, CLOSE, OPEN_BRACE, CLOSE_BRACE] = Buffer.from('[\\]{}');
const NULL = Buffer.from('null');
const KEY = Buffer.from('"points"');

/** Numbers per point: x, y, force. */
const STRIDE = 3;

// Up to here integers, and powers of ten, are doubles without error, so that one division gives
// the nearest double.
const MAX_MANTISSA = 2 ** 53;
const POWERS = Float64Array.from({ length: 23 }, (_, i) => Number(`1e${i}`));

// Decimal digits that fit into an integer of 32 bits, whatever they are.
const MAX_DIGITS = 9;

/** The letter e, in lower case. */
const EXPONENT = 0x65;

/** Where a value ends that is not of the usual form. */
const UNUSUAL = -1;

class PlainLineReader {
  /** x, y and force of each point of the last line that was read; 0 for a force not recorded. */
  values = new Float64Array(3 * 1024);
  /** The number of its values. */
  length = 0;

  /**
   * Reads the points of a line.
   *
   * @param {Buffer} bytes that end with a line feed
   * @param {number} start of a line
   * @returns {{from: number, to: number}|undefined} where the points stand in the bytes; undefined
   *   for a line of another form. The line is valid if it is JSON with a number in their place.
   */
  read(bytes, start) {
    const from = findPoints(bytes, start);
    if (from === UNUSUAL) return undefined;
    const to = this.#readPoints(bytes, from);
    return to === UNUSUAL || this.length === 0 ? undefined : { from, to };
  }

  #readPoints(bytes, from) {
    this.length = 0;
    let at = from;
    if (bytes[at] !== OPEN) return UNUSUAL;
    do {
      at = this.#readPoint(bytes, skipSpace(bytes, at + 1));
      if (at === UNUSUAL) return UNUSUAL;
      at = skipSpace(bytes, at);
    } while (bytes[at] === COMMA);
    return bytes[at] === CLOSE ? at + 1 : UNUSUAL;
  }

  /** Adds a point of two or more numbers; from the third on they may be null. */
  #readPoint(bytes, from) {
    if (this.length + STRIDE >= this.values.length) this.#grow();
    const { values, length } = this;
    let at = from;
    let count = 0;
    values[length + 2] = 0;
    if (bytes[at] !== OPEN) return UNUSUAL;
    do {
      at = skipSpace(bytes, at + 1);
      if (count >= 2 && holds(bytes, at, NULL)) {
        at += NULL.length;
      } else {
        // What follows the force goes where the next point begins.
        at = readNumber(bytes, at, values, length + (count < STRIDE ? count : STRIDE));
        if (at === UNUSUAL) return UNUSUAL;
      }
      count += 1;
      at = skipSpace(bytes, at);
    } while (bytes[at] === COMMA);
    this.length = length + STRIDE;
    return count >= 2 && bytes[at] === CLOSE ? at + 1 : UNUSUAL;
  }

  #grow() {
    const longer = new Float64Array(2 * this.values.length);
    longer.set(this.values);
    this.values = longer;
  }
}

/**
 * Reads a number into values[index]. Its digits are gathered in two integers of 32 bits, which are
 * quicker than a double: up to nine in the head, up to nine further decimals in the tail.
 *
 * @returns {number} where it ends
 */
function readNumber(bytes, from, values, index) {
  const isNegative = bytes[from] === MINUS;
  const first = isNegative ? from + 1 : from;
  let at = first;
  let head = 0;
  let tail = 0;
  let decimals = 0;
  let tailLength = 0;
  let digit = bytes[at] - ZERO;
  // A number has a digit, and no further one after a leading zero.
  if (digit >>> 0 > 9) return UNUSUAL;
  do {
    head = (10 * head + digit) | 0;
    digit = bytes[++at] - ZERO;
  } while (digit >>> 0 <= 9);
  const whole = at - first;
  if (whole > 1 && bytes[first] === ZERO) return UNUSUAL;
  if (bytes[at] === POINT) {
    const start = ++at;
    const end = start + MAX_DIGITS - whole;
    for (digit = bytes[at] - ZERO; digit >>> 0 <= 9 && at < end; digit = bytes[++at] - ZERO) {
      head = (10 * head + digit) | 0;
    }
    for (; digit >>> 0 <= 9; digit = bytes[++at] - ZERO) {
      tail = (10 * tail + digit) | 0;
      tailLength += 1;
    }
    decimals = at - start;
    if (decimals === 0) return UNUSUAL;
  }
  const isLong = whole > MAX_DIGITS || tailLength > MAX_DIGITS;
  if (isLong || (bytes[at] | 0x20) === EXPONENT) return readLongNumber(bytes, from, values, index);
  const mantissa = tailLength === 0 ? head : head * POWERS[tailLength] + tail;
  if (mantissa >= MAX_MANTISSA) return readLongNumber(bytes, from, values, index);
  const size = decimals === 0 ? mantissa : mantissa / POWERS[decimals];
  values[index] = isNegative ? -size : size;
  return at;
}

function readLongNumber(bytes, from, values, index) {
  let at = from;
  while (bytes[at] !== COMMA && bytes[at] !== CLOSE && bytes[at] > SPACE) at += 1;
  const text = bytes.latin1Slice(from, at);
  const number = Number(text);
  values[index] = number;
  const isNumber = /^-?\d+(?:\.\d+)?(?:[eE][-+]?\d+)?$/.test(text);
  return isNumber && Number.isFinite(number) ? at : UNUSUAL;
}

/** Where the value of the member "points" of the object on a line begins. */
function findPoints(bytes, start) {
  let at = skipSpace(bytes, start);
  if (bytes[at] !== OPEN_BRACE) return UNUSUAL;
  do {
    const key = skipSpace(bytes, at + 1);
    const end = skipString(bytes, key);
    if (end === UNUSUAL) return UNUSUAL;
    at = skipSpace(bytes, end);
    if (bytes[at] !== COLON) return UNUSUAL;
    at = skipSpace(bytes, at + 1);
    if (end - key === KEY.length && holds(bytes, key, KEY)) return at;
    at = skipValue(bytes, at);
  } while (bytes[at] === COMMA);
  return UNUSUAL;
}

/** Where the comma or bracket after a value is. Brackets are counted, whatever their form. */
function skipValue(bytes, from) {
  let depth = 0;
  for (let at = from; bytes[at] !== LINE_FEED; at += 1) {
    const byte = bytes[at];
    if (byte === QUOTE) {
      const end = skipString(bytes, at);
      if (end === UNUSUAL) return UNUSUAL;
      at = end - 1;
    } else if (byte === OPEN || byte === OPEN_BRACE) depth += 1;
    else if (depth === 0 && (byte === COMMA || byte === CLOSE_BRACE)) return at;
    else if (byte === CLOSE || byte === CLOSE_BRACE) depth -= 1;
  }
  return UNUSUAL;
}

function skipString(bytes, from) {
  if (bytes[from] !== QUOTE) return UNUSUAL;
  for (let at = from + 1; bytes[at] !== LINE_FEED; at += 1) {
    if (bytes[at] === QUOTE) return at + 1;
    if (bytes[at] === BACKSLASH && bytes[at + 1] !== LINE_FEED) at += 1;
  }
  return UNUSUAL;
}

function skipSpace(bytes, from) {
  let at = from;
  while (bytes[at] === SPACE || bytes[at] === TAB || bytes[at] === RETURN) at += 1;
  return at;
}

/** Whether some bytes follow each other at an index. */
function holds(bytes, at, expected) {
  let i = 0;
  while (i < expected.length && bytes[at + i] === expected[i]) i += 1;
  return i === expected.length;
}

module.exports = { PlainLineReader, STRIDE };
