'use strict';

// Answers of both engines for seeded strokes of every figure, as text, so that any change of
// an answer shows. `npm run answers` writes them.

const fs = require('node:fs');
const path = require('node:path');
const { initScrivo, optimizeAStroke, templates } = require('../../lib/index.js');
const { Beautifier } = require('../../lib/beautifier.js');
const { WISHES } = require('../../lib/figures.js');
const { FIGURES, HANDS, drawEach } = require('../../research/ink/index.js');

const STROKES = 500;
const WIDTH = 1200;
const HEIGHT = 900;

const SIZES = [25, 60, 120, 250, 500];
const NAMES = Object.keys(HANDS);
/** Every other stroke keeps its slant and its irregularities. */
const BEAUTIFIERS = [
  new Beautifier(),
  new Beautifier({ horizontalVertical: false, regularFigures: false, sensitivity: 0.7 }),
];

/** How often every figure has been drawn before. */
const lapOf = (i) => Math.floor(i / Object.keys(FIGURES).length);

const optionsOf = (i) => ({
  size: SIZES[(i + lapOf(i)) % SIZES.length],
  at: { x: 100 + ((i * 37) % 1000), y: 100 + ((i * 53) % 700) },
  hand: HANDS[NAMES[lapOf(i) % NAMES.length]],
});

const inFractions = ([x, y, force]) => ({ x: x / WIDTH, y: y / HEIGHT, force: force ?? 0 });

/** Half of the strokes have a small one beside their start, or beside both ends. */
function othersOf(points, lap) {
  const besides = ([x, y]) => [0, 1, 2].map((k) => [x + 2 * k, y + 5 + 7 * (lap % 5)]);
  const ends = [[points[0]], [points[0], points.at(-1)], [], []][lap % 4];
  return ends.map((end) => besides(end).map(inFractions));
}

function drawStrokes() {
  return drawEach(STROKES, { seed: 1, optionsOf }).map(({ label, points }, i) => ({
    label,
    lap: lapOf(i),
    rest: [WIDTH, HEIGHT, othersOf(points, lapOf(i))],
    stroke: points.map(inFractions),
  }));
}

/** Names and numbers of a value, in the order of its fields. */
function textOf(value) {
  if (typeof value === 'number') return [value.toFixed(Math.abs(value) < 7 ? 6 : 3)];
  if (typeof value === 'string') return [value];
  return Object.values(value).flatMap(textOf);
}

const describe = ({ reason, confidence, figure }) => [
  confidence.toFixed(4),
  ...(figure === null ? [reason] : textOf(figure)),
];

function beautified({ stroke, lap, rest }, i) {
  return describe(BEAUTIFIERS[(i + lap) % 2].beautify(stroke, ...rest));
}

/** Every stroke as a figure of some kind, whatever was drawn. */
function granted({ stroke, lap, rest }, i) {
  const wishes = [...WISHES.keys()];
  const wish = wishes[(i + lap) % wishes.length];
  return [wish, ...describe(BEAUTIFIERS[lap % 2].beautifyAs(stroke, wish, ...rest))];
}

/** The code, and the points at which edges of a figure begin. */
function matched({ stroke, rest }) {
  const { path: points, type } = optimizeAStroke(stroke, ...rest);
  const isStart = (point, k) => type !== 0 && (k % 21 === 0 || k === points.length - 1);
  const inUnits = ({ x, y }) => [x * WIDTH, y * HEIGHT];
  return [String(type), ...textOf(points.filter(isStart).map(inUnits))];
}

const ENGINES = { beautifier: beautified, wishes: granted, 'template-engine': matched };
const fileOf = (name) => path.join(__dirname, `${name}.txt`);

/** A line for each stroke, for each name. */
function answers() {
  initScrivo(templates);
  const strokes = drawStrokes();
  const lines = (describeAnswer) =>
    strokes.map((stroke, i) => `${stroke.label}: ${describeAnswer(stroke, i).join(' ')}\n`);
  return Object.entries(ENGINES).map(([name, answer]) => [name, lines(answer).join('')]);
}

module.exports = { BEAUTIFIERS, answers, drawStrokes, fileOf };

if (require.main === module) {
  for (const [name, text] of answers()) fs.writeFileSync(fileOf(name), text);
}
