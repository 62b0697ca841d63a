'use strict';

const { ANSWERS } = require('./families.js');

/** What the template engine's answers mean: it returns a figure code and a path, and no name. */

/** The family of each figure code but that of polygons. */
const FAMILIES = new Map(Object.entries(ANSWERS).map(([family, { type }]) => [type, family]));

const POINTS_PER_EDGE = 21;
const POLYGONS = { 3: 'triangle', 4: 'quadrangle' };

// Fractions of the drawing area: rounding moves a point by far less.
const SAME_PLACE = 1e-9;

/**
 * Edges of a polygon that was redrawn, 0 for one that was left as drawn: fewer than three corners
 * were found, or its first two points lie further apart than its edges are long. A redrawn polygon
 * has 21 points per edge. A drawn stroke may happen to have as many, but its corners do not come
 * twice, as the end of an edge and the start of the next.
 */
function edgesOf(path) {
  const edges = path.length / POINTS_PER_EDGE;
  for (let edge = 0; edge < edges; edge += 1) {
    const end = path[(edge + 1) * POINTS_PER_EDGE - 1];
    const start = path[((edge + 1) % edges) * POINTS_PER_EDGE];
    if (!end || !start || Math.hypot(end.x - start.x, end.y - start.y) > SAME_PLACE) return 0;
  }
  return edges;
}

/**
 * @param {{type: number, path: Array<{x: number, y: number}>}} answer
 * @returns {string} a name of ANSWERS; `polygon` for one that has neither three nor four edges or
 *   was left as drawn
 */
function familyOfAnswer({ type, path }) {
  if (type === ANSWERS.polygon.type) return POLYGONS[edgesOf(path)] ?? 'polygon';
  return FAMILIES.get(type) ?? 'none';
}

/** Whether the path is a figure rather than the stroke as drawn. */
const isRedrawn = ({ type, path }) =>
  type === ANSWERS.polygon.type ? edgesOf(path) > 0 : type !== ANSWERS.none.type;

module.exports = { familyOfAnswer, isRedrawn };
