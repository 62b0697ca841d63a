'use strict';

const { boundingBox } = require('../placement.js');

// The strokes of a document are kept in mind no longer than this, so that its length costs no
// memory.
const KEPT = 1000;

// A line snaps to what lies within 10 units of it; its fitted ends may reach beyond its ink.
const REACH = 32;

/** The centres of the strokes drawn before, as the others that a line may snap to. */
class Neighbours {
  constructor() {
    this.centres = [];
  }

  /**
   * Adds to a stroke the centres near it, each as a stroke of one point, and remembers its own.
   *
   * @param {import('../read/stroke-points.js').Stroke} stroke
   * @param {number} scale drawing units a unit of the stroke
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
    if (this.centres.length > KEPT) this.centres.shift();
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
