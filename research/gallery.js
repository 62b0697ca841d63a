'use strict';

const fs = require('node:fs');
const path = require('node:path');
const { Resvg } = require('@resvg/resvg-js');
const { createEngine } = require('../packages/cli/lib/engines.js');
const { boundingBox, placeStroke } = require('../packages/cli/lib/placement.js');
const { escapeText, pathData } = require('../packages/cli/lib/svg.js');
const { HANDS, drawInk } = require('./ink/index.js');
const { drawPictures } = require('./pictures/index.js');
const { sheet } = require('./pictures/sheet.js');
const { main } = require('../tools/support/run.js');

/**
 * Writes pictures of docs/images: the gallery of sample strokes by the ink generator, each as drawn
 * and as the engine gives it back, as SVG and PNG; and those of research/pictures, which show how the
 * engine gets there. They are the same at every run.
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

function drawGallery(engine) {
  const width = MARGIN + TITLE + ROWS[0].figures.length * (2 * CELL + PAIR_GAP) + MARGIN / 2;
  const height = 2 * MARGIN + ROWS.length * CELL;
  const rows = ROWS.map((row, i) => drawRow(engine, row, MARGIN + i * CELL));
  return sheet({
    width,
    height,
    title: 'Strokes as drawn, in grey, and as Scrivo gives them back',
    parts: rows,
  });
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
  // The rings of a dot lie a unit apart: a thick pen fills them.
  const result = { none: 'ink', dot: 'shape thick' }[answer.family] ?? 'shape';
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

function writePictures() {
  const engine = createEngine('exact');
  engine.load({});
  const svg = drawGallery(engine);
  fs.mkdirSync(OUTPUT, { recursive: true });
  fs.writeFileSync(path.join(OUTPUT, 'gallery.svg'), svg);
  fs.writeFileSync(path.join(OUTPUT, 'gallery.png'), toPng(svg));
  for (const [name, picture] of Object.entries(drawPictures())) {
    fs.writeFileSync(path.join(OUTPUT, name), picture);
  }
}

main(async () => {
  writePictures();
  return 0;
});
