'use strict';

const { textFields } = require('./fields.js');
const { xmlText } = require('./inkml.js');

// Of ink without a width of its own, drawing units.
const PEN_WIDTH = 2;

const STYLE = { stroke: 'black', 'stroke-linecap': 'round', 'stroke-linejoin': 'round' };

/** Fields that SVG has attributes for. */
const ATTRIBUTES = [
  'id',
  ...Object.keys(STYLE),
  'stroke-width',
  'stroke-opacity',
  'stroke-dasharray',
];

/** A stroke as a polyline; what it was taken for stands in an attribute of its own. */
function formatPolyline(stroke, { points, figure }, round) {
  const fields = textFields(stroke);
  const attributes = ATTRIBUTES.filter((name) => isPlain(stroke.fields[name])).map(
    (name) => ` ${name}="${xmlText(fields.get(name))}"`,
  );
  const pairs = points.map(([x, y]) => `${round(x)},${round(y)}`);
  // A polyline of one point is not drawn; one of no length is, as a dot.
  if (pairs.length === 1) pairs.push(pairs[0]);
  const text = `<polyline${attributes.join('')} data-figure="${figure}" points="${pairs.join(' ')}"/>\n`;
  return { texts: [text] };
}

function isPlain(value) {
  return typeof value === 'string' || typeof value === 'number';
}

/**
 * @param {object} drawing
 * @param {{x: number, y: number, width: number, height: number}} drawing.view what is shown
 * @param {number} [drawing.scale] pixels a unit of it; where it is not known, the drawing fills
 *   the room it gets
 */
function composeSvg({ view, scale }) {
  const size = scale && { width: view.width * scale, height: view.height * scale };
  const style = { 'stroke-width': brief(PEN_WIDTH / (scale ?? 1)), ...STYLE };
  const attributes = Object.entries(style).map(([name, value]) => ` ${name}="${value}"`);
  return [`${openSvg(view, size)}\n<g fill="none"${attributes.join('')}>\n`, 0, '</g>\n</svg>\n'];
}

/**
 * @param {{x: number, y: number, width: number, height: number}} view
 * @param {{width: number, height: number}} [size] pixels it is shown in
 */
function openSvg({ x, y, width, height }, size) {
  const box = [x, y, width, height].map(brief).join(' ');
  const shown = size ? ` width="${brief(size.width)}" height="${brief(size.height)}"` : '';
  return `<svg xmlns="http://www.w3.org/2000/svg"${shown} viewBox="${box}">`;
}

/** Without the digits that rounding leaves. */
function brief(value) {
  return Number(value.toPrecision(12));
}

module.exports = { composeSvg, formatPolyline, openSvg };
