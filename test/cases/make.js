'use strict';

// Writes the cases and their templates: node test/cases/make.js
//
// Expected figures are computed by formulas from the intended figure, never copied from
// the engine's answers. Look at `git diff` afterwards: a case changes only if its figure
// does.

const fs = require('node:fs');
const path = require('node:path');

const WIDTH = 1000;
const HEIGHT = 500;

const add = ([x, y], [dx, dy]) => [x + dx, y + dy];
const minus = ([x, y], [dx, dy]) => [x - dx, y - dy];
const mean = (points) =>
  [0, 1].map((k) => points.reduce((sum, p) => sum + p[k] / points.length, 0));
const turned = ([x, y], angle) => [
  x * Math.cos(angle) - y * Math.sin(angle),
  x * Math.sin(angle) + y * Math.cos(angle),
];
const range = (count) => Array.from({ length: count }, (_, i) => i);

/** A drawn path: even steps from corner to corner, each corner once. */
function drawn(corners, steps = 20) {
  const at = (p, q, t) => [p[0] + t * (q[0] - p[0]), p[1] + t * (q[1] - p[1])];
  const edge = (i) => range(steps).map((k) => at(corners[i], corners[i + 1], k / steps));
  return [...range(corners.length - 1).flatMap(edge), corners.at(-1)];
}

/** Points from coordinates in turn. */
const xy = (...numbers) => range(numbers.length / 2).map((i) => numbers.slice(2 * i, 2 * i + 2));
const closed = (corners) => [...corners, corners[0]];

/** A clean figure: 21 points per edge, so that inner corners occur twice. */
const clean = (corners) =>
  range(corners.length - 1).flatMap((i) => drawn([corners[i], corners[i + 1]]));

/** A closed ring that starts at the end of its first axis. */
const ring = (centre, rx, ry, turn, steps) =>
  range(steps + 1).map((i) => {
    const t = (2 * Math.PI * (i % steps)) / steps;
    return add(centre, turned([rx * Math.cos(t), ry * Math.sin(t)], turn));
  });

/** With a small tremor. */
const shaken = (points, size) =>
  points.map((p, i) => add(p, [size * Math.sin(2.3 * i), size * Math.cos(1.7 * i)]));

const withForce = (points, force) => points.map((p) => [...p, force]);

/** Another stroke: three points about a place. */
const markAt = (place) => xy(-4, 1, 1, -3, 3, 2).map((offset) => add(place, offset));

const tap = range(12).map((i) => add([1, 200], [2 * Math.cos(i), 2 * Math.sin(i)]));
const dot = [2.5, 1.5, 0.5].flatMap((r) => ring([2.5, mean(tap)[1]], r, r, 0, 20));

const legTurn = Math.atan(0.06);
const legs = [turned([-130, 0], legTurn), [60, 110]];
const vertex = [300, 300];

const scalene = xy(400, 100, 460, 300, 200, 316);
const levelled = (p) => add(scalene[2], turned(minus(p, scalene[2]), Math.atan(16 / 260)));

const square = xy(904, 203, 905, 100, 1005, 100.5, 1006, 204);
const side = (Math.hypot(100, 0.5) + Math.hypot(1, 103)) / 2;
const [right, left] = [1000, 1000 - side];

const u = turned([180, 0], 0.5);
const v = turned([100, 0], 1.7);
const parallelogram = [
  [300, 120],
  add([300, 120], u),
  add(add([300, 120], u), v),
  add([300, 120], v),
];

const wave = range(60).map((i) => [200 + 6 * i, 250 + 60 * Math.sin(i / 8)]);

