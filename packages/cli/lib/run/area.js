'use strict';

const { boundingBox } = require('../boxes.js');

// Room around a stroke without a drawing area, in drawing units, in addition to its own size. No
// figure reaches further.
const ROOM = 64;

/**
 * Puts a stroke into its drawing area, as an engine takes it. A stroke without one gets an area that
 * no figure leaves.
 *
 * @param {import('../read/stroke-points.js').Stroke} stroke
 * @param {object} options
 * @param {{x: number, y: number, width: number, height: number}} [options.area] in units of the
 *   input, instead of the stroke's own
 * @param {number} [options.scale] drawing units per unit of the input, instead of the stroke's own
 * @returns {{placed: import('../placement.js').PlacedStroke, toInput: Function}} toInput converts
 *   a point of the answer to units of the input, as [x, y] or [x, y, force]
 */
function placeInArea(stroke, { area = stroke.area, scale = stroke.scale ?? 1 } = {}) {
  const { x: left, y: top, width, height } = area ?? areaAround(stroke.points, scale);
  const toFraction = ([x, y, force, time]) => {
    const point = { x: (x - left) / width, y: (y - top) / height };
    if (force) point.force = force;
    if (typeof time === 'number') point.time = time;
    return point;
  };
  return {
    placed: {
      points: stroke.points.map(toFraction),
      width: width * scale,
      height: height * scale,
      others: stroke.others?.map((other) => other.map(toFraction)),
    },
    toInput({ x, y, force }) {
      const point = [x * width + left, y * height + top];
      return force === undefined ? point : [...point, force];
    },
  };
}

/** A square whose side is a power of two drawing units, on a grid, to keep rounding errors small. */
function areaAround(points, scale) {
  const box = boundingBox(points);
  const room = Math.max(box.width, box.height) + ROOM / scale;
  const side = 2 ** Math.ceil(Math.log2(3 * room * scale)) / scale;
  const grid = side / 1024;
  const before = (value) => Math.floor((value - room) / grid) * grid;
  return { x: before(box.x), y: before(box.y), width: side, height: side };
}

/** The common area of two: null when they differ, the other when one is undefined. */
function commonArea(a, b) {
  if (a === undefined) return b;
  if (a === null || b === null || b === undefined) return b === undefined ? a : null;
  return Object.keys(a).every((key) => a[key] === b[key]) ? a : null;
}

/** The common scale of two, by the same rule. */
function commonScale(a, b) {
  if (a === undefined || a === b) return b;
  return b === undefined ? a : null;
}

module.exports = { commonArea, commonScale, placeInArea };
