'use strict';

const { MAX_LINE_LENGTH, readLines } = require('./input.js');

/** The figures a stroke can be; `none` is ink that is meant as it was drawn. */
const FAMILIES = ['dot', 'line', 'angle', 'triangle', 'quadrangle', 'ellipse'];
const LABELLED_FAMILIES = [...FAMILIES, 'none'];

const POINT_FIELDS = ['x', 'y', 'force', 'time'];

/**
 * @typedef {object} LabelledStroke
 * @property {string} family one of LABELLED_FAMILIES: the answer a perfect recogniser gives
 * @property {string} label what was drawn, finer than the family; the family when not given
 * @property {Array<[number, number, (number|null)?, (number|null)?]>} points
 *   [x, y, force, time]: any unit, y down; force 0 or absent when not recorded, time in ms
 * @property {number} line where it stands in its file, from 1
 */

/**
 * Reads labelled strokes from NDJSON, one object a line. Empty lines mean nothing.
 *
 * @param {string} path file name, `-` for standard input
 * @param {object} options
 * @param {(line: number, message: string) => void} options.onWrongLine told of each line that
 *   holds no usable stroke; the rest is still read
 * @param {(count: number) => void} [options.onBytes] told the bytes taken from the input
 * @yields {LabelledStroke}
 */
async function* readLabelledStrokes(path, { onWrongLine, onBytes }) {
  for await (const { number, text } of readLines(path, { onBytes })) {
    if (text !== undefined && text.trim() === '') continue;
    const { stroke, problem } = parseLabelledStroke(text, number === 1);
    if (problem) onWrongLine(number, problem);
    else yield { ...stroke, line: number };
  }
}

function parseLabelledStroke(text, isFirst) {
  if (text === undefined) return { problem: `longer than ${MAX_LINE_LENGTH} characters` };
  let value;
  try {
    // Some editors begin a file with a byte order mark.
    value = JSON.parse(isFirst ? text.replace(/^\uFEFF/, '') : text);
  } catch (error) {
    return { problem: `not JSON: ${error.message}` };
  }
  const problem = problemOfStroke(value) ?? problemOfFamily(value);
  if (problem) return { problem };
  const { family, label = family, points } = value;
  return { stroke: { family, label: String(label), points } };
}

/**
 * Says what keeps a value from being a stroke.
 *
 * @param {unknown} value
 * @returns {string|undefined} undefined for an object with usable points
 */
function problemOfStroke(value) {
  if (kindOf(value) !== 'object') return `an object was expected, found ${describe(value)}`;
  const { points } = value;
  if (points === undefined) return '"points" is missing';
  if (!Array.isArray(points)) return `"points" must be an array, found ${describe(points)}`;
  if (points.length === 0) return '"points" is empty';
  for (let i = 0; i < points.length; i += 1) {
    const problem = problemOfPoint(points[i]);
    if (problem) return `points[${i}] ${problem}`;
  }
  return undefined;
}

function problemOfPoint(point) {
  if (!Array.isArray(point)) return `must be [x, y, force, time], found ${describe(point)}`;
  for (let i = 0; i < POINT_FIELDS.length; i += 1) {
    const value = point[i];
    const isOptional = i >= 2;
    if (isOptional && (value === undefined || value === null)) continue;
    // JSON has no infinity, but reads 1e999 as one.
    if (!Number.isFinite(value)) {
      return `${POINT_FIELDS[i]} must be a finite number, found ${describe(value)}`;
    }
  }
  return undefined;
}

function problemOfFamily({ family }) {
  if (family === undefined) return '"family" is missing';
  if (LABELLED_FAMILIES.includes(family)) return undefined;
  return `"family" must be one of ${LABELLED_FAMILIES.join(', ')}, found ${describe(family)}`;
}

function kindOf(value) {
  if (value === null) return 'null';
  return Array.isArray(value) ? 'array' : typeof value;
}

function describe(value) {
  const kind = kindOf(value);
  if (kind === 'array') return 'an array';
  if (kind === 'object') return 'an object';
  if (kind === 'undefined') return 'nothing';
  const text = kind === 'string' ? JSON.stringify(value) : String(value);
  return text.length > 40 ? `${text.slice(0, 40)}...` : text;
}

module.exports = {
  FAMILIES,
  LABELLED_FAMILIES,
  describe,
  problemOfStroke,
  readLabelledStrokes,
};
