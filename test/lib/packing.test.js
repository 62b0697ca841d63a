'use strict';

const assert = require('node:assert/strict');
const { describe, test } = require('node:test');

const {
  copyPacked,
  copyPoints,
  packObjects,
  packOthers,
  unpackObjects,
} = require('../../lib/packing.js');

const A = { x: 0.25, y: 0.5 };
const B = { x: 0.75, y: 0.125, force: 0.5 };

/** A stroke as the beautifier reads it, in either form. */
const pack = (stroke) =>
  stroke instanceof Float64Array
    ? copyPacked('stroke', stroke, 3)
    : packObjects('stroke', copyPoints('stroke', stroke));

// Longer than the memory: copying it whole would end the process.
const HOLES = new Array(2 ** 32 - 1);
const moved = new Float64Array(3);
structuredClone(moved, { transfer: [moved.buffer] });

describe('strokes', () => {
  test('are packed, and unpacked without force', () => {
    assert.deepEqual(pack([A, B]), Float64Array.of(0.25, 0.5, 0.75, 0.125));
    assert.deepEqual(unpackObjects(pack([A, B])), [A, { x: 0.75, y: 0.125 }]);
    const given = Float64Array.of(1, 2, 3);
    assert.deepEqual(pack(given), given);
    assert.notEqual(pack(given), given);
  });

  test('that change while they are read count as they were', () => {
    const points = [{ ...A }, B, B];
    Object.defineProperty(points[0], 'y', { get: () => ((points.length = 1), A.y) });
    assert.equal(pack(points).length, 6);
  });

  const wrong = [
    [undefined, /^TypeError: stroke .*undefined/],
    [[A, null], /^TypeError: stroke\[1\] .*null/],
    [[7], /^TypeError: stroke\[0\] .*found 7/],
    [HOLES, /^TypeError: stroke\[0\] .*found undefined/],
    [[{ x: 0 }], /^TypeError: stroke\[0\]\.y .*undefined/],
    [[{ x: NaN, y: 0 }], /^RangeError: stroke\[0\]\.x/],
    [[{ x: '1', y: 0 }], /^TypeError: .*found "1"/],
    [[{ x: Object.create(null), y: 0 }], /^TypeError: stroke\[0\]\.x .*an object/],
    [[{ ...A, force: 1n }], /^TypeError: stroke\[0\]\.force .*BigInt 1/],
    [new Float64Array(4), /^RangeError: .*3 numbers/],
    [Float64Array.of(0, NaN, 0), /^RangeError: stroke\[1\]/],
    [new Float32Array(6), /^TypeError: stroke .* a Float32Array; .*from\(stroke, Number\)/],
    [moved, /^TypeError: stroke .*transferred/],
  ];
  for (const [stroke, message] of wrong) {
    test(`are refused with their place: ${message.source}`, () =>
      assert.throws(() => pack(stroke), message));
  }
});

describe('other strokes', () => {
  const packAll = (others) => packOthers('others', others, 3);

  test('follow each other, in either form', () => {
    const { values, lengths } = packAll([[A, B], [], Float64Array.of(1, 2, 3)]);
    assert.deepEqual(values, Float64Array.of(0.25, 0.5, 0.75, 0.125, 1, 2));
    assert.deepEqual(lengths, Uint32Array.of(2, 0, 1));
  });

  test('that lie about their length are read only to their end', () => {
    const liar = Object.defineProperty(Float64Array.of(1, 2, 3), 'length', { value: 4e8 });
    assert.deepEqual(packAll([liar]).lengths, Uint32Array.of(1));
  });

  const wrong = [
    [5, /^TypeError: others .*found 5/],
    [[[A, 3]], /^TypeError: others\[0\]\[1\]/],
    [HOLES, /^TypeError: others\[0\]/],
    [[[A], moved], /^TypeError: others\[1\] .*transferred/],
  ];
  for (const [others, message] of wrong) {
    test(`are refused with their place: ${message.source}`, () =>
      assert.throws(() => packAll(others), message));
  }
});
