'use strict';

const assert = require('node:assert/strict');
const { execFileSync } = require('node:child_process');
const vm = require('node:vm');
const { describe, test } = require('node:test');
const fc = require('fast-check');

const { initScrivo, optimizeAStroke } = require('../../lib/index.js');
const { skipIn } = require('../support/native.js');
const { assertThrowsSame, thrower } = require('../support/throwing.js');

// Strokes of fewer than 10 points come back as drawn, so that the points given to
// the binding can be compared with those it returns.
const redraw = (stroke, ...others) => optimizeAStroke(stroke, 800, 600, others).path;
const A = { x: 0.25, y: 0.5 };
const B = { x: 0.75, y: 0.125 };
const C = { x: 0.5, y: 1 };

/** A point with a getter for one property. */
const pointWith = (key, get) => Object.defineProperty({ ...A }, key, { get });

describe('points that come back', () => {
  test('carry the doubles that went in', () => {
    const number = fc.double({ noDefaultInfinity: false, noNaN: false });
    const force = number.filter((value) => value !== 0);
    const point = fc.record({ x: number, y: number, force }, { requiredKeys: ['x', 'y'] });
    fc.assert(
      fc.property(fc.array(point, { maxLength: 9 }), number, number, (stroke, width, height) => {
        const plain = stroke.map((entry) => ({ ...entry }));
        const result = optimizeAStroke(stroke, width, height, [stroke]);
        assert.deepEqual(result, { path: plain, type: 0 });
      }),
    );
  });

  test('have a force only if it is not 0', () => {
    for (const force of [0, -0, 0.5, -1, NaN, Infinity, 5e-324]) {
      assert.deepEqual(redraw([{ force, ...A }]), [force === 0 ? A : { ...A, force }]);
    }
    assert.deepEqual(Object.keys(redraw([{ force: 1, y: 2, x: 3 }])[0]), ['x', 'y', 'force']);
  });

  test('are new objects, and the arguments do not change', () => {
    const point = Object.freeze({ ...A, force: 0.5, time: 17 });
    const stroke = Object.freeze([point]);
    const result = optimizeAStroke(stroke, 800, 600, Object.freeze([stroke]));
    assert.deepEqual(result, { path: [{ ...A, force: 0.5 }], type: 0 });
    assert.deepEqual(Object.keys(result), ['path', 'type']);
    assert.notEqual(result.path, stroke);
    result.path[0].x = 9; // throws for the frozen point
    assert.deepEqual(optimizeAStroke([], 800, 600, []), { path: [], type: 0 });
  });

  test('are as many as went in, however many blocks they take', () => {
    // A scribble: too small to be compared with templates, too curly for an angle.
    let seed = 1;
    const random = () => (seed = (seed * 48271) % 2147483647) / 2147483647;
    const scribble = (count) =>
      Array.from({ length: count }, () => ({
        x: 0.5 + random() * 0.03,
        y: 0.5 + random() * 0.03,
        force: 0.01 + random(),
      }));
    for (const count of [255, 256, 257, 511, 512, 513, 1025, 1e6]) {
      const stroke = scribble(count);
      const { path, type } = optimizeAStroke(stroke, 1000, 1000, [stroke]);
      assert.deepEqual([path.length, type], [count, 0]);
      const differs = ({ x, y, force }, i) =>
        x !== stroke[i].x || y !== stroke[i].y || force !== stroke[i].force;
      assert.equal(path.findIndex(differs), -1);
    }
  });
});

