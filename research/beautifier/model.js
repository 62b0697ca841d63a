'use strict';

// The scores of the families. Each is the mean of two models, which errs less than
// either: a logistic regression on terms that are chosen by hand, which is smooth, and
// boosted trees over all features, which model interactions of two features. More trees
// correct the scores of sparse strokes.

const { binned, boost, sumOf } = require('./boost.js');
const { dot, logistic, sigmoid } = require('./learn.js');

// Transformations of a feature. `share` terms are used together with the logarithm of
// the same quantity, `square` terms together with the quantity.
const FORMS = {
  AS_IS: (value) => value,
  SHARE: (value) => Math.exp(value),
  SQUARE: (value) => value * value,
};

const terms = (plain, share = '', square = '') => {
  const list = (names, form) =>
    names
      .split(' ')
      .filter(Boolean)
      .map((feature) => ({ feature, form }));
  return [
    ...list(plain + ' SPARSE', 'AS_IS'),
    ...list(share, 'SHARE'),
    ...list(square + ' SPARSE', 'SQUARE'),
  ];
};

const LOOP = 'GAP TRIMMED TAIL COUNTER_BENDS';
const POLYGONS = 'POLYGON3_RMS POLYGON4_RMS POLYGON5_RMS POLYGON6_RMS ELLIPSE_RMS';

const FAMILIES = {
  line: {
    closed: false,
    terms: terms(
      'LINE_RMS LINE_WORST DETOUR TURNING BOW KNOT TWO_RMS THREE_RMS FOUR_RMS ' +
        'ROUGHNESS RETRACED HOOK',
      'LINE_RMS LINE_WORST DETOUR',
      'KNOT',
    ),
  },
  angle: {
    closed: false,
    terms: terms(
      'LINE_RMS LINE_WORST KNOT TWO_RMS TWO_OVER_ONE ' +
        'LEG_WORST LEG_RATIO LEG_DETOUR LEG_TURNING OPENING ' +
        'ROUGHNESS RETRACED HOOK THREE_OVER_TWO VERTEX_INK VERTEX_BEND LEG_FAR',
      'TWO_RMS LEG_WORST LEG_DETOUR VERTEX_INK',
      'KNOT OPENING',
    ),
  },
  triangle: {
    closed: true,
    terms: terms(
      `${LOOP} LONG_TAIL ${POLYGONS} TRIANGLE_WORST TRIANGLE_SIDE TRIANGLE_ANGLE TRIANGLE_GAP ` +
        'TRIANGLE_CORNER TRIANGLE_BEND TRIANGLE_LENGTH TRIANGLE_FAR ROUGHNESS RETRACED OVERLAP',
      'POLYGON3_RMS TRIANGLE_WORST',
      'TRIANGLE_ANGLE TRIANGLE_LENGTH',
    ),
  },
  quadrangle: {
    closed: true,
    terms: terms(
      `${LOOP} SHARPEST_BEND ${POLYGONS} FOUR_OVER_THREE QUADRANGLE_WORST QUADRANGLE_SIDE ` +
        'QUADRANGLE_ANGLE QUADRANGLE_GAP QUADRANGLE_CORNER QUADRANGLE_BEND QUADRANGLE_LENGTH ' +
        'QUADRANGLE_FAR ROUGHNESS RETRACED OVERLAP',
      'GAP TAIL POLYGON4_RMS QUADRANGLE_WORST',
      'QUADRANGLE_ANGLE QUADRANGLE_GAP COUNTER_BENDS QUADRANGLE_LENGTH',
    ),
  },
  ellipse: {
    closed: true,
    terms: terms(
      `${LOOP} SHARPEST_BEND ${POLYGONS} ELLIPSE_WORST ELLIPSE_GAP ` +
        'ELLIPSE_LENGTH ELLIPSE_FAR ELLIPSE_ALONG ELLIPSE_OVER_FOUR ELLIPSE_OVER_SIX CLOSURE_BEND ' +
        'ROUGHNESS RETRACED OVERLAP',
      'GAP TAIL ELLIPSE_RMS ELLIPSE_WORST',
      'ELLIPSE_LENGTH ELLIPSE_ALONG',
    ),
  },
};

const NAMES = Object.keys(FAMILIES);

const CROSSED = 3; // corners that miss one full turn by more: sides that cross, no quadrangle
const TREES = 200; // a family
const SPARSE_TREES = 100; // for sparse strokes, beside these

/** Families whose sparse strokes are mistaken for others. */
const CORRECTED = ['triangle', 'quadrangle', 'ellipse'];

/**
 * Strokes for the models: `names` of the features, and rows { family, closed,
 * importance, sparseImportance, features }, the last an array of numbers.
 */
class Table {
  constructor(names, rows) {
    this.names = names;
    this.rows = rows;
    this.index = Object.fromEntries(names.map((name, i) => [name, i]));
  }

