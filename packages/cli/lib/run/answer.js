'use strict';

const { createRounding } = require('../svg.js');
const { fromFractions, packStroke, placeInArea, unpackPoints } = require('./area.js');

// Decimals of coordinates whose unit is a drawing unit, at least.
const DECIMALS = 3;

// Radians are rounded to this many decimals.
const ANGLE_DECIMALS = 6;

/** Fields of a figure that are angles, in radians. */
const ANGLES = new Set(['opening', 'rotation']);

/** What an engine returns for a stroke that has no drawable figure. */
const NO_FIGURE = { type: 0, family: 'none', kind: null, confidence: null, parameters: null };

/**
 * @param {import('../engines.js').Engine} engine
 * @param {import('./area.js').PackedStroke} stroke
 * @param {import('./processor.js').ProcessorOptions} options
 * @returns {{values?: Float64Array, type: number, family: string, kind: string|null,
 *   confidence: number|null, parameters: object|null, decimals: number}} in units of the input;
 *   values: of the redrawn stroke, until the next answer, none where it stays as drawn;
 *   decimals: of its coordinates
 */
function answerStroke(engine, stroke, options) {
  const place = placeInArea(stroke, options);
  const decimals = options.decimals ?? decimalsAt(place.scale);
  if (!isInReach(place.placed)) return { ...NO_FIGURE, decimals };
  const { path, figure, type, family, kind, confidence } = engine.answer(place.placed);
  if (type === 0) return { type, family, kind, confidence, parameters: null, decimals };
  const values = fromFractions(path, place.area);
  if (!areFinite(values)) return { ...NO_FIGURE, decimals };
  const parameters = figure && parametersOf(figure, place, createRounding(decimals));
  return { type, family, kind, confidence, parameters, decimals, values };
}

/** The same with points instead of values: the stroke's own where it stays as drawn. */
function answerPoints(engine, stroke, options) {
  const { values, ...answer } = answerStroke(engine, packStroke(stroke), options);
  return { ...answer, points: values ? unpackPoints(values) : stroke.points };
}

/** False where an area, or a stroke beside it, is too large or small for doubles. */
function isInReach({ points, width, height }) {
  return width > 0 && height > 0 && Number.isFinite(width + height) && areFinite(points);
}

function areFinite(values) {
  for (let k = 0; k < values.length; k += 1) if (!Number.isFinite(values[k])) return false;
  return true;
}

/** Where the unit is large, coordinates need more decimals. */
function decimalsAt(scale) {
  return Math.min(15, DECIMALS + Math.max(0, Math.ceil(Math.log10(scale))));
}

const roundAngle = createRounding(ANGLE_DECIMALS);

/** The fields of a figure in units of the input: places as [x, y]. */
function parametersOf(figure, { area, scale }, round) {
  const toPlace = ({ x, y }) => [round(x / scale + area.x), round(y / scale + area.y)];
  const convert = (name, value) => {
    if (ANGLES.has(name)) return roundAngle(value);
    if (name === 'radii') return [round(value.x / scale), round(value.y / scale)];
    if (typeof value === 'number') return round(value / scale);
    return Array.isArray(value) ? value.map(toPlace) : toPlace(value);
  };
  const parameters = {};
  for (const name of Object.keys(figure)) {
    if (name !== 'kind' && name !== 'subtype') parameters[name] = convert(name, figure[name]);
  }
  return parameters;
}

module.exports = { answerPoints, decimalsAt };
