'use strict';

// The beautifier's answers for seeded strokes of every figure, as text, so that any change
// of an answer shows. `npm run answers` writes them to answers.txt.

const fs = require('node:fs');
const path = require('node:path');
const { Beautifier } = require('../../lib/beautifier.js');
const { FIGURES, HANDS, drawEach } = require('../../research/ink/index.js');

const FILE = path.join(__dirname, 'answers.txt');
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

/** Names and numbers of a figure, in the order of its fields. */
function numbersOf(value) {
  if (typeof value === 'number') return [value.toFixed(Math.abs(value) < 7 ? 4 : 1)];
  if (typeof value === 'string') return [value];
  return Object.values(value).flatMap(numbersOf);
}

function describe({ label, points }, beautifier, others) {
  const place = ([x, y]) => ({ x: x / WIDTH, y: y / HEIGHT });
  const { reason, confidence, figure } = beautifier.beautify(
    points.map(place),
    WIDTH,
    HEIGHT,
    others.map((other) => other.points.map(place)),
  );
  const answer = figure === null ? [reason] : numbersOf(figure);
  return [`${label}:`, confidence.toFixed(4), ...answer].join(' ');
}

/** One line a stroke. Some have a small one at their start, to which lines may snap. */
function answers() {
  const strokes = drawEach(STROKES, { seed: 1, optionsOf });
  const lines = strokes.map((stroke, i) => {
    const [x, y] = stroke.points[0];
    const beside = { points: [0, 1, 2].map((k) => [x + 2 * k, y + 5]) };
    return describe(stroke, BEAUTIFIERS[(i + lapOf(i)) % 2], lapOf(i) % 3 === 0 ? [beside] : []);
  });
  return `${lines.join('\n')}\n`;
}

module.exports = { FILE, answers };

if (require.main === module) fs.writeFileSync(FILE, answers());
