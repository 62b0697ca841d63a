'use strict';

const assert = require('node:assert/strict');
const path = require('node:path');
const { describe, it } = require('node:test');
const { Worker } = require('node:worker_threads');

const { Beautifier, FIGURES } = require('../../lib/beautifier.js');

const WIDTH = 1000;
const HEIGHT = 800;

const samples = (place, count = 90) =>
  Array.from({ length: count }, (_, i) => {
    const [x, y] = place(i / (count - 1));
    return { x: x / WIDTH, y: y / HEIGHT };
  });

/** A stroke along corners in drawing-area units, with a little tremor. */
function polyline(corners, count) {
  const edges = corners.length - 1;
  return samples((t) => {
    const k = Math.min(edges - 1, Math.floor(t * edges));
    const u = t * edges - k;
    const tremor = 0.4 * Math.sin(40 * t);
    const mix = (axis) => corners[k][axis] * (1 - u) + corners[k + 1][axis] * u + tremor;
    return [mix(0), mix(1)];
  }, count);
}

const round = (rx, ry) =>
  samples((t) => [500 + rx * Math.cos(6.25 * t), 400 + ry * Math.sin(6.25 * t)]);

const INK = {
  dot: [
    { x: 0.5, y: 0.5 },
    { x: 0.501, y: 0.5 },
  ],
  line: polyline([
    [100, 100],
    [500, 260],
  ]),
  angle: polyline([
    [100, 100],
    [400, 120],
    [380, 420],
  ]),
  triangle: polyline([
    [100, 400],
    [250, 120],
    [420, 390],
    [100, 400],
  ]),
  quadrangle: polyline([
    [100, 100],
    [400, 105],
    [395, 300],
    [102, 296],
    [100, 100],
  ]),
  circle: round(100, 102),
  ellipse: round(160, 80),
};

const packed = (stroke) => Float64Array.from(stroke.flatMap(({ x, y }) => [x, y, 0]));

const near = (a, b, what) => assert.ok(Math.abs(a - b) < 1e-6, `${what}: ${a} and ${b}`);

/** The points of a path, in drawing-area units, at some places. */
const pointsAt = (path, indices) =>
  indices.map((i) => ({ x: path.at(i).x * WIDTH, y: path.at(i).y * HEIGHT }));

/** Where the parameters of a figure show in its path. */
const MARKS = {
  dot: (f) => [[-1], [f.centre]],
  line: (f) => [
    [0, -1],
    [f.from, f.to],
  ],
  angle: (f) => [
    [0, 20, -1],
    [f.from, f.vertex, f.to],
  ],
  triangle: (f) => [[0, 21, 42], f.corners],
  quadrangle: (f) => [[0, 21, 42, 63], f.corners],
  circle: (f) => [[0], [{ x: f.centre.x + f.radius, y: f.centre.y }]],
  ellipse: (f) => [
    [0],
    [
      {
        x: f.centre.x + f.radii.x * Math.cos(f.rotation),
        y: f.centre.y + f.radii.x * Math.sin(f.rotation),
      },
    ],
  ],
};

describe('answers', () => {
  const beautifier = new Beautifier();

  for (const [kind, stroke] of Object.entries(INK)) {
    it(`finds the ${kind}; its parameters agree with its path`, () => {
      const answer = beautifier.beautify(stroke, WIDTH, HEIGHT);
      assert.equal(answer.figure?.kind, kind);
      assert.equal(answer.reason, null);
      assert.ok(answer.confidence > 0.5 && answer.confidence <= 1);
      const [indices, expected] = MARKS[kind](answer.figure);
      pointsAt(answer.path, indices).forEach((point, i) => {
        near(point.x, expected[i].x, `x of mark ${i}`);
        near(point.y, expected[i].y, `y of mark ${i}`);
      });
    });
  }

  it('gives packed strokes back packed, with the same numbers', () => {
    const stroke = INK.triangle.map((point) => ({ ...point, force: 0 }));
    const objects = beautifier.beautify(stroke, WIDTH, HEIGHT);
    const numbers = beautifier.beautify(packed(stroke), WIDTH, HEIGHT);
    assert.deepEqual(numbers.path, packed(objects.path));
    assert.deepEqual(numbers.figure, objects.figure);
    const flat = new Beautifier({ layout: 'xy' });
    const pairs = Float64Array.from(stroke.flatMap(({ x, y }) => [x, y]));
    assert.equal(flat.beautify(pairs, WIDTH, HEIGHT).path.length, 2 * 63);
  });

  it('gives ink back as the very points that were drawn, and says why', () => {
    const zigzag = [0, 1, 2, 3, 4, 5, 6].map((k) => [100 + 60 * k, 200 + 150 * (k % 2)]);
    const ink = polyline(zigzag).map((point, time) => ({ ...point, force: 0, time }));
    const { path } = beautifier.beautify(ink, WIDTH, HEIGHT);
    assert.deepEqual(path, ink);
    assert.notEqual(path, ink);
    path.forEach((point, i) => assert.equal(point, ink[i]));
    const reason = (options, stroke) =>
      new Beautifier(options).beautify(stroke, WIDTH, HEIGHT).reason;
    assert.equal(reason({}, ink), 'no-figure');
    assert.equal(reason({}, []), 'invalid');
    assert.equal(reason({ minSize: 500 }, INK.line), 'too-small');
    assert.equal(reason({ figures: ['dot'] }, INK.line), 'not-wanted');
  });

  it('snaps a line to other strokes, in either form, unless told not to', () => {
    const other = [{ x: 0.1, y: 0.13 }];
    const start = (options, others) => {
      const { figure } = new Beautifier(options).beautify(INK.line, WIDTH, HEIGHT, others);
      return figure.from;
    };
    assert.deepEqual(start({}, [other]), { x: 100, y: 104 });
    assert.deepEqual(start({}, [packed(other)]), { x: 100, y: 104 });
    assert.deepEqual(start({ nearbyStrokes: false }, [other]), start({}, []));
  });
});

