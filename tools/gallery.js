'use strict';

const fs = require('node:fs');
const path = require('node:path');
const { Resvg } = require('@resvg/resvg-js');
const { createEngine } = require('../lib/cli/engines.js');
const { boundingBox, placeStroke } = require('../lib/cli/placement.js');
const { escapeText, pathData } = require('../lib/cli/svg.js');
const { HANDS, drawInk } = require('./ink/index.js');

/**
 * Writes docs/images/gallery.svg and .png: sample strokes by the ink generator, each as drawn and
 * as the engine gives it back.
 */

const OUTPUT = path.join(__dirname, '..', 'docs', 'images');

/** One row each: what was drawn, from left to right. */
const ROWS = [
  { title: 'dot, enlarged', figures: ['dot', 'dot', 'dot', 'dot', 'dot'] },
  { title: 'line', figures: ['line', 'line', 'line', 'line', 'line'] },
  { title: 'angle', figures: ['angle', 'angle', 'angle', 'angle', 'angle'] },
  {
    title: 'triangle',
    figures: ['equilateral', 'isosceles', 'isosceles', 'right triangle', 'right triangle'],
  },
  {
    title: 'quadrangle',
    figures: ['square', 'rectangle', 'rhombus', 'parallelogram', 'trapezoid'],
  },
  { title: 'ellipse', figures: ['circle', 'circle', 'ellipse', 'ellipse', 'ellipse'] },
  { title: 'ink', figures: ['loops', 'wave', 'spiral', 'star', 'scrawl'] },
];

// As pages get pointer events on a screen of 60 pictures a second.
const HAND = { ...HANDS.ordinary, rate: 60 };

// Lengths in pixels of the sheet.
const CELL = 92;
const FIGURE = 72;
const PAIR_GAP = 14;
const TITLE = 104;
const MARGIN = 18;
const PNG_SCALE = 2;

// Drawing-area units that fill the space of a figure; dots are shown enlarged.
const UNITS = 200;
const DOT_UNITS = 20;

// Own ground in both colour schemes: the sheet then suits any page.
const STYLE = `
text { font: 15px system-ui, "DejaVu Sans", sans-serif }
path { fill: none; stroke-linecap: round; stroke-linejoin: round; stroke-width: 1.3 }
.shape { stroke-width: 2.6 }
.dot { stroke-width: 4 }
${colours({ ground: '#fff', rim: '#d8dee4', text: '#424a53', ink: '#8c959f', shape: '#0969da' })}
@media (prefers-color-scheme: dark) {
${colours({ ground: '#161b22', rim: '#30363d', text: '#c9d1d9', ink: '#8b949e', shape: '#58a6ff' })}
}
`;

function colours({ ground, rim, text, ink, shape }) {
  return [
    `.ground { fill: ${ground}; stroke: ${rim} }`,
    `text { fill: ${text} }`,
    `.ink { stroke: ${ink} }`,
    `.shape { stroke: ${shape} }`,
  ].join('\n');
}

function drawGallery(engine) {
  const width = MARGIN + TITLE + ROWS[0].figures.length * (2 * CELL + PAIR_GAP) + MARGIN / 2;
  const height = 2 * MARGIN + ROWS.length * CELL;
  const rows = ROWS.map((row, i) => drawRow(engine, row, MARGIN + i * CELL));
  return [
    `<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 ${width} ${height}">`,
    '<title>Strokes as drawn, in grey, and as Scrivo gives them back</title>',
    `<style>${STYLE}</style>`,
    `<rect class="ground" x=".5" y=".5" width="${width - 1}" height="${height - 1}" rx="10"/>`,
    ...rows,
    '</svg>\n',
  ].join('\n');
}

function drawRow(engine, { title, figures }, top) {
  const baseline = top + CELL / 2 + 5;
  const pairs = figures.map((figure, column) => {
    const left = MARGIN + TITLE + column * (2 * CELL + PAIR_GAP);
    return drawPair(engine, sampleStroke(figure, column), left, top);
  });
  return `<text x="${MARGIN + 6}" y="${baseline}">${escapeText(title)}</text>\n${pairs.join('\n')}`;
}

function sampleStroke(figure, column) {
  return drawInk({ figure, seed: 11 + column, hand: HAND });
}

function drawPair(engine, stroke, left, top) {
  const placed = placeStroke(stroke, UNITS);
  const answer = engine.answer(placed);
  const toSheet = fitter(placed, stroke.family === 'dot' ? DOT_UNITS : UNITS);
  const drawn = placed.points.map((point) => toSheet(point, left, top));
  const redrawn = answer.path.map((point) => toSheet(point, left + CELL, top));
  // The rings of a dot lie a unit apart: a pen fills them.
  const result = { none: 'ink', dot: 'shape dot' }[answer.family] ?? 'shape';
  return `<path class="ink" d="${pathData(drawn)}"/><path class="${result}" d="${pathData(redrawn)}"/>`;
}

/** Maps fractions of the drawing area to a cell; the drawn stroke comes into its middle. */
function fitter({ points, width, height }, units) {
  const box = boundingBox(points.map(({ x, y }) => [x * width, y * height]));
  const scale = FIGURE / units;
  return ({ x, y }, left, top) => ({
    x: left + CELL / 2 + (x * width - box.x - box.width / 2) * scale,
    y: top + CELL / 2 + (y * height - box.y - box.height / 2) * scale,
  });
}

/** The rasteriser passes over media queries: the picture has the light scheme. */
function toPng(svg) {
  const options = {
    fitTo: { mode: 'zoom', value: PNG_SCALE },
    font: { defaultFontFamily: 'DejaVu Sans' },
  };
  return new Resvg(svg, options).render().asPng();
}

function main() {
  const engine = createEngine('exact');
  engine.load({});
  const svg = drawGallery(engine);
  fs.mkdirSync(OUTPUT, { recursive: true });
  fs.writeFileSync(path.join(OUTPUT, 'gallery.svg'), svg);
  fs.writeFileSync(path.join(OUTPUT, 'gallery.png'), toPng(svg));
}

main();
