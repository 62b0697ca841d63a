'use strict';

const { uniformFloat64 } = require('pure-rand/distribution/uniformFloat64');
const { xoroshiro128plus } = require('pure-rand/generator/xoroshiro128plus');

/**
 * A source of random numbers that repeats itself for a seed on every machine.
 *
 * @param {number} seed an integer
 */
function createRandom(seed) {
  const generator = xoroshiro128plus(seed);
  // Seeds that differ in few bits begin alike.
  for (let i = 0; i < 16; i += 1) uniformFloat64(generator);

  const uniform = (low = 0, high = 1) => low + (high - low) * uniformFloat64(generator);
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
