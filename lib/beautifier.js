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

/** The names of the families, in the order of the native enumeration. */
const FIGURES = Object.freeze(native.families);

/** In the order of the native enumeration, which starts with a recognised figure. */
const REASONS = [null, 'invalid', 'too-small', 'not-wanted', 'not-sure', 'no-figure'];

const DEFAULTS = {
  figures: FIGURES,
  minSize: 0,
  tapSize: 4,
  sensitivity: 0.5,
  horizontalVertical: true,
  regularFigures: true,
  nearbyStrokes: true,
  insideArea: true,
  layout: 'xyf',
};

const SWITCHES = Object.keys(DEFAULTS).filter((name) => typeof DEFAULTS[name] === 'boolean');

/** Numbers per point in a Float64Array. */
const STRIDES = { xy: 2, xyf: 3 };

function checkNumber(name, value, min, max) {
  if (typeof value !== 'number') {
    throw new TypeError(`${name} must be a number, found ${found(value)}`);
  }
  if (!(value >= min && value <= max)) {
    throw new RangeError(`${name} must be from ${min} to ${max}, found ${value}`);
  }
}

/** A frozen copy with checked elements. */
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

/** Options may be an instance of the caller's class, but a Map or an array has no options. */
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

/** The options with defaults filled in, frozen; throws an error that names a wrong option. */
function completeOptions(options) {
  checkOptions(options);
  const complete = {};
  for (const [name, byDefault] of Object.entries(DEFAULTS)) {
    const { [name]: value = byDefault } = options;
    complete[name] = value;
  }
  complete.figures = copyFigures(complete.figures);
  checkNumber('options.minSize', complete.minSize, 0, Number.MAX_VALUE);
  checkNumber('options.tapSize', complete.tapSize, 0, Number.MAX_VALUE);
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

/** The field of a figure at index `at`: a number (0 places), one place (-1) or an array of them. */
function readField(numbers, at, places) {
  if (places === 0) return numbers[at];
  const place = (k) => ({ x: numbers[at + 2 * k], y: numbers[at + 2 * k + 1] });
  return places < 0 ? place(0) : Array.from({ length: places }, (_, k) => place(k));
}

/** The figure as an object, from its index in the native table; null for no figure. */
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
    const { figures, minSize, tapSize, sensitivity } = this.options;
    this.#native = new native.Beautifier(
      figures.map((figure) => FIGURES.indexOf(figure)),
      minSize,
      tapSize,
      sensitivity,
      this.options.horizontalVertical,
      this.options.regularFigures,
      this.options.nearbyStrokes,
      this.options.insideArea,
    );
    // Derived classes may add fields.
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
    const [path, type, confidence, reason, index, subtype, parameters] = this.#native.beautify(
      points,
      stride,
      width,
      height,
      values,
      lengths,
    );
    const figure = makeFigure(index, subtype, parameters);
    // Ink comes back as the caller's own objects, with all their properties.
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
