'use strict';

// Converts strokes between arrays of point objects and packed numbers. Errors say where in
// the argument the wrong value is.

/** The class of a typed array, as it was created, whatever its realm; else undefined. */
const typedArrayName = Object.getOwnPropertyDescriptor(
  Object.getPrototypeOf(Uint8Array.prototype),
  Symbol.toStringTag,
).get;

const isFloat64Array = (value) => typedArrayName.call(value) === 'Float64Array';
const isTypedArray = (value) => typedArrayName.call(value) !== undefined;

/** Any value, in short, for an error message. */
function found(value) {
  if (typeof value === 'string') return JSON.stringify(value.slice(0, 40));
  if (typeof value === 'function') return 'a function';
  if (typeof value === 'bigint') return `the BigInt ${value}`;
  if (typeof value !== 'object' || value === null) return String(value);
  return Array.isArray(value) ? 'an array' : foundObject(value);
}

/** An object by its class: messages about a Map or a Float32Array should say so. */
function foundObject(object) {
  const name = Object.getPrototypeOf(object)?.constructor?.name;
  if (typeof name !== 'string' || name === '' || name === 'Object') return 'an object';
  return `${/^[AEIO]/.test(name) ? 'an' : 'a'} ${name.slice(0, 40)}`;
}

function checkCoordinate(name, value) {
  if (typeof value !== 'number') {
    throw new TypeError(`${name} must be a number, found ${found(value)}`);
  }
  if (!Number.isFinite(value)) throw new RangeError(`${name} must be finite, found ${value}`);
}

/** x and y of a point, each property read once; throws an error that names a wrong one. */
function readPoint(name, i, point) {
  const { x, y, force = 0 } = point;
  if (!Number.isFinite(x)) checkCoordinate(`${name}[${i}].x`, x);
  if (!Number.isFinite(y)) checkCoordinate(`${name}[${i}].y`, y);
  if (!Number.isFinite(force)) checkCoordinate(`${name}[${i}].force`, force);
  return { x, y };
}

function checkArray(name, value) {
  if (Array.isArray(value)) return;
  const advice = isTypedArray(value) ? `; Float64Array.from(${name}, Number) converts it` : '';
  throw new TypeError(
    `${name} must be an array of points or a Float64Array, found ${found(value)}${advice}`,
  );
}

/**
 * Copies an array of points, since a getter may change it while they are read. Stops at
 * the first hole: a sparse array can be longer than the memory.
 *
 * @param {string} name of the argument, for messages
 * @param {Array<object>} points
 * @returns {Array<object>} the same objects
 */
function copyPoints(name, points) {
  checkArray(name, points);
  const copy = [];
  for (let i = 0; i < points.length; i++) {
    const point = points[i];
    if (typeof point !== 'object' || point === null) {
      throw new TypeError(`${name}[${i}] must be an object with x and y, found ${found(point)}`);
    }
    copy.push(point);
  }
  return copy;
}

/**
 * @param {string} name of the argument, for messages
 * @param {Array<{x: number, y: number, force?: number}>} points an array that getters cannot change
 * @returns {Float64Array} x and y of each point
 */
function packObjects(name, points) {
  const packed = new Float64Array(2 * points.length);
  for (let i = 0; i < points.length; i++) {
    const { x, y } = readPoint(name, i, points[i]);
    packed[2 * i] = x;
    packed[2 * i + 1] = y;
  }
  return packed;
}

function copyNumbers(name, given) {
  try {
    return new Float64Array(given);
  } catch (cause) {
    if (!(cause instanceof TypeError)) throw cause; // out of memory
    throw new TypeError(
      `${name} is detached, its buffer was transferred or shrunk: transfer a copy, ${name}.slice()`,
      { cause },
    );
  }
}

/** A copy of the numbers; throws an error if their count or one of them is wrong. */
function copyPacked(name, given, stride) {
  const packed = copyNumbers(name, given);
  if (packed.length % stride !== 0) {
    throw new RangeError(
      `${name} must hold ${stride} numbers per point, found ${packed.length} numbers`,
    );
  }
  for (let k = 0; k < packed.length; k++) {
    if (!Number.isFinite(packed[k])) {
      throw new RangeError(`${name}[${k}] must be finite, found ${packed[k]}`);
    }
  }
  return packed;
}

/** x and y of packed points of any stride. */
function coordinates(packed, stride) {
  if (stride === 2) return packed;
  const count = packed.length / stride;
  const result = new Float64Array(2 * count);
  for (let i = 0; i < count; i++) {
    result[2 * i] = packed[stride * i];
    result[2 * i + 1] = packed[stride * i + 1];
  }
  return result;
}

/**
 * Packs several strokes one after the other.
 *
 * @returns {{values: Float64Array, lengths: Uint32Array}} x and y of all points, and the number
 *   of points of each stroke
 */
function packOthers(name, strokes, stride) {
  if (!Array.isArray(strokes)) {
    throw new TypeError(`${name} must be an array of strokes, found ${found(strokes)}`);
  }
  const parts = [];
  for (let i = 0; i < strokes.length; i++) {
    const stroke = strokes[i];
    const at = `${name}[${i}]`;
    parts.push(
      isFloat64Array(stroke)
        ? coordinates(copyPacked(at, stroke, stride), stride)
        : packObjects(at, copyPoints(at, stroke)),
    );
  }
  const values = new Float64Array(parts.reduce((sum, part) => sum + part.length, 0));
  let at = 0;
  for (const part of parts) {
    values.set(part, at);
    at += part.length;
  }
  return { values, lengths: Uint32Array.from(parts, (part) => part.length / 2) };
}

/** Packed x, y as point objects. */
function unpackObjects(packed) {
  const points = [];
  for (let k = 0; k < packed.length; k += 2) points.push({ x: packed[k], y: packed[k + 1] });
  return points;
}

module.exports = {
  copyPacked,
  copyPoints,
  found,
  isFloat64Array,
  packObjects,
  packOthers,
  unpackObjects,
};
