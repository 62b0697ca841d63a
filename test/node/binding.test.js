'use strict';

const assert = require('node:assert/strict');
const { execFileSync } = require('node:child_process');
const vm = require('node:vm');
const { describe, test } = require('node:test');
const fc = require('fast-check');

const { initScrivo, optimizeAStroke } = require('../../lib/index.js');

// Strokes of fewer than 10 points come back as drawn: what goes in through the
// binding comes out again.
const redraw = (stroke, ...others) => optimizeAStroke(stroke, 800, 600, others).path;
const A = { x: 0.25, y: 0.5 };
const B = { x: 0.75, y: 0.125 };
const C = { x: 0.5, y: 1 };

/** A point, array or other object that records what is read of it, in order. */
function recorded(target, log, name) {
  const at = (key) => `${name}.${String(key)}`;
  return new Proxy(target, {
    get: (object, key) => (log.push(`get ${at(key)}`), object[key]),
    has: (object, key) => (log.push(`has ${at(key)}`), key in object),
  });
}

/** Checks that `call` throws this very value, which need not be an Error. */
function assertThrowsSame(call, value) {
  let caught = 'nothing thrown';
  try {
    call();
  } catch (error) {
    caught = error;
  }
  assert.ok(Object.is(caught, value), `caught ${String(caught)}`);
}

const thrower = (value) => () => {
  throw value;
};

