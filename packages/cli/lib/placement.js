'use strict';

const { boundingBox } = require('./boxes.js');

// Side of the drawing area, in drawing units, in which the engines' thresholds are given.
const AREA = 1000;

// A stroke may fill this fraction of the area. For larger strokes the area grows, so that no figure
// is moved because of a border that did not exist when it was drawn.
const MAX_FILL = 0.8;

/**
 * @typedef {object} PlacedStroke a stroke as an engine takes it
 * @property {Array<{x: number, y: number, force?: number, time?: number}>|Float64Array} points
 *   fractions of the drawing area, as objects, or as x, y and force of each
 * @property {number} width of the drawing area
 * @property {number} height of the drawing area
 * @property {Array<Array<{x: number, y: number}>|Float64Array>} [others] strokes that a line may
 *   snap to, in the same form
 */

/**
 * Puts a captured stroke into the middle of a square drawing area.
 *
 * Dots keep their size, by which they are recognised.
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
  const side = Math.max(AREA, (longer * scale) / MAX_FILL);
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

module.exports = { placeStroke };