  /** Values and bins of all rows, for fits to any part of them. */
  prepare() {
    const taught = this.rows.filter(({ importance }) => importance > 0);
    this.columns = binned(
      this.rows.map(({ features }) => features),
      taught.map(({ features }) => features),
    );
    this.values = Object.fromEntries(
      NAMES.map((family) => [
        family,
        this.rows.map((row) =>
          this.competes(family, row) ? this.valuesOf(family, row) : new Float64Array(0),
        ),
      ]),
    );
  }

  /** The values of a family's terms for one row. */
  valuesOf(family, row) {
    return Float64Array.from(FAMILIES[family].terms, ({ feature, form }) =>
      FORMS[form](row.features[this.index[feature]]),
    );
  }

  competes(family, row) {
    return (
      (row.closed === 1 || !FAMILIES[family].closed) &&
      !(family === 'quadrangle' && row.features[this.index.QUADRANGLE_WINDING] > CROSSED)
    );
  }
}

/** A model whose scores are `slope` times as large. */
function stretched({ weights, bias, trees, sparse }, slope) {
  const times = (value) => slope * value;
  const stretch = (list) => list.map(({ cuts, leaves }) => ({ cuts, leaves: leaves.map(times) }));
  return {
    weights: weights.map(times),
    bias: slope * bias,
    trees: stretch(trees),
    sparse: stretch(sparse),
  };
}

const isSparse = (table, row) => row.features[table.index.SPARSE] > 0;

/**
 * Trees that correct the scores of sparse strokes. Whether a stroke is sparse changes
 * what nearly every feature means, and trees of depth two that ask for it have one
 * question left.
 */
function sparseTrees(model, table, family, isUsed, targets) {
  const importance = Float64Array.from(table.rows, (row) => row.sparseImportance);
  const scores = new Float64Array(targets.length);
  const members = table.rows.flatMap((row, i) =>
    importance[i] > 0 && isSparse(table, row) && isUsed(row) && table.competes(family, row)
      ? [i]
      : [],
  );
  for (const i of members) scores[i] = scoreOf(model, table, family, table.rows[i]);
  const { columns } = table;
  return boost(columns, Int32Array.from(members), targets, importance, SPARSE_TREES, scores);
}

/** Both models of each family, fitted to the rows of a prepared table for which `isUsed` holds. */
function fitFamilies(table, isUsed, penalty) {
  const importance = Float64Array.from(table.rows, (row) => row.importance);
  const model = {};
  for (const family of NAMES) {
    const targets = Float64Array.from(table.rows, (row) => (row.family === family ? 1 : 0));
    const members = Int32Array.from(
      table.rows.flatMap((row, i) =>
        row.importance > 0 && isUsed(row) && table.competes(family, row) ? [i] : [],
      ),
    );
    const pick = (list) => Array.from(members, (i) => list[i]);
    const both = {
      ...logistic(pick(table.values[family]), pick(targets), pick(importance), penalty),
      trees: boost(table.columns, members, targets, importance, TREES),
    };
    const mean = stretched({ ...both, sparse: [] }, 0.5);
    if (CORRECTED.includes(family)) {
      mean.sparse = sparseTrees(mean, table, family, isUsed, targets);
    }
    model[family] = mean;
  }
  return model;
}

/** Mean of both models' log odds that a row is of the family, corrected for sparse strokes. */
function scoreOf({ weights, bias, trees, sparse }, table, family, row) {
  const score = bias + dot(weights, table.valuesOf(family, row)) + sumOf(trees, row.features);
  return isSparse(table, row) ? score + sumOf(sparse, row.features) : score;
}

/** The family of the highest score, and that score. */
function verdictOf(model, table, row) {
  let best = { family: 'none', score: -Infinity };
  for (const family of NAMES) {
    if (!table.competes(family, row)) continue;
    const score = scoreOf(model[family], table, family, row);
    if (score > best.score) best = { family, score };
  }
  return best;
}

// Scores beyond these log odds are left out of the calibration: they are nearly
// certain, and so many that they alone would determine the slope.
const DOUBTFUL = 4;

/**
 * Platt scaling (Platt: Probabilistic outputs for support vector machines,
 * 1999) of each family's winning scores, from verdicts { row, family, score }
 * of strokes that the scores were not fitted to: { slope, offset } a family.
 */
function calibration(verdicts) {
  const scale = {};
  for (const family of NAMES) {
    const won = verdicts.filter(
      (verdict) => verdict.family === family && Math.abs(verdict.score) < DOUBTFUL,
    );
    const { weights, bias } = logistic(
      won.map(({ score }) => [score]),
      won.map(({ row }) => (row.family === family ? 1 : 0)),
      won.map(() => 1),
      0.1,
    );
    scale[family] = { slope: weights[0], offset: bias };
  }
  return scale;
}

/** Folds the calibration into the model: scores become log odds. */
function calibrated(model, scale) {
  const out = {};
  for (const family of NAMES) {
    const { slope, offset } = scale[family];
    out[family] = stretched(model[family], slope);
    out[family].bias += offset;
  }
  return out;
}

module.exports = {
  FAMILIES,
  NAMES,
  Table,
  calibrated,
  calibration,
  fitFamilies,
  verdictOf,
  sigmoid,
};
