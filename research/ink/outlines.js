'use strict';

/** What ink needs beyond the outlines of plane figures. */

const { between, distance, lengthOf, transform } = require('../templates/outlines.js');

/** Turns by an angle in radians, clockwise as seen with y down. */
function rotate(points, angle) {
  const [cos, sin] = [Math.cos(angle), Math.sin(angle)];
  return transform(points, [cos, -sin, sin, cos]);
}

/**
 * Points at equal distances along an open polyline, both ends included.
 *
 * @param {Point[]} points
 * @param {number} count at least 2
 */
function spaceEvenly(points, count) {
  const step = lengthOf(points) / (count - 1);
  const spaced = [points[0]];
  let travelled = 0;
  for (let i = 1; i < points.length; i += 1) {
    const edge = distance(points[i - 1], points[i]);
    while (spaced.length < count - 1 && spaced.length * step <= travelled + edge) {
      spaced.push(between(points[i - 1], points[i], (spaced.length * step - travelled) / edge));
    }
    travelled += edge;
  }
  return [...spaced, points.at(-1)];
}

/**
 * Lets the end of a path miss its place: every point moves by its share of the way.
 *
 * @param {Point[]} points
 * @param {Point} miss where the end goes, relative to where it was
 */
function drift(points, miss) {
  const total = lengthOf(points);
  let travelled = 0;
  return points.map((point, i) => {
    if (i > 0) travelled += distance(points[i - 1], point);
    const share = travelled / total;
    return { x: point.x + share * miss.x, y: point.y + share * miss.y };
  });
}

module.exports = { drift, rotate, spaceEvenly };
