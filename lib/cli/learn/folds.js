'use strict';

const { createUniform } = require('./random.js');

/**
 * Divides strokes into parts of about the same size, to be held out in turn. All strokes of a
 * writer are in one part, since what is to be known is how people fare who were not learnt from.
 *
 * @param {Array<{writer?: string}>} strokes
 * @param {object} options
 * @param {boolean} options.byWriter otherwise each stroke is on its own, as is one without writer
 * @param {number} options.folds at most; there are no more than writers
 * @param {number} options.seed
 * @returns {number[][]} indices of the strokes of each part
 */
function divideIntoFolds(strokes, { byWriter, folds: most, seed }) {
  const groups = new Map();
  strokes.forEach(({ writer }, i) => {
    const key = byWriter && writer !== undefined ? writer : i;
    if (!groups.has(key)) groups.set(key, []);
    groups.get(key).push(i);
  });
  const folds = Array.from({ length: Math.min(most, groups.size) }, () => []);
  // The largest first, each into the part that is smallest so far.
  const order = shuffle([...groups.values()], createUniform(seed));
  for (const group of order.sort((a, b) => b.length - a.length)) {
    const smallest = folds.reduce((best, fold) => (fold.length < best.length ? fold : best));
    smallest.push(...group);
  }
  return folds;
}

/** Puts a list into a random order. */
function shuffle(list, uniform) {
  for (let i = list.length - 1; i > 0; i -= 1) {
    const j = Math.floor(uniform(0, i + 1));
    [list[i], list[j]] = [list[j], list[i]];
  }
  return list;
}

module.exports = { divideIntoFolds };
