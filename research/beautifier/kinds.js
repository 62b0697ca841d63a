'use strict';

// Learns the costs of the forms of quadrangles and prints
// subproject/scrivo/Beautifier/figures/QuadrangleKinds.inc.
//
//   node research/beautifier/kinds.js STROKES [--table]
//
// With --table it prints how often the chosen kind is right instead, by five-fold
// cross-validation; strokes of one writer, where known, are in the same fold.

const { readArguments } = require('./arguments.js');
const { sigmoid } = require('./learn.js');
const { minimise } = require('./minimise.js');
const { familyOf } = require('./names.js');
const { probe } = require('./probe.js');
const { percent } = require('./report.js');
const { hash, readStrokes, scaled } = require('./strokes.js');

/** The forms that each label is trained towards. */
const MEANT = {
  square: ['SQUARE'],
  rectangle: ['RECTANGLE'],
  diamond: ['RHOMBUS', 'STANDING_SQUARE'],
  trapezoid: ['ISOSCELES_TRAPEZOID', 'TRAPEZOID'],
  parallelogram: ['PARALLELOGRAM'],
};

// A rhombus whose ink lies this close to a square, percent of the size, becomes
// one. The labels do not distinguish rhombuses from squares on a corner.
const NEARLY_SQUARE = 2;

/** The forms that count as right in the table. */
const RIGHT = {
  square: ['SQUARE', 'STANDING_SQUARE'],
  rectangle: ['RECTANGLE'],
  diamond: ['RHOMBUS', 'SQUARE', 'STANDING_SQUARE'],
  trapezoid: ['ISOSCELES_TRAPEZOID', 'TRAPEZOID'],
  parallelogram: ['PARALLELOGRAM'],
};

// How frequent a label is depends on the collections, not on what people draw: its
// strokes together weigh the square root of their number, times this.
const WEIGHT = { square: 4.5, diamond: 1.7, quad: 0 };

// Loss for a corner that moves further than FAR percent of the longer side, and how
// gradually it sets in.
const MOVED = 1.3;
const FAR = 7.5;
const SOFTNESS = 0.7;

// Loss for a box that is not placed level though it was drawn so: it leaned less than
// this, degrees. Larger leans are not placed level at all.
const TILTED = 0.55;
const MAX_LEAN = 10;
const BOXES = ['square', 'rectangle'];
const MEANT_LEVEL = ['SQUARE', 'RECTANGLE'];

// Nearly all strokes are upright. Copies that cannot be placed level prevent the
// charge for leaning from outweighing the shape.
const TURNED_WEIGHT = 0.3;

const label = (stroke) => {
  if (stroke.label !== 'quad') return stroke.label;
  return { trapezoid: 'trapezoid', data: 'parallelogram' }[stroke.orig] ?? 'quad';
};

/** Strokes that are answered with a quadrangle, each with its candidates. */
function read(file) {
  const strokes = readStrokes(file).filter((stroke) => stroke.family === 'quadrangle');
  const drawn = strokes.map(({ points }) => scaled(points, 200));
  const answers = probe('answers', drawn);
  return probe('kinds', drawn)
    .map((row, i) => {
      const candidates = Object.keys(row)
        .filter((name) => name.startsWith('edges'))
        .map((name) => name.slice('edges'.length))
        .flatMap((name) => {
          const form = name.split(':')[1];
          const [edges, directions] = [row[`edges${name}`], row[`directions${name}`]];
          const [move, lean] = [row[`move${name}`], row[`lean${name}`]];
          const asDrawn = { form, edges, directions, move, lean: null };
          const level = { ...asDrawn, move: row[`levelMove${name}`], lean };
          return lean < 0 ? [asDrawn] : [asDrawn, level];
        });
      return { stroke: strokes[i], label: label(strokes[i]), candidates, answer: answers[i] };
    })
    .filter(
      ({ candidates, answer }) => candidates[0].edges >= 0 && familyOf(answer) === 'quadrangle',
    )
    .map((row) => ({ ...row, meant: MEANT[row.label] ?? [], weight: 1 }));
}

/** A copy that is turned too far to be placed level. */
const turned = (row) => ({
  ...row,
  candidates: row.candidates.filter(({ lean }) => lean === null),
  meant: row.label === 'square' ? RIGHT.square : row.meant,
  weight: TURNED_WEIGHT,
  isTurned: true,
});

// Charge for a figure that is not placed level: one in fifty, e to the 4, is meant
// to lean. It cannot be learnt: hardly a stroke leans.
const LEANING = 4;

// Parameters: logarithms of the tolerances of edges, directions, moves (percent) and
// leans (degrees), then these freedoms.
const FREEDOMS = ['RECTANGLE', 'RHOMBUS', 'PARALLELOGRAM', 'ISOSCELES_TRAPEZOID', 'TRAPEZOID'];
const START = [2, 0, 2, 2, 2, 3, 4, 6, 0];

function freedom(p, form) {
  const of = (name) => p[START.length - FREEDOMS.length + FREEDOMS.indexOf(name)];
  switch (form) {
    case 'SQUARE':
      return 0;
    case 'STANDING_SQUARE':
      return of('RHOMBUS') - (NEARLY_SQUARE / Math.exp(p[1])) ** 2;
    case 'KITE': // which no label names, with as many parameters
      return of('ISOSCELES_TRAPEZOID') + 1;
    case 'TRAPEZOID': // never less than the form that it contains
      return of('ISOSCELES_TRAPEZOID') + Math.exp(of('TRAPEZOID'));
    case 'ANY_QUADRANGLE': // which no label names
      return freedom(p, 'TRAPEZOID') + 2.5;
    default:
      return of(form);
  }
}

