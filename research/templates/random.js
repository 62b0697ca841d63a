'use strict';

const { uniformFloat64 } = require('pure-rand/distribution/uniformFloat64');
const { xoroshiro128plus } = require('pure-rand/generator/xoroshiro128plus');

/**
 * A source of random numbers that repeats itself for a seed on every machine.
 *
 * @param {number} seed an integer
 * @returns {(low?: number, high?: number) => number} evenly between two bounds
 */
function createUniform(seed) {
  const generator = xoroshiro128plus(seed);
  // Seeds that differ in few bits begin alike.
  for (let i = 0; i < 16; i += 1) uniformFloat64(generator);
  return (low = 0, high = 1) => low + (high - low) * uniformFloat64(generator);
}

module.exports = { createUniform };
