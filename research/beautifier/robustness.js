'use strict';

// Scores the beautifier's answers on distorted copies of labelled strokes.
//
//   node research/beautifier/robustness.js STROKES [--without LINE,LINE...]
//
// All figures but dots are scaled to a longer side of 200 units first; dots stay
// as drawn. Distortions are seeded by the stroke, so the table is reproducible.

const { createUniform } = require('../ink/random.js');
const { WITHOUT, readArguments } = require('./arguments.js');
const { TABLE } = require('./distortions.js');
const { familyOf } = require('./names.js');
const { probe } = require('./probe.js');
const { percent, percentCell } = require('./report.js');
const { extentOf, hash, readStrokes, scaled } = require('./strokes.js');

const SIDE = 200; // longer side of the strokes that the distortions are for
const MAX_DOT = 4;

const answersTo = (strokes) => probe('answers', strokes).map(familyOf);

/** Scaled strokes, without dots of more than `MAX_DOT` units. */
function prepare(strokes) {
  return strokes
    .map(({ family, source, id, points }) => {
      const plain = points.map(([x, y]) => [x, y]);
      const drawn = family === 'dot' ? plain : scaled(plain, SIDE);
      return { family, seed: hash(source + id), points: drawn };
    })
    .filter(({ family, points }) => family !== 'dot' || extentOf(points) <= MAX_DOT);
}

function printRow(name, strokes, families, distort) {
  const distorts = (stroke) => families.includes(stroke.family);
  const answers = answersTo(
    strokes.map((stroke) =>
      distorts(stroke) ? distort(stroke.points, createUniform(stroke.seed)) : stroke.points,
    ),
  );
  const right = strokes.filter(({ family }, i) => answers[i] === family).length;
  const touched = strokes.filter(distorts);
  const touchedRight = strokes.filter((s, i) => distorts(s) && answers[i] === s.family).length;
  const each = families.map((family) => {
    const all = strokes.filter((s) => s.family === family).length;
    const good = strokes.filter((s, i) => s.family === family && answers[i] === family).length;
    return `${family} ${percent(good, all)}`;
  });
  console.log(
    `${name.padEnd(32)} ${percentCell(right, strokes.length)} ` +
      `${percentCell(touchedRight, touched.length)} of ${touched.length}  ${each.join(', ')}`,
  );
}

function printBackwards(strokes) {
  const there = answersTo(strokes.map(({ points }) => points));
  const back = answersTo(strokes.map(({ points }) => [...points].reverse()));
  const same = there.filter((answer, i) => answer === back[i]).length;
  console.log(`${'backwards, the same answer'.padEnd(32)} ${percentCell(same, strokes.length)}`);
}

const USAGE = 'node research/beautifier/robustness.js STROKES [--without LINE,LINE...]';

function main() {
  const { files, without } = readArguments(USAGE, WITHOUT);
  const strokes = prepare(readStrokes(files[0]).filter((_, line) => !without.has(line)));
  const figures = strokes.filter(({ family }) => family !== 'none');
  console.log(`${'right'.padEnd(31)} all figures  those distorted`);
  for (const [name, families, distort] of TABLE) printRow(name, figures, families, distort);
  printBackwards(strokes);
}

try {
  main();
} catch (error) {
  console.error(`robustness: ${error.message}`);
  process.exitCode = 1;
}
