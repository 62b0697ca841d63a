'use strict';

const { FIGURES } = require('./figures.js');
const { HANDS, drawPath, tap } = require('./hand.js');
const { transform } = require('./outlines.js');
const { createRandom } = require('./random.js');

/**
 * A stroke as a person would draw it. The same arguments give the same stroke.
 *
 * @param {object} options
 * @param {string} options.figure a key of FIGURES
 * @param {number} options.seed an integer; another one gives another drawing
 * @param {number} [options.size] intended length of the longer side, units; dots ignore it
 * @param {{x: number, y: number}} [options.at] place of the figure's origin, units
 * @param {import('./hand.js').Hand} [options.hand]
 * @returns {{family: string, label: string, points: Array<[number, number, number, number]>}}
 *   a labelled stroke; points are [x, y, force, time], time in ms
 */
function drawInk({ figure, seed, size = 200, at = { x: 0, y: 0 }, hand = HANDS.ordinary }) {
  const random = createRandom(seed);
  const { family, path } = FIGURES[figure];
  const points =
    family === 'dot'
      ? tap(hand, random)
      : drawPath(scaled(path(random, random.normal(0, hand.closing)), size), size, hand, random);
  return {
    family,
    label: figure,
    points: points.map(([x, y, force, time]) => [x + at.x, y + at.y, force, time]),
  };
}

function scaled(path, size) {
  return transform(path, [size, 0, 0, size]);
}

/**
 * Strokes of every figure in turn, those that are none too, with seeds from `seed` on.
 *
 * @param {number} count
 * @param {object} [options]
 * @param {number} [options.seed]
 * @param {(i: number) => object} [options.optionsOf] further options of drawInk for each stroke
 */
function drawEach(count, { seed = 1, optionsOf = () => ({}) } = {}) {
  const figures = Object.keys(FIGURES);
  return Array.from({ length: count }, (_, i) =>
    drawInk({ figure: figures[i % figures.length], seed: seed + i, ...optionsOf(i) }),
  );
}

module.exports = { FIGURES, HANDS, drawEach, drawInk };
