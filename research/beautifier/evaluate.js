'use strict';

// Scores the beautifier's answers on labelled strokes.
//
//   node research/beautifier/evaluate.js STROKES [--without LINE,LINE...]
//
// Twice: with every stroke but dots scaled to a longer side of 200 units, and at
// its natural size; then the kinds of figures and how far they lie from the ink.
// Dots of more than 4 units are those of a device with small units: they are
// judged as with a `tapSize` of 14, which is the same as scaling them, and apart.

const { WITHOUT, readArguments } = require('./arguments.js');
const { familyOf } = require('./names.js');
const { probe } = require('./probe.js');
const { printShapes } = require('./shapes.js');
const { bins } = require('./reliability.js');
const { percent } = require('./report.js');
const { extentOf, readStrokes, scaled } = require('./strokes.js');

const TAP = 4; // units, the default `tapSize`
const LARGE_TAP = 14;

const share = (part, whole) => percent(part, whole, 2);

function group(rows, key) {
  const groups = new Map();
  for (const row of rows) {
    const name = row[key];
    if (!groups.has(name)) groups.set(name, []);
    groups.get(name).push(row);
  }
  return [...groups].sort(([a], [b]) => (a < b ? -1 : 1));
}

function print(title, rows) {
  console.log(`\n${title}`);
  const figures = rows.filter((row) => row.family !== 'none');
  const right = (list) => list.filter((row) => row.answer === row.family).length;
  for (const [family, list] of group(figures, 'family')) {
    console.log(
      `  ${family.padEnd(14)} recall  ${share(right(list), list.length)} of ${list.length}`,
    );
  }
  console.log(
    `  ${'all figures'.padEnd(14)} recall  ${share(right(figures), figures.length)} of ${figures.length}`,
  );
  const none = rows.filter((row) => row.family === 'none');
  const changed = (list) => list.filter((row) => row.answer !== 'none').length;
  console.log(
    `  ${'no figure'.padEnd(14)} changed ${share(changed(none), none.length)} of ${none.length}`,
  );
  for (const [label, list] of group(none, 'label')) {
    console.log(
      `    ${label.padEnd(14)} changed ${share(changed(list), list.length)} of ${list.length}`,
    );
  }
  const hand = none.filter((row) => row.label === 'handwriting');
  const dots = hand.filter((row) => row.answer === 'dot').length;
  console.log(`  handwriting taken for a dot: ${share(dots, hand.length)}`);
}

function printLargeDots(strokes) {
  const drawn = strokes.map(({ points }) => points.map((p) => p.map((v) => (TAP / LARGE_TAP) * v)));
  const right = probe('answers', drawn).filter((answer) => familyOf(answer) === 'dot').length;
  console.log(`dots of more than ${TAP} units, with a tap size of ${LARGE_TAP}:`);
  console.log(`  ${right} right of ${strokes.length}`);
}

function printConfidence(rows) {
  console.log('  confidence of the answers and how many of them are right:');
  const table = bins(
    rows.map(({ confidence, answer, family }) => ({ confidence, right: answer === family })),
  );
  for (const { confidence, right, count } of table) {
    console.log(`    ${confidence.toFixed(2)}  ${share(right, 1)} of ${count}`);
  }
}

/** Points of the strokes at a longer side of 200 units; dots stay as drawn. */
const scaledOf = (strokes) =>
  strokes.map(({ family, points }) => (family === 'dot' ? points : scaled(points, 200)));

const USAGE = 'node research/beautifier/evaluate.js STROKES [--without LINE,LINE...]';

function main() {
  const { files, without } = readArguments(USAGE, WITHOUT);
  const all = readStrokes(files[0]).filter((_, line) => !without.has(line));
  const isLarge = ({ family, points }) => family === 'dot' && extentOf(points) > TAP;
  const strokes = all.filter((stroke) => !isLarge(stroke));
  printLargeDots(all.filter(isLarge));
  for (const natural of [false, true]) {
    const drawn = natural ? strokes.map(({ points }) => points) : scaledOf(strokes);
    const answers = probe('answers', drawn);
    const rows = strokes.map(({ family, label }, i) => ({
      family,
      label,
      answer: familyOf(answers[i]),
      confidence: answers[i].confidence,
    }));
    print(natural ? 'natural size' : 'longer side 200 units', rows);
    if (!natural) {
      printConfidence(rows);
      printShapes(strokes, drawn, answers);
    }
  }
}

/** Prints kinds and distances of all figures in the files. */
function printShapesOf(files) {
  const strokes = files.flatMap(readStrokes).filter(({ family }) => family !== 'none');
  const drawn = scaledOf(strokes);
  printShapes(strokes, drawn, probe('answers', drawn));
}

if (require.main === module) {
  try {
    main();
  } catch (error) {
    console.error(`evaluate: ${error.message}`);
    process.exitCode = 1;
  }
}

module.exports = { printShapesOf };
