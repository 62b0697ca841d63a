'use strict';

const assert = require('node:assert/strict');
const { describe, test } = require('node:test');
const { createRecogniser } = require('../../surface/recognise.js');
const { ENGINES } = require('../../surface/stroke-request.js');

const SIZE = { width: 1000, height: 800 };

/** A stroke through corners, `x,y` each in pixels, 20 samples an edge. */
function polyline(text) {
  const corners = text.split(' ').map((corner) => corner.split(',').map(Number));
  const edge = ([ax, ay], [bx, by]) =>
    Array.from({ length: 20 }, (_, i) => ({
      x: (ax + ((bx - ax) * i) / 20) / SIZE.width,
      y: (ay + ((by - ay) * i) / 20) / SIZE.height,
    }));
  return corners.slice(1).flatMap((corner, i) => edge(corners[i], corner));
}

const ellipse = (rx, ry) =>
  Array.from({ length: 64 }, (_, i) => ({
    x: 0.5 + (rx * Math.cos(i / 10)) / SIZE.width,
    y: 0.5 + (ry * Math.sin(i / 10)) / SIZE.height,
  }));

const STROKES = {
  dot: Array(30).fill({ x: 0.5, y: 0.5 }),
  line: polyline('100,100 500,260'),
  angle: polyline('100,100 400,120 380,420'),
  triangle: polyline('100,400 250,120 420,390 100,400'),
  quadrangle: polyline('100,100 400,105 395,300 102,296 100,100'),
  circle: ellipse(100, 102),
  ellipse: ellipse(200, 100),
};

describe('the engines of the page', () => {
  const recognise = createRecogniser();
  const ask = (engine, stroke) => recognise({ engine, stroke, ...SIZE, others: [] });

  for (const engine of ENGINES) {
    for (const [kind, stroke] of Object.entries(STROKES)) {
      test(`${engine}: a ${kind}`, () => {
        const { path, figure, confidence } = ask(engine, stroke);
        assert.equal(figure?.kind, kind);
        assert.notDeepEqual(path, stroke);
        if (engine === 'beautifier') assert.ok(confidence > 0.5);
        else assert.equal(confidence, null);
      });
    }

    test(`${engine}: ink that is no figure stays as drawn`, () => {
      const zigzag = polyline('100,200 160,350 220,200 280,350 340,200 400,350 460,200');
      const { path, figure } = ask(engine, zigzag);
      assert.deepEqual([path, figure], [zigzag, null]);
    });
  }

  test('a quadrangle comes with its kind from the beautifier', () => {
    const square = polyline('100,100 300,102 298,301 99,299 100,100');
    assert.equal(ask('beautifier', square).figure.subtype, 'square');
  });
});
