'use strict';

const assert = require('node:assert/strict');
const { describe, test } = require('node:test');
const fc = require('fast-check');

const { FigureType, initScrivo, optimizeAStroke, templates } = require('../../lib/index.js');
const { Beautifier, FIGURES, outlineOf } = require('../../lib/beautifier.js');
const { loadNative } = require('../../lib/native.js');
const { INK } = require('../support/strokes.js');
const { holds } = require('./property.js');

// Any values as arguments: only the documented errors are thrown, and the process goes on.

class Thrown extends Error {}

const refuse = () => {
  throw new Thrown();
};

function revokedProxy() {
  const { proxy, revoke } = Proxy.revocable([], {});
  revoke();
  return proxy;
}

function detached() {
  const array = new Float64Array(6);
  structuredClone(array.buffer, { transfer: [array.buffer] });
  return array;
}

const traps = { get: refuse, has: refuse, ownKeys: refuse, getPrototypeOf: refuse };
const HOSTILE = [
  () => Symbol('s'),
  () => refuse,
  () => new Proxy([], traps),
  revokedProxy,
  detached,
  () => Object.defineProperty({ y: 0.5 }, 'x', { get: refuse, enumerable: true }),
  () => ({ toString: refuse, valueOf: refuse, [Symbol.iterator]: refuse }),
  () => ({ length: 2 ** 31 }),
  () => new Array(2 ** 31),
  () => new Array(3),
  () => [[[{}]]],
];

/** Stands for a value that fast-check could not handle, until a property is called. */
class Hostile {
  constructor(index) {
    this.index = index;
  }
}

/** A copy with hostile values in place. */
function revive(value) {
  if (value instanceof Hostile) return HOSTILE[value.index]();
  if (Array.isArray(value)) return value.map(revive);
  const isPlain = value && typeof value === 'object' && value.constructor === Object;
  if (!isPlain) return value;
  return Object.fromEntries(Object.entries(value).map(([key, entry]) => [key, revive(entry)]));
}

const anyValue = fc.oneof(
  fc.anything({
    maxDepth: 2,
    withBigInt: true,
    withBoxedValues: true,
    withDate: true,
    withMap: true,
    withNullPrototype: true,
    withObjectString: true,
    withSet: true,
    withTypedArray: true,
  }),
  fc.nat(HOSTILE.length - 1).map((index) => new Hostile(index)),
);
/** Nine of ten are as they should be. */
const mostly = (right) =>
  fc.oneof({ arbitrary: right, weight: 9 }, { arbitrary: anyValue, weight: 1 });

const coordinate = fc.oneof(fc.double({ min: -1, max: 2, noNaN: true }), fc.double());
const point = fc.record(
  { x: mostly(coordinate), y: mostly(coordinate), force: mostly(coordinate) },
  { requiredKeys: ['x', 'y'] },
);
const stroke = fc.oneof(
  fc.constantFrom(...Object.values(INK)),
  fc.array(mostly(point), { maxLength: 40 }),
  fc.float64Array({ maxLength: 60 }),
  fc.float64Array({ maxLength: 60, min: -1, max: 2, noNaN: true }),
);
const others = fc.array(mostly(stroke), { maxLength: 3 });
const side = fc.oneof(fc.double({ min: 1, max: 4000, noNaN: true }), fc.double());

/** Checks a property of arguments. */
const holdsFor = (t, given, check) =>
  holds(
    t,
    fc.property(fc.tuple(...given), (args) => check(...args.map(revive))),
  );

const outcome = (call) => {
  try {
    return { answer: call() };
  } catch (error) {
    return { error };
  }
};

/** Of a host's own traps, or of the runtime for a proxy without a target. */
const isOfCaller = (error) => error instanceof Thrown || /revoked/.test(error?.message);

const NAMED = /^(stroke|others|width|height|wish|options|figure)\b.* (must|is|was) /s;
const isNamed = (error) =>
  (error instanceof TypeError || error instanceof RangeError) && NAMED.test(error.message);

function requireNamed({ error }) {
  assert.ok(error === undefined || isNamed(error) || isOfCaller(error), error);
}

function requireAgreement({ path, type, confidence, figure, reason, alternatives }) {
  assert.ok(confidence >= 0 && confidence <= 1);
  assert.equal(figure === null, type === FigureType.NONE);
  assert.equal(figure === null, reason !== null);
  assert.ok(alternatives.every(({ family }) => FIGURES.includes(family)));
  if (figure === null) return;
  const points = path instanceof Float64Array ? [...path] : path.flatMap(({ x, y }) => [x, y]);
  assert.ok(points.every(Number.isFinite));
}

