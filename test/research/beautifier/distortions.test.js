'use strict';

const assert = require('node:assert/strict');
const { test } = require('node:test');
const d = require('../../../research/beautifier/distortions.js');

const SQUARE = [
  [0, 0],
  [200, 0],
  [200, 200],
  [0, 200],
  [0, 0],
];

test('simplified paths keep their corners and stay within the tolerance', () => {
  const path = d.dense(SQUARE, 7);
  assert.deepEqual(d.simplified(5)(path), SQUARE);
  const arc = Array.from({ length: 100 }, (_, i) => [
    100 * Math.cos(i / 30),
    100 * Math.sin(i / 30),
  ]);
  for (const tolerance of [1, 4, 12]) {
    const few = d.simplified(tolerance)(arc);
    assert.ok(few.length < 100 / tolerance);
    for (const p of arc) {
      const away = few.slice(1).map((b, i) => d.distanceToPiece(p, few[i], b));
      assert.ok(Math.min(...away) <= tolerance);
    }
  }
});
