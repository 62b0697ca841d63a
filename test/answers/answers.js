'use strict';

// Answers of both engines for seeded strokes of every figure, as text, so that any change of
// an answer shows. `npm run answers` writes them.

const { createHash } = require('node:crypto');
const fs = require('node:fs');
const path = require('node:path');
const { initScrivo, optimizeAStroke, templates } = require('../../lib/index.js');
const { Beautifier } = require('../../lib/beautifier.js');
const { WISHES } = require('../../lib/figures.js');
const { TABLE } = require('../../research/beautifier/distortions.js');
const { FIGURES, HANDS, drawEach } = require('../../research/ink/index.js');
const { createUniform } = require('../../research/ink/random.js');

const STROKES = 500;
const DISTORTED = 1200;
const WIDTH = 1200;
const HEIGHT = 900;

const SIZES = [25, 60, 120, 250, 500];
const NAMES = Object.keys(HANDS);
/** Every other stroke keeps its slant and its irregularities. */
const BEAUTIFIERS = [
  new Beautifier(),
  new Beautifier({ horizontalVertical: false, regularFigures: false, sensitivity: 0.7 }),
];
/** Taken in turn as well by distorted strokes. */
const MORE_BEAUTIFIERS = [
  ...BEAUTIFIERS,
  new Beautifier({ minSize: 30, tapSize: 14, anchors: ['centre'] }),
  new Beautifier({ figures: ['line', 'quadrangle', 'dot'], insideArea: false, sensitivity: 1 }),
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

/** Distorted strokes of every figure, in turn. */
function drawDistorted() {
  const strokes = drawEach(DISTORTED, { seed: STROKES + 1, optionsOf });
  return strokes.map(({ label, points }, i) => {
    const [name, , distort] = TABLE[(i + lapOf(i)) % TABLE.length];
    const drawn = distort(points, createUniform(i));
    const rest = [WIDTH, HEIGHT, othersOf(drawn, lapOf(i))];
    return { label: `${label}, ${name}`, lap: lapOf(i), rest, stroke: drawn.map(inFractions) };
  });
}

/** All that the beautifier says of a stroke, as one short number. */
function digest({ stroke, lap, rest }, i) {
  const beautifier = MORE_BEAUTIFIERS[(i + lap) % MORE_BEAUTIFIERS.length];
  const answer = beautifier.beautify(stroke, ...rest);
  const wish = [...WISHES.keys()][i % WISHES.size];
  const granted = beautifier.beautifyAs(stroke, wish, ...rest);
  const words = [...describe(answer), ...textOf(answer.alternatives), ...describe(granted)];
  return [createHash('sha256').update(words.join(' ')).digest('hex').slice(0, 8)];
}

/** By the name of the file: what is drawn, and what is written of each stroke. */
const ANSWERS = {
  beautifier: [drawStrokes, beautified],
  wishes: [drawStrokes, granted],
  'template-engine': [drawStrokes, matched],
  distorted: [drawDistorted, digest],
};
const fileOf = (name) => path.join(__dirname, `${name}.txt`);

/** A line for each stroke, for each name. */
function answers() {
  initScrivo(templates);
  return Object.entries(ANSWERS).map(([name, [draw, describeAnswer]]) => {
    const line = (stroke, i) => `${stroke.label}: ${describeAnswer(stroke, i).join(' ')}\n`;
    return [name, draw().map(line).join('')];
  });
}

module.exports = { BEAUTIFIERS, answers, drawStrokes, fileOf };

if (require.main === module) {
  for (const [name, text] of answers()) fs.writeFileSync(fileOf(name), text);
}