describe('the beautifier', () => {
  const options = fc.record(
    {
      figures: mostly(fc.subarray([...FIGURES])),
      minSize: mostly(fc.double({ min: 0 })),
      tapSize: mostly(fc.double({ min: 0 })),
      sensitivity: mostly(fc.double({ min: 0, max: 1 })),
      horizontalVertical: mostly(fc.boolean()),
      regularFigures: mostly(fc.boolean()),
      nearbyStrokes: mostly(fc.boolean()),
      insideArea: mostly(fc.boolean()),
      layout: mostly(fc.constantFrom('xy', 'xyf')),
    },
    { requiredKeys: [] },
  );
  const beautifiers = fc.oneof(
    fc.constant(new Beautifier()),
    fc.constant(new Beautifier({ layout: 'xy', sensitivity: 1 })),
  );

  test('takes any options', (t) =>
    holdsFor(t, [fc.oneof(options, anyValue)], (given) =>
      requireNamed(outcome(() => new Beautifier(given))),
    ));

  test('takes any strokes, sides and wishes', (t) => {
    const wishes = mostly(fc.constantFrom(...FIGURES, 'square', 'circle', 'rightTriangle'));
    const given = [beautifiers, mostly(stroke), wishes, mostly(side), mostly(side), mostly(others)];
    return holdsFor(t, given, (beautifier, ink, wish, width, height, around) => {
      for (const call of [
        () => beautifier.beautify(ink, width, height, around),
        () => beautifier.beautifyAs(ink, wish, width, height, around),
      ]) {
        const found = outcome(call);
        requireNamed(found);
        if (found.answer) requireAgreement(found.answer);
      }
    });
  });

  test('draws the outlines of any figures', (t) => {
    const place = fc.record({ x: mostly(coordinate), y: mostly(coordinate) });
    const figure = fc.record(
      {
        kind: mostly(fc.constantFrom('dot', 'line', 'angle', 'quadrangle', 'circle', 'ellipse')),
        centre: mostly(place),
        from: mostly(place),
        to: mostly(place),
        vertex: mostly(place),
        radius: mostly(coordinate),
        radii: mostly(place),
        rotation: mostly(coordinate),
        angle: mostly(coordinate),
        corners: mostly(fc.array(place, { minLength: 3, maxLength: 4 })),
      },
      { requiredKeys: ['kind'] },
    );
    const given = [mostly(figure), mostly(side), mostly(side)];
    return holdsFor(t, given, (...args) => requireNamed(outcome(() => outlineOf(...args))));
  });

  test('has a native class that throws for wrong arguments', (t) => {
    const native = loadNative('beautifier');
    const made = new native.Beautifier([1, 5], 0, 4, 0.5, true, true, true, true, []);
    const value = fc.oneof(
      anyValue,
      fc.float64Array({ maxLength: 30 }),
      fc.uint32Array({ maxLength: 3, max: 9 }),
      fc.double(),
      fc.nat(9),
      fc.boolean(),
      fc.array(fc.nat(9)),
    );
    return holdsFor(t, [fc.array(value, { maxLength: 10 })], (args) => {
      for (const call of [
        () => new native.Beautifier(...args),
        () => made.beautify(...args),
        () => made.beautifyAs(...args),
        () => native.outlineOf(...args),
      ]) {
        const { error } = outcome(call);
        assert.ok(error === undefined || error instanceof Error, String(error));
      }
    });
  });
});

describe('the template engine', () => {
  const MESSAGES =
    /^(A number was expected|An array was expected|Cannot convert undefined or null to object)$/;
  const CODES = Object.values(FigureType);

  test('takes any strokes and sides', (t) => {
    initScrivo(templates);
    const given = [mostly(stroke), mostly(side), mostly(side), mostly(others)];
    return holdsFor(t, given, (...args) => {
      const { answer, error } = outcome(() => optimizeAStroke(...args));
      if (error) return assert.ok(MESSAGES.test(error.message) || isOfCaller(error), error);
      assert.ok(CODES.includes(answer.type));
      const isPoint = (p) => typeof p.x === 'number' && typeof p.y === 'number';
      return assert.ok(Array.isArray(answer.path) && answer.path.every(isPoint));
    });
  });

  test('takes any paths', (t) => {
    return holdsFor(t, [fc.oneof(fc.array(anyValue), anyValue)], (paths) => {
      // An array of 2 ** 31 holes is as many conversions to text.
      const call = () => paths?.length > 100 || initScrivo(paths);
      const { answer, error } = outcome(call);
      assert.ok(answer === true || error instanceof Error, error);
    });
  });
});
