'use strict';

// What happens to everyday strokes at their natural size, by the smallest size
// that a host lets figures have.
//
//   node research/beautifier/everyday.js STROKES
//
// STROKES need no labels: one JSON object a line with `points`.

const { probe } = require('./probe.js');
const { percent } = require('./report.js');
const { boxOf, readStrokes } = require('./strokes.js');

const TAP = 4; // units, the default `tapSize`
const SIZES = [0, 20, 40]; // `minSize`
const FIGURES = ['none', 'dot', 'line', 'angle', 'triangle', 'quadrangle', 'ellipse', 'ellipse'];

function main() {
  const [file] = process.argv.slice(2);
  if (!file) throw new Error('usage: node research/beautifier/everyday.js STROKES');
  const drawn = readStrokes(file).map(({ points }) => points);
  const strokes = probe('answers', drawn).map(({ figure }, i) => ({
    answer: FIGURES[figure],
    extent: boxOf(drawn[i]).extent,
  }));
  const share = (holds) => percent(strokes.filter(holds).length, strokes.length);
  const large = share(({ answer, extent }) => answer === 'dot' && extent > TAP);
  console.log(`${strokes.length} strokes; dots larger than ${TAP} units: ${large}`);
  const families = [...new Set(FIGURES)].slice(1);
  console.log(`minSize  changed ${families.map((name) => name.padStart(10)).join(' ')}`);
  for (const size of SIZES) {
    const changes = ({ answer, extent }) => answer !== 'none' && extent >= size;
    const each = families.map((name) => share((s) => changes(s) && s.answer === name).padStart(10));
    console.log(`${String(size).padStart(7)}  ${share(changes)} ${each.join(' ')}`);
  }
}

try {
  main();
} catch (error) {
  console.error(`everyday: ${error.message}`);
  process.exitCode = 1;
}
