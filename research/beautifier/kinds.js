'use strict';

// Learns what the kinds of quadrangles cost, and prints
// subproject/scrivo/Beautifier/figures/QuadrangleKinds.inc.
//
//   node research/beautifier/kinds.js STROKES [--table]
//
// With --table it prints, instead, what comes out on strokes of writers that took
// no part: five folds, no writer in two of them where writers are known.

const { readArguments } = require('./arguments.js');
const { minimise } = require('./minimise.js');
const { familyOf } = require('./names.js');
const { probe } = require('./probe.js');
const { percent } = require('./report.js');
const { hash, readStrokes, scaled } = require('./strokes.js');

// In the order of the enumeration FourEdges.
const KINDS = [
  'SQUARE',
  'STANDING_SQUARE',
  'RECTANGLE',
  'RHOMBUS',
  'PARALLELOGRAM',
  'KITE',
  'ISOSCELES_TRAPEZOID',
  'TRAPEZOID',
  'ANY_QUADRANGLE',
];

/** What each label is to become. */
const MEANT = {
  square: ['SQUARE'],
  rectangle: ['RECTANGLE'],
  diamond: ['RHOMBUS', 'STANDING_SQUARE'],
  trapezoid: ['ISOSCELES_TRAPEZOID', 'TRAPEZOID'],
  parallelogram: ['PARALLELOGRAM'],
};

// A rhombus whose ink strays little from a square, percent of the size, is one:
// no label says so, but a square that stands on a corner is no rhombus.
const NEARLY_SQUARE = 1.5;

/** And what counts as right when the answers are counted. */
const RIGHT = {
  square: ['SQUARE', 'STANDING_SQUARE'],
  rectangle: ['RECTANGLE'],
  diamond: ['RHOMBUS', 'SQUARE', 'STANDING_SQUARE'],
  trapezoid: ['ISOSCELES_TRAPEZOID', 'TRAPEZOID'],
  parallelogram: ['PARALLELOGRAM'],
};

// Kinds are rare among strokes as the collections have it, not as people draw:
// labels weigh as the roots of their numbers, times this.
const WEIGHT = { square: 1.8, diamond: 0.7, quad: 0 };

// What a corner that moves by a percent of the longer side costs, up to 20.
const MOVE = 0.035;

// Strokes are upright or nearly so; turned copies keep the charge for a lean
// from outweighing the shape.
const TURNS = [15, 30, 45]; // degrees
const TURNED_WEIGHT = 0.3;

const label = (stroke) => {
  if (stroke.label !== 'quad') return stroke.label;
  return { trapezoid: 'trapezoid', data: 'parallelogram' }[stroke.orig] ?? 'quad';
};

/** Strokes with a loop, with their candidates: kind, errors, lean, move. */
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
          kind: Number(name.split(':')[1]),
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
    .map((row) => {
      const meant = (MEANT[row.label] ?? []).map((name) => KINDS.indexOf(name));
      return { ...row, meant, weight: 1 };
    });
}

/** A copy turned by `degrees`: leans change, shapes and moves do not. */
function turned(row, degrees) {
  const lean = (value) => Math.abs(value + degrees - 90 * Math.round((value + degrees) / 90));
  const candidates = row.candidates.map((c) => ({ ...c, lean: lean(c.lean) }));
  const meant = row.label === 'square' ? [0, 1] : row.meant;
  return { ...row, candidates, meant, weight: TURNED_WEIGHT };
}

/** Turned by half a right angle, squares and diamonds are each other. */
const mayTurn = (row, degrees) =>
  row.meant.length > 0 && (degrees < 45 || !['square', 'diamond'].includes(row.label));

// The most that a lean costs: of twenty figures, e to the 3, one is meant to lean.
// The strokes do not tell, hardly one of them does.
const LEAN = 3;

// Parameters: logarithms of both tolerances (percent) and of the lean that costs
// half of the most (degrees), then the freedoms from RECTANGLE on.
const START = [2, 0, 2, 2, 3, 4, 6, 6, 6, 9];
const FREEDOMS = 3;

function freedom(p, kind) {
  const of = (name) => p[FREEDOMS + KINDS.indexOf(name) - KINDS.indexOf('RECTANGLE')];
  switch (KINDS[kind]) {
    case 'SQUARE':
      return 0;
    case 'STANDING_SQUARE':
      return of('RHOMBUS') - (NEARLY_SQUARE / Math.exp(p[1])) ** 2;
    case 'KITE': // no stroke is labelled so
      return of('TRAPEZOID');
    default:
      return of(KINDS[kind]);
  }
}

function cost(p, { kind, edges, directions, lean }) {
  const half = Math.exp(p[2]);
  const charge = (LEAN * lean ** 2) / (lean ** 2 + half ** 2);
  const errors = (edges / Math.exp(p[0])) ** 2 + (directions / Math.exp(p[1])) ** 2;
  return freedom(p, kind) + Math.min(errors, 80) + charge;
}

/** Loss of one stroke: that its kind is missed, and how far corners move. */
function lossOf(p, row) {
  const costs = row.candidates.map((candidate) => cost(p, candidate));
  const least = Math.min(...costs);
  let all = 0;
  let meant = 0;
  let move = 0;
  row.candidates.forEach((candidate, i) => {
    const share = Math.exp(least - costs[i]);
    all += share;
    meant += row.meant.includes(candidate.kind) ? share : 0;
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
      if (!counts.has(row.label)) counts.set(row.label, { all: 0, far: 0, kinds: {} });
      const count = counts.get(row.label);
      count.all++;
      count.far += chosen.move > 8 ? 1 : 0;
      count.kinds[KINDS[chosen.kind]] = (count.kinds[KINDS[chosen.kind]] ?? 0) + 1;
    }
  }
  for (const [name, { all, far, kinds }] of [...counts].sort()) {
    const right = (RIGHT[name] ?? []).reduce((sum, kind) => sum + (kinds[kind] ?? 0), 0);
    const share = RIGHT[name] ? `${percent(right, all)} right` : '';
    console.log(
      `${name.padEnd(14)}${String(all).padStart(4)}  ${share.padEnd(13)} ` +
        `a corner moved by more than 8 %: ${percent(far, all)}  ` +
        JSON.stringify(kinds),
    );
  }
}

function print(p) {
  const share = (value) => (Math.exp(value) / 100).toFixed(4);
  const freedoms = KINDS.map((name, kind) => [name, freedom(p, kind)])
    .slice(1)
    .sort(([, a], [, b]) => a - b);
  console.log('// Made by `node research/beautifier/kinds.js STROKES`: do not edit.\n');
  console.log('// Hands err more in the lengths of edges than in their directions.');
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
