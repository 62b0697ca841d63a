'use strict';

const { uniformFloat64 } = require('pure-rand/distribution/uniformFloat64');
const { xoroshiro128plus } = require('pure-rand/generator/xoroshiro128plus');

/**
 * A generator of random numbers: the same sequence for a seed on every machine.
 *
 * @param {number} seed an integer
 * @returns {(low?: number, high?: number) => number} uniform in [low, high)
 */
function createUniform(seed) {
  const generator = xoroshiro128plus(seed);
  // Seeds that differ in few bits start with similar numbers.
  for (let i = 0; i < 16; i += 1) uniformFloat64(generator);
  return (low = 0, high = 1) => low + (high - low) * uniformFloat64(generator);
}

/** A standard normal deviate from a uniform source (Box-Muller transform). */
const normalFrom = (uniform) =>
  Math.sqrt(-2 * Math.log(1 - uniform())) * Math.cos(2 * Math.PI * uniform());

/** The same with further distributions. */
function createRandom(seed) {
  const uniform = createUniform(seed);
  return {
    uniform,
    normal: (mean = 0, deviation = 1) => mean + deviation * normalFrom(uniform),
    /** Integer in [low, high]. */
    integer: (low, high) => Math.floor(uniform(low, high + 1)),
    pick: (list) => list[Math.floor(uniform(0, list.length))],
    chance: (probability) => uniform() < probability,
  };
}

module.exports = { createRandom, createUniform, normalFrom };
