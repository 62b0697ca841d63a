'use strict';

const { boundingBox } = require('./boxes.js');
const { createRounding, escapeText, polylinePoints } = require('./svg.js');
const { openSvg } = require('./write/svg.js');

const COLUMNS = 8;
const CELL = 120;
const INK = 96;
const CAPTION = 34;

const round = createRounding(1);

// With its own background the sheet is readable on any page.
const STYLE = [
  'text{font:10px system-ui,sans-serif;text-anchor:middle}',
  'polyline{fill:none;stroke-linecap:round;stroke-linejoin:round}.a{stroke-width:2}',
  colours({ ground: '#fff', ink: '#9aa0a6', text: '#3c4043', answer: '#1a73e8' }),
  `@media(prefers-color-scheme:dark){${colours({ ground: '#15181c', ink: '#80868b', text: '#dadce0', answer: '#8ab4f8' })}}`,
].join('');

function colours({ ground, ink, text, answer }) {
  return `.g{fill:${ground}}text{fill:${text}}.s{stroke:${ink}}.a{stroke:${answer}}.b{fill:${answer}}`;
}

/**
 * @typedef {object} SheetCell
 * @property {string} label what was drawn
 * @property {string} answer what the engine recognised
 * @property {string} source where the stroke comes from, shown as a tooltip
 * @property {Array<{x: number, y: number}>} drawn
 * @property {Array<{x: number, y: number}>} [redrawn] in the coordinates of `drawn`
 */

/**
 * A sheet of strokes: each drawn in grey under the engine's answer in colour, above its label and
 * the answer.
 *
 * @param {SheetCell[]} cells
 * @returns {string} an SVG document
 */
function strokeSheet(cells) {
  const width = COLUMNS * CELL;
  const height = Math.ceil(cells.length / COLUMNS) * (CELL + CAPTION);
  return [
    openSvg({ x: 0, y: 0, width, height }, { width, height }),
    `<style>${STYLE}</style>`,
    `<rect class="g" width="${width}" height="${height}"/>`,
    ...cells.map(formatCell),
    '</svg>\n',
  ].join('\n');
}

function formatCell({ label, answer, source, drawn, redrawn }, index) {
  const left = (index % COLUMNS) * CELL;
  const top = Math.floor(index / COLUMNS) * (CELL + CAPTION);
  const fit = fitInto(drawn);
  const draw = (name, points) =>
    `<polyline class="${name}" points="${polylinePoints(points.map(fit), round)}"/>`;
  return [
    `<g transform="translate(${left} ${top})"><title>${escapeText(source)}</title>`,
    draw('s', drawn),
    redrawn ? draw('a', redrawn) : '',
    `<text x="${CELL / 2}" y="${CELL + 8}">${escapeText(label)}</text>`,
    `<text class="b" x="${CELL / 2}" y="${CELL + 22}">${escapeText(answer)}</text></g>`,
  ].join('');
}

/** Maps a stroke into the middle of a cell. The answer may reach a little beyond. */
function fitInto(points) {
  const box = boundingBox(points.map(({ x, y }) => [x, y]));
  const scale = INK / Math.max(box.width, box.height, Number.MIN_VALUE);
  const finite = Number.isFinite(scale) ? scale : 1;
  const centred = (value, start, size) => CELL / 2 + (value - start - size / 2) * finite;
  return ({ x, y }) => [centred(x, box.x, box.width), centred(y, box.y, box.height)];
}

module.exports = { strokeSheet };
