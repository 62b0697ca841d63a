'use strict';

const { templates } = require('scrivo');
const { HANDS, drawInk } = require('../ink/index.js');
const engine = require('../template-engine.js');
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

/** Strokes by the ink generator, each as drawn and as the template engine answers. */
function drawGallery() {
  engine.load(templates);
  const width = MARGIN + TITLE + ROWS[0].figures.length * (2 * CELL + PAIR_GAP) + MARGIN / 2;
  const height = 2 * MARGIN + ROWS.length * CELL;
  return sheet({
    width,
    height,
    title: 'Strokes as drawn, in grey, and as Scrivo gives them back',
    parts: ROWS.map((row, i) => drawRow(row, MARGIN + i * CELL)),
  });
}

function drawRow({ title, figures }, top) {
  const pairs = figures.map((figure, column) => {
    const left = MARGIN + TITLE + column * (2 * CELL + PAIR_GAP);
    return drawPair(drawInk({ figure, seed: 11 + column, hand: HAND, size: SIDE }), left, top);
  });
  return [label(MARGIN + 6, top + CELL / 2 + 5, title), ...pairs].join('\n');
}

function drawPair({ family, points }, left, top) {
  const answer = engine.answer(points);
  const drawn = points.map(point);
  const place = (x) => ({
    ...{ x: x + (CELL - FIGURE) / 2, y: top + (CELL - FIGURE) / 2, width: FIGURE, height: FIGURE },
    scale: FIGURE / (family === 'dot' ? DOT_SIDE : SIDE),
  });
  // The rings of a dot lie a unit apart: a thick pen fills them.
  const kind = { none: 'ink', dot: 'shape thick' }[answer.family] ?? 'shape';
  return (
    curve(drawn.map(fit(drawn, place(left))), 'ink') +
    curve(answer.points.map(point).map(fit(drawn, place(left + CELL))), kind)
  );
}

module.exports = { drawGallery };