describe('initScrivo', () => {
  test('wants an array', () => {
    assert.throws(() => initScrivo(), { name: 'TypeError', message: 'Wrong number of arguments' });
    const wrong = ['a.template', undefined, null, 5, {}, { length: 0 }, new Uint8Array(2)];
    for (const value of [...wrong, new Proxy([], {})]) {
      assert.throws(() => initScrivo(value), { name: 'TypeError', message: 'Wrong arguments' });
    }
  });

  test('accepts any element that converts to a string', () => {
    assert.equal(initScrivo([]), true);
    assert.equal(initScrivo([], 'ignored', null), true);
    assert.equal(initScrivo([123, true, null, undefined, 1n, {}, [], , '\ud800', 'a\0b']), true); // eslint-disable-line no-sparse-arrays
  });

  test('converts in order and reads the length anew for each element', () => {
    const seen = [];
    const paths = [];
    const growing = {
      toString() {
        if (seen.push(paths.length) < 3) paths.push(growing);
        return '';
      },
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

describe('points that come back', () => {
  test('carry the doubles that went in', () => {
    const number = fc.double({ noDefaultInfinity: false, noNaN: false });
    const point = fc.oneof(
      fc.record({ x: number, y: number }, { noNullPrototype: false }),
      fc.record({ x: number, y: number, force: number.filter((force) => force !== 0) }),
    );
    fc.assert(
      fc.property(fc.array(point, { maxLength: 9 }), number, number, (stroke, width, height) => {
        const result = optimizeAStroke(stroke, width, height, [stroke]);
        const plain = stroke.map((entry) => ({ ...entry }));
        assert.deepEqual(result, { path: plain, type: 0 });
      }),
    );
  });

  test('have a force only if it is not 0', () => {
    const keys = (force) => Object.keys(redraw([{ ...A, force }])[0]);
    for (const force of [0, -0]) assert.deepEqual(keys(force), ['x', 'y']);
    for (const force of [0.5, -1, NaN, Infinity, 5e-324]) {
      assert.deepEqual(keys(force), ['x', 'y', 'force']);
      assert.deepEqual(redraw([{ ...A, force }]), [{ ...A, force }]);
    }
    assert.deepEqual(Object.keys(redraw([A])[0]), ['x', 'y']);
  });

  test('are fresh, and the arguments untouched', () => {
    const point = Object.freeze({ ...A, force: 0.5, time: 17 });
    const stroke = Object.freeze([point]);
    const result = optimizeAStroke(stroke, 800, 600, Object.freeze([stroke]));
    assert.deepEqual(Object.keys(result), ['path', 'type']);
    assert.ok(Array.isArray(result.path));
    assert.notEqual(result.path, stroke);
    assert.deepEqual(result.path, [{ ...A, force: 0.5 }]);
    result.path[0].x = 9;
    assert.equal(point.x, A.x);
    assert.deepEqual(optimizeAStroke([], 800, 600, []), { path: [], type: 0 });
  });

  test('are as many as went in, across the blocks in which they travel', () => {
    // A scribble: small enough to be compared with no template, too curly for an angle.
    let seed = 1;
    const random = () => (seed = (seed * 48271) % 2147483647) / 2147483647;
    const scribble = (count) =>
      Array.from({ length: count }, () => ({
        x: 0.5 + random() * 0.03,
        y: 0.5 + random() * 0.03,
        force: 0.01 + random(),
      }));
    for (const count of [255, 256, 257, 511, 512, 513, 1025]) {
      const stroke = scribble(count);
      assert.deepEqual(optimizeAStroke(stroke, 1000, 1000, []), { path: stroke, type: 0 });
    }
    const million = scribble(1e6);
    const { path, type } = optimizeAStroke(million, 1000, 1000, [million]);
    assert.deepEqual([path.length, type], [1e6, 0]);
    const differs = (point, i) => ['x', 'y', 'force'].some((key) => point[key] !== million[i][key]);
    assert.equal(path.findIndex(differs), -1);
  });
});

describe('reading points', () => {
  test('takes whatever has the properties', () => {
    class Sample {
      get x() {
        return A.x;
      }
      get y() {
        return A.y;
      }
    }
    const bare = Object.assign(Object.create(null), A);
    const callable = Object.assign(() => {}, A);
    const list = Object.assign([], A);
    const pressed = Object.create({ force: 0.5 }, Object.getOwnPropertyDescriptors(A));
    const stroke = [new Sample(), bare, callable, new Proxy(A, {}), list, pressed];
    assert.deepEqual(redraw(stroke), [A, A, A, A, A, { ...A, force: 0.5 }]);
  });

  test('looks primitives up like any object', () => {
    Object.assign(Number.prototype, A);
    try {
      assert.deepEqual(redraw([B, 7, 8, C]), [B, A, A, C]);
    } finally {
      ['x', 'y'].forEach((key) => delete Number.prototype[key]);
    }
  });

  test('goes through the arguments once, in order', () => {
    const log = [];
    const point = (name, force) => recorded({ ...A, ...force }, log, name);
    const array = (name, ...elements) => {
      elements.forEach((element, i) =>
        Object.defineProperty(elements, i, { get: () => (log.push(`get ${name}[${i}]`), element) }),
      );
      return elements;
    };
    const stroke = array('stroke', point('a'), point('b', { force: 0.5 }));
    optimizeAStroke(stroke, 800, 600, array('others', array('first', point('c')), array('second')));

    const plain = (name) => [`get ${name}.x`, `get ${name}.y`, `has ${name}.force`];
    assert.deepEqual(log, [
      ...['get stroke[0]', ...plain('a')],
      ...['get stroke[1]', ...plain('b'), 'get b.force'],
      ...['get others[0]', 'get first[0]', ...plain('c'), 'get others[1]'],
    ]);
  });

  test('sees every element of a long stroke once', () => {
    for (const count of [9, 256, 257, 700]) {
      const seen = [];
      const stroke = Array.from({ length: count }, (_, i) => ({
        get x() {
          seen.push(i);
          return 0;
        },
        y: 0,
      }));
      optimizeAStroke([], 800, 600, [[], stroke]);
      assert.deepEqual(seen, [...stroke.keys()]);
    }
  });

  test('follows an array that changes meanwhile', () => {
    const changing = (change) => {
      const stroke = [A, B, C];
      Object.defineProperty((stroke[1] = { ...B }), 'y', { get: () => (change(stroke), B.y) });
      return redraw(stroke);
    };
    assert.deepEqual(
      changing((stroke) => stroke.push(A)),
      [A, B, C, A],
    );
    assert.deepEqual(
      changing((stroke) => (stroke.length = 0)),
      [A, B],
    );
    assert.deepEqual(
      changing((stroke) => stroke.shift()),
      [A, B],
    );
    assert.deepEqual(
      changing((stroke) => (stroke[2] = A)),
      [A, B, A],
    );
    assert.throws(() => changing((stroke) => delete stroke[2]), TypeError);
  });

  test('can be interrupted by another call', () => {
    const nested = (depth) => ({
      get x() {
        const inner = depth > 0 ? [B, nested(depth - 1), C] : [B, C];
        const expected = depth > 0 ? [B, { x: depth - 1, y: 0 }, C] : [B, C];
        assert.deepEqual(redraw(inner), expected);
        return depth;
      },
      y: 0,
    });
    assert.deepEqual(redraw([A, nested(5), C]), [A, { x: 5, y: 0 }, C]);
    assert.deepEqual(redraw([A, B], [C, nested(2)]), [A, B]);
  });

  test('survives a getter that never comes to an end', () => {
    const endless = {
      x: 0,
      get y() {
        return redraw([endless])[0].y;
      },
    };
    assert.throws(() => redraw([endless]), RangeError);
    assert.deepEqual(redraw([A, B, C]), [A, B, C]);
  });
});

describe('a malformed point', () => {
  const malformed = {
    nothing: [undefined, null],
    primitive: [5, 'abc', '', true, 1n, Symbol('s'), NaN],
    'no coordinates': [{}, [], [1, 2], () => {}, { X: 1, Y: 2 }, new Proxy({}, {})],
    'one coordinate': [{ x: 1 }, { y: 1 }],
    'x no number': ['1', null, true, 1n, [1], Object(1), undefined].map((x) => ({ x, y: 2 })),
    'y no number': ['1', null, true, 1n, [1], Object(1), undefined].map((y) => ({ x: 2, y })),
    'force no number': ['1', null, true, 1n, [1], undefined].map((force) => ({ ...A, force })),
  };
  for (const [kind, points] of Object.entries(malformed)) {
    test(`raises an error: ${kind}`, () => {
      for (const point of points) {
        for (const stroke of [[point], [point, A], [A, point, B], [A, B, point]]) {
          assert.throws(() => redraw(stroke), TypeError);
          assert.throws(() => redraw([A], [], stroke, [B]), TypeError);
        }
      }
      assert.deepEqual(redraw([A, B]), [A, B], 'nothing is left behind');
    });
  }

  test('is a hole in the array', () => {
    assert.throws(() => redraw([A, , B]), TypeError); // eslint-disable-line no-sparse-arrays
    assert.throws(() => redraw(new Array(2 ** 32 - 1)), TypeError);
    assert.throws(() => redraw([A], new Array(2 ** 32 - 1)), TypeError);
    assert.throws(() => optimizeAStroke([A], 1, 1, new Array(2 ** 32 - 1)), Error);
  });

  test('ends the reading, and the first failure counts', () => {
    const later = recorded({ ...A }, [], 'later');
    const unread = {
      get x() {
        throw new Error('read on');
      },
      y: 0,
    };
    const expected = { name: 'TypeError', message: /number/i };
    assert.throws(
      () => optimizeAStroke([{ x: '1', y: 0 }, unread], 800, 600, [[unread]]),
      expected,
    );
    assert.throws(() => optimizeAStroke([], 800, undefined, [[unread]]), expected);
    assert.throws(() => optimizeAStroke([{ x: '1' }, later], null, {}, 5), expected);
  });

  test('passes on what a getter or trap throws, be it an Error or not', () => {
    for (const value of [new RangeError('mine'), 42, 'text', null, undefined, Symbol('s')]) {
      const get = thrower(value);
      const stroke = Object.defineProperty([A, A], 1, { get });
      const points = [
        ...['x', 'y', 'force'].map((key) => Object.defineProperty({ ...A }, key, { get })),
        new Proxy(A, { get }),
        new Proxy(A, { has: get }),
      ];
      for (const bad of [stroke, ...points.map((point) => [A, point, B])]) {
        assertThrowsSame(() => redraw(bad), value);
        assertThrowsSame(() => redraw([A], bad, [5]), value);
      }
    }
  });

  test('does not end the process when a script runs out of time', () => {
    const scripts = {
      'redraw([{ x: 1, get y() { for (;;); } }, 5])': [A],
      'redraw([A], [{ x: 1, y: 1, get force() { for (;;); } }])': [A],
      'initScrivo([{ toString() { for (;;); } }, Symbol()])': [A],
      'redraw(new Proxy([], {}), Object.defineProperty([0], 0, { get() { for (;;); } }))': null,
    };
    for (const [script, result] of Object.entries(scripts)) {
      const run = () => vm.runInNewContext(script, { redraw, initScrivo, A }, { timeout: 20 });
      // The last one fails before it gets to the loop.
      assert.throws(run, result ? { code: 'ERR_SCRIPT_EXECUTION_TIMEOUT' } : Error);
      assert.deepEqual(redraw([A]), [A]);
    }
  });
});

describe('arguments of optimizeAStroke', () => {
  const notArrays = [undefined, null, 5, 'ab', {}, { length: 1, 0: A }, new Float64Array(3)];
  notArrays.push(new Proxy([A], {}), new Set([A]));

  test('must all be there', () => {
    const args = [[A], 800, 600, []];
    for (let count = 0; count < args.length; ++count) {
      assert.throws(() => optimizeAStroke(...args.slice(0, count)), Error);
    }
    assert.deepEqual(optimizeAStroke(...args, 'ignored').path, [A]);
  });

  test('must be arrays where strokes are expected', () => {
    for (const value of notArrays) {
      assert.throws(() => optimizeAStroke(value, 800, 600, []), Error);
      assert.throws(() => optimizeAStroke([A], 800, 600, value), Error);
      assert.throws(() => optimizeAStroke([A], 800, 600, [[A], value]), Error);
    }
  });

  test('must be numbers where sizes are expected, of any value', () => {
    for (const value of [undefined, null, '800', true, {}, Object(800), 1n, [800]]) {
      assert.throws(() => optimizeAStroke([A], value, 600, []), TypeError);
      assert.throws(() => optimizeAStroke([A], 800, value, []), TypeError);
    }
    for (const size of [0, -0, -800, NaN, Infinity, -Infinity, 1e308, 5e-324]) {
      assert.deepEqual(optimizeAStroke([A, B], size, size, [[]]), { path: [A, B], type: 0 });
    }
  });

  test('round sizes to single precision', () => {
    // More than 75 units across, a straight stroke is a line.
    const stroke = Array.from({ length: 21 }, (_, i) => ({ x: i / 20, y: 0 }));
    const flat = (size) => optimizeAStroke(stroke, size, 1, []).type;
    assert.deepEqual([75, 75.000001, 75.00001].map(flat), [0, 0, 2]);
    const upright = stroke.map(({ x, y }) => ({ x: y, y: x }));
    const tall = (size) => optimizeAStroke(upright, 1, size, []).type;
    assert.deepEqual([75, 75.000001, 75.00001].map(tall), [0, 0, 2]);
  });

  test('may come from another realm', () => {
    const stroke = vm.runInNewContext('[{ x: 0.25, y: 0.5 }]');
    assert.deepEqual(redraw(stroke, stroke), [A]);
  });
});

describe('prototypes and callers', () => {
  test('a getter does not see the function that reads it', () => {
    const seen = [];
    const sloppy = 'return function getter() { seen.push(getter.caller); return 0.5; }';
    const point = { y: 1 };
    Object.defineProperty(point, 'x', { get: new Function('seen', sloppy)(seen) });
    assert.deepEqual(redraw([point]), [{ x: 0.5, y: 1 }]);
    assert.deepEqual(seen, [null]);
  });

  test('what a prototype forbids to set is ignored, as by single calls', () => {
    const script = `
      const { optimizeAStroke } = require(${JSON.stringify(require.resolve('../../lib/index.js'))});
      Object.defineProperty(Object.prototype, 'x', { value: 7, writable: false });
      const { path } = optimizeAStroke([{ x: 1, y: 2 }], 800, 600, []);
      process.stdout.write(JSON.stringify([path[0].y, Object.hasOwn(path[0], 'x')]));`;
    assert.equal(execFileSync(process.execPath, ['-e', script], { encoding: 'utf8' }), '[2,false]');
  });
});
