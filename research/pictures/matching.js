'use strict';

const { HANDS, drawInk } = require('../ink/index.js');
const { findingsOf } = require('./findings.js');
const { arrow, curve, fit, label, line, paragraph, point, sheet, spots } = require('./sheet.js');

const HAND = { ...HANDS.ordinary, rate: 60 };
const SAMPLE = { figure: 'ellipse', seed: 14, hand: HAND, at: { x: 400, y: 400 } };

const WIDTH = 880;
const HEIGHT = 486;
const CELL = { y: 52, width: 200, height: 170 };
const COLUMNS = [40, 340, 640];
const CHART = { left: 90, top: 306, width: 760, height: 110 };

function turned({ x, y }, angle) {
  const [c, s] = [Math.cos(angle), Math.sin(angle)];
  return { x: x * c - y * s, y: x * s + y * c };
}

/** Every normal form to the same scale: the reference square has 250 units. */
function drawNormalForm(points, left, kind) {
  const centre = { x: left + CELL.width / 2, y: CELL.y + CELL.height / 2 };
  const placed = points.map(({ x, y }) => ({ x: centre.x + x * 0.6, y: centre.y + y * 0.6 }));
  return { placed, svg: curve(placed, kind) + spots(placed, 2, kind) };
}

function drawChart({ rotations, visited, distance }) {
  const range = rotations.at(-1)[0];
  const max = Math.ceil(Math.max(...rotations.map(([, d]) => d)) / 20) * 20;
  const place = ([angle, d]) => ({
    x: CHART.left + (CHART.width * (angle + range)) / (2 * range),
    y: CHART.top + CHART.height * (1 - d / max),
  });
  const best = visited.find(([, d]) => d === distance);
  const ticks = [-45, -30, -15, 0, 15, 30, 45].map((angle) =>
    label(place([angle, 0]).x, CHART.top + CHART.height + 18, angle, {
      anchor: 'middle',
      kind: 'small',
    }),
  );
  const levels = [0, max / 2, max].map((d) => {
    const name = label(CHART.left - 8, place([0, d]).y + 4, d, { anchor: 'end', kind: 'small' });
    return line(place([-range, d]), place([range, d]), 'rule') + name;
  });
  return [
    label(CHART.left - 50, CHART.top - 20, 'mean distance by the angle of the turn, in radians', {
      kind: 'small',
    }),
    ...levels,
    ...ticks,
    curve(rotations.map(place), 'ink'),
    spots(visited.map(place), 4, 'help'),
    spots([place(best)], 5.5, 'mark'),
  ].join('\n');
}

/** A stroke, its normal form, the template that is nearest, and the search for the angle. */
function drawMatching() {
  const stroke = drawInk(SAMPLE).points;
  const [{ normal, match }] = findingsOf([{ stroke }]);
  const [best] = match.visited.find(([, distance]) => distance === match.distance);
  const drawn = stroke.map(point);
  const toSheet = fit(drawn, { x: COLUMNS[0], ...CELL });
  const form = drawNormalForm(normal.map(point), COLUMNS[1], 'ink');
  const other = drawNormalForm(match.points.map(point), COLUMNS[2], 'shape');
  const same = drawNormalForm(
    normal.map(point).map((p) => turned(p, best)),
    COLUMNS[2],
    'ink',
  );
  const middle = CELL.y + CELL.height / 2;
  const heads = [
    'as drawn',
    '64 points, turned, to a square',
    `nearest template: ${match.distance.toFixed(1)} units`,
  ];
  return sheet({
    width: WIDTH,
    height: HEIGHT,
    title: 'How a stroke is compared with a template',
    parts: [
      ...heads.map((text, i) => label(COLUMNS[i] + CELL.width / 2, 32, text, { anchor: 'middle' })),
      curve(drawn.map(toSheet), 'ink'),
      spots(drawn.map(toSheet), 2, 'ink'),
      arrow({ x: 262, y: middle }, { x: 318, y: middle }),
      form.svg,
      spots([form.placed[0]], 5, 'mark'),
      arrow({ x: 562, y: middle }, { x: 618, y: middle }),
      ...same.placed.map((p, i) => line(p, other.placed[i], 'help')),
      other.svg,
      same.svg,
      drawChart(match),
      paragraph(
        40,
        HEIGHT - 16,
        [
          'Yellow: the angles that the search tries. Red: where the distance is taken; above, the first point.',
        ],
        { kind: 'small' },
      ),
    ],
  });
}

module.exports = { drawMatching };
