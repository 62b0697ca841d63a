'use strict';

const { STRIDE } = require('../read/plain-lines.js');

const [MINUS, POINT, ZERO, COMMA, OPEN, CLOSE] = Buffer.from('-.0,[]');

// Longer than any number, its sign and a comma and brackets beside it.
const MAX_NUMBER = 32;

// A number with more decimals may be below 1e-6, which JavaScript writes with an exponent.
const POWERS = Array.from({ length: 7 }, (_, i) => 10 ** i);

const MAX_INTEGER = 2 ** 31 - 1;

/** Text and points as bytes, one after the other. */
class LineBytes {
  #bytes = Buffer.allocUnsafe(1 << 16);
  #length = 0;
  #digits = new Uint8Array(MAX_NUMBER);

  /** @param {string} text */
  addText(text) {
    // A UTF-16 unit has at most three bytes.
    this.#reserve(3 * text.length);
    this.#length += this.#bytes.write(text, this.#length);
  }

  /** Bytes `from` to `to` of others. */
  addBytes(bytes, from, to) {
    this.#reserve(to - from);
    this.#length += bytes.copy(this.#bytes, this.#length, from, to);
  }

  /**
   * Points as JSON.stringify writes them.
   *
   * @param {Float64Array} values x, y and force of each; a force of 0 is left out
   * @param {number} decimals of x and y, see createRounding
   */
  addPoints(values, decimals) {
    this.#reserve(MAX_NUMBER * (values.length + 1));
    for (let k = 0; k < values.length; k += STRIDE) {
      this.#add(k === 0 ? OPEN : COMMA);
      this.#add(OPEN);
      this.#addNumber(values[k], decimals);
      this.#add(COMMA);
      this.#addNumber(values[k + 1], decimals);
      if (values[k + 2] !== 0) this.addText(`,${values[k + 2]}`);
      this.#add(CLOSE);
    }
    this.#add(CLOSE);
  }

  /** What has been added, with a buffer of its own, which is then forgotten. */
  take() {
    const taken = new Uint8Array(this.#bytes.subarray(0, this.#length));
    this.#length = 0;
    return taken;
  }

  #reserve(length) {
    const needed = this.#length + length;
    if (needed <= this.#bytes.length) return;
    const longer = Buffer.allocUnsafe(Math.max(needed, 2 * this.#bytes.length));
    this.#bytes.copy(longer, 0, 0, this.#length);
    this.#bytes = longer;
  }

  #add(byte) {
    this.#bytes[this.#length++] = byte;
  }

  #addNumber(value, decimals) {
    const parts = Math.round(value * POWERS[decimals]);
    if (!Number.isSafeInteger(parts)) {
      this.#length += this.#bytes.latin1Write(String(value), this.#length);
      return;
    }
    if (parts < 0) this.#add(MINUS);
    this.#addDecimal(Math.abs(parts), decimals);
  }

  /** A whole number of parts as a decimal, without zeros at the end, from its last digit on. */
  #addDecimal(parts, decimals) {
    const digits = this.#digits;
    let first = MAX_NUMBER;
    let rest = parts;
    let written = 0;
    for (; rest > MAX_INTEGER; written += 1) {
      const tenth = Math.floor(rest / 10);
      digits[--first] = ZERO + rest - 10 * tenth;
      rest = tenth;
    }
    // The rest in integers of 32 bits, which are quicker.
    let integer = rest | 0;
    for (; written <= decimals || integer > 0; written += 1) {
      const tenth = (integer / 10) | 0;
      digits[--first] = (ZERO + integer - 10 * tenth) | 0;
      integer = tenth;
    }
    this.#copyDecimal(first, decimals);
  }

  /** The digits from `first` on, with a point before the decimals unless these are zeros. */
  #copyDecimal(first, decimals) {
    const [digits, bytes] = [this.#digits, this.#bytes];
    const point = MAX_NUMBER - decimals;
    let end = MAX_NUMBER;
    while (end > point && digits[end - 1] === ZERO) end -= 1;
    let to = this.#length;
    for (let i = first; i < end; i += 1) {
      if (i === point) bytes[to++] = POINT;
      bytes[to++] = digits[i];
    }
    this.#length = to;
  }
}

module.exports = { LineBytes };
