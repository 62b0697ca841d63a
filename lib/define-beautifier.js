'use strict';

const {
  copyPacked,
  copyPoints,
  found,
  isFloat64Array,
  packObjects,
  packOthers,
  unpackObjects,
} = require('./packing.js');

/** In the order of the native enumeration, which starts with a recognised figure. */
const REASONS = [null, 'invalid', 'too-small', 'not-wanted', 'not-sure', 'no-figure'];

/** Sorts of anchors, in the order of the native enumeration. */
const ANCHORS = Object.freeze(['centre', 'end', 'corner']);

const defaultsWith = (figures) => ({
  figures,
  minSize: 0,
  tapSize: 4,
  sensitivity: 0.5,
  horizontalVertical: true,
  regularFigures: true,
  nearbyStrokes: true,
  anchors: ANCHORS,
  insideArea: true,
  layout: 'xyf',
});

const SWITCHES = ['horizontalVertical', 'regularFigures', 'nearbyStrokes', 'insideArea'];

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

/** A frozen copy of a list of names that are all known. */
function copyNames(option, given, known) {
  if (!Array.isArray(given)) {
    throw new TypeError(`${option} must be an array, found ${found(given)}`);
  }
  const names = [];
  for (let i = 0; i < given.length; i++) {
    const name = given[i];
    if (!known.includes(name)) {
      throw new RangeError(
        `${option}[${i}] must be one of ${known.join(', ')}, found ${found(name)}`,
      );
    }
    names.push(name);
  }
  return Object.freeze(names);
}

function checkOptions(options, defaults) {
  const isObject = Object.prototype.toString.call(options) === '[object Object]';
  if (!isObject) throw new TypeError(`options must be an object, found ${found(options)}`);
  for (const name in options) {
    if (Object.hasOwn(defaults, name)) continue;
    if (options[name] === Object.prototype[name]) continue; // every object has it
    const known = Object.keys(defaults).join(', ');
    throw new RangeError(`options.${name} is unknown; there are ${known}`);
  }
}

/** The options with defaults filled in, frozen; throws an error that names a wrong option. */
function completeOptions(options, defaults) {
  checkOptions(options, defaults);
  const complete = {};
  for (const [name, byDefault] of Object.entries(defaults)) {
    const { [name]: value = byDefault } = options;
    complete[name] = value;
  }
  complete.figures = copyNames('options.figures', complete.figures, defaults.figures);
  complete.anchors = copyNames('options.anchors', complete.anchors, ANCHORS);
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

/** Complete options as arguments of the native class. */
function nativeOptions(options, families) {
  return [
    options.figures.map((family) => families.indexOf(family)),
    options.minSize,
    options.tapSize,
    options.sensitivity,
    options.horizontalVertical,
    options.regularFigures,
    options.nearbyStrokes,
    options.insideArea,
    options.anchors.map((anchor) => ANCHORS.indexOf(anchor)),
  ];
}

function checkSide(name, value) {
  if (typeof value !== 'number') {
    throw new TypeError(`${name} must be a number, found ${found(value)}`);
  }
  if (!(value > 0 && value < Infinity)) {
    throw new RangeError(`${name} must be above 0 and finite, found ${value}`);
  }
}

/**
 * The beautifier of a binding of the core.
 *
 * @param {{Beautifier: Function, outlineOf: Function, resample: Function}} native takes and returns packed numbers
 * @param {object} codec what `figureCodec` makes of the binding's tables
 */
function defineBeautifier(native, { FAMILIES, WISHES, flattenFigure, makeFigure }) {
  const defaults = defaultsWith(FAMILIES);

  class Beautifier {
    #native;
    #stride;

    constructor(options = {}) {
      const value = completeOptions(options, defaults);
      Object.defineProperty(this, 'options', { value, enumerable: true });
      this.#stride = STRIDES[this.options.layout];
      this.#native = new native.Beautifier(...nativeOptions(this.options, FAMILIES));
      // Derived classes may add fields.
      if (new.target === Beautifier) Object.freeze(this);
    }

    beautify(stroke, width, height, others = []) {
      return this.#answer('beautify', stroke, width, height, others, []);
    }

    beautifyAs(stroke, wish, width, height, others = []) {
      if (!WISHES.has(wish)) {
        const known = [...WISHES.keys()].join(', ');
        throw new RangeError(`wish must be one of ${known}, found ${found(wish)}`);
      }
      return this.#answer('beautifyAs', stroke, width, height, others, WISHES.get(wish));
    }

    #answer(method, stroke, width, height, others, rest) {
      const isPacked = isFloat64Array(stroke);
      const stride = isPacked ? this.#stride : STRIDES.xy;
      const given = isPacked ? stroke : copyPoints('stroke', stroke);
      const points = isPacked ? copyPacked('stroke', stroke, stride) : packObjects('stroke', given);
      checkSide('width', width);
      checkSide('height', height);
      const { values, lengths } = packOthers('others', others, this.#stride);
      const [path, type, confidence, reason, index, subtype, parameters, alternatives] =
        this.#native[method](points, stride, width, height, values, lengths, ...rest);
      const figure = makeFigure(index, subtype, parameters);
      // Ink comes back as the caller's own objects, with all their properties.
      const pathOfObjects = () => (figure === null ? given : unpackObjects(path));
      return {
        path: isPacked ? path : pathOfObjects(),
        type,
        confidence,
        figure,
        reason: REASONS[reason],
        alternatives: unpackAlternatives(alternatives),
      };
    }
  }

  /** Pairs of family and probability as objects. */
  function unpackAlternatives(pairs) {
    return Array.from({ length: pairs.length / 2 }, (_, k) => ({
      family: FAMILIES[pairs[2 * k]],
      probability: pairs[2 * k + 1],
    }));
  }

  /** Points of a figure, in fractions of the area. */
  function outlineOf(figure, width, height) {
    const { index, numbers } = flattenFigure(figure);
    checkSide('width', width);
    checkSide('height', height);
    const path = native.outlineOf(index, numbers, width, height);
    if (path.length === 0) {
      throw new RangeError(
        `figure must lie within 2147483647 times width ${width} and height ${height}`,
      );
    }
    return unpackObjects(path);
  }

  /** The points that figures are fitted to, in fractions of the area. */
  function resample(stroke, width, height) {
    const points = packObjects('stroke', copyPoints('stroke', stroke));
    checkSide('width', width);
    checkSide('height', height);
    return unpackObjects(native.resample(points, width, height));
  }

  return {
    Beautifier,
    FIGURES: FAMILIES,
    WISHES: Object.freeze([...WISHES.keys()]),
    outlineOf,
    resample,
  };
}

module.exports = { defineBeautifier, nativeOptions };
