'use strict';

const { escapeText } = require('../../packages/cli/lib/svg.js');
const { boxOf } = require('../ink/outlines.js');

/**
 * The style of the pictures of the documents, with their own background, a light and a dark colour
 * scheme, and functions that write their SVG elements.
 */

const LIGHT = {
  ground: '#fff',
  rim: '#d8dee4',
  text: '#424a53',
  ink: '#8c959f',
  shape: '#0969da',
  mark: '#cf222e',
  help: '#bf8700',
};
const DARK = {
  ground: '#161b22',
  rim: '#30363d',
  text: '#c9d1d9',
  ink: '#8b949e',
  shape: '#58a6ff',
  mark: '#ff7b72',
  help: '#d29922',
};

const STYLE = `
text { font: 15px system-ui, "DejaVu Sans", sans-serif }
.small { font-size: 13px }
path, line, polyline { fill: none; stroke-linecap: round; stroke-linejoin: round; stroke-width: 1.3 }
.shape { stroke-width: 2.6 }
.thick { stroke-width: 4 }
.dashed { stroke-dasharray: 5 4 }
${colours(LIGHT)}
@media (prefers-color-scheme: dark) {
${colours(DARK)}
}
`;

function colours({ ground, rim, text, ink, shape, mark, help }) {
  return [
    `.ground { fill: ${ground}; stroke: ${rim} }`,
    `.box { fill: none; stroke: ${ink} }`,
    `.rule { stroke: ${rim} }`,
    `text { fill: ${text} }`,
    `.arrow { stroke: ${text} }`,
    ...Object.entries({ ink, shape, mark, help }).flatMap(([name, colour]) => [
      `.${name} { stroke: ${colour} }`,
      `circle.${name} { fill: ${colour}; stroke: none }`,
      `text.${name} { fill: ${colour}; stroke: none }`,
    ]),
  ].join('\n');
}

/** A picture of this size in pixels; `parts` are SVG elements. */
function sheet({ width, height, title, parts }) {
  return [
    `<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 ${width} ${height}" role="img">`,
    `<title>${escapeText(title)}</title>`,
    `<style>${STYLE}</style>`,
    `<rect class="ground" x=".5" y=".5" width="${width - 1}" height="${height - 1}" rx="10"/>`,
    ...parts,
    '</svg>\n',
  ].join('\n');
}

/** A number in tenths of a pixel, in as few characters as possible. */
const tenths = (value) => String(value / 10).replace(/^(-?)0\./, '$1.');
const short = (value) => tenths(Math.round(value * 10));

/** The path of a polyline. Points are rounded before differences are taken: errors do not add up. */
function pathData(points) {
  const grid = points.map(({ x, y }) => [Math.round(x * 10), Math.round(y * 10)]);
  const steps = grid.slice(1).map(([x, y], i) => [x - grid[i][0], y - grid[i][1]]);
  const moves = steps.filter(([dx, dy]) => dx !== 0 || dy !== 0);
  const text = (pair) => pair.map(tenths).join(' ');
  // A lone point is a line of no length: a round cap makes a dot of it.
  return `M${text(grid[0])}l${(moves.length > 0 ? moves : [[0, 0]]).map(text).join(' ')}`;
}

const label = (x, y, text, { anchor = 'start', kind = '' } = {}) =>
  `<text x="${short(x)}" y="${short(y)}" text-anchor="${anchor}"${kind && ` class="${kind}"`}>` +
  `${escapeText(text)}</text>`;

/** Lines of text below each other. */
const paragraph = (x, y, lines, options) =>
  lines.map((line, i) => label(x, y + 19 * i, line, options)).join('\n');

const curve = (points, kind) => `<path class="${kind}" d="${pathData(points)}"/>`;

const line = (a, b, kind) => curve([a, b], kind);

const spots = (points, radius, kind) =>
  points
    .map(({ x, y }) => `<circle class="${kind}" cx="${short(x)}" cy="${short(y)}" r="${radius}"/>`)
    .join('');

/** A straight arrow with an open head. */
function arrow(from, to) {
  const length = Math.hypot(to.x - from.x, to.y - from.y);
  const [ux, uy] = [(to.x - from.x) / length, (to.y - from.y) / length];
  const barb = (side) => ({
    x: to.x - 8 * ux + side * 4.5 * uy,
    y: to.y - 8 * uy - side * 4.5 * ux,
  });
  return line(from, to, 'arrow') + curve([barb(1), to, barb(-1)], 'arrow');
}

const point = ([x, y]) => ({ x, y });

/** A map to pixels that centres these points in a place, as large as it allows. */
function fit(points, { x, y, width, height, scale: maxScale = Infinity }) {
  const box = boxOf(points);
  const scale = Math.min(width / box.width, height / box.height, maxScale);
  return (p) => ({
    x: x + width / 2 + (p.x - box.x - box.width / 2) * scale,
    y: y + height / 2 + (p.y - box.y - box.height / 2) * scale,
  });
}

module.exports = { arrow, curve, fit, label, line, paragraph, point, sheet, short, spots };
