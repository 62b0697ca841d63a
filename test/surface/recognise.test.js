'use strict';

const assert = require('node:assert/strict');
const { describe, test } = require('node:test');
const { createRecogniser } = require('../../surface/recognise.js');
const { ENGINES } = require('../../surface/stroke-request.js');
const { HEIGHT, INK, WIDTH, polyline } = require('../support/strokes.js');

const SIZE = { width: WIDTH, height: HEIGHT };
// The template engine takes a press without pressure for a dot from 26 samples on.
const STROKES = { ...INK, dot: Array(30).fill({ x: 0.5, y: 0.5 }) };

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

  test('the beautifier names the kind of a quadrangle', () => {
    const square = polyline('100,100 300,102 298,301 99,299 100,100');
    assert.equal(ask('beautifier', square).figure.subtype, 'square');
  });
});
