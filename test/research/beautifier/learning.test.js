'use strict';

const assert = require('node:assert/strict');
const { test } = require('node:test');
const { binned, boost, sumOf } = require('../../../research/beautifier/boost.js');
const { logistic, sigmoid } = require('../../../research/beautifier/learn.js');
const {
  FAMILIES,
  NAMES,
  Table,
  calibrated,
  fitFamilies,
  verdictOf,
} = require('../../../research/beautifier/model.js');
const { createUniform } = require('../../../research/ink/random.js');

const CUT = 0.3;

/** `count` rows of uniform features, and whether just one of the first two exceeds the cut. */
function exclusiveOr(count) {
  const random = createUniform(3);
  const rows = Array.from({ length: count }, () => [random(), random(), random()]);
  return { rows, targets: rows.map(([a, b]) => (a > CUT === b > CUT ? 0 : 1)) };
}

const allOf = (rows) => Int32Array.from(rows.keys());

test('logistic scores are the log odds of what they were fitted to', () => {
  const rows = Array.from({ length: 1000 }, (_, i) => [i % 2]);
  const targets = rows.map(([high], i) => (i % 20 < (high ? 15 : 6) ? 1 : 0));
  const { weights, bias } = logistic(rows, targets, new Float64Array(1000).fill(1), 1e-6);
  const share = (value) =>
    targets.filter((target, i) => target === 1 && rows[i][0] === value).length / 500;
  assert.ok(Math.abs(sigmoid(bias) - share(0)) < 1e-6);
  assert.ok(Math.abs(sigmoid(bias + weights[0]) - share(1)) < 1e-6);
});

test('trees learn what two features mean together, the same trees every time', () => {
  const { rows, targets } = exclusiveOr(2000);
  const importance = new Float64Array(rows.length).fill(1);
  const grow = () => boost(binned(rows), allOf(rows), targets, importance, 300);
  const trees = grow();
  const away = ([a, b]) => Math.abs(a - CUT) > 0.03 && Math.abs(b - CUT) > 0.03;
  const wrong = rows.filter((row, i) => away(row) && sumOf(trees, row) > 0 !== (targets[i] === 1));
  assert.deepEqual(wrong, []);
  assert.deepEqual(grow(), trees);
});

test('rows without importance teach nothing', () => {
  const { rows, targets } = exclusiveOr(400);
  const half = (i) => (i < 200 ? 1 : 0);
  const turned = targets.map((target, i) => (half(i) ? target : 1 - target));
  const trees = [targets, turned].map((list) =>
    boost(
      binned(rows),
      allOf(rows),
      list,
      rows.map((_, i) => half(i)),
      20,
    ),
  );
  assert.deepEqual(trees[0], trees[1]);
});

test('a calibrated model gives the calibrated scores', () => {
  const random = createUniform(5);
  const names = [
    ...new Set(NAMES.flatMap((name) => FAMILIES[name].terms.map((t) => t.feature))),
    'QUADRANGLE_WINDING',
  ];
  const rows = Array.from({ length: 300 }, (_, i) => ({
    family: [...NAMES, 'none'][i % (NAMES.length + 1)],
    closed: i % 2,
    importance: 1,
    sparseImportance: 1,
    features: names.map(() => random() - (i % 7) / 7),
  }));
  const table = new Table(names, rows);
  table.prepare();
  const model = fitFamilies(table, () => true, 1);
  const same = { slope: 0.8, offset: -0.3 };
  const scaled = calibrated(model, Object.fromEntries(NAMES.map((name) => [name, same])));
  for (const row of rows) {
    const [before, after] = [verdictOf(model, table, row), verdictOf(scaled, table, row)];
    assert.equal(after.family, before.family);
    assert.ok(Math.abs(after.score - (0.8 * before.score - 0.3)) < 1e-9);
  }
});
