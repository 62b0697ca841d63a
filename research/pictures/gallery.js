'use strict';

const { Beautifier } = require('scrivo/beautifier');
const { HANDS, drawInk } = require('../ink/index.js');
const { curve, fit, label, point, sheet } = require('./sheet.js');

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

// Pages get pointer events at the rate of the screen.
const HAND = { ...HANDS.ordinary, rate: 60 };

// Lengths in pixels of the sheet.
const CELL = 92;
const FIGURE = 72;
const PAIR_GAP = 14;
const TITLE = 104;
const MARGIN = 18;

// Longer side of a stroke, in units; dots are shown enlarged.
const SIDE = 200;
const DOT_SIDE = 20;

// Side of the drawing area, in units: the strokes lie in its middle.
const AREA = 1000;
const AT = { x: AREA / 2, y: AREA / 2 };

const beautifier = new Beautifier();

/** Generated strokes, each as drawn and as the beautifier answers. */
function drawGallery() {
  const width = MARGIN + TITLE + ROWS[0].figures.length * (2 * CELL + PAIR_GAP) + MARGIN / 2;
  const height = 2 * MARGIN + ROWS.length * CELL;
  return sheet({
    width,
    height,
    title: 'Strokes as drawn, in grey, and the figures made of them',
    parts: ROWS.map((row, i) => drawRow(row, MARGIN + i * CELL)),
  });
}

function drawRow({ title, figures }, top) {
  const pairs = figures.map((figure, column) => {
    const left = MARGIN + TITLE + column * (2 * CELL + PAIR_GAP);
    const sample = { figure, seed: 11 + column, hand: HAND, size: SIDE, at: AT };
    return drawPair(drawInk(sample), left, top);
  });
  return [label(MARGIN + 6, top + CELL / 2 + 5, title), ...pairs].join('\n');
}

function drawPair({ family, points }, left, top) {
  const drawn = points.map(point);
  const stroke = drawn.map(({ x, y }) => ({ x: x / AREA, y: y / AREA }));
  const { figure, path } = beautifier.beautify(stroke, AREA, AREA);
  const made = path.map(({ x, y }) => ({ x: x * AREA, y: y * AREA }));
  const place = (x) => ({
    ...{ x: x + (CELL - FIGURE) / 2, y: top + (CELL - FIGURE) / 2, width: FIGURE, height: FIGURE },
    scale: FIGURE / (family === 'dot' ? DOT_SIDE : SIDE),
  });
  // The rings of a dot lie a unit apart: a thick pen fills them.
  const pen = family === 'dot' ? ' thick' : '';
  return (
    curve(drawn.map(fit(drawn, place(left))), `ink${pen}`) +
    curve(made.map(fit(drawn, place(left + CELL))), (figure ? 'shape' : 'ink') + pen)
  );
}

module.exports = { drawGallery };
