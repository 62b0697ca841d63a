'use strict';

const assert = require('node:assert/strict');
const { describe, it } = require('node:test');

const { Beautifier, FIGURES, outlineOf, resample } = require('../../lib/beautifier.js');
const { WISHES } = require('../../lib/figures.js');
const { HEIGHT, INK, WIDTH } = require('../support/strokes.js');

const beautifier = new Beautifier({ figures: [], minSize: 1e6, sensitivity: 0 });
const wished = (stroke, wish) => beautifier.beautifyAs(stroke, wish, WIDTH, HEIGHT);

describe('wishes', () => {
  it('are granted by family and by kind, whatever the options for recognition', () => {
    for (const [wish, [family]] of WISHES) {
      const { figure, reason } = wished(INK.quadrangle, wish);
      assert.equal(reason, null, wish);
      const isCircle = figure.kind === 'circle';
      assert.equal(isCircle ? 'ellipse' : figure.kind, FIGURES[family], wish);
      const kind = isCircle ? 'circle' : (figure.subtype ?? wish);
      assert.ok(FIGURES.includes(wish) || kind === wish, `${wish} became ${kind}`);
    }
  });

  it('keep the form of the stroke', () => {
    const packed = Float64Array.from(INK.line.flatMap(({ x, y }) => [x, y, 0.5]));
    const { path } = wished(packed, 'line');
    assert.ok(path instanceof Float64Array);
    assert.equal(path.length, 3 * 21);
  });

  it('that are unknown are refused, and so is ink that is none', () => {
    for (const wish of ['blob', 'general', undefined, 3, 'Square']) {
      assert.throws(() => wished(INK.line, wish), { name: 'RangeError', message: /^wish must be/ });
    }
    assert.throws(() => wished([{ x: 'a', y: 0 }], 'line'), /stroke\[0\]\.x must be a number/);
    assert.equal(wished([], 'dot').reason, 'invalid');
    assert.equal(wished([{ x: 0.5, y: 0.5 }], 'square').reason, 'no-figure');
  });
});

describe('alternatives', () => {
  it('name other families with probabilities, likeliest first', () => {
    const { alternatives, confidence } = wished(INK.quadrangle, 'ellipse');
    assert.equal(alternatives[0].family, 'quadrangle');
    const probabilities = alternatives.map(({ probability }) => probability);
    assert.deepEqual(
      probabilities,
      [...probabilities].sort((a, b) => b - a),
    );
    assert.ok(probabilities.reduce((sum, p) => sum + p, confidence) <= 1 + 1e-12);
  });
});

describe('outlineOf', () => {
  it('draws the path of an answer from its figure alone', () => {
    for (const stroke of Object.values(INK)) {
      const { figure, path } = new Beautifier().beautify(stroke, WIDTH, HEIGHT);
      assert.deepEqual(outlineOf(figure, WIDTH, HEIGHT), path);
    }
  });

  it('follows what the host has changed', () => {
    const path = outlineOf({ kind: 'circle', centre: { x: 40, y: 30 }, radius: 20 }, 100, 50);
    assert.equal(path.length, 85);
    for (const { x, y } of path) {
      assert.ok(Math.abs(Math.hypot(100 * x - 40, 50 * y - 30) - 20) < 1e-9);
    }
  });

  it('names the parameter that is wrong', () => {
    const wrong = [
      [null, /^figure must be a figure, found null/],
      [{ kind: 'blob' }, /^figure\.kind must be one of dot, .*, found "blob"/],
      [{ kind: 'circle', centre: { x: 0, y: 0 } }, /^figure\.radius must be a number/],
      [
        { kind: 'circle', centre: { x: NaN, y: 0 }, radius: 1 },
        /^figure\.centre\.x must be finite/,
      ],
      [{ kind: 'dot', centre: 3 }, /^figure\.centre must be an object with x and y/],
      [{ kind: 'triangle', corners: [{ x: 0, y: 0 }] }, /^figure\.corners must be an array of 3/],
    ];
    for (const [figure, message] of wrong) {
      assert.throws(() => outlineOf(figure, WIDTH, HEIGHT), { message });
    }
    const dot = { kind: 'dot', centre: { x: 0, y: 0 } };
    assert.throws(() => outlineOf(dot, 0, HEIGHT), /width must be above 0/);
    assert.throws(() => outlineOf(dot, 5e-324, HEIGHT), /^RangeError: figure must lie within /);
    assert.equal(outlineOf(dot, 1e308, 1e308).length, 64);
  });
});

describe('resample', () => {
  it('gives evenly spaced points, nearly the same ones for fewer samples', () => {
    const evenOf = (stroke) =>
      resample(stroke, WIDTH, HEIGHT).map(({ x, y }) => [x * WIDTH, y * HEIGHT]);
    const distance = ([px, py], [qx, qy]) => Math.hypot(px - qx, py - qy);
    const stroke = INK.quadrangle;
    const points = evenOf(stroke);
    assert.equal(points.length, 97);
    const steps = points.slice(1).map((p, i) => distance(p, points[i]));
    assert.ok(Math.max(...steps) < 1.1 * steps[48]);
    const few = evenOf(stroke.filter((_, i) => i % 3 === 0 || i === stroke.length - 1));
    for (const [i, p] of points.entries()) assert.ok(distance(p, few[i]) < 6, `${i}`);
  });

  it('has none for what cannot be fitted, and names what is wrong', () => {
    const inPixels = INK.line.map(({ x, y }) => ({ x: x * WIDTH, y: y * HEIGHT }));
    for (const stroke of [[], [{ x: 0.5, y: 0.5 }], inPixels]) {
      assert.deepEqual(resample(stroke, WIDTH, HEIGHT), []);
    }
    assert.throws(() => resample([{ x: 0 }], WIDTH, HEIGHT), /^TypeError: stroke\[0\]\.y/);
    assert.throws(() => resample([], 0, HEIGHT), /width must be above 0/);
  });
});

describe('the option anchors', () => {
  it('selects the marks that lines snap to', () => {
    const line = Array.from({ length: 30 }, (_, i) => ({ x: 0.2 + i / 100, y: 0.3 + i / 90 }));
    const other = [
      { x: 0.2 + 4 / WIDTH, y: 0.3 },
      { x: 0.2 + 4 / WIDTH, y: 0.1 },
    ];
    const start = (anchors) =>
      new Beautifier({ anchors }).beautify(line, WIDTH, HEIGHT, [other]).figure.from;
    assert.ok(Math.abs(start(['end']).x - (0.2 * WIDTH + 4)) < 1e-6);
    assert.ok(Math.abs(start(['centre']).x - 0.2 * WIDTH) < 1);
    assert.throws(
      () => new Beautifier({ anchors: ['middle'] }),
      /options\.anchors\[0\] must be one of/,
    );
  });
});
