'use strict';

const assert = require('node:assert/strict');
const { describe, test } = require('node:test');
const { createRecogniser } = require('../../surface/recognise.js');
const { ENGINES } = require('../../surface/stroke-request.js');
const { HEIGHT, INK, WIDTH, strokeOf } = require('../support/strokes.js');

const SIZE = { width: WIDTH, height: HEIGHT };

describe('the engines of the page', () => {
  const recognise = createRecogniser();
  const ask = (engine, stroke) => recognise({ engine, stroke, ...SIZE, others: [] });

  for (const engine of ENGINES) {
    for (const [kind, stroke] of Object.entries(INK)) {
      test(`${engine}: a ${kind}`, () => {
        const { path, figure, confidence } = ask(engine, stroke);
        assert.equal(figure?.kind, kind);
        assert.notDeepEqual(path, stroke);
        if (engine === 'beautifier') assert.ok(confidence > 0.5);
        else assert.equal(confidence, null);
      });
    }

    test(`${engine}: ink that is no figure stays as drawn`, () => {
      const zigzag = strokeOf('zigzag');
      const { path, figure } = ask(engine, zigzag);
      assert.deepEqual([path, figure], [zigzag, null]);
    });
  }

  test('the beautifier names the kind of a quadrangle', () => {
    assert.equal(ask('beautifier', strokeOf('square')).figure.subtype, 'square');
  });
});
