'use strict';

// Verdicts on strokes by scores that were fitted without their writers.

const { createUniform } = require('../ink/random.js');
const { TABLE } = require('./distortions.js');
const { NAMES, Table, fitFamilies, verdictOf } = require('./model.js');
const { tableOf } = require('./probe.js');
const { hash, scaled } = require('./strokes.js');
const { variants } = require('./variants.js');

const FOLDS = 5;
const MAX_DOT = 4; // units; larger dots need another tap size
const OTHER = 4; // columns before the features: extent diagonal travel closed

const writerOf = (stroke) => `${stroke.source}/${stroke.writer ?? stroke.id}`;

/** Distorted copies of a stroke, for tests only. */
function distortedCopies(stroke) {
  const seed = hash(stroke.source + stroke.id);
  const points = scaled(
    stroke.points.map(([x, y]) => [x, y]),
    200,
  );
  return TABLE.slice(1)
    .filter(([, families]) => families.includes(stroke.family))
    .map(([name, , distort]) => ({
      points: distort(points, createUniform(seed)),
      family: stroke.family,
      importance: 0,
      sparseImportance: 0,
      test: name,
    }));
}

/** The table of all strokes, their variants and, if `distorted`, distorted copies for tests. */
function tableFrom(strokes, { distorted = false } = {}) {
  const drawn = strokes.flatMap((stroke) => {
    const list = [...variants(stroke), ...(distorted ? distortedCopies(stroke) : [])];
    return list.map((variant) => ({ ...variant, stroke }));
  });
  const { names, rows } = tableOf(
    'features',
    drawn.map(({ points }) => points),
  );
  const table = drawn.map((variant, i) => {
    const [extent, diagonal, travel, closed] = rows[i];
    return { ...variant, extent, diagonal, travel, closed, features: rows[i].subarray(OTHER) };
  });
  const isFit = ({ closed, family }) => closed >= 0 && family !== 'dot';
  const all = new Table(names.slice(OTHER), table.filter(isFit));
  all.drawn = table.filter((row) => row.original);
  all.dots = all.drawn.filter((row) => row.family === 'dot' && row.extent <= MAX_DOT);
  return all;
}

const isTested = (row) => row.original || row.test !== undefined;

/** Verdicts { row, family, score } on all original strokes and distorted copies, in each split. */
function crossValidate(table, splits, penalty) {
  const verdicts = [];
  for (const split of splits) {
    const foldOf = (row) => hash(`${split}/${writerOf(row.stroke)}`) % FOLDS;
    for (let fold = 0; fold < FOLDS; fold++) {
      const model = fitFamilies(table, (row) => foldOf(row) !== fold, penalty);
      for (const row of table.rows) {
        if (isTested(row) && foldOf(row) === fold) {
          verdicts.push({ row, split, fold, ...verdictOf(model, table, row) });
        }
      }
    }
  }
  return verdicts;
}

module.exports = { FOLDS, NAMES, crossValidate, tableFrom };
