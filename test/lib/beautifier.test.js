'use strict';

const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const { once } = require('node:events');
const path = require('node:path');
const { describe, it } = require('node:test');
const { Worker } = require('node:worker_threads');

const { Beautifier, FIGURES } = require('../../lib/beautifier.js');
const { loadNative } = require('../../lib/native.js');

const WIDTH = 1000;
const HEIGHT = 800;

const samples = (place, count = 90) =>
  Array.from({ length: count }, (_, i) => {
    const [x, y] = place(i / (count - 1));
    return { x: x / WIDTH, y: y / HEIGHT };
  });

/** A stroke along corners in drawing-area units, `x,y` each, with a little tremor. */
function polyline(text) {
  const corners = text.split(' ').map((corner) => corner.split(',').map(Number));
  const edges = corners.length - 1;
  return samples((t) => {
    const k = Math.min(edges - 1, Math.floor(t * edges));
    const u = t * edges - k;
    const tremor = 0.4 * Math.sin(40 * t);
    return [0, 1].map((axis) => corners[k][axis] * (1 - u) + corners[k + 1][axis] * u + tremor);
  });
}

const round = (rx, ry) =>
  samples((t) => [500 + rx * Math.cos(6.25 * t), 400 + ry * Math.sin(6.25 * t)]);

const INK = {
  dot: samples((t) => [500 + t, 400], 2),
  line: polyline('100,100 500,260'),
  angle: polyline('100,100 400,120 380,420'),
  triangle: polyline('100,400 250,120 420,390 100,400'),
  quadrangle: polyline('100,100 400,105 395,300 102,296 100,100'),
  circle: round(100, 102),
  ellipse: round(160, 80),
};

const packed = (stroke) => Float64Array.from(stroke.flatMap(({ x, y }) => [x, y, 0]));

const onAxis = ({ centre, radii, rotation }) => ({
  x: centre.x + radii.x * Math.cos(rotation),
  y: centre.y + radii.x * Math.sin(rotation),
});

/** Where the parameters of a figure show in its path: points and their indices. */
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
    const zigzag = polyline('100,200 160,350 220,200 280,350 340,200 400,350 460,200');
    const ink = zigzag.map((point, time) => ({ ...point, force: 0, time }));
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
  // Longer than the memory: whoever copies it whole takes the process down.
  const HOLES = new Array(2 ** 32 - 1);
  const moved = new Float64Array(3);
  structuredClone(moved, { transfer: [moved.buffer] });

  const wrongStrokes = [
    [undefined, /^TypeError: stroke .*undefined/],
    [[point, null], /^TypeError: stroke\[1\] .*null/],
    [[7], /^TypeError: stroke\[0\] .*found 7/],
    [HOLES, /^TypeError: stroke\[0\] .*found undefined/],
    [[{ x: 0 }], /^TypeError: stroke\[0\]\.y .*undefined/],
    [[{ x: NaN, y: 0 }], /^RangeError: stroke\[0\]\.x/],
    [[{ x: '1', y: 0 }], /^TypeError: .*found "1"/],
    [[{ x: Object.create(null), y: 0 }], /^TypeError: stroke\[0\]\.x .*an object/],
    [new Float64Array(4), /^RangeError: .*3 numbers/],
    [Float64Array.of(0, NaN, 0), /^RangeError: stroke\[1\]/],
    [new Float32Array(6), /^TypeError: stroke .* a Float32Array; .*from\(stroke, Number\)/],
    [moved, /^TypeError: stroke .*transferred/],
  ];
  const wrongOptions = [
    [[], /^TypeError: options .*an array/],
    [new Map([['minSize', 20]]), /^TypeError: options .*a Map/],
    [{ figures: HOLES }, /^RangeError: .*figures\[0\].*undefined/],
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
    [[[], 1, 1, 5], /^TypeError: others .*found 5/],
    [[[], 1, 1, [[point, 3]]], /^TypeError: others\[0\]\[1\]/],
    [[[], 1, 1, HOLES], /^TypeError: others\[0\]/],
    [[[], 1, 1, [moved]], /^TypeError: others\[0\] .*transferred/],
    ...wrongStrokes.map(([stroke, message]) => [[stroke, 1, 1], message]),
  ];
  const calls = [
    ...wrongCalls.map(([args, message]) => [() => beautifier.beautify(...args), message]),
    ...wrongOptions.map(([options, message]) => [() => new Beautifier(options), message]),
  ];
  for (const [call, message] of calls) {
    it(`are named when wrong: ${message.source}`, () => assert.throws(call, message));
  }

  it('of the native class are arrays of the right type, whose ends it knows', () => {
    const { Beautifier: Native } = loadNative('beautifier');
    const native = new Native([1], 0, 0.5, true, true, true, true);
    const call = (points, others) =>
      native.beautify(points, 3, 1, 1, others, Uint32Array.of(others.length / 2));
    assert.equal(call(new Float64Array(3), new Float64Array(2)).length, 7);
    assert.throws(() => call(new Uint8Array(24), new Float64Array(2)), /Float64Array/);
    assert.throws(() => call(new Float64Array(3), new Float32Array(2)), /Float64Array/);
  });

  it('are options that an object inherits, too', () => {
    const { minSize, sensitivity, layout } = new Beautifier(
      Object.create({ minSize: 20, layout: undefined }, { sensitivity: { value: 1 } }),
    ).options;
    assert.deepEqual([minSize, sensitivity, layout], [20, 1, 'xyf']);
  });

  it('that lie about their length are read no further than they go', () => {
    const liar = Object.defineProperty(Float64Array.of(0.1, 0.1), 'length', { value: 4e8 });
    const flat = new Beautifier({ layout: 'xy' });
    const { path } = flat.beautify(packed(INK.line), WIDTH, HEIGHT, [liar]);
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

const FILE = JSON.stringify(path.join(__dirname, '..', '..', 'lib', 'beautifier.js'));

it('survives the end of a thread within a call', () => {
  const worker = `
    const { Beautifier } = require(${FILE});
    const beautifier = new Beautifier();
    require('node:worker_threads').parentPort.postMessage('started');
    for (;;) beautifier.beautify(new Float64Array(300), 800, 600);`;
  const main = async (source) => {
    const { Worker } = require('node:worker_threads');
    for (let i = 0; i < 20; i++) {
      const thread = new Worker(source, { eval: true });
      await new Promise((resolve) => thread.once('message', resolve));
      await new Promise((resolve) => setTimeout(resolve, 5));
      await thread.terminate();
    }
    process.stdout.write('all ended');
  };
  const args = ['-e', `(${main})(${JSON.stringify(worker)})`];
  const { stdout, signal } = spawnSync(process.execPath, args, { encoding: 'utf8' });
  assert.deepEqual([stdout, signal], ['all ended', null]);
});

it('answers the same in several threads at once', async () => {
  const source = `
    const { Beautifier } = require(${FILE});
    const { parentPort, workerData } = require('node:worker_threads');
    const beautifier = new Beautifier();
    parentPort.postMessage(workerData.map((stroke) => beautifier.beautify(stroke, 1000, 800)));`;
  const strokes = Object.values(INK);
  const inThread = () => once(new Worker(source, { eval: true, workerData: strokes }), 'message');
  const here = strokes.map((stroke) => new Beautifier().beautify(stroke, WIDTH, HEIGHT));
  for (const [answers] of await Promise.all([inThread(), inThread(), inThread()])) {
    assert.deepEqual(answers, here);
  }
});
