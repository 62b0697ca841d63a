'use strict';

// Learns the costs of the forms of quadrangles and prints
// subproject/scrivo/Beautifier/figures/QuadrangleKinds.inc.
//
//   node research/beautifier/kinds.js STROKES [--table]
//
// With --table it prints how often the chosen kind is right instead, by five-fold
// cross-validation; strokes of one writer, where known, are in the same fold.

const { readArguments } = require('./arguments.js');
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
const NEARLY_SQUARE = 1.5;

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
const WEIGHT = { square: 1.8, diamond: 0.7, quad: 0 };

// Loss for every percent of the longer side by which a corner moves, up to 20.
const MOVE = 0.035;

// Nearly all strokes are upright. Turned copies prevent the charge for leaning from
// outweighing the shape.
const TURNS = [15, 30, 45]; // degrees
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
        .map((name) => ({
          form: name.split(':')[1],
          edges: row[`edges${name}`],
          directions: row[`directions${name}`],
          lean: row[`lean${name}`],
          move: Math.min(row[`moved${name}`], 20),
        }));
      return { stroke: strokes[i], label: label(strokes[i]), candidates, answer: answers[i] };
    })
    .filter(
      ({ candidates, answer }) => candidates[0].edges >= 0 && familyOf(answer) === 'quadrangle',
    )
    .map((row) => ({ ...row, meant: MEANT[row.label] ?? [], weight: 1 }));
}

/** A copy turned by `degrees`: only its leans change. */
function turned(row, degrees) {
  const lean = (value) => Math.abs(value + degrees - 90 * Math.round((value + degrees) / 90));
  const candidates = row.candidates.map((c) => ({ ...c, lean: lean(c.lean) }));
  const meant = row.label === 'square' ? RIGHT.square : row.meant;
  return { ...row, candidates, meant, weight: TURNED_WEIGHT };
}

/** Turned by 45 degrees, squares become diamonds and the other way round. */
const mayTurn = (row, degrees) =>
  row.meant.length > 0 && (degrees < 45 || !['square', 'diamond'].includes(row.label));

// The largest charge for leaning: one figure in twenty, e to the 3, is meant to
// lean. It cannot be learnt: hardly a stroke leans.
const LEAN = 3;

// Parameters: logarithms of both tolerances (percent) and of the lean that is
// charged half of the largest charge (degrees), then these freedoms.
const FREEDOMS = [
  'RECTANGLE',
  'RHOMBUS',
  'PARALLELOGRAM',
  'ISOSCELES_TRAPEZOID',
  'TRAPEZOID',
  'ANY_QUADRANGLE',
];
const START = [2, 0, 2, 2, 3, 4, 6, 6, 9];

function freedom(p, form) {
  const of = (name) => p[START.length - FREEDOMS.length + FREEDOMS.indexOf(name)];
  switch (form) {
    case 'SQUARE':
      return 0;
    case 'STANDING_SQUARE':
      return of('RHOMBUS') - (NEARLY_SQUARE / Math.exp(p[1])) ** 2;
    case 'KITE': // which no label names
      return of('TRAPEZOID');
    default:
      return of(form);
  }
}

function cost(p, { form, edges, directions, lean }) {
  const half = Math.exp(p[2]);
  const charge = (LEAN * lean ** 2) / (lean ** 2 + half ** 2);
  const errors = (edges / Math.exp(p[0])) ** 2 + (directions / Math.exp(p[1])) ** 2;
  return freedom(p, form) + Math.min(errors, 80) + charge;
}

/** The two losses of a stroke: for a wrong form and for corners that move. */
function lossOf(p, row) {
  const costs = row.candidates.map((candidate) => cost(p, candidate));
  const least = Math.min(...costs);
  let all = 0;
  let meant = 0;
  let move = 0;
  row.candidates.forEach((candidate, i) => {
    const share = Math.exp(least - costs[i]);
    all += share;
    meant += row.meant.includes(candidate.form) ? share : 0;
    move += share * candidate.move;
  });
  const miss = row.meant.length > 0 ? -Math.log(meant / all + 1e-12) : 0;
  return [miss, move / all];
}

function learn(rows) {
  const counts = new Map();
  for (const row of rows) counts.set(row.label, (counts.get(row.label) ?? 0) + 1);
  const copies = rows.flatMap((row) => [
    row,
    ...TURNS.filter((degrees) => mayTurn(row, degrees)).map((degrees) => turned(row, degrees)),
  ]);
  const perMove = (MOVE * 10) / Math.sqrt(rows.length);
  const loss = (p) => {
    let sum = 0;
    for (const row of copies) {
      const [miss, move] = lossOf(p, row);
      const weight = (WEIGHT[row.label] ?? 1) / Math.sqrt(counts.get(row.label));
      sum += row.weight * (weight * miss + perMove * move);
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
      if (!counts.has(row.label)) counts.set(row.label, { all: 0, far: 0, forms: {} });
      const count = counts.get(row.label);
      count.all++;
      count.far += chosen.move > 8 ? 1 : 0;
      count.forms[chosen.form] = (count.forms[chosen.form] ?? 0) + 1;
    }
  }
  for (const [name, { all, far, forms }] of [...counts].sort()) {
    const right = (RIGHT[name] ?? []).reduce((sum, form) => sum + (forms[form] ?? 0), 0);
    const share = RIGHT[name] ? `${percent(right, all)} right` : '';
    console.log(
      `${name.padEnd(14)}${String(all).padStart(4)}  ${share.padEnd(13)} ` +
        `a corner moved by more than 8 %: ${percent(far, all)}  ` +
        JSON.stringify(forms),
    );
  }
}

function print(p) {
  const share = (value) => (Math.exp(value) / 100).toFixed(4);
  const freedoms = ['STANDING_SQUARE', 'KITE', ...FREEDOMS]
    .map((form) => [form, freedom(p, form)])
    .sort(([, a], [, b]) => a - b);
  console.log('// Made by `node research/beautifier/kinds.js STROKES`: do not edit.\n');
  console.log('// Edges are drawn less accurately in length than in direction.');
  console.log(`constexpr double EDGES = ${share(p[0])};`);
  console.log(`constexpr double DIRECTIONS = ${share(p[1])};`);
  const half = (Math.exp(p[2]) * Math.PI) / 180;
  console.log(`constexpr double LEAN = ${LEAN.toFixed(1)};`);
  console.log(`constexpr double HALF_LEAN = ${half.toFixed(3)};`);
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