describe('reading points', () => {
  test('accepts any object with the properties', () => {
    const bare = Object.assign(Object.create(null), A);
    const callable = Object.assign(() => {}, A);
    const list = Object.assign([], A);
    const pressed = Object.create({ force: 0.5 }, Object.getOwnPropertyDescriptors(A));
    const inheriting = Object.create(pointWith('x', () => A.x));
    const stroke = [inheriting, bare, callable, new Proxy(A, {}), list, pressed];
    assert.deepEqual(redraw(stroke), [A, A, A, A, A, { ...A, force: 0.5 }]);
  });

  test('reads properties of primitives too', () => {
    Object.assign(Number.prototype, A);
    try {
      assert.deepEqual(redraw([B, 7, 8, C]), [B, A, A, C]);
    } finally {
      ['x', 'y'].forEach((key) => delete Number.prototype[key]);
    }
  });

  test('reads the arguments once, in order', () => {
    const log = [];
    const point = (name, force) =>
      new Proxy(
        { ...A, ...force },
        {
          get: (object, key) => (log.push(`get ${name}.${String(key)}`), object[key]),
          has: (object, key) => (log.push(`has ${name}.${String(key)}`), key in object),
        },
      );
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

  test('reads every element of a long stroke once', () => {
    for (const count of [9, 256, 257, 700]) {
      const seen = [];
      const stroke = Array.from({ length: count }, (_, i) =>
        pointWith('x', () => (seen.push(i), 0)),
      );
      optimizeAStroke([], 800, 600, [[], stroke]);
      assert.deepEqual(seen, [...stroke.keys()]);
    }
  });

  test('follows an array that changes while it is read', () => {
    /** The path when reading the second of three points makes this change. */
    const changing = (change) => {
      const stroke = [A, , C]; // eslint-disable-line no-sparse-arrays
      stroke[1] = pointWith('y', () => (change(stroke), A.y));
      return redraw(stroke);
    };
    const changes = [
      [(stroke) => stroke.push(B), [A, A, C, B]],
      [(stroke) => (stroke.length = 0), [A, A]],
      [(stroke) => stroke.shift(), [A, A]],
      [(stroke) => (stroke[2] = B), [A, A, B]],
    ];
    for (const [change, path] of changes) assert.deepEqual(changing(change), path);
    assert.throws(() => changing((stroke) => delete stroke[2]), TypeError);
  });

  test('can be interrupted by another call', () => {
    const nested = (depth) =>
      pointWith('x', () => {
        const inner = depth > 0 ? [B, nested(depth - 1), C] : [B, C];
        const expected = depth > 0 ? [B, { ...A, x: depth - 1 }, C] : [B, C];
        assert.deepEqual(redraw(inner), expected);
        return depth;
      });
    assert.deepEqual(redraw([A, nested(5), C]), [A, { ...A, x: 5 }, C]);
    assert.deepEqual(redraw([A, B], [C, nested(2)]), [A, B]);
  });

  test('survives a getter that recurses without end', () => {
    const endless = pointWith('y', () => redraw([endless])[0].y);
    assert.throws(() => redraw([endless]), { name: /^(Range|Internal)Error$/ }); // by engine
    assert.deepEqual(redraw([A, B, C]), [A, B, C]);
  });
});

describe('a malformed point', () => {
  test('raises an error wherever it is', () => {
    const numbersElsewhere = ['1', null, true, 1n, [1], undefined];
    const malformed = [
      ...[undefined, null, 5, 'abc', '', true, 1n, Symbol('s'), NaN],
      ...[{}, [], [1, 2], () => {}, { X: 1, Y: 2 }, new Proxy({}, {}), { x: 1 }, { y: 1 }],
      ...['x', 'y', 'force'].flatMap((key) => numbersElsewhere.map((v) => ({ ...A, [key]: v }))),
      ...['x', 'y'].map((key) => ({ ...A, [key]: Object(1) })),
    ];
    for (const point of malformed) {
      for (const stroke of [[point], [point, A], [A, point, B], [A, B, point]]) {
        assert.throws(() => redraw(stroke), TypeError);
        assert.throws(() => redraw([A], [], stroke, [B]), TypeError);
      }
    }
    assert.deepEqual(redraw([A, B]), [A, B], 'nothing is left behind');
  });

  test('is a hole in the array', () => {
    assert.throws(() => redraw([A, , B]), TypeError); // eslint-disable-line no-sparse-arrays
    const holes = new Array(2 ** 32 - 1);
    assert.throws(() => redraw(holes), TypeError);
    assert.throws(() => redraw([A], holes), TypeError);
    assert.throws(() => optimizeAStroke([A], 1, 1, holes), Error);
  });

  test('ends the reading; the first error is thrown', () => {
    const unread = pointWith('x', thrower(new Error('read on')));
    const expected = { name: 'TypeError', message: /number/i };
    const calls = [
      [[{ x: '1', y: 0 }, unread], 800, 600, [[unread]]],
      [[], 800, undefined, [[unread]]],
      [[{ x: '1' }, unread], null, {}, 5],
    ];
    for (const args of calls) assert.throws(() => optimizeAStroke(...args), expected);
  });

  test('passes on what a getter or trap throws, an Error or not', () => {
    for (const value of [new RangeError('mine'), 42, 'text', null, undefined, Symbol('s')]) {
      const get = thrower(value);
      const points = [
        ...['x', 'y', 'force'].map((key) => pointWith(key, get)),
        ...[new Proxy(A, { get }), new Proxy(A, { has: get })],
      ];
      const strokes = points.map((point) => [A, point, B]);
      for (const bad of [Object.defineProperty([A, A], 1, { get }), ...strokes]) {
        assertThrowsSame(() => redraw(bad), value);
        assertThrowsSame(() => redraw([A], bad, [5]), value);
      }
    }
  });

  const noLimit = { browser: 'a page cannot limit the time of a script' };
  test('does not end the process when a script runs out of time', { skip: skipIn(noLimit) }, () => {
    const outOfTime = { code: 'ERR_SCRIPT_EXECUTION_TIMEOUT' };
    const scripts = {
      'redraw([{ x: 1, get y() { for (;;); } }, 5])': outOfTime,
      'redraw([A], [{ x: 1, y: 1, get force() { for (;;); } }])': outOfTime,
      'initScrivo([{ toString() { for (;;); } }, Symbol()])': outOfTime,
      // Fails before it reaches the loop.
      'redraw(5, Object.defineProperty([0], 0, { get() { for (;;); } }))': Error,
    };
    for (const [script, error] of Object.entries(scripts)) {
      const run = () => vm.runInNewContext(script, { redraw, initScrivo, A }, { timeout: 20 });
      assert.throws(run, error);
      assert.deepEqual(redraw([A]), [A]);
    }
  });
});

describe('prototypes and callers', () => {
  test('a getter does not see the function that reads it', () => {
    const seen = [];
    const sloppy = 'return function getter() { seen.push(getter.caller); return 0.5; }';
    const point = pointWith('x', new Function('seen', sloppy)(seen));
    assert.deepEqual(redraw([point]), [{ x: 0.5, y: A.y }]);
    assert.deepEqual(seen, [null]);
  });

  const noProcess = { browser: 'a page starts no process' };
  const skip = skipIn(noProcess);
  test(
    'an assignment that a prototype forbids is ignored, as by napi_set_property',
    { skip },
    () => {
      const script = `
      const { optimizeAStroke } = require(${JSON.stringify(require.resolve('../../lib/index.js'))});
      Object.defineProperty(Object.prototype, 'x', { value: 7, writable: false });
      const { path } = optimizeAStroke([{ x: 1, y: 2 }], 800, 600, []);
      process.stdout.write(JSON.stringify([path[0].y, Object.hasOwn(path[0], 'x')]));`;
      assert.equal(
        execFileSync(process.execPath, ['-e', script], { encoding: 'utf8' }),
        '[2,false]',
      );
    },
  );
});
