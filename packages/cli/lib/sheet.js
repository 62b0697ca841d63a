'use strict';

const { boundingBox } = require('./placement.js');
const { escapeText, pathData } = require('./svg.js');

const COLUMNS = 8;
const CELL = 120;
const INK = 96;
const CAPTION = 34;

// Own ground in both colour schemes: the colours then need not suit an unknown page.
const STYLE = [
  'text{font:10px system-ui,sans-serif;text-anchor:middle}',
  'path{fill:none;stroke-linecap:round;stroke-linejoin:round}.a{stroke-width:2}',
  colours({ ground: '#fff', ink: '#9aa0a6', text: '#3c4043', answer: '#1a73e8' }),
  `@media(prefers-color-scheme:dark){${colours({ ground: '#15181c', ink: '#80868b', text: '#dadce0', answer: '#8ab4f8' })}}`,
].join('');

function colours({ ground, ink, text, answer }) {
  return `.g{fill:${ground}}text{fill:${text}}.s{stroke:${ink}}.a{stroke:${answer}}.b{fill:${answer}}`;
}

/**
 * @typedef {object} SheetCell
 * @property {string} label what was drawn
 * @property {string} answer what the engine saw in it
 * @property {string} source where the stroke comes from, shown when the pointer rests on it
 * @property {Array<{x: number, y: number}>} drawn
 * @property {Array<{x: number, y: number}>} [redrawn] in the coordinates of `drawn`
 */

/**
 * A sheet of strokes: each drawn in grey, the engine's answer in colour over it, label and
 * answer beneath.
 *
 * @param {SheetCell[]} cells
 * @returns {string} an SVG document
 */
function strokeSheet(cells) {
  const width = COLUMNS * CELL;
  const height = Math.ceil(cells.length / COLUMNS) * (CELL + CAPTION);
  return [
    `<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 ${width} ${height}" width="${width}">`,
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
  return [
    `<g transform="translate(${left} ${top})"><title>${escapeText(source)}</title>`,
    `<path class="s" d="${pathData(drawn.map(fit))}"/>`,
    redrawn ? `<path class="a" d="${pathData(redrawn.map(fit))}"/>` : '',
    `<text x="${CELL / 2}" y="${CELL + 8}">${escapeText(label)}</text>`,
    `<text class="b" x="${CELL / 2}" y="${CELL + 22}">${escapeText(answer)}</text></g>`,
  ].join('');
}

/** Maps a stroke into the middle of a cell; the answer may reach a little beyond. */
function fitInto(points) {
  const box = boundingBox(points.map(({ x, y }) => [x, y]));
  const scale = INK / Math.max(box.width, box.height, Number.MIN_VALUE);
  const centred = Number.isFinite(scale) ? scale : 1;
  return ({ x, y }) => ({
    x: CELL / 2 + (x - box.x - box.width / 2) * centred,
    y: CELL / 2 + (y - box.y - box.height / 2) * centred,
  });
}

module.exports = { strokeSheet };
