'use strict';

const assert = require('node:assert/strict');
const { describe, it } = require('node:test');
const { boxOf } = require('../../../research/ink/outlines.js');
const { createUniform } = require('../../../research/ink/random.js');
const {
  sampleParameters,
  templateOutline,
} = require('../../../research/templates/template-outlines.js');

describe('outlines of candidates', () => {
  it('repeat for a seed and have the asked size', () => {
    const sample = () => sampleParameters(createUniform(3), 50);
    assert.deepEqual(sample(), sample());
    for (const parameters of sample()) {
      const outline = templateOutline(parameters);
      const box = boxOf(outline);
      const what = JSON.stringify(parameters);
      assert.ok(Math.max(box.width, box.height) <= 200.1, what);
      assert.ok(Math.max(box.width, box.height) > 100, what);
    }
  });
});