const CASES = {
  dot: {
    why: 'a firm tap at the left edge: three rings about its centre, moved into the area',
    path: withForce(tap, 0.8),
    type: 1,
    points: [...dot, [2.5, mean(tap)[1]]],
  },
  'line-level': {
    why: 'a slope of 0.05 becomes level at the height of the upper end, and keeps its length',
    path: drawn(xy(500, 220, 100, 200), 40),
    type: 2,
    points: clean(xy(100, 200, 100 + Math.hypot(400, 20), 200)),
  },
  'line-beyond-the-area': {
    why: 'a line that leaves the area stays where it was drawn',
    path: drawn(xy(700, 400, 1100, 700), 40),
    type: 2,
    points: clean(xy(700, 400, 1100, 700)),
  },
  'line-between-strokes': {
    why: 'a line from one stroke to another ends on the centroids of both',
    path: drawn(xy(200, 150, 600, 260), 40),
    others: [markAt([597, 264]), [], markAt([203, 147])],
    type: 2,
    points: clean(xy(203, 147, 597, 264)),
  },
  'line-beside-a-stroke': {
    why: 'a line past one stroke moves sideways until it goes through its centroid',
    path: drawn(xy(200, 100, 600, 400), 40),
    others: [markAt([404, 244])],
    type: 2,
    // (404, 244) lies 7.2 units off the line.
    points: clean(xy(200, 100, 600, 400).map((p) => add(p, [7.2 * 0.6, -7.2 * 0.8]))),
  },
  angle: {
    why: 'a leg that rises by 0.06 becomes level, and the figure turns about its vertex',
    path: drawn([add(vertex, legs[0]), vertex, add(vertex, legs[1])]),
    type: 4,
    points: clean([[170, 300], vertex, add(vertex, turned(legs[1], -legTurn))]),
  },
  'triangle-equilateral': {
    why: 'sides of 100, 102 and 99 units become 100 each; the base stays',
    path: drawn(closed(xy(546.985, 200, 500, 287.14, 600, 287.14))),
    type: 6,
    points: clean(closed(xy(500, 287.14, 600, 287.14, 550, 287.14 - 50 * Math.sqrt(3)))),
  },
  'triangle-levelled': {
    why: 'a scalene triangle turns about its lowest corner until its base is level',
    path: drawn(closed(scalene)),
    type: 6,
    points: clean(closed([scalene[1], scalene[2], scalene[0]].map(levelled))),
  },
  square: {
    why: 'a nearly level square has four equal sides and is moved into the area',
    path: drawn(closed(square)),
    type: 6,
    points: clean(closed(xy(left, 100, right, 100, right, 100 + side, left, 100 + side))),
  },
  parallelogram: {
    why: 'a parallelogram drawn with care stays as it is',
    path: drawn(closed(parallelogram)),
    type: 6,
    points: clean(closed([...parallelogram.slice(1), parallelogram[0]])),
  },
  circle: {
    why: 'radii of 100 and 92 units become their mean',
    path: shaken(ring([500, 250], 100, 92, 0, 70), 0.05),
    type: 7,
    points: ring([500, 250], 96, 96, 0, 84),
    tolerance: 0.1,
  },
  ellipse: {
    why: 'an ellipse turned by half a radian keeps its turn',
    path: shaken(ring([500, 250], 150, 70, 0.5, 70), 0.05),
    type: 7,
    points: ring([500, 250], 150, 70, 0.5, 84),
    tolerance: 0.1,
  },
  none: {
    why: 'a wave is no figure: it comes back as drawn, pressure included',
    path: withForce(wave, 0.25),
    type: 0,
    points: null,
  },
};

const TEMPLATES = {
  rectangle: [
    drawn(closed(xy(0, 0, 0, 1, 1, 1, 1, 0))),
    drawn(closed(xy(0, 0, 0, 1, 2, 1, 2, 0))),
    drawn(closed(parallelogram)),
  ],
  triangle: [drawn(closed(scalene))],
  isosceles_triangle: [
    drawn(closed(xy(0, -2, -1, 0, 1, 0))),
    drawn(closed(xy(0, -1.7, -1, 0, 1, 0))),
  ],
  ellipse: [ring([0, 0], 1, 1, 0, 60), ring([0, 0], 2, 1, 0, 60)],
};

const rounded = (number, digits) => Number(number.toFixed(digits));

/** One value per line; eight points per line in long lists. */
function toJson(value) {
  const list = (points) => {
    const items = points.map((p) => JSON.stringify(p));
    const lines = range(Math.ceil(items.length / 8)).map((i) =>
      items.slice(8 * i, 8 * i + 8).join(', '),
    );
    return lines.length > 1 ? `[\n    ${lines.join(',\n    ')}\n  ]` : `[${lines.join('')}]`;
  };
  const text = (entry) => (Array.isArray(entry) ? list(entry) : JSON.stringify(entry));
  const entries = Object.entries(value).map(
    ([key, entry]) => `  ${JSON.stringify(key)}: ${text(entry)}`,
  );
  return `{\n${entries.join(',\n')}\n}\n`;
}

function writeCase(name, { why, path: stroke, others = [], type, points, tolerance = 0.01 }) {
  const fraction = ([x, y, ...force]) => [rounded(x / WIDTH, 7), rounded(y / HEIGHT, 7), ...force];
  const value = {
    name,
    why,
    width: WIDTH,
    height: HEIGHT,
    path: stroke.map(fraction),
    others: others.map((other) => other.map(fraction)),
    type,
    points: points && points.map(fraction),
    tolerance, // in drawing-area units
  };
  fs.writeFileSync(path.join(__dirname, `${name}.json`), toJson(value));
}

function writeTemplates(name, outlines) {
  const token = (outline) =>
    outline
      .flat()
      .map((number) => rounded(number, 4))
      .join(',');
  const folder = path.join(__dirname, 'templates');
  fs.mkdirSync(folder, { recursive: true });
  fs.writeFileSync(path.join(folder, `${name}.template`), `${outlines.map(token).join('\n')}\n`);
}

for (const [name, figure] of Object.entries(CASES)) writeCase(name, figure);
for (const [name, outlines] of Object.entries(TEMPLATES)) writeTemplates(name, outlines);