function cost(p, { form, edges, directions, move, lean }) {
  const share = (value, i) => (value / Math.exp(p[i])) ** 2;
  const errors = share(edges, 0) + share(directions, 1);
  const placing = share(move, 2) + (lean === null ? LEANING : share(lean, 3));
  return freedom(p, form) + Math.min(errors + placing, 80);
}

/** Whether edges of a box lean when it becomes this candidate. */
const isTilted = ({ form, lean }) => lean === null || !MEANT_LEVEL.includes(form);

const isLevelBox = ({ label, isTurned, candidates }) =>
  BOXES.includes(label) && !isTurned && candidates.some(({ lean }) => lean !== null);

/** The losses of a stroke: for a wrong form and for how it is placed. */
function lossOf(p, row) {
  const costs = row.candidates.map((candidate) => cost(p, candidate));
  const least = Math.min(...costs);
  let [all, meant, moved, level] = [0, 0, 0, 0];
  row.candidates.forEach((candidate, i) => {
    const share = Math.exp(least - costs[i]);
    all += share;
    meant += row.meant.includes(candidate.form) ? share : 0;
    moved += share * sigmoid((candidate.move - FAR) / SOFTNESS);
    level += isTilted(candidate) ? 0 : share;
  });
  const loss = (share) => -Math.log(share / all + 1e-9);
  const miss = row.meant.length > 0 ? loss(meant) : 0;
  const tilted = isLevelBox(row) ? TILTED * loss(level) : 0;
  return [miss, (MOVED * moved) / all + tilted];
}

function learn(rows) {
  const counts = new Map();
  for (const row of rows) counts.set(row.label, (counts.get(row.label) ?? 0) + 1);
  const copies = rows.flatMap((row) => (row.meant.length > 0 ? [row, turned(row)] : [row]));
  const perPlacing = 10 / Math.sqrt(rows.length);
  const loss = (p) => {
    let sum = 0;
    for (const row of copies) {
      const [miss, placing] = lossOf(p, row);
      const weight = (WEIGHT[row.label] ?? 1) / Math.sqrt(counts.get(row.label));
      sum += row.weight * (weight * miss + perPlacing * placing);
    }
    return sum + 0.02 * p.reduce((all, value, i) => all + (value - START[i]) ** 2, 0);
  };
  return minimise(loss, START);
}

const choose = (p, row) =>
  row.candidates.reduce((best, c) => (cost(p, c) < cost(p, best) ? c : best));

function table(rows) {
  const foldOf = ({ stroke }) => hash(stroke.writer ?? stroke.source + stroke.id) % 5;
  const counts = new Map();
  for (let fold = 0; fold < 5; fold++) {
    const p = learn(rows.filter((row) => foldOf(row) !== fold));
    for (const row of rows.filter((each) => foldOf(each) === fold)) {
      const chosen = choose(p, row);
      if (!counts.has(row.label)) counts.set(row.label, { all: 0, far: 0, tilted: 0, forms: {} });
      const count = counts.get(row.label);
      count.all++;
      count.far += chosen.move > 8 ? 1 : 0;
      count.tilted += isLevelBox(row) && isTilted(chosen) ? 1 : 0;
      count.forms[chosen.form] = (count.forms[chosen.form] ?? 0) + 1;
    }
  }
  for (const [name, { all, far, tilted, forms }] of [...counts].sort()) {
    const right = (RIGHT[name] ?? []).reduce((sum, form) => sum + (forms[form] ?? 0), 0);
    const share = RIGHT[name] ? `${percent(right, all)} right` : '';
    console.log(
      `${name.padEnd(14)}${String(all).padStart(4)}  ${share.padEnd(13)} ` +
        `a corner moved by more than 8 %: ${percent(far, all)}, left tilted: ${percent(tilted, all)}  ` +
        JSON.stringify(forms),
    );
  }
}

function print(p) {
  const share = (value) => (Math.exp(value) / 100).toFixed(4);
  const freedoms = ['STANDING_SQUARE', 'KITE', ...FREEDOMS, 'ANY_QUADRANGLE']
    .map((form) => [form, freedom(p, form)])
    .sort(([, a], [, b]) => a - b);
  console.log('// Made by `node research/beautifier/kinds.js STROKES`: do not edit.\n');
  console.log('// Edges are drawn less accurately in length than in direction.');
  console.log(`constexpr double EDGES = ${share(p[0])};`);
  console.log(`constexpr double DIRECTIONS = ${share(p[1])};`);
  console.log(`constexpr double MOVE = ${share(p[2])};`);
  const radians = (degrees) => ((degrees * Math.PI) / 180).toFixed(4);
  console.log(`constexpr double LEAN = ${radians(Math.exp(p[3]))};`);
  console.log(`constexpr double LEANING = ${LEANING.toFixed(1)};`);
  console.log(`constexpr double MAX_LEAN = ${radians(MAX_LEAN)};`);
  for (const [name, value] of freedoms) {
    console.log(`constexpr double ${name}_FREEDOM = ${value.toFixed(2)};`);
  }
}

const USAGE = 'node research/beautifier/kinds.js STROKES [--table]';

function main() {
  const { files, table: wantsTable } = readArguments(USAGE, { table: { type: 'boolean' } });
  const rows = read(files[0]);
  if (wantsTable) table(rows);
  else print(learn(rows));
}

try {
  main();
} catch (error) {
  console.error(`kinds: ${error.message}`);
  process.exitCode = 1;
}
