'use strict';

const { probePaths } = require('../beautifier/probe.js');
const { HANDS, drawInk } = require('../ink/index.js');
const { curve, fit, point, sheet } = require('./sheet.js');

const HAND = { ...HANDS.hasty, rate: 60 };
const AWAY_FROM_THE_EDGE = { x: 400, y: 400 };
const SAMPLES = [
  ...[
    { figure: 'line', seed: 3 },
    { figure: 'angle', seed: 2 },
    { figure: 'isosceles', seed: 4 },
  ],
  ...[
    { figure: 'rectangle', seed: 5 },
    { figure: 'rhombus', seed: 3 },
  ],
  ...[
    { figure: 'circle', seed: 2 },
    { figure: 'ellipse', seed: 6 },
    { figure: 'zigzag', seed: 2 },
  ],
];

const COLUMNS = 4;
const CELL = 170;
const MARGIN = 22;

function drawCell(drawn, made, i) {
  const place = {
    x: (i % COLUMNS) * CELL + MARGIN,
    y: Math.floor(i / COLUMNS) * CELL + MARGIN,
    width: CELL - 2 * MARGIN,
    height: CELL - 2 * MARGIN,
  };
  const toSheet = fit([...drawn, ...made], place);
  return curve(drawn.map(toSheet), 'ink thick') + curve(made.map(toSheet), 'shape');
}

/** Hasty strokes, and what the beautifier makes of them. */
function drawBeautifier() {
  const strokes = SAMPLES.map(
    (sample) => drawInk({ ...sample, hand: HAND, at: AWAY_FROM_THE_EDGE }).points,
  );
  const made = probePaths('paths', strokes);
  return sheet({
    width: COLUMNS * CELL,
    height: Math.ceil(SAMPLES.length / COLUMNS) * CELL,
    title: 'Hasty strokes, in grey, and what the beautifier makes of them',
    parts: strokes.map((stroke, i) => drawCell(stroke.map(point), made[i].map(point), i)),
  });
}

module.exports = { drawBeautifier };
