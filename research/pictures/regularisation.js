'use strict';

const { HANDS, drawInk } = require('../ink/index.js');
const { findingsOf } = require('./findings.js');
const { curve, fit, label, point, sheet } = require('./sheet.js');

const HAND = { ...HANDS.ordinary, rate: 60 };
const AT = { x: 400, y: 400 };
const ink = (figure, seed) => ({ ...drawInk({ figure, seed, hand: HAND, at: AT }), type: 6 });

const MARK = 6; // half the side of a small cross, units
const cross = (x, y) => [
  [x - MARK, y - MARK],
  [x + MARK, y + MARK],
  [x, y],
  [x - MARK, y + MARK],
  [x + MARK, y - MARK],
];

/** A nearly straight stroke that misses the two marks at its ends. */
function lineBetween() {
  const { points } = drawInk({ figure: 'wave', seed: 3, size: 30, hand: HAND });
  const shake = points.map(([, y]) => y);
  const middle = shake.reduce((sum, y) => sum + y, 0) / shake.length;
  const stroke = Array.from({ length: 40 }, (_, i) => [
    405 + 4.7 * i,
    426 + 1.9 * i + 0.2 * (shake[i % shake.length] - middle),
  ]);
  return { points: stroke, others: [cross(398, 418), cross(600, 496)], type: 2 };
}

const CELLS = [
  { title: 'equilateral', sample: () => ink('equilateral', 11) },
  { title: 'isosceles', sample: () => ink('isosceles', 12) },
  { title: 'right-angled', sample: () => ink('right triangle', 14) },
  { title: 'square', sample: () => ink('square', 11) },
  { title: 'rectangle', sample: () => ink('rectangle', 12) },
  { title: 'parallelogram', sample: () => ink('parallelogram', 14) },
  { title: 'circle', sample: () => ({ ...ink('circle', 12), type: 7 }) },
  { title: 'line to two marks', sample: lineBetween },
];

const WIDTH = 880;
const CELL = { width: 205, height: 200 };
const COLUMNS = 4;
const FIGURE = { width: 150, height: 130 };

function drawCell({ title, drawn, finding, others, type }, i) {
  if (finding.type !== type)
    throw new Error(`regularisation: ${title} came out as ${finding.type}`);
  const left = 30 + (i % COLUMNS) * CELL.width;
  const top = 20 + Math.floor(i / COLUMNS) * CELL.height;
  const toSheet = fit([...drawn, ...others.flat().map(point)], {
    x: left + (CELL.width - FIGURE.width) / 2,
    y: top + 40,
    ...FIGURE,
  });
  return [
    label(left + CELL.width / 2, top + 16, title, { anchor: 'middle' }),
    ...others.map((stroke) => curve(stroke.map(point).map(toSheet), 'mark')),
    curve(drawn.map(toSheet), 'ink'),
    curve(finding.path.map(point).map(toSheet), 'shape'),
  ].join('\n');
}

/** Strokes, and the regular figures that they become, on top of each other. */
function drawRegularisation() {
  const cells = CELLS.map(({ title, sample }) => ({ title, others: [], ...sample() }));
  const findings = findingsOf(cells.map(({ points, others }) => ({ stroke: points, others })));
  return sheet({
    width: WIDTH,
    height: 20 + 2 * CELL.height,
    title: 'Strokes, in grey, and the regular figures that they become',
    parts: cells.map((cell, i) =>
      drawCell({ ...cell, drawn: cell.points.map(point), finding: findings[i] }, i),
    ),
  });
}

module.exports = { drawRegularisation };
