'use strict';

const { edgesOf } = require('../boxes.js');

// The number of strokes that are remembered, so that memory does not grow with the document.
const MAX_KEPT = 1000;

// Drawing units. A line snaps to what is within 10 of it; its fitted ends may go beyond its ink.
const REACH = 32;

/** The earlier strokes of a document, to which a line may snap. */
class Neighbours {
  #kept = [];

  /**
   * Gives a stroke the earlier ones near it as its others, and remembers it.
   *
   * @param {import('../read/stroke-points.js').Stroke} stroke
   * @param {number} scale drawing units per unit of the stroke
   */
  meet(stroke, scale) {
    const { points } = stroke;
    const edges = edgesOf(points);
    stroke.others = this.#kept
      .filter((earlier) => isNear(earlier.edges, edges, REACH / scale))
      .map((earlier) => earlier.points);
    this.#kept.push({ edges, points });
    if (this.#kept.length > MAX_KEPT) this.#kept.shift();
  }
}

/** Whether two boxes are less than `reach` apart along both axes. */
function isNear([left, top, right, bottom], other, reach) {
  return (
    left < other[2] + reach &&
    right > other[0] - reach &&
    top < other[3] + reach &&
    bottom > other[1] - reach
  );
}

module.exports = { Neighbours };
