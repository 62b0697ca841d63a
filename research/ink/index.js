'use strict';

const { transform } = require('../templates/outlines.js');
const { FIGURES } = require('./figures.js');
const { HANDS, drawWay, tap } = require('./hand.js');
const { createRandom } = require('./random.js');

/**
 * Ink as a person would draw it. The same arguments give the same stroke.
 *
 * @param {object} options
 * @param {string} options.figure a key of FIGURES
 * @param {number} options.seed an integer; another one gives another drawing
 * @param {number} [options.size] length the longer side is drawn at, units; dots keep their own
 * @param {{x: number, y: number}} [options.at] where the figure's own origin goes, units
 * @param {import('./hand.js').Hand} [options.hand]
 * @returns {{family: string, label: string, points: Array<[number, number, number, number]>}}
 *   a labelled stroke; points are [x, y, force, time], time in ms
 */
function drawInk({ figure, seed, size = 200, at = { x: 0, y: 0 }, hand = HANDS.ordinary }) {
  const random = createRandom(seed);
  const { family, way } = FIGURES[figure];
  const points =
    family === 'dot'
      ? tap(hand, random)
      : drawWay(scaled(way(random, random.normal(0, hand.closing)), size), size, hand, random);
  return {
    family,
    label: figure,
    points: points.map(([x, y, force, time]) => [x + at.x, y + at.y, force, time]),
  };
}

function scaled(way, size) {
  return transform(way, [size, 0, 0, size]);
}

module.exports = { FIGURES, HANDS, drawInk };