describe('arguments', () => {
  const beautifier = new Beautifier();
  const point = { x: 0, y: 0 };
  const wrong = [
    ['no stroke', () => beautifier.beautify(undefined, 1, 1), TypeError, /^stroke .*undefined/],
    ['no object', () => beautifier.beautify([point, null], 1, 1), TypeError, /^stroke\[1\] .*null/],
    ['a number', () => beautifier.beautify([7], 1, 1), TypeError, /^stroke\[0\] .*found 7/],
    ['no y', () => beautifier.beautify([{ x: 0 }], 1, 1), TypeError, /^stroke\[0\]\.y .*undefined/],
    ['NaN', () => beautifier.beautify([{ x: NaN, y: 0 }], 1, 1), RangeError, /^stroke\[0\]\.x/],
    ['text', () => beautifier.beautify([{ x: '1', y: 0 }], 1, 1), TypeError, /found "1"/],
    ['half a point', () => beautifier.beautify(new Float64Array(4), 1, 1), RangeError, /3 numbers/],
    [
      'packed NaN',
      () => beautifier.beautify(Float64Array.of(0, NaN, 0), 1, 1),
      RangeError,
      /^stroke\[1\]/,
    ],
    ['width', () => beautifier.beautify([], '9', 1), TypeError, /^width .*"9"/],
    ['height', () => beautifier.beautify([], 1, 0), RangeError, /^height .*found 0/],
    ['others', () => beautifier.beautify([], 1, 1, 5), TypeError, /^others .*found 5/],
    ['other', () => beautifier.beautify([], 1, 1, [[point, 3]]), TypeError, /^others\[0\]\[1\]/],
    // eslint-disable-next-line no-sparse-arrays -- holes are what is tested
    ['hole', () => new Beautifier({ figures: [, 'dot'] }), RangeError, /figures\[0\].*undefined/],
    ['no option', () => new Beautifier([]), TypeError, /^options .*an array/],
    [
      'bare object',
      () => beautifier.beautify([{ x: Object.create(null), y: 0 }], 1, 1),
      TypeError,
      /^stroke\[0\]\.x .*an object/,
    ],
    ['other hole', () => beautifier.beautify([], 1, 1, new Array(2)), TypeError, /^others\[0\]/],
    ['figures', () => new Beautifier({ figures: 'dot' }), TypeError, /^options\.figures /],
    ['figure', () => new Beautifier({ figures: ['star'] }), RangeError, /figures\[0\].*"star"/],
    ['sensitivity', () => new Beautifier({ sensitivity: 1.1 }), RangeError, /sensitivity.*1\.1/],
    ['flag', () => new Beautifier({ regularFigures: 1 }), TypeError, /regularFigures.*1/],
    ['layout', () => new Beautifier({ layout: 'yx' }), RangeError, /layout.*"yx"/],
    ['unknown', () => new Beautifier({ minsize: 3 }), RangeError, /minsize.*minSize/],
  ];
  for (const [name, call, type, message] of wrong) {
    it(`are named when wrong: ${name}`, () => {
      assert.throws(call, (error) => error instanceof type && message.test(error.message));
    });
  }

  it('that lie about their length are read no further than they go', () => {
    class Liar extends Float64Array {
      get length() {
        return 4e8;
      }
    }
    const flat = new Beautifier({ layout: 'xy' });
    const { path } = flat.beautify(packed(INK.line), WIDTH, HEIGHT, [new Liar([0.1, 0.1])]);
    assert.ok(path.length > 0);
  });

  it('that change while they are read count as they were', () => {
    const points = INK.line.map((point) => ({ ...point }));
    const { y } = points[0];
    Object.defineProperty(points[0], 'y', { get: () => ((points.length = 10), y) });
    const { figure } = beautifier.beautify(points, WIDTH, HEIGHT);
    assert.deepEqual(figure, beautifier.beautify(INK.line, WIDTH, HEIGHT).figure);
  });

  it('are not changed, and options cannot be', () => {
    const stroke = Object.freeze(INK.circle.map(Object.freeze));
    beautifier.beautify(stroke, WIDTH, HEIGHT, [stroke]);
    assert.deepEqual(beautifier.options.figures, FIGURES);
    assert.ok(Object.isFrozen(beautifier) && Object.isFrozen(beautifier.options.figures));
  });
});

it('answers the same in several threads at once', async () => {
  const file = JSON.stringify(path.join(__dirname, '..', '..', 'lib', 'beautifier.js'));
  const source = `
    const { Beautifier } = require(${file});
    const { parentPort, workerData } = require('node:worker_threads');
    const beautifier = new Beautifier();
    parentPort.postMessage(workerData.map((stroke) => beautifier.beautify(stroke, 1000, 800)));`;
  const strokes = Object.values(INK);
  const inThread = () =>
    new Promise((resolve, reject) => {
      const worker = new Worker(source, { eval: true, workerData: strokes });
      worker.once('message', resolve);
      worker.once('error', reject);
    });
  const here = strokes.map((stroke) => new Beautifier().beautify(stroke, WIDTH, HEIGHT));
  for (const answers of await Promise.all([inThread(), inThread(), inThread()])) {
    assert.deepEqual(answers, here);
  }
});
