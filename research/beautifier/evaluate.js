'use strict';

// Scores the beautifier's answers on labelled strokes.
//
//   node research/beautifier/evaluate.js STROKES [--without LINE,LINE...]
//
// Twice: with every stroke but dots scaled to a longer side of 200 units, and at
// its natural size; then the kinds of figures and how far they lie from the ink.

const { probe } = require('./probe.js');
const { printShapes } = require('./shapes.js');
const { bins } = require('./reliability.js');
const { readStrokes, scaled } = require('./strokes.js');

const FIGURES = ['none', 'dot', 'line', 'angle', 'triangle', 'quadrangle', 'ellipse', 'ellipse'];
const percent = (part, whole) => `${((100 * part) / whole).toFixed(2)} %`;

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
      `  ${family.padEnd(14)} recall  ${percent(right(list), list.length)} of ${list.length}`,
    );
  }
  console.log(
    `  ${'all figures'.padEnd(14)} recall  ${percent(right(figures), figures.length)} of ${figures.length}`,
  );
  const none = rows.filter((row) => row.family === 'none');
  const changed = (list) => list.filter((row) => row.answer !== 'none').length;
  console.log(
    `  ${'no figure'.padEnd(14)} changed ${percent(changed(none), none.length)} of ${none.length}`,
  );
  for (const [label, list] of group(none, 'label')) {
    console.log(
      `    ${label.padEnd(14)} changed ${percent(changed(list), list.length)} of ${list.length}`,
    );
  }
  const hand = none.filter((row) => row.label === 'handwriting');
  const dots = hand.filter((row) => row.answer === 'dot').length;
  console.log(`  handwriting taken for a dot: ${percent(dots, hand.length)}`);
}

function main() {
  const [file, flag, lines] = process.argv.slice(2);
  if (!file || (flag && flag !== '--without')) {
    throw new Error('usage: node research/beautifier/evaluate.js STROKES [--without LINE,LINE...]');
  }
  const without = new Set((lines ?? '').split(',').filter(Boolean).map(Number));
  const strokes = readStrokes(file).filter((_, line) => !without.has(line));
  for (const natural of [false, true]) {
    const drawn = strokes.map(({ family, points }) =>
      natural || family === 'dot' ? points : scaled(points, 200),
    );
    const answers = probe('answers', drawn);
    const rows = strokes.map(({ family, label }, i) => ({
      family,
      label,
      answer: FIGURES[answers[i].figure],
      confidence: answers[i].confidence,
    }));
    print(natural ? 'natural size' : 'longer side 200 units', rows);
    if (!natural) {
      console.log('  confidence of the answers and how many of them are right:');
      const table = bins(
        rows.map((row) => ({ confidence: row.confidence, right: row.answer === row.family })),
      );
      for (const bin of table) {
        console.log(`    ${bin.confidence.toFixed(2)}  ${percent(bin.right, 1)} of ${bin.count}`);
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
