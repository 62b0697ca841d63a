'use strict';

/**
 * Numbers that are needed for one stroke only. A new Float64Array for each stroke costs more than
 * the work on its numbers: its memory is outside the heap and has to be collected.
 */
class ReusedNumbers {
  #numbers = new Float64Array(3 * 1024);

  /** An array to be filled, which stays as it is until the next is taken. */
  take(length) {
    if (length > this.#numbers.length) this.#numbers = new Float64Array(2 * length);
    return this.#numbers.subarray(0, length);
  }
}

module.exports = { ReusedNumbers };
