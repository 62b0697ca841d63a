'use strict';

const assert = require('node:assert/strict');
const { before, describe, test } = require('node:test');
const fc = require('fast-check');

const { createEngine } = require('../../packages/cli/lib/engines.js');
const { createLineProcessor } = require('../../packages/cli/lib/run/lines.js');
const { holds } = require('./property.js');

// Lines are answered by native code where they have the usual form, else in JavaScript. Both must
// give the same bytes. With `snap` all lines are answered in JavaScript.

/** Numbers in any notation that JSON has. */
const notation = (number) =>
  fc
    .tuple(number, fc.constantFrom('short', 'short', 'fixed', 'exponent', 'zeros'), fc.nat(17))
    .map(([value, form, digits]) => {
      if (form === 'fixed') return value.toFixed(digits);
      if (form === 'exponent')
        return value.toExponential(digits).replace('e', digits % 2 ? 'E' : 'e');
      const text = JSON.stringify(value);
      return form === 'zeros' && /^-?\d+\.\d+$/.test(text) ? `${text}00` : text;
    });

const SHAPES = {
  line: (t) => [t, 0.01 * Math.sin(9 * t)],
  circle: (t) => [Math.cos(2 * Math.PI * t), Math.sin(2 * Math.PI * t)],
  angle: (t) => [Math.min(1, 2 * t), Math.max(0, 2 * t - 1)],
  square: (t) =>
    [0, 1, 2, 3]
      .map((i) => Math.min(1, Math.max(0, 4 * t - i)))
      .reduce(
        ([x, y], part, i) => [x + [part, 0, -part, 0][i], y + [0, part, 0, -part][i]],
        [0, 0],
      ),
  dot: (t) => [0.001 * t, 0],
};

/** Members of points that are objects. */
const NAMES = [
  ['x', 'y', 'force', 'time'],
  ['y', 'x', 'time', 'force'],
  ['x', 'y', 'pressure', 'x'],
];

/** The points of a stroke as text: a figure at any place and size, in many notations. */
const points = fc
  .record({
    shape: fc.constantFrom(...Object.values(SHAPES)),
    count: fc.integer({ min: 1, max: 60 }),
    size: fc.constantFrom(1e-5, 0.7, 60, 64, 128, 150, 212.5, 1000, 1e7, 1e15),
    place: notation(fc.oneof(fc.constantFrom(0, -0, 1000), fc.double({ min: -1e4, max: 1e4 }))),
    digits: fc.option(fc.nat(12)),
    rest: fc.array(fc.oneof(notation(fc.double({ min: 0, max: 1 })), fc.constant('null')), {
      maxLength: 2,
    }),
    names: fc.constantFrom(undefined, undefined, ...NAMES),
    space: fc.constantFrom('', '', '', ' ', '\t'),
  })
  .map(({ shape, count, size, place, digits, rest, names, space }) => {
    const text = (value) => (digits === null ? String(value) : value.toFixed(digits));
    const at = Number(place);
    const drawn = Array.from({ length: count }, (_, i) => {
      const [x, y] = shape(i / Math.max(1, count - 1));
      const values = [text(size * x + at), text(size * y), ...rest];
      const members = names && values.map((each, k) => `"${names[k]}"${space}:${each}`);
      return members ? `{${members.join(`${space},`)}}` : `[${values.join(`,${space}`)}]`;
    });
    return `[${space}${drawn.join(`${space},`)}]`;
  });

const name = fc.oneof(
  fc.constantFrom('id', 'label', 'points', 'width', 'height', 'type', '1', '__proto__', 'source'),
  fc.string({ unit: 'grapheme', maxLength: 4 }),
);

/** JSON with escapes that JSON.stringify does not write. */
const escaped = (text) =>
  text.replace(/[\u007f-\uffff/]/g, (unit) =>
    unit === '/' ? '\\/' : `\\u${unit.charCodeAt(0).toString(16).padStart(4, '0')}`,
  );

const value = fc.oneof(
  fc.jsonValue({ maxDepth: 3 }).map((any) => JSON.stringify(any)),
  fc.jsonValue({ maxDepth: 1 }).map((any) => escaped(JSON.stringify(any))),
  notation(fc.double({ min: -1e6, max: 1e6 })),
  fc.bigInt({ min: -(10n ** 20n), max: 10n ** 20n }).map(String),
  fc.constantFrom('1000', '800.5', '"\\ud800"', '"\\u0001\\u001F"', '[1, 2 ]', 'nul', '1.', '+1'),
);

const line = fc
  .record({
    points,
    before: fc.array(fc.tuple(name, value), { maxLength: 2 }),
    after: fc.array(fc.tuple(name, value), { maxLength: 2 }),
    colon: fc.constantFrom(':', ': ', ' : '),
    end: fc.constantFrom('', '', '', '\r', ' ', ',', '}'),
  })
  .map(({ points: drawn, before: first, after, colon, end }) => {
    const member = ([key, text]) => JSON.stringify(key) + colon + text;
    return `{${[...first, ['points', drawn], ...after].map(member).join(',')}}${end}`;
  });

const block = fc.array(line, { minLength: 1, maxLength: 3 }).map((lines) => lines.join('\n'));

const options = fc.record({
  scale: fc.constantFrom(undefined, undefined, 0.1, 5 / 12, 5 / 3, 1000, 1e300),
  decimals: fc.constantFrom(undefined, undefined, 0, 7, 15),
  area: fc.constantFrom(undefined, undefined, { x: 0, y: 0, width: 300, height: 200 }),
});

function answers(engine, given, text, source) {
  const { parts, ...result } = createLineProcessor(
    engine,
    given,
  )({ bytes: Buffer.from(text), source });
  return { ...result, lines: Buffer.from(parts[0]).toString().split('\n') };
}

const POINTS =
  /"points":(\[\s*(?:\[[^[\]]*\]|\{[^{}]*\})(?:\s*,\s*(?:\[[^[\]]*\]|\{[^{}]*\}))*\s*\])/;

/** Points that stay as drawn keep their notation in native code alone. */
const withoutNotation = (text) =>
  text.includes('"type":0')
    ? text.replace(POINTS, (_, drawn) => `"points":${JSON.stringify(JSON.parse(drawn))}`)
    : text;

function assertSame(usual, other) {
  assert.deepEqual(
    { ...usual, lines: usual.lines.length },
    { ...other, lines: other.lines.length },
  );
  assert.deepEqual(usual.lines.map(withoutNotation), other.lines.map(withoutNotation));
}

describe('lines in native code and in JavaScript', () => {
  const engines = ['beautifier', 'template'].map((engine) => createEngine(engine));
  before(() => engines.forEach((engine) => engine.load({})));

  for (const engine of engines) {
    test(`have the same answers of the ${engine.name} engine`, (t) =>
      holds(
        t,
        fc.property(block, options, fc.constantFrom(undefined, 'a.ndjson'), (text, given, source) =>
          assertSame(
            answers(engine, given, text, source),
            answers(engine, { ...given, snap: true }, text, source),
          ),
        ),
      ));
  }
});
