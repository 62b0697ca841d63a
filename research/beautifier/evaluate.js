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

const USAGE = 'node research/beautifier/evaluate.js STROKES [--without LINE,LINE...]';

function main() {
  const { files, without } = readArguments(USAGE, WITHOUT);
  const all = readStrokes(files[0]).filter((_, line) => !without.has(line));
  const isLarge = ({ family, points }) => family === 'dot' && extentOf(points) > TAP;
  const strokes = all.filter((stroke) => !isLarge(stroke));
  printLargeDots(all.filter(isLarge));
  for (const natural of [false, true]) {
    const drawn = strokes.map(({ family, points }) =>
      natural || family === 'dot' ? points : scaled(points, 200),
    );
    const answers = probe('answers', drawn);
    const rows = strokes.map(({ family, label }, i) => ({
      family,
      label,
      answer: familyOf(answers[i]),
      confidence: answers[i].confidence,
    }));
    print(natural ? 'natural size' : 'longer side 200 units', rows);
    if (!natural) {
      console.log('  confidence of the answers and how many of them are right:');
      const table = bins(
        rows.map((row) => ({ confidence: row.confidence, right: row.answer === row.family })),
      );
      for (const bin of table) {
        console.log(`    ${bin.confidence.toFixed(2)}  ${share(bin.right, 1)} of ${bin.count}`);
      }
      printShapes(strokes, drawn, answers);
    }
  }
}

try {
  main();
} catch (error) {
  console.error(`evaluate: ${error.message}`);
  process.exitCode = 1;
}
