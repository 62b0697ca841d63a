'use strict';

// Chooses the log odds from which a family is answered.
//
// With perfectly calibrated odds one threshold would suffice for all families: the log
// of the cost of changing ink that is no figure, relative to that of missing a figure.
// Each family may deviate from it, at a penalty. The objective is smooth: an answer
// near a threshold counts in part, so that a single stroke hardly moves it.

const { NAMES } = require('./model.js');
const { sigmoid } = require('./learn.js');

const SOFTNESS = 0.5; // log odds over which an answer fades in
const STIFFNESS = 6; // penalty: half of it times the squared shift, in strokes
const RARENESS = 0.8; // exponent by which families with few strokes count more
const HANDWRITING = 1.5; // cost of changing it, relative to changing a drawing
const PRICE = 1.4; // cost of changing a drawing, in missed figures
const MAX_SHIFT = 1;
const STEP = 0.01;

const accepted = (score, threshold) => sigmoid((score - threshold) / SOFTNESS);

/** What an answer is worth when finding a figure of its family is worth `found`. */
function worthOf({ row, family }, found) {
  if (row.family === family) return found;
  if (row.family !== 'none') return -1;
  return row.stroke.label === 'handwriting' ? -HANDWRITING * PRICE : -PRICE;
}

/** The worth of finding a figure of each family: more for families with few strokes. */
function worthOfFigures(verdicts) {
  const counts = NAMES.map((name) => verdicts.filter(({ row }) => row.family === name).length || 1);
  const mean = counts.reduce((sum, count) => sum + count, 0) / counts.length;
  return counts.map((count) => (mean / count) ** RARENESS);
}

/** The best shift of one family from the common threshold. */
function shiftOf(verdicts, splits, found) {
  const values = verdicts.map((verdict) => worthOf(verdict, found));
  let best = { shift: 0, worth: -Infinity };
  for (let k = -Math.round(MAX_SHIFT / STEP); k * STEP <= MAX_SHIFT; k++) {
    const shift = k * STEP;
    const threshold = Math.log(PRICE / found) + shift;
    const sum = verdicts.reduce(
      (total, { score }, i) => total + values[i] * accepted(score, threshold),
      0,
    );
    const worth = sum / splits - 0.5 * STIFFNESS * shift * shift;
    if (worth > best.worth) best = { shift, worth };
  }
  return best.shift;
}

/** Thresholds { family: log odds }, from calibrated verdicts on strokes in `splits` splits. */
function chooseThresholds(verdicts, splits) {
  const found = worthOfFigures(verdicts);
  return Object.fromEntries(
    NAMES.map((name, i) => {
      const won = verdicts.filter(({ family }) => family === name);
      return [name, Math.log(PRICE / found[i]) + shiftOf(won, splits, found[i])];
    }),
  );
}

module.exports = { PRICE, chooseThresholds };
