'use strict';

const assert = require('node:assert/strict');
const { test } = require('node:test');
const { NAMES } = require('../../../research/beautifier/model.js');
const { createUniform } = require('../../../research/ink/random.js');
const { PRICE, chooseThresholds } = require('../../../research/beautifier/thresholds.js');
const { calibrationError } = require('../../../research/beautifier/report.js');
const { sigmoid } = require('../../../research/beautifier/learn.js');

/** Verdicts whose scores are their log odds of being right. */
function calibratedVerdicts(count) {
  const random = createUniform(9);
  return Array.from({ length: count }, (_, i) => {
    const family = NAMES[i % NAMES.length];
    const score = 8 * random() - 4;
    const isRight = random() < sigmoid(score);
    return { family, score, row: { family: isRight ? family : 'none', stroke: { label: 'x' } } };
  });
}

test('thresholds of calibrated scores are the price of a change, and no stroke moves them far', () => {
  const verdicts = calibratedVerdicts(2000);
  const thresholds = chooseThresholds(verdicts, 1);
  for (const name of NAMES) assert.ok(Math.abs(thresholds[name] - Math.log(PRICE)) < 0.35, name);
  for (const score of [-0.5, 0.2, 1.5]) {
    const row = { family: 'none', stroke: { label: 'handwriting' } };
    const more = { family: NAMES[4], score, row };
    const moved = chooseThresholds([...verdicts, more, more], 1);
    for (const name of NAMES) assert.ok(Math.abs(moved[name] - thresholds[name]) < 0.1, name);
  }
});

test('the calibration error is the distance of confidence and truth', () => {
  const answers = (confidence, share) =>
    Array.from({ length: 100 }, (_, i) => ({ confidence, right: i < 100 * share }));
  assert.ok(calibrationError(answers(0.75, 0.75)) < 1e-9);
  const mixed = [...answers(0.95, 0.85), ...answers(0.55, 0.65)];
  assert.ok(Math.abs(calibrationError(mixed) - 0.1) < 1e-9);
});
