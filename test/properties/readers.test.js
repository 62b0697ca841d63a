'use strict';

const assert = require('node:assert/strict');
const { gzipSync } = require('node:zlib');
const { describe, test } = require('node:test');
const fc = require('fast-check');

const { read } = require('../support/read-ink.js');
const { holds } = require('./property.js');

// Any text as an input of the command line: what cannot be read is reported in words for its
// user, and what is read are points.

/** How the runtime's own errors read, which would mean a fault. */
const INTERNAL =
  /undefined|is not (a|an|iterable|defined)\b|of null|circular|call stack|Invalid (array|string)/;

const isNumber = (value) => value === null || value === undefined || Number.isFinite(value);

async function requireRead(content) {
  const { strokes, problems, damage } = await read(content);
  for (const { points, others = [] } of strokes) {
    assert.ok(points.length > 0);
    for (const point of [points, ...others].flat()) {
      assert.ok(Number.isFinite(point[0]) && Number.isFinite(point[1]), String(point));
      assert.ok(isNumber(point[2]) && isNumber(point[3]), String(point));
    }
  }
  for (const message of damage === undefined ? problems : [...problems, damage]) {
    assert.doesNotMatch(message, INTERNAL);
  }
}

/** Some inputs are compressed, cut off, or have a byte changed. */
const damaged = (text) =>
  fc
    .tuple(text, fc.constantFrom('whole', 'whole', 'cut', 'changed', 'gzip'), fc.nat(), fc.nat(255))
    .map(([content, fate, at, value]) => {
      const bytes = Buffer.from(content);
      const place = at % (bytes.length + 1);
      if (fate === 'cut') return bytes.subarray(0, place);
      if (fate === 'gzip') return gzipSync(bytes).subarray(0, at % 3 === 0 ? place : undefined);
      if (fate === 'changed' && place < bytes.length) bytes[place] = value;
      return bytes;
    });

const number = fc.oneof(
  fc.double({ min: -1000, max: 1000, noNaN: true }),
  fc.double().map((value) => (Number.isFinite(value) ? value : 1e300)),
);

function ndjson() {
  const any = fc.jsonValue({ maxDepth: 2 });
  const mostly = (right) =>
    fc.oneof({ arbitrary: right, weight: 6 }, { arbitrary: any, weight: 1 });
  const point = fc.oneof(
    fc.array(mostly(number), { minLength: 1, maxLength: 5 }),
    fc.record({ x: number, y: mostly(number), force: mostly(number), time: mostly(number) }),
  );
  const points = fc.array(mostly(point), { maxLength: 5 });
  const line = fc.record(
    {
      points: mostly(points),
      others: mostly(fc.array(mostly(points), { maxLength: 2 })),
      width: mostly(number),
      height: mostly(number),
      id: any,
    },
    { requiredKeys: ['points'] },
  );
  const text = fc.oneof(
    line.map((value) => JSON.stringify(value)),
    any.map((value) => JSON.stringify(value)),
    fc.string({ unit: 'grapheme' }),
    fc.constantFrom('', '{"points":[[1,1e999]]}', '[]', '\uFEFF'),
  );
  return fc.array(text, { maxLength: 4 }).map((lines) => lines.join('\n'));
}

/** Names that JavaScript's own objects have would be found in a careless table. */
const FOREIGN = ['title', 'constructor', '__proto__', '__defineGetter__', 'toString'];

/** A well-formed document of any of these elements, in any order and nesting. */
function document(root, names, attributes, text) {
  const escape = (value) => value.replace(/[<&"]/g, ' ').replace(/[^\t\n -\ud7ff]/g, '');
  const value = fc.oneof(
    fc.constantFrom(...attributes.values, ...FOREIGN),
    number.map(String),
    text,
    fc.string({ maxLength: 8 }),
  );
  const given = fc.dictionary(fc.constantFrom(...attributes.names, ...FOREIGN), value, {
    maxKeys: 5,
    noNullPrototype: true,
  });
  const pairs = (found) =>
    Object.entries(found)
      .map(([name, content]) => ` ${name}="${escape(content)}"`)
      .join('');
  const { element } = fc.letrec((tie) => ({
    element: fc
      .tuple(
        fc.constantFrom(...names, ...names, ...FOREIGN),
        given,
        fc.oneof(text, text, tie('elements')),
      )
      .map(([name, found, content]) => `<${name}${pairs(found)}>${content}</${name}>`),
    elements: fc
      .array(tie('element'), { maxLength: 4, depthIdentifier: 'xml' })
      .map((parts) => parts.join('\n')),
  }));
  return fc
    .tuple(given, fc.array(element, { maxLength: 6 }))
    .map(([found, parts]) => `<${root}${pairs(found)}>${parts.join('\n')}</${root}>`);
}

function inkml() {
  const value = fc.tuple(
    fc.constantFrom('', '', '', '!', "'", '"'),
    fc.oneof(number.map(String), fc.constantFrom('*', '?', 'T', 'F', '#1F', '1e999', '.5', 'x')),
  );
  const point = fc.array(value, { minLength: 1, maxLength: 4 }).map((all) => all.flat().join(' '));
  const trace = fc.array(point, { maxLength: 4 }).map((points) => points.join(','));
  const names = ['trace', 'trace', 'traceGroup', 'traceFormat', 'channel', 'definitions'];
  const more = ['context', 'inkSource', 'intermittentChannels', 'channelProperty', 'brush'];
  const attributes = {
    names: [
      ...['xml:id', 'id', 'contextRef', 'brushRef', 'traceFormatRef', 'continuation', 'priorRef'],
      ...['name', 'type', 'min', 'max', 'units', 'channel', 'value'],
    ],
    values: [
      ...['#a', '#b', 'a', 'b', 'begin', 'middle', 'end', 'X', 'Y', 'F', 'T', 'OTG', 'penUp'],
      ...['cm', 'ms', 'dev', 'resolution', 'color', 'width', '0', '1'],
    ],
  };
  return document('ink', [...names, ...more, 'brushProperty', 'annotation'], attributes, trace);
}

function svg() {
  const step = fc.tuple(
    fc.constantFrom(...'MmLlHhVvCcSsQqTtAaZz'),
    fc.array(number, { maxLength: 7 }),
  );
  const path = fc.array(step, { maxLength: 5 }).map((steps) => `M0 0${steps.flat(2).join(' ')}`);
  const names = ['path', 'path', 'polyline', 'polygon', 'line', 'g', 'svg', 'rect', 'defs', 'use'];
  const attributes = {
    names: [
      ...['d', 'd', 'points', 'x1', 'y1', 'x2', 'x', 'y', 'width', 'height', 'viewBox'],
      ...['transform', 'style', 'fill', 'stroke', 'stroke-width', 'preserveAspectRatio', 'id'],
    ],
    values: [
      ...['none', '10px', '5mm', '50%', '0 0 100 100', '0 0 0 0', '1e308 1e308 1e308 1e308'],
      ...['rotate(30)', 'matrix(1 0 0 0 0 0)', 'scale(1e200)', 'translate(5', 'skewX(90deg)'],
      ...['stroke:red', 'fill:none;stroke-width:3', 'xMinYMax slice', '0,0 10,10 20', '-3'],
    ],
  };
  return document('svg', names, attributes, path);
}

describe('readers of ink', () => {
  for (const [name, text] of Object.entries({ NDJSON: ndjson(), InkML: inkml(), SVG: svg() })) {
    test(`take any ${name}`, (t) => holds(t, fc.asyncProperty(damaged(text), requireRead)));
  }
});
