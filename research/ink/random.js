'use strict';

const { createUniform } = require('../templates/random.js');

/**
 * A source of random numbers that repeats itself for a seed on every machine.
 *
 * @param {number} seed an integer
 */
function createRandom(seed) {
  const uniform = createUniform(seed);
  return {
    /** Evenly between two bounds. */
    uniform,
    /** Normal deviate by the Box-Muller transform. */
    normal: (mean = 0, deviation = 1) =>
      mean +
      deviation * Math.sqrt(-2 * Math.log(1 - uniform())) * Math.cos(2 * Math.PI * uniform()),
    /** Integer from low to high, both included. */
    integer: (low, high) => Math.floor(uniform(low, high + 1)),
    pick: (list) => list[Math.floor(uniform(0, list.length))],
    chance: (probability) => uniform() < probability,
  };
}

module.exports = { createRandom };
