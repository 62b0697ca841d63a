'use strict';

const FIELDS = ['x', 'y', 'force', 'time'];
const REQUIRED = 2;

/** Points of a figure, about. */
const POINTS_OF_FIGURE = 20;

/**
 * @typedef {object} Stroke ink as it was read
 * @property {number[][]} points [x, y, force, time] of each, in the units of the input; a force
 *   or time that was not recorded is null, or missing at the end
 * @property {boolean} [asObjects] of a JSON line: points came as {x, y, force, time}
 * @property {object} fields what is passed on: all fields of a JSON line, points included, see
 *   long-integers.js; attributes or annotations of a document, as text
 * @property {{x: number, y: number, width: number, height: number}} [area] the drawing area
 * @property {number} [scale] drawing units per unit of the input
 * @property {number[][][]} [others] points of other strokes on the drawing surface
 */

/**
 * Reads the points of a stroke in either of their forms: [x, y, force, time] or an object.
 *
 * @param {unknown} value
 * @param {string} name of the value in messages
 * @returns {{points: number[][], asObjects: boolean}|{problem: string}}
 */
function readPoints(value, name = 'points') {
  if (value === undefined) return { problem: `"${name}" is missing` };
  if (!Array.isArray(value)) {
    return { problem: `"${name}" must be an array, found ${describe(value)}` };
  }
  if (value.length === 0) return { problem: `"${name}" is empty` };
  const asObjects = !Array.isArray(value[0]);
  const points = value.map((point) => (Array.isArray(point) ? point : pointOfObject(point)));
  for (let i = 0; i < points.length; i += 1) {
    const problem = problemOfPoint(points[i]);
    if (problem) return { problem: `${name}[${i}] ${problem}` };
  }
  return { points, asObjects };
}

function pointOfObject(value) {
  if (value === null || typeof value !== 'object') return value;
  const { x, y, force, time } = value;
  if (time !== undefined) return [x, y, force ?? null, time];
  return force === undefined ? [x, y] : [x, y, force];
}

function problemOfPoint(point) {
  if (!Array.isArray(point)) {
    return `must be [x, y, force, time] or {x, y, force, time}, found ${describe(point)}`;
  }
  for (let i = 0; i < FIELDS.length; i += 1) {
    const value = point[i];
    if (i >= REQUIRED && (value === undefined || value === null)) continue;
    // JSON.parse reads 1e999 as Infinity.
    if (!Number.isFinite(value)) {
      return `${FIELDS[i]} must be a finite number, found ${describe(value)}`;
    }
  }
  return undefined;
}

/** The drawing area that a stroke states: "width" and "height", both or none. */
function readArea({ width, height }) {
  if (width === undefined && height === undefined) return {};
  for (const [name, value] of Object.entries({ width, height })) {
    if (!(Number.isFinite(value) && value > 0)) {
      return { problem: `"${name}" must be a positive number, found ${describe(value)}` };
    }
  }
  return { area: { x: 0, y: 0, width, height } };
}

/** The points that a stroke counts as where memory is bounded: a short one may become a long figure. */
function weightOf({ points }) {
  return Math.max(points.length, POINTS_OF_FIGURE);
}

/** An unexpected value, for messages. */
function describe(value) {
  if (value === undefined) return 'nothing';
  if (Array.isArray(value)) return 'an array';
  if (value !== null && typeof value === 'object') return 'an object';
  return shorten(typeof value === 'string' ? JSON.stringify(value) : String(value));
}

function shorten(text) {
  return text.length > 40 ? `${text.slice(0, 40)}...` : text;
}

module.exports = { describe, readArea, readPoints, shorten, weightOf };
