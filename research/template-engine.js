'use strict';

const { initScrivo, optimizeAStroke } = require('scrivo');
const { familyOfAnswer } = require('../packages/cli/lib/template-answer.js');
const { boxOf } = require('./ink/outlines.js');

/** The template engine on single strokes, points [x, y, force] in drawing-area units. */

// Least side of the drawing area, and the share of it that a stroke may fill: no figure is moved
// by the border.
const AREA = 1000;
const FILL = 0.8;

/** The stroke in the middle of a square area: `path` in fractions of it. */
function place(points) {
  const { x, y, width, height } = boxOf(points.map(([px, py]) => ({ x: px, y: py })));
  const side = Math.max(AREA, Math.max(width, height) / FILL);
  const left = x + width / 2 - side / 2;
  const top = y + height / 2 - side / 2;
  const path = points.map(([px, py, force]) => ({
    x: (px - left) / side,
    y: (py - top) / side,
    ...(force && { force }),
  }));
  return { path, side, left, top };
}

const answerPlaced = ({ path, side }) => optimizeAStroke(path, side, side, []);

/**
 * @param {Array<[number, number, number?]>} points
 * @returns {{type: number, family: string, points: Array<[number, number]>}} `family` is polygon
 *   where the engine found neither three nor four edges, or left the stroke as drawn
 */
function answer(points) {
  const placed = place(points);
  const { type, path } = answerPlaced(placed);
  const family = familyOfAnswer({ type, path });
  const { side, left, top } = placed;
  return { type, family, points: path.map(({ x, y }) => [x * side + left, y * side + top]) };
}

module.exports = { answer, answerPlaced, load: initScrivo, place };
