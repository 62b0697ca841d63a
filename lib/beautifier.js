'use strict';

const { loadNative } = require('./native.js');
const { isFloat64Array } = require('node:util/types');
const {
  copyPacked,
  copyPoints,
  found,
  packObjects,
  packOthers,
  unpackObjects,
} = require('./packing.js');

const native = loadNative('beautifier');

/** The families, in the order of the native enumeration. */
const FIGURES = Object.freeze(native.families.map(([name]) => name));

/** In the order of the native enumeration; no reason when a figure was recognised. */
const REASONS = [null, 'invalid', 'too-small', 'not-wanted', 'not-sure', 'no-figure'];

const DEFAULTS = {
  figures: FIGURES,
  minSize: 0,
  sensitivity: 0.5,
  horizontalVertical: true,
  regularFigures: true,
  nearbyStrokes: true,
  insideArea: true,
  layout: 'xyf',
};

const SWITCHES = Object.keys(DEFAULTS).filter((name) => typeof DEFAULTS[name] === 'boolean');

/** Numbers a point in a Float64Array. */
const STRIDES = { xy: 2, xyf: 3 };

function checkNumber(name, value, min, max) {
  if (typeof value !== 'number') {
    throw new TypeError(`${name} must be a number, found ${found(value)}`);
  }
  if (!(value >= min && value <= max)) {
    throw new RangeError(`${name} must be from ${min} to ${max}, found ${value}`);
  }
}

/** A frozen copy, whose elements are seen to be right. */
function copyFigures(given) {
  if (!Array.isArray(given)) {
    throw new TypeError(`options.figures must be an array, found ${found(given)}`);
  }
  const figures = [];
  for (let i = 0; i < given.length; i++) {
    const figure = given[i];
    if (!FIGURES.includes(figure)) {
      const known = FIGURES.join(', ');
      throw new RangeError(`options.figures[${i}] must be one of ${known}, found ${found(figure)}`);
    }
    figures.push(figure);
  }
  return Object.freeze(figures);
}

/** An object that holds options, be it of a class of the caller's: a Map holds none. */
function checkOptions(options) {
  const isObject = Object.prototype.toString.call(options) === '[object Object]';
  if (!isObject) throw new TypeError(`options must be an object, found ${found(options)}`);
  for (const name in options) {
    if (Object.hasOwn(DEFAULTS, name)) continue;
    if (options[name] === Object.prototype[name]) continue; // every object has it
    const known = Object.keys(DEFAULTS).join(', ');
    throw new RangeError(`options.${name} is unknown; there are ${known}`);
  }
}

/** The options with their defaults, frozen, or an error that names the wrong one. */
function completeOptions(options) {
  checkOptions(options);
  const complete = {};
  for (const [name, byDefault] of Object.entries(DEFAULTS)) {
    const { [name]: value = byDefault } = options;
    complete[name] = value;
  }
  complete.figures = copyFigures(complete.figures);
  checkNumber('options.minSize', complete.minSize, 0, Number.MAX_VALUE);
  checkNumber('options.sensitivity', complete.sensitivity, 0, 1);
  for (const name of SWITCHES) {
    if (typeof complete[name] !== 'boolean') {
      throw new TypeError(`options.${name} must be a boolean, found ${found(complete[name])}`);
    }
  }
  const { layout } = complete;
  if (typeof layout !== 'string' || !Object.hasOwn(STRIDES, layout)) {
    throw new RangeError(`options.layout must be 'xy' or 'xyf', found ${found(layout)}`);
  }
  return Object.freeze(complete);
}

function checkSide(name, value) {
  if (typeof value !== 'number') {
    throw new TypeError(`${name} must be a number, found ${found(value)}`);
  }
  if (!(value > 0 && value < Infinity)) {
    throw new RangeError(`${name} must be above 0 and finite, found ${value}`);
  }
}

/** A field of a figure from the numbers at `at`, by its number of places: 0 a number, -1 one place. */
function readField(numbers, at, places) {
  if (places === 0) return numbers[at];
  const place = (k) => ({ x: numbers[at + 2 * k], y: numbers[at + 2 * k + 1] });
  return places < 0 ? place(0) : Array.from({ length: places }, (_, k) => place(k));
}

/** The figure of these native numbers as an object; null for no figure. */
function makeFigure(index, subtype, numbers) {
  if (native.figures[index] === null) return null;
  const { kind, subtypes, fields } = native.figures[index];
  const figure = { kind };
  let at = 0;
  for (const [name, places] of fields) {
    figure[name] = readField(numbers, at, places);
    at += places === 0 ? 1 : 2 * Math.abs(places);
  }
  if (subtypes.length > 0) figure.subtype = subtypes[subtype];
  return figure;
}

class Beautifier {
  #native;
  #stride;

  constructor(options = {}) {
    const value = completeOptions(options);
    Object.defineProperty(this, 'options', { value, enumerable: true });
    this.#stride = STRIDES[this.options.layout];
    const { figures, minSize, sensitivity } = this.options;
    this.#native = new native.Beautifier(
      figures.map((figure) => FIGURES.indexOf(figure)),
      minSize,
      sensitivity,
      this.options.horizontalVertical,
      this.options.regularFigures,
      this.options.nearbyStrokes,
      this.options.insideArea,
    );
    // A class derived from this one may add fields of its own.
    if (new.target === Beautifier) Object.freeze(this);
  }

  beautify(stroke, width, height, others = []) {
    const isPacked = isFloat64Array(stroke);
    const stride = isPacked ? this.#stride : STRIDES.xy;
    const given = isPacked ? stroke : copyPoints('stroke', stroke);
    const points = isPacked ? copyPacked('stroke', stroke, stride) : packObjects('stroke', given);
    checkSide('width', width);
    checkSide('height', height);
    const { values, lengths } = packOthers('others', others, this.#stride);
    const [path, type, confidence, reason, kind, subtype, parameters] = this.#native.beautify(
      points,
      stride,
      width,
      height,
      values,
      lengths,
    );
    const figure = makeFigure(kind, subtype, parameters);
    // Ink goes back as the caller's own points, with all that they carry.
    const pathOfObjects = () => (figure === null ? given : unpackObjects(path));
    return {
      path: isPacked ? path : pathOfObjects(),
      type,
      confidence,
      figure,
      reason: REASONS[reason],
    };
  }
}

module.exports = { Beautifier, FIGURES };
