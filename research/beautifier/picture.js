'use strict';

// Draws docs/images/beautifier.svg: made-up strokes and what they become.

const { spawnSync } = require('node:child_process');
const { writeFileSync } = require('node:fs');
const path = require('node:path');
const { PROBE, ROOT, asText } = require('./probe.js');
const { generator } = require('./strokes.js');

const CELL = 150;
const POINTS = 60;

/** Points along straight pieces between corners. */
function polyline(corners) {
  const points = [];
  for (let i = 0; i < POINTS; i++) {
    const t = (i / (POINTS - 1)) * (corners.length - 1);
    const k = Math.min(Math.floor(t), corners.length - 2);
    const [[ax, ay], [bx, by]] = [corners[k], corners[k + 1]];
    points.push([ax + (t - k) * (bx - ax), ay + (t - k) * (by - ay)]);
  }
  return points;
}

const curve = (position) => Array.from({ length: POINTS }, (_, i) => position(i / (POINTS - 1)));
const turn = (t, a, b) => [75 + a * Math.cos(6.6 * t - 1.2), 75 + b * Math.sin(6.6 * t - 1.2)];

const STROKES = [
  polyline([
    [20, 90],
    [130, 83],
  ]),
  polyline([
    [25, 30],
    [50, 125],
    [125, 50],
  ]),
  polyline([
    [25, 120],
    [78, 25],
    [130, 124],
    [18, 118],
  ]),
  polyline([
    [25, 40],
    [128, 36],
    [124, 112],
    [28, 110],
    [30, 28],
  ]),
  polyline([
    [75, 20],
    [122, 76],
    [77, 130],
    [30, 78],
    [80, 18],
  ]),
  curve((t) => turn(t, 52, 47)),
  curve((t) => turn(t, 60, 32)),
  polyline([
    [20, 100],
    [45, 45],
    [70, 105],
    [95, 40],
    [125, 105],
  ]),
];

function shaken(points, i) {
  const random = generator(i + 1);
  const [p, q] = [6 * random(), 6 * random()];
  return points.map(([x, y], k) => [
    x + 2.2 * Math.sin(k / 5 + p) + 0.6 * random(),
    y + 2.2 * Math.sin(k / 4 + q) + 0.6 * random(),
  ]);
}

const trace = (points, style) =>
  `<polyline points="${points.map(([x, y]) => `${x.toFixed(1)},${y.toFixed(1)}`).join(' ')}" fill="none" ${style}/>`;

function beautified(strokes) {
  const { stdout } = spawnSync(PROBE, ['paths'], { input: asText(strokes), encoding: 'utf8' });
  return stdout
    .trimEnd()
    .split('\n')
    .map((line) => {
      const values = line.trim().split(' ').map(Number);
      return Array.from({ length: values.length / 2 }, (_, i) => values.slice(2 * i, 2 * i + 2));
    });
}

const strokes = STROKES.map(shaken);
const paths = beautified(strokes);
const cells = strokes.map(
  (stroke, i) =>
    `<g transform="translate(${(i % 4) * CELL} ${Math.floor(i / 4) * CELL})">` +
    trace(stroke, 'stroke="#bbb" stroke-width="5" stroke-linecap="round"') +
    trace(paths[i], 'stroke="#1565c0" stroke-width="1.5"') +
    '</g>',
);
writeFileSync(
  path.join(ROOT, 'docs/images/beautifier.svg'),
  [
    `<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 ${4 * CELL} ${2 * CELL}">`,
    '<rect width="100%" height="100%" fill="#fff"/>',
    ...cells,
    '</svg>',
    '',
  ].join('\n'),
);
