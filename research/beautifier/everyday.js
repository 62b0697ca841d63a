'use strict';

// What happens to everyday strokes at their natural size, by `minSize`.
//
//   node research/beautifier/everyday.js STROKES
//
// STROKES need no labels: one JSON object a line with `points`.

const { readArguments } = require('./arguments.js');
const { familyOf } = require('./names.js');
const { probe } = require('./probe.js');
const { percent, percentCell } = require('./report.js');
const { extentOf, readStrokes } = require('./strokes.js');

const TAP = 4; // units, the default `tapSize`
const SIZES = [0, 20, 40]; // `minSize`
const FAMILIES = ['dot', 'line', 'angle', 'triangle', 'quadrangle', 'ellipse'];

function main() {
  const { files } = readArguments('node research/beautifier/everyday.js STROKES', {});
  const drawn = readStrokes(files[0]).map(({ points }) => points);
  const strokes = probe('answers', drawn).map((answer, i) => ({
    family: familyOf(answer),
    extent: extentOf(drawn[i]),
  }));
  const count = (holds) => strokes.filter(holds).length;
  const large = count(({ family, extent }) => family === 'dot' && extent > TAP);
  console.log(
    `${strokes.length} strokes; dots larger than ${TAP} units: ${percent(large, strokes.length)}`,
  );
  console.log(`minSize  changed ${FAMILIES.map((name) => name.padStart(10)).join(' ')}`);
  for (const size of SIZES) {
    const share = (families) =>
      percentCell(
        count(({ family, extent }) => families.includes(family) && extent >= size),
        strokes.length,
      );
    const each = FAMILIES.map((name) => share([name]).padStart(10));
    console.log(`${String(size).padStart(7)}  ${share(FAMILIES)} ${each.join(' ')}`);
  }
}

try {
  main();
} catch (error) {
  console.error(`everyday: ${error.message}`);
  process.exitCode = 1;
}
