'use strict';

// How sure a family has to be before it answers.
//
// Calibrated odds would do with one threshold for all families: the log of what
// changing ink that is no figure costs against missing a figure. Families may
// leave it by a little where their strokes ask for it. Everything is smooth: an
// answer near a threshold counts in part, so a stroke more or less moves no
// threshold by a jump.

const { NAMES } = require('./model.js');
const { sigmoid } = require('./learn.js');

const SOFTNESS = 0.5; // log odds over which an answer fades in
const STIFFNESS = 6; // strokes that a shift of one costs, half of it squared
const RARENESS = 0.5; // exponent by which families with few strokes count more
const HANDWRITING = 1.5; // changing it costs that much more than changing a drawing
const PRICE = 1.6; // of changing a drawing, in figures missed
const MAX_SHIFT = 1;
const STEP = 0.01;

const accepted = (score, threshold) => sigmoid((score - threshold) / SOFTNESS);

/** What an answer is worth when finding a figure of its family is worth `found`. */
function worthOf({ row, family }, found) {
  if (row.family === family) return found;
  if (row.family !== 'none') return -1;
  return row.stroke.label === 'handwriting' ? -HANDWRITING * PRICE : -PRICE;
}

/** What finding a figure is worth in each family: somewhat more where there are few. */
function worthOfFigures(judgements) {
  const counts = NAMES.map(
    (name) => judgements.filter(({ row }) => row.family === name).length || 1,
  );
  const mean = counts.reduce((sum, count) => sum + count, 0) / counts.length;
  return counts.map((count) => (mean / count) ** RARENESS);
}

/** The shift from the common threshold that is worth most to one family. */
function shiftOf(judgements, splits, found) {
  const values = judgements.map((judgement) => worthOf(judgement, found));
  let best = { shift: 0, worth: -Infinity };
  for (let k = -Math.round(MAX_SHIFT / STEP); k * STEP <= MAX_SHIFT; k++) {
    const shift = k * STEP;
    const threshold = Math.log(PRICE / found) + shift;
    const sum = judgements.reduce(
      (total, { score }, i) => total + values[i] * accepted(score, threshold),
      0,
    );
    const worth = sum / splits - 0.5 * STIFFNESS * shift * shift;
    if (worth > best.worth) best = { shift, worth };
  }
  return best.shift;
}

/** Thresholds { family: log odds }, from calibrated judgements of strokes in `splits` splits. */
function chooseThresholds(judgements, splits) {
  const found = worthOfFigures(judgements);
  return Object.fromEntries(
    NAMES.map((name, i) => {
      const won = judgements.filter(({ family }) => family === name);
      return [name, Math.log(PRICE / found[i]) + shiftOf(won, splits, found[i])];
    }),
  );
}

module.exports = { chooseThresholds };
