'use strict';

const { xmlText } = require('./inkml.js');

const STYLE = {
  stroke: 'black',
  'stroke-width': '2',
  'stroke-linecap': 'round',
  'stroke-linejoin': 'round',
};

/** Fields that SVG has attributes for. */
const ATTRIBUTES = ['id', ...Object.keys(STYLE), 'stroke-opacity', 'stroke-dasharray'];

/** A stroke as a polyline; what it was taken for stands in an attribute of its own. */
function formatPolyline({ fields }, { points, figure }, round) {
  const attributes = ATTRIBUTES.filter(
    (name) => typeof fields[name] === 'string' || typeof fields[name] === 'number',
  ).map((name) => ` ${name}="${xmlText(fields[name])}"`);
  const pairs = points.map(([x, y]) => `${round(x)},${round(y)}`);
  // A polyline of one point is not drawn; one of no length is, as a dot.
  if (pairs.length === 1) pairs.push(pairs[0]);
  return [
    `<polyline${attributes.join('')} data-figure="${figure}" points="${pairs.join(' ')}"/>\n`,
  ];
}

/**
 * @param {object} summary
 * @param {{x: number, y: number, width: number, height: number}} summary.view what is shown
 */
function composeSvg({ view }) {
  const style = Object.entries(STYLE).map(([name, value]) => ` ${name}="${value}"`);
  return [`${openSvg(view)}\n<g fill="none"${style.join('')}>\n`, 0, '</g>\n</svg>\n'];
}

function openSvg({ x, y, width, height }) {
  const box = [x, y, width, height].map((value) => Number(value.toPrecision(12))).join(' ');
  return `<svg xmlns="http://www.w3.org/2000/svg" viewBox="${box}">`;
}

module.exports = { composeSvg, formatPolyline, openSvg };
