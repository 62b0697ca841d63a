'use strict';

const assert = require('node:assert/strict');
const { describe, it } = require('node:test');
const {
  lengthOf,
  polygon,
  roundCorners,
  trace,
  turnAt,
} = require('../../../research/ink/outlines.js');

describe('outlines', () => {
  const square = polygon(JSON.parse('[[0,0],[10,0],[10,10],[0,10]]'));

  it('are traced from anywhere, short of the start or beyond it', () => {
    const ends = (...args) => {
      const way = trace(square, ...args);
      return [way[0], way.at(-1)].map(({ x, y }) => `${x},${y}`).join(' ');
    };
    assert.equal(ends(0, 1), '0,0 0,0');
    assert.equal(ends(0.125, 1.25), '5,0 10,5');
    assert.equal(ends(0.5, 0.75), '10,10 10,0');
    for (const start of [0, 0.1, 0.25, 0.9]) {
      for (const sweep of [0.8, 1, 1.3]) {
        assert.ok(Math.abs(lengthOf(trace(square, start, sweep)) - 40 * sweep) < 1e-9);
      }
    }
  });

  it('lose their corners to arcs and keep their ends', () => {
    const way = trace(square, 0.125, 1);
    const rounded = roundCorners(way, 2);
    const turns = rounded.slice(1, -1).map((point, i) => turnAt(rounded[i], point, rounded[i + 2]));
    assert.ok(Math.max(...turns) < 0.5, 'no turn of 90 degrees is left');
    assert.deepEqual([rounded[0], rounded.at(-1)], [way[0], way.at(-1)]);
    assert.ok(lengthOf(rounded) < lengthOf(way));
    assert.deepEqual(roundCorners(way, 0), way);
  });
});
