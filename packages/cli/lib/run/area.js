'use strict';

/** Numbers per packed point: x, y, force. */
const STRIDE = 3;
const { ReusedNumbers } = require('../reused-numbers.js');

/** The points of the stroke that an engine is given. */
const placedPoints = new ReusedNumbers();

// Room around a stroke without a drawing area, in drawing units, in addition to its own size. No
// figure reaches further.
const ROOM = 64;

/**
 * @typedef {object} PackedStroke
 * @property {Float64Array} values x, y and force of each point, 0 for a force not recorded
 * @property {{x: number, y: number, width: number, height: number}} [area] see Stroke
 * @property {number} [scale] see Stroke
 * @property {Float64Array[]} [others] values of the other strokes on the drawing surface
 */

/**
 * @param {import('../read/stroke-points.js').Stroke} stroke
 * @returns {PackedStroke}
 */
function packStroke({ points, area, scale, others }) {
  return { values: packPoints(points), area, scale, others: others?.map(packPoints) };
}

function packPoints(points) {
  const values = new Float64Array(STRIDE * points.length);
  let k = 0;
  for (const [x, y, force] of points) {
    values[k++] = x;
    values[k++] = y;
    values[k++] = force ?? 0;
  }
  return values;
}

/**
 * Puts a stroke into its drawing area, as an engine takes it. A stroke without one gets an area that
 * no figure leaves.
 *
 * @param {PackedStroke} stroke
 * @param {object} options
 * @param {{x: number, y: number, width: number, height: number}} [options.area] in units of the
 *   input, instead of the stroke's own
 * @param {number} [options.scale] drawing units per unit of the input, instead of the stroke's own
 * @param {boolean} [options.snap] lines may snap to the other strokes
 * @returns {{placed: import('../placement.js').PlacedStroke, area: object, scale: number}} with
 *   the area in units of the input; the points of the placed stroke stay until the next one
 */
function placeInArea(stroke, { area = stroke.area, scale = stroke.scale ?? 1, snap } = {}) {
  const used = area ?? areaAround(stroke.values, scale);
  const others = snap ? stroke.others : undefined;
  return {
    placed: {
      points: toFractions(stroke.values, used, placedPoints.take(stroke.values.length)),
      width: used.width * scale,
      height: used.height * scale,
      others: others?.map((other) => toFractions(other, used, new Float64Array(other.length))),
    },
    area: used,
    scale,
  };
}

function toFractions(values, { x, y, width, height }, fractions) {
  for (let k = 0; k < values.length; k += STRIDE) {
    fractions[k] = (values[k] - x) / width;
    fractions[k + 1] = (values[k + 1] - y) / height;
    fractions[k + 2] = values[k + 2];
  }
  return fractions;
}

/** The inverse, in place. */
function fromFractions(values, { x, y, width, height }) {
  for (let k = 0; k < values.length; k += STRIDE) {
    values[k] = values[k] * width + x;
    values[k + 1] = values[k + 1] * height + y;
  }
  return values;
}

/** Packed points as [x, y], or [x, y, force] where there is a force. */
function unpackPoints(values) {
  const points = [];
  for (let k = 0; k < values.length; k += STRIDE) {
    const force = values[k + 2];
    points.push(force === 0 ? [values[k], values[k + 1]] : [values[k], values[k + 1], force]);
  }
  return points;
}

/** A square whose side is a power of two drawing units, on a grid, to keep rounding errors small. */
function areaAround(values, scale) {
  const [left, top, right, bottom] = edgesOfPacked(values);
  const room = Math.max(right - left, bottom - top) + ROOM / scale;
  const side = powerOfTwoFrom(3 * room * scale) / scale;
  const grid = side / 1024;
  const before = (value) => Math.floor((value - room) / grid) * grid;
  return { x: before(left), y: before(top), width: side, height: side };
}

/** The smallest power of two that is not below a number; the logarithm is rounded. */
function powerOfTwoFrom(value) {
  const power = 2 ** Math.ceil(Math.log2(value));
  if (power / 2 >= value) return power / 2;
  return power < value ? 2 * power : power;
}

/** Left, top, right, bottom. */
function edgesOfPacked(values) {
  let [left, top] = values;
  let [right, bottom] = [left, top];
  for (let k = STRIDE; k < values.length; k += STRIDE) {
    left = Math.min(left, values[k]);
    right = Math.max(right, values[k]);
    top = Math.min(top, values[k + 1]);
    bottom = Math.max(bottom, values[k + 1]);
  }
  return [left, top, right, bottom];
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

module.exports = {
  commonArea,
  commonScale,
  fromFractions,
  packStroke,
  placeInArea,
  unpackPoints,
};
