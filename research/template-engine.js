'use strict';

const { FigureType, initScrivo, optimizeAStroke } = require('../lib/index.js');
const { boxOf } = require('./ink/outlines.js');

/** The template engine on single strokes, points [x, y, force] in drawing-area units. */

// Least side of the drawing area, and the share of it that a stroke may fill: no figure is moved
// by the border.
const AREA = 1000;
const FILL = 0.8;

const FAMILIES = {
  [FigureType.NONE]: 'none',
  [FigureType.POINT]: 'dot',
  [FigureType.LINE]: 'line',
  [FigureType.ANGLE]: 'angle',
  [FigureType.ELLIPSE]: 'ellipse',
};
/** Polygons by their points: 21 an edge. */
const POLYGONS = { 63: 'triangle', 84: 'quadrangle' };

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
  const isAsDrawn = path[0].x === placed.path[0].x && path[0].y === placed.path[0].y;
  const family = FAMILIES[type] ?? (isAsDrawn ? undefined : POLYGONS[path.length]) ?? 'polygon';
  const { side, left, top } = placed;
  return { type, family, points: path.map(({ x, y }) => [x * side + left, y * side + top]) };
}

module.exports = { answer, answerPlaced, load: initScrivo, place };
