'use strict';

// How the beautifier answers to labelled strokes that are drawn otherwise.
//
//   node research/beautifier/robustness.js STROKES [--without LINE,LINE...]
//
// All figures but dots are scaled to a longer side of 200 units first; dots stay
// as drawn. Distortions are seeded by the stroke, so the table is the same every
// time.

const { TABLE } = require('./distortions.js');
const { probe } = require('./probe.js');
const { generator, hash, readStrokes, scaled } = require('./strokes.js');

const SIDE = 200; // longer side of the strokes that the distortions are for
const LARGEST_DOT = 4;
const FIGURES = ['none', 'dot', 'line', 'angle', 'triangle', 'quadrangle', 'ellipse', 'ellipse'];
const percent = (part, whole) => `${((100 * part) / whole).toFixed(1)} %`.padStart(7);

const answersTo = (strokes) => probe('answers', strokes).map(({ figure }) => FIGURES[figure]);

function extentOf(points) {
  const reach = (k) => {
    const values = points.map((p) => p[k]);
    return Math.max(...values) - Math.min(...values);
  };
  return Math.max(reach(0), reach(1));
}

/** Scaled strokes, without those of `LARGEST_DOT` and more that count as dots. */
function prepare(strokes) {
  return strokes
    .map(({ family, source, id, points }) => {
      const plain = points.map(([x, y]) => [x, y]);
      const drawn = family === 'dot' ? plain : scaled(plain, SIDE);
      return { family, seed: hash(source + id), points: drawn };
    })
    .filter(({ family, points }) => family !== 'dot' || extentOf(points) <= LARGEST_DOT);
}

function printRow(name, strokes, families, distort) {
  const distorts = (stroke) => families.includes(stroke.family);
  const answers = answersTo(
    strokes.map((stroke) =>
      distorts(stroke) ? distort(stroke.points, generator(stroke.seed)) : stroke.points,
    ),
  );
  const right = strokes.filter(({ family }, i) => answers[i] === family).length;
  const touched = strokes.filter(distorts);
  const touchedRight = strokes.filter((s, i) => distorts(s) && answers[i] === s.family).length;
  const each = families.map((family) => {
    const all = strokes.filter((s) => s.family === family).length;
    const good = strokes.filter((s, i) => s.family === family && answers[i] === family).length;
    return `${family} ${percent(good, all).trim()}`;
  });
  console.log(
    `${name.padEnd(32)} ${percent(right, strokes.length)} ` +
      `${percent(touchedRight, touched.length)} of ${touched.length}  ${each.join(', ')}`,
  );
}

function printBackwards(strokes) {
  const there = answersTo(strokes.map(({ points }) => points));
  const back = answersTo(strokes.map(({ points }) => [...points].reverse()));
  const same = there.filter((answer, i) => answer === back[i]).length;
  console.log(`${'backwards, the same answer'.padEnd(32)} ${percent(same, strokes.length)}`);
}

function main() {
  const [file, flag, lines] = process.argv.slice(2);
  if (!file || (flag && flag !== '--without')) {
    throw new Error('usage: node research/beautifier/robustness.js STROKES [--without LINE,LINE...]');
  }
  const without = new Set((lines ?? '').split(',').filter(Boolean).map(Number));
  const strokes = prepare(readStrokes(file).filter((_, line) => !without.has(line)));
  const figures = strokes.filter(({ family }) => family !== 'none');
  console.log(`${'right'.padEnd(31)} all figures  those drawn otherwise`);
  for (const [name, families, distort] of TABLE) printRow(name, figures, families, distort);
  printBackwards(strokes);
}

try {
  main();
} catch (error) {
  console.error(`robustness: ${error.message}`);
  process.exitCode = 1;
}
