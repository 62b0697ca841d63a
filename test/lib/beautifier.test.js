'use strict';

const assert = require('node:assert/strict');
const { describe, it } = require('node:test');

const { Beautifier, FIGURES } = require('../../lib/beautifier.js');
const { HEIGHT, INK, WIDTH, strokeOf } = require('../support/strokes.js');

const packed = (stroke) => Float64Array.from(stroke.flatMap(({ x, y }) => [x, y, 0]));

const onAxis = ({ centre, radii, rotation }) => ({
  x: centre.x + radii.x * Math.cos(rotation),
  y: centre.y + radii.x * Math.sin(rotation),
});

/** Points of a path that the parameters of its figure determine, by index. */
const MARKS = {
  dot: (f) => ({ 63: f.centre }),
  line: (f) => ({ 0: f.from, 20: f.to }),
  angle: (f) => ({ 0: f.from, 20: f.vertex, 41: f.to }),
  triangle: (f) => ({ 0: f.corners[0], 21: f.corners[1], 42: f.corners[2] }),
  quadrangle: (f) => ({ ...MARKS.triangle(f), 63: f.corners[3] }),
  circle: (f) => ({ 0: { x: f.centre.x + f.radius, y: f.centre.y } }),
  ellipse: (f) => ({ 0: onAxis(f) }),
};

describe('answers', () => {
  const beautifier = new Beautifier();

  for (const [kind, stroke] of Object.entries(INK)) {
    it(`finds the ${kind}; its parameters agree with its path`, () => {
      const answer = beautifier.beautify(stroke, WIDTH, HEIGHT);
      assert.equal(answer.figure?.kind, kind);
      assert.equal(answer.reason, null);
      assert.ok(answer.confidence > 0.5 && answer.confidence <= 1);
      for (const [i, { x, y }] of Object.entries(MARKS[kind](answer.figure))) {
        const point = answer.path[i];
        const distance = Math.hypot(point.x * WIDTH - x, point.y * HEIGHT - y);
        assert.ok(distance < 1e-6, `${distance} off at point ${i}`);
      }
    });
  }

  it('answers packed strokes with packed paths of the same numbers', () => {
    const stroke = INK.triangle.map((point) => ({ ...point, force: 0 }));
    const objects = beautifier.beautify(stroke, WIDTH, HEIGHT);
    const numbers = beautifier.beautify(packed(stroke), WIDTH, HEIGHT);
    assert.deepEqual(numbers.path, packed(objects.path));
    assert.deepEqual(numbers.figure, objects.figure);
    const flat = new Beautifier({ layout: 'xy' });
    const pairs = Float64Array.from(stroke.flatMap(({ x, y }) => [x, y]));
    assert.equal(flat.beautify(pairs, WIDTH, HEIGHT).path.length, 2 * 63);
  });

  it('returns ink as the same objects, with the reason', () => {
    const ink = strokeOf('zigzag').map((point, time) => ({ ...point, force: 0, time }));
    const { path } = beautifier.beautify(ink, WIDTH, HEIGHT);
    assert.equal(path.length, ink.length);
    assert.notEqual(path, ink);
    path.forEach((point, i) => assert.equal(point, ink[i]));
    const cases = [
      [{}, ink, 'no-figure'],
      [{}, [], 'invalid'],
      [{ minSize: 500 }, INK.line, 'too-small'],
      [{ figures: ['dot'] }, INK.line, 'not-wanted'],
    ];
    for (const [options, stroke, reason] of cases) {
      assert.equal(new Beautifier(options).beautify(stroke, WIDTH, HEIGHT).reason, reason);
    }
  });

  it('snaps a line to other strokes, in either form, unless told not to', () => {
    const [{ x, y }] = INK.line;
    const other = [{ x, y: y + 4 / HEIGHT }];
    const beside = { x: x * WIDTH, y: y * HEIGHT + 4 };
    const assertBeside = (place) =>
      assert.ok(Math.hypot(place.x - beside.x, place.y - beside.y) < 1e-9);
    const start = (options, others) => {
      const { figure } = new Beautifier(options).beautify(INK.line, WIDTH, HEIGHT, others);
      return figure.from;
    };
    assertBeside(start({}, [other]));
    assertBeside(start({}, [packed(other)]));
    assert.deepEqual(start({ nearbyStrokes: false }, [other]), start({}, []));
  });
});

describe('arguments', () => {
  const beautifier = new Beautifier();

  const wrongOptions = [
    [[], /^TypeError: options .*an array/],
    [new Map([['minSize', 20]]), /^TypeError: options .*a Map/],
    // Longer than the memory: copying it whole would end the process.
    [{ figures: new Array(2 ** 32 - 1) }, /^RangeError: .*figures\[0\].*undefined/],
    [{ figures: 'dot' }, /^TypeError: options\.figures /],
    [{ figures: ['star'] }, /^RangeError: .*figures\[0\].*"star"/],
    [{ sensitivity: 1.1 }, /^RangeError: .*sensitivity.*1\.1/],
    [{ regularFigures: 1 }, /^TypeError: .*regularFigures.*1/],
    [{ layout: 'yx' }, /^RangeError: .*layout.*"yx"/],
    [{ layout: ['xy'] }, /^RangeError: .*layout.*an array/],
    [{ minsize: 3 }, /^RangeError: .*minsize.*minSize/],
    [Object.create({ minsize: 3 }), /^RangeError: .*minsize/],
    [{ toString: undefined }, /^RangeError: .*toString/],
  ];
  const wrongCalls = [
    [[[], '9', 1], /^TypeError: width .*"9"/],
    [[[], 1, 0], /^RangeError: height .*found 0/],
    [[[null], 1, 1], /^TypeError: stroke\[0\] .*null/],
    [[[], 1, 1, 5], /^TypeError: others .*found 5/],
  ];
  const calls = [
    ...wrongCalls.map(([args, message]) => [() => beautifier.beautify(...args), message]),
    ...wrongOptions.map(([options, message]) => [() => new Beautifier(options), message]),
  ];
  for (const [call, message] of calls) {
    it(`are named when wrong: ${message.source}`, () => assert.throws(call, message));
  }

  it('can be inherited options', () => {
    const { minSize, sensitivity, layout } = new Beautifier(
      Object.create({ minSize: 20, layout: undefined }, { sensitivity: { value: 1 } }),
    ).options;
    assert.deepEqual([minSize, sensitivity, layout], [20, 1, 'xyf']);
  });

  it('are not changed, and options cannot change', () => {
    const stroke = Object.freeze(INK.circle.map(Object.freeze));
    beautifier.beautify(stroke, WIDTH, HEIGHT, [stroke]);
    assert.deepEqual(beautifier.options.figures, FIGURES);
    assert.ok(Object.isFrozen(beautifier) && Object.isFrozen(beautifier.options.figures));

    class Named extends Beautifier {
      name = 'mine';
    }
    const named = new Named({ minSize: 500 });
    assert.throws(() => (named.options = {}), TypeError);
    assert.ok(Object.isFrozen(named.options));
    const { reason } = named.beautify(INK.line, WIDTH, HEIGHT);
    assert.deepEqual([named.name, reason], ['mine', 'too-small']);
  });
});
