'use strict';

const { toText } = require('../read/long-integers.js');
const { escapeText, polylinePoints } = require('../svg.js');
const { textFields } = require('./fields.js');

// Drawing units, for ink without a width of its own.
const PEN_WIDTH = 2;

const STYLE = { stroke: 'black', 'stroke-linecap': 'round', 'stroke-linejoin': 'round' };

/** Fields that are attributes in SVG. */
const ATTRIBUTES = [
  'id',
  ...Object.keys(STYLE),
  'stroke-width',
  'stroke-opacity',
  'stroke-dasharray',
];

/** A stroke as a polyline, the answer in attributes. */
function formatPolyline(stroke, answer, round) {
  const fields = textFields(stroke);
  const attributes = ATTRIBUTES.filter((name) => isPlain(stroke.fields[name])).map(
    (name) => ` ${name}="${escapeText(fields.get(name))}"`,
  );
  const { family: figure, kind, confidence, parameters, points } = answer;
  const data = Object.entries({ figure, kind, confidence, parameters })
    .filter(([, value]) => value !== null)
    .map(([name, value]) => ` data-${name}="${escapeText(toText(value))}"`);
  const outline = polylinePoints(points, round);
  return { texts: [`<polyline${[...attributes, ...data].join('')} points="${outline}"/>\n`] };
}

function isPlain(value) {
  return typeof value === 'string' || typeof value === 'number';
}

/**
 * @param {object} drawing
 * @param {{x: number, y: number, width: number, height: number}} drawing.view the visible part
 * @param {number} [drawing.scale] pixels per unit; where it is not known, the drawing has no size
 *   of its own
 */
function composeSvg({ view, scale }) {
  const size = scale && { width: view.width * scale, height: view.height * scale };
  const style = { 'stroke-width': brief(PEN_WIDTH / (scale ?? 1)), ...STYLE };
  const attributes = Object.entries(style).map(([name, value]) => ` ${name}="${value}"`);
  return [`${openSvg(view, size)}\n<g fill="none"${attributes.join('')}>\n`, 0, '</g>\n</svg>\n'];
}

/**
 * @param {{x: number, y: number, width: number, height: number}} view
 * @param {{width: number, height: number}} [size] in pixels
 */
function openSvg({ x, y, width, height }, size) {
  const box = [x, y, width, height].map(brief).join(' ');
  const shown = size ? ` width="${brief(size.width)}" height="${brief(size.height)}"` : '';
  return `<svg xmlns="http://www.w3.org/2000/svg"${shown} viewBox="${box}">`;
}

/** Without the digits of rounding errors. */
function brief(value) {
  return Number(value.toPrecision(12));
}

module.exports = { composeSvg, formatPolyline, openSvg };
