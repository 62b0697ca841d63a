'use strict';

// Side of the drawing area, in the units every threshold of the engines is given in.
const AREA = 1000;

// Share of the area that a stroke may fill before the area grows with it, so that no figure
// is moved or cut at the border only because of the scale that was asked for.
const FILL = 0.8;

/**
 * @typedef {object} PlacedStroke a stroke as an engine takes it
 * @property {Array<{x: number, y: number, force?: number, time?: number}>} points fractions of
 *   the drawing area; force and time only where they were recorded
 * @property {number} width of the drawing area
 * @property {number} height of the drawing area
 * @property {Array<Array<{x: number, y: number}>>} [others] strokes that a line may snap to,
 *   fractions of the drawing area
 */

/**
 * Puts a captured stroke into the middle of a square drawing area.
 *
 * Dots keep the size they were drawn in: a dot is told by its smallness.
 *
 * @param {import('./read/labelled.js').LabelledStroke} stroke
 * @param {number|'natural'} unit length of the longer side afterwards; 'natural' keeps the size
 * @returns {PlacedStroke}
 */
function placeStroke({ family, points }, unit) {
  const box = boundingBox(points);
  const longer = Math.max(box.width, box.height);
  const keepsSize = unit === 'natural' || family === 'dot' || longer === 0;
  const scale = keepsSize ? 1 : unit / longer;
  const side = Math.max(AREA, (longer * scale) / FILL);
  const toFraction = (value, centre) => ((value - centre) * scale) / side + 0.5;
  return {
    points: points.map(([x, y, force, time]) => ({
      x: toFraction(x, box.x + box.width / 2),
      y: toFraction(y, box.y + box.height / 2),
      ...(force ? { force } : {}),
      ...(typeof time === 'number' ? { time } : {}),
    })),
    width: side,
    height: side,
  };
}

/**
 * @param {Array<ArrayLike<number>>} points [x, y, ...]
 * @returns {{x: number, y: number, width: number, height: number}} smallest corner and extent
 */
function boundingBox(points) {
  let [left, top, right, bottom] = [Infinity, Infinity, -Infinity, -Infinity];
  for (const [x, y] of points) {
    left = Math.min(left, x);
    right = Math.max(right, x);
    top = Math.min(top, y);
    bottom = Math.max(bottom, y);
  }
  return { x: left, y: top, width: right - left, height: bottom - top };
}

module.exports = { boundingBox, placeStroke };
