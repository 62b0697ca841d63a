'use strict';

// Tables of measures over verdicts.

const { NAMES } = require('./model.js');
const { sigmoid } = require('./learn.js');

const BINS = 10;

const percent = (part, whole, decimals = 1) => `${((100 * part) / whole).toFixed(decimals)} %`;

/** The same, padded to the width of a column. */
const percentCell = (part, whole) => percent(part, whole).padStart(7);

const count = (list, holds) => list.reduce((sum, item) => sum + (holds(item) ? 1 : 0), 0);

/**
 * Expected calibration error of { confidence, right }: the mean distance of
 * confidence and share of right answers over tenths of the confidence.
 */
function calibrationError(answers) {
  const sums = new Float64Array(BINS);
  for (const { confidence, right } of answers) {
    sums[Math.min(BINS - 1, Math.floor(confidence * BINS))] += confidence - (right ? 1 : 0);
  }
  return sums.reduce((sum, value) => sum + Math.abs(value), 0) / answers.length;
}

/**
 * One line: the share of figures that are recognised, of all and of each family, and the share of
 * other ink that is changed, of all and of handwriting.
 */
function tableLine(title, answers) {
  const right = ({ family, answer }) => family === answer;
  const changed = ({ answer }) => answer !== 'none';
  const share = (list, holds) => percentCell(count(list, holds), list.length);
  const figures = answers.filter(({ family }) => family !== 'none');
  const none = answers.filter(({ family }) => family === 'none');
  const handwriting = none.filter(({ label }) => label === 'handwriting');
  const families = ['dot', ...NAMES].map((name) =>
    share(
      figures.filter(({ family }) => family === name),
      right,
    ),
  );
  const cells = [
    share(figures, right),
    ...families,
    share(none, changed),
    share(handwriting, changed),
  ];
  return `${title.padEnd(24)} ${cells.join(' ')}`;
}

const HEAD = `${''.padEnd(24)} ${['figures', 'dot', ...NAMES, 'none', 'hand']
  .map((name) => name.slice(0, 7).padStart(7))
  .join(' ')}`;

/** { confidence, right } of the answers that change ink and of all answers. */
function confidences(verdicts, thresholds) {
  const all = verdicts.map(({ row, family, score }) => {
    const changes = score > thresholds[family];
    const right = row.family === family;
    const confidence = sigmoid(score);
    return {
      changes,
      confidence: changes ? confidence : 1 - confidence,
      right: changes ? right : !right,
    };
  });
  return { changed: all.filter(({ changes }) => changes), all };
}

module.exports = { HEAD, calibrationError, confidences, percent, percentCell, tableLine };
