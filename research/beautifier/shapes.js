'use strict';

// Kinds of figures, their lean and their distance from the ink, of strokes whose
// family was recognised.

const { familyOf, kindOf } = require('./names.js');
const { probePaths } = require('./probe.js');
const { percent } = require('./report.js');

const EDGE_POINTS = 21; // of an outline
const INK_POINTS = 200; // at even distances, that distances are measured from
const FAR = 8; // percent of the longer side
const LEVEL = 10; // degrees that a box drawn level leans at most
const LEANING = 0.5;

const degrees = (from, to) => (Math.atan2(to[1] - from[1], to[0] - from[0]) * 180) / Math.PI;
const length = (from, to) => Math.hypot(to[0] - from[0], to[1] - from[1]);
const median = (values) => [...values].sort((a, b) => a - b)[values.length >> 1];

/** Points at even distances. */
function even(points) {
  const at = [0];
  for (let i = 1; i < points.length; i++) at.push(at[i - 1] + length(points[i - 1], points[i]));
  let i = 0;
  return Array.from({ length: INK_POINTS }, (_, k) => {
    const target = (at[at.length - 1] * k) / (INK_POINTS - 1);
    while (i < points.length - 2 && at[i + 1] < target) i++;
    const t = (target - at[i]) / (at[i + 1] - at[i] || 1);
    return points[i].map((value, axis) => value + t * (points[i + 1][axis] - value));
  });
}

function distanceToPiece([x, y], [ax, ay], [bx, by]) {
  const [dx, dy] = [bx - ax, by - ay];
  const t = ((x - ax) * dx + (y - ay) * dy) / (dx * dx + dy * dy || 1);
  const at = Math.max(0, Math.min(1, t));
  return Math.hypot(x - ax - at * dx, y - ay - at * dy);
}

/** Mean distance of the ink from the outline, percent of a longer side of 200. */
function meanDistance(ink, outline) {
  const distance = (p) => {
    let least = Infinity;
    for (let i = 1; i < outline.length; i++) {
      least = Math.min(least, distanceToPiece(p, outline[i - 1], outline[i]));
    }
    return least;
  };
  return even(ink).reduce((sum, p) => sum + distance(p), 0) / INK_POINTS / 2;
}

const cornersOf = (path) => path.filter((_, i) => i % EDGE_POINTS === 0);
const lean = (angle) => Math.abs(angle - 90 * Math.round(angle / 90));

/** The largest lean of an edge. */
function worstLean(corners) {
  return Math.max(...corners.map((c, i) => lean(degrees(c, corners[(i + 1) % corners.length]))));
}

/** Mean lean of the edges, weighted by their lengths. */
function meanLean(corners) {
  let [x, y] = [0, 0];
  corners.forEach((from, i) => {
    const to = corners[(i + 1) % corners.length];
    const angle = (degrees(from, to) * 4 * Math.PI) / 180;
    x += length(from, to) * Math.cos(angle);
    y += length(from, to) * Math.sin(angle);
  });
  return Math.abs((Math.atan2(y, x) * 180) / Math.PI / 4);
}

const isBox = ({ label }) => label === 'square' || label === 'rectangle';
const groupOf = ({ label, orig }) => (label === 'quad' && orig === 'trapezoid' ? orig : label);

function printKinds(rows) {
  const groups = new Map();
  for (const row of rows) {
    const group = groupOf(row.stroke);
    if (!groups.has(group)) groups.set(group, new Map());
    const kinds = groups.get(group);
    kinds.set(kindOf(row.answer), (kinds.get(kindOf(row.answer)) ?? 0) + 1);
  }
  for (const [group, kinds] of [...groups].sort()) {
    const all = [...kinds.values()].reduce((sum, count) => sum + count, 0);
    const list = [...kinds].sort(([, a], [, b]) => b - a);
    const shares = list.map(([kind, count]) => `${kind} ${percent(count, all)}`);
    console.log(`    ${group.padEnd(11)}${String(all).padStart(4)}  ${shares.join(', ')}`);
  }
}

function printLean(rows) {
  const level = rows.filter(
    ({ stroke, plain }) => isBox(stroke) && meanLean(cornersOf(plain)) < LEVEL,
  );
  const leaning = level.filter(({ path }) => worstLean(cornersOf(path)) > LEANING);
  console.log(`  boxes drawn level that lean: ${percent(leaning.length, level.length)}`);
}

function printDistances(family, rows) {
  const distance = (key) => median(rows.map((row) => meanDistance(row.ink, row[key])));
  const values = [distance('path'), distance('plain')].map((value) => value.toFixed(2));
  console.log(
    `  ${family.padEnd(11)} mean distance, median: ${values[0]} %, of the plain fit ${values[1]} %`,
  );
  if (!['triangle', 'quadrangle'].includes(family)) return;
  const isFar = ({ path, plain }) => {
    const from = cornersOf(plain);
    return cornersOf(path).some((corner, i) => length(corner, from[i]) > 2 * FAR);
  };
  console.log(
    `  ${' '.repeat(11)} a corner more than ${FAR} % from the plain fit: ` +
      percent(rows.filter(isFar).length, rows.length),
  );
}

/** The tables; `drawn` are the strokes with a longer side of 200 units. */
function printShapes(strokes, drawn, answers) {
  // Away from the border, where figures would be moved.
  const inks = drawn.map((points) => points.map(([x, y]) => [x + 1000, y + 1000]));
  const paths = probePaths('paths', inks);
  const plain = probePaths('plain', inks);
  const rows = strokes
    .map((stroke, i) => ({
      stroke,
      ink: inks[i],
      answer: answers[i],
      path: paths[i],
      plain: plain[i],
    }))
    .filter(({ stroke, answer }) => familyOf(answer) === stroke.family);
  const of = (family) => rows.filter(({ stroke }) => stroke.family === family);
  console.log('  kinds, by label:');
  printKinds([...of('triangle'), ...of('quadrangle'), ...of('ellipse')]);
  printLean(of('quadrangle'));
  for (const family of ['line', 'angle', 'triangle', 'quadrangle', 'ellipse']) {
    printDistances(family, of(family));
  }
}

module.exports = { printShapes };
