'use strict';

const { boundingBox } = require('../placement.js');

// The number of strokes that are remembered, so that memory does not grow with the document.
const MAX_KEPT = 1000;

// Drawing units. A line snaps to what is within 10 of it; its fitted ends may go beyond its ink.
const REACH = 32;

/** The centres of earlier strokes, to which a line may snap. */
class Neighbours {
  constructor() {
    this.centres = [];
  }

  /**
   * Gives a stroke the centres near it as its others, each a stroke of one point, and remembers its
   * own.
   *
   * @param {import('../read/stroke-points.js').Stroke} stroke
   * @param {number} scale drawing units per unit of the stroke
   */
  meet(stroke, scale) {
    const { x: left, y: top, width, height } = boundingBox(stroke.points);
    const reach = REACH / scale;
    stroke.others = this.centres
      .filter(
        ([x, y]) =>
          x > left - reach &&
          x < left + width + reach &&
          y > top - reach &&
          y < top + height + reach,
      )
      .map((centre) => [centre]);
    this.centres.push(centreOf(stroke.points));
    if (this.centres.length > MAX_KEPT) this.centres.shift();
  }
}

function centreOf(points) {
  let [x, y] = [0, 0];
  for (const point of points) {
    x += point[0];
    y += point[1];
  }
  return [x / points.length, y / points.length];
}

module.exports = { Neighbours };
