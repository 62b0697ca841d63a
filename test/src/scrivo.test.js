'use strict';

const assert = require('node:assert/strict');
const vm = require('node:vm');
const { describe, test } = require('node:test');

const { initScrivo, optimizeAStroke } = require('../../lib/index.js');
const { proxies } = require('../support/native.js');
const { assertThrowsSame, thrower } = require('../support/throwing.js');

describe('initScrivo', () => {
  test('requires an array', () => {
    assert.throws(() => initScrivo(), { name: 'TypeError', message: 'Wrong number of arguments' });
    const wrong = ['a.template', undefined, null, 5, {}, { length: 0 }, new Uint8Array(2)];
    for (const value of [...wrong, ...proxies]) {
      assert.throws(() => initScrivo(value), { name: 'TypeError', message: 'Wrong arguments' });
    }
  });

  test('accepts any element that converts to a string', () => {
    const elements = [123, true, null, undefined, 1n, {}, [], , '\ud800', 'a\0b']; // eslint-disable-line no-sparse-arrays
    assert.equal(initScrivo(elements, 'ignored', null), true);
  });

  test('converts in order and reads the length again for each element', () => {
    const seen = [];
    const paths = [];
    const growing = {
      toString: () => (seen.push(paths.length) < 3 && paths.push(growing), ''),
    };
    paths.push(growing);
    assert.equal(initScrivo(paths), true);
    assert.deepEqual(seen, [1, 2, 3]);

    const shrinking = { toString: () => ((paths.length = 1), '') };
    paths.splice(0, Infinity, shrinking, { toString: thrower(new Error('not there any more')) });
    assert.equal(initScrivo(paths), true);
  });

  test('stops at the first element that does not convert', () => {
    assert.throws(() => initScrivo(['a', Symbol('b'), { toString: thrower(0) }]), TypeError);
    assert.throws(() => initScrivo([Object.create(null)]), TypeError);
    for (const value of [new Error('mine'), 42, null, undefined]) {
      assertThrowsSame(() => initScrivo([{ toString: thrower(value) }, Symbol('later')]), value);
    }
    assert.equal(initScrivo([]), true, 'nothing is left behind');
  });
});

describe('arguments of optimizeAStroke', () => {
  const A = { x: 0.25, y: 0.5 };
  const B = { x: 0.75, y: 0.125 };

  /** A call with some arguments replaced. */
  const call = (changed) => optimizeAStroke(...Object.assign([[A], 800, 600, []], changed));

  test('are all required', () => {
    for (let count = 0; count < 4; ++count) {
      assert.throws(() => optimizeAStroke(...[[A], 800, 600, []].slice(0, count)), Error);
    }
    assert.deepEqual(call({ 4: 'ignored' }).path, [A]);
  });

  test('must be arrays where strokes are expected', () => {
    const plain = [undefined, null, 5, 'ab', {}, { length: 1, 0: A }, new Float64Array(3)];
    for (const value of [...plain, ...proxies, new Set([A])]) {
      for (const changed of [{ 0: value }, { 3: value }, { 3: [[A], value] }]) {
        assert.throws(() => call(changed), Error);
      }
    }
  });

  test('must be numbers where sizes are expected, but any numbers', () => {
    for (const value of [undefined, null, '800', true, {}, Object(800), 1n, [800]]) {
      for (const place of [1, 2]) assert.throws(() => call({ [place]: value }), TypeError);
    }
    for (const size of [0, -0, -800, NaN, Infinity, -Infinity, 1e308, 5e-324]) {
      const path = [A, B];
      assert.deepEqual(call([path, size, size, [[]]]), { path, type: 0 });
    }
  });

  test('round sizes to single precision', () => {
    // More than 75 units across, a straight stroke is a line.
    const flat = Array.from({ length: 21 }, (_, i) => ({ x: i / 20, y: 0 }));
    const upright = flat.map(({ x, y }) => ({ x: y, y: x }));
    const types = [75, 75.000001, 75.00001].map((size) => [
      optimizeAStroke(flat, size, 1, []).type,
      optimizeAStroke(upright, 1, size, []).type,
    ]);
    assert.deepEqual(types.flat(), [0, 0, 0, 0, 2, 2]);
  });

  test('may come from another realm', () => {
    const stroke = vm.runInNewContext('[{ x: 0.25, y: 0.5 }]');
    assert.deepEqual(call([stroke, 800, 600, [stroke]]).path, [A]);
  });
});
