'use strict';

const { Beautifier } = require('./beautifier.js');
const { nativeOptions } = require('./define-beautifier.js');
const { FAMILIES } = require('./figures.js');
const { loadNative } = require('./native.js');
const { found } = require('./packing.js');

const native = loadNative('beautifier');

const ENGINES = ['beautifier', 'template'];
const MAX_DECIMALS = 15;

function checkPositive(name, value) {
  if (!Number.isFinite(value) || value <= 0) {
    throw new RangeError(`${name} must be above 0 and finite, found ${found(value)}`);
  }
}

function checkArea({ x, y, width, height }) {
  for (const [name, value] of Object.entries({ x, y })) {
    if (!Number.isFinite(value)) {
      throw new RangeError(`options.area.${name} must be finite, found ${found(value)}`);
    }
  }
  checkPositive('options.area.width', width);
  checkPositive('options.area.height', height);
  return [x, y, width, height];
}

/** Loads templates for the template engine of this module, in all threads. */
function loadTemplates(paths) {
  if (!Array.isArray(paths) || !paths.every((path) => typeof path === 'string')) {
    throw new TypeError(`paths must be an array of strings, found ${found(paths)}`);
  }
  native.loadTemplates(paths);
}

class LineIdealiser {
  #native;

  constructor({ engine = 'beautifier', beautifier = {}, scale = 1, decimals = 3, area } = {}) {
    if (!ENGINES.includes(engine)) {
      throw new RangeError(
        `options.engine must be one of ${ENGINES.join(', ')}, found ${found(engine)}`,
      );
    }
    checkPositive('options.scale', scale);
    if (!Number.isInteger(decimals) || decimals < 0 || decimals > MAX_DECIMALS) {
      throw new RangeError(
        `options.decimals must be an integer from 0 to ${MAX_DECIMALS}, found ${found(decimals)}`,
      );
    }
    const settings = Float64Array.from([scale, decimals, ...(area ? checkArea(area) : [])]);
    const isBeautifier = engine === 'beautifier';
    const rest = isBeautifier ? nativeOptions(new Beautifier(beautifier).options, FAMILIES) : [];
    this.#native = new native.LineIdealiser(settings, ...rest);
  }

  idealise(lines, source) {
    const named = source === undefined ? '' : `,"source":${JSON.stringify(String(source))}`;
    const [size, others, families, count] = this.#native.idealise(lines, named);
    const bytes = Buffer.allocUnsafeSlow(size);
    this.#native.copy(bytes);
    return {
      bytes,
      others: others.map(([line, start, end, at]) => ({ line, start, end, at })),
      families,
      lines: count,
    };
  }
}

module.exports = { LineIdealiser, loadTemplates };
