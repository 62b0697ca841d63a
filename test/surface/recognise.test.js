'use strict';

const assert = require('node:assert/strict');
const { before, describe, test } = require('node:test');
const { createRecogniser } = require('../../surface/recognise.js');
const { HEIGHT, INK, WIDTH, strokeOf } = require('../support/strokes.js');

const FRAME = { width: WIDTH, height: HEIGHT, anchors: [] };
const pointsOf = (stroke) => stroke.flatMap(({ x, y }) => [x * WIDTH, y * HEIGHT]);

describe('the engines of the page', () => {
  let recognise;
  before(async () => {
    recognise = await createRecogniser();
  });
  const ask = (stroke, task) =>
    recognise({ task: 'recognise', points: pointsOf(stroke), ...FRAME, ...task });

  for (const engine of ['beautifier', 'template']) {
    test(`${engine}: every figure, and ink that is none`, () => {
      for (const [kind, stroke] of Object.entries(INK)) {
        const { figure, confidence } = ask(stroke, { engine });
        assert.equal(figure?.kind, kind);
        assert.equal(confidence !== null, engine === 'beautifier');
      }
      const { figure, reason } = ask(strokeOf('zigzag'), { engine });
      assert.deepEqual([figure, reason], [null, engine === 'template' ? 'template' : 'no-figure']);
    });
  }

  test('the parameters of the template figures are those of its outlines', () => {
    for (const kind of ['circle', 'ellipse', 'quadrangle', 'triangle', 'angle', 'line']) {
      const [mine, other] = ['template', 'beautifier'].map(
        (engine) => ask(INK[kind], { engine }).figure,
      );
      const places = (figure) =>
        Object.values(figure).flatMap((v) =>
          Array.isArray(v) ? v : v?.x === undefined ? [] : [v],
        );
      const nearest = (place) =>
        Math.min(...places(other).map((p) => Math.hypot(p.x - place.x, p.y - place.y)));
      for (const place of places(mine))
        assert.ok(nearest(place) < 25, `${kind}: ${JSON.stringify(place)}`);
    }
  });

  test('wishes, options and explanations', () => {
    const square = strokeOf('square');
    assert.equal(ask(square).figure.subtype, 'square');
    assert.equal(ask(square, { task: 'as', wish: 'circle' }).figure.kind, 'circle');
    assert.equal(ask(square, { options: { minSize: 500 } }).reason, 'too-small');
    const { candidates, points } = ask(square, { task: 'explain' });
    const best = candidates.reduce((p, q) => (q.probability > p.probability ? q : p));
    assert.deepEqual([candidates.length, best.family], [6, 'quadrangle']);
    assert.deepEqual([best.figure.subtype, best.fitted.subtype], ['square', 'general']);
    for (const { x, y } of best.fitted.corners) {
      const near = Math.min(...points.map((p) => Math.hypot(p.x - x, p.y - y)));
      assert.ok(near < 12, `a point ${near} from a fitted corner`);
    }
  });
});
