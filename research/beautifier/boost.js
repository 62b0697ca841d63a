'use strict';

// Small trees boosted by Newton's method (Friedman: Greedy function approximation:
// a gradient boosting machine, 2001). Trees of depth two model interactions of two
// features, which a sum of terms cannot. Deterministic: the generator is seeded, ties
// go to the first feature and the lowest cut.

const { createUniform } = require('../ink/random.js');
const { sigmoid } = require('./learn.js');

const BINS = 64;
const RATE = 0.1; // share of the best step that a tree takes
const RIDGE = 1; // added to the second derivatives of a leaf
const MIN_HESSIAN = 1; // on either side of a cut
const NEVER = 1e9; // a cut that no value exceeds
const MIN_GAIN = 1e-9;
const SHARE_OF_FEATURES = 0.3; // that a tree may use, so that trees differ

/** Cuts between neighbouring values at even shares of the rows, at most `BINS - 1`. */
function cutsOf(values) {
  const sorted = Float64Array.from(values).sort();
  const cuts = [];
  for (let k = 1; k < BINS; k++) {
    const i = Math.floor((k * sorted.length) / BINS);
    const [low, high] = [sorted[i - 1], sorted[i]];
    if (i > 0 && low < high) cuts.push((low + high) / 2);
  }
  return cuts;
}

/** Index of the bin of `value`: how many cuts it exceeds. */
function binOf(value, cuts) {
  let low = 0;
  let high = cuts.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (value > cuts[middle]) low = middle + 1;
    else high = middle;
  }
  return low;
}

/** Every feature of `rows` (arrays of numbers) as a column of bins that `some` of the rows choose. */
function binned(rows, some = rows) {
  return Array.from(rows[0], (_, feature) => {
    const values = rows.map((row) => row[feature]);
    const cuts = cutsOf(some.map((row) => row[feature]));
    return { feature, cuts, bins: Uint8Array.from(values, (value) => binOf(value, cuts)) };
  });
}

/** Sums of gradient and hessian of `members`, over all bins of the columns. */
function histogramOf(columns, members, { gradient, hessian }) {
  const sums = new Float64Array(2 * BINS * columns.length);
  const count = members.length;
  for (let feature = 0; feature < columns.length; feature++) {
    const { bins } = columns[feature];
    const start = 2 * BINS * feature;
    for (let k = 0; k < count; k++) {
      const i = members[k];
      const at = start + 2 * bins[i];
      sums[at] += gradient[i];
      sums[at + 1] += hessian[i];
    }
  }
  return sums;
}

const worth = (g, h) => (g * g) / (h + RIDGE);

/** The cut that gains most, { feature, bin, gain }, or null when none gains. */
function bestCut(columns, sums) {
  let best = null;
  columns.forEach(({ cuts }, feature) => {
    const bins = sums.subarray(2 * BINS * feature, 2 * BINS * (feature + 1));
    let [g, h] = [0, 0];
    for (let k = 0; k < bins.length; k += 2) {
      g += bins[k];
      h += bins[k + 1];
    }
    let [lowG, lowH] = [0, 0];
    for (let bin = 0; bin < cuts.length; bin++) {
      lowG += bins[2 * bin];
      lowH += bins[2 * bin + 1];
      if (lowH < MIN_HESSIAN || h - lowH < MIN_HESSIAN) continue;
      const gain = worth(lowG, lowH) + worth(g - lowG, h - lowH) - worth(g, h);
      if (gain > (best?.gain ?? MIN_GAIN)) best = { feature, bin, gain };
    }
  });
  return best;
}

/** Members on the lower and on the higher side of a cut; without one all are low. */
function sidesOf(columns, members, cut) {
  if (cut === null) return [members, members.subarray(0, 0)];
  const { bins } = columns[cut.feature];
  const low = new Int32Array(members.length);
  const high = new Int32Array(members.length);
  let [lows, highs] = [0, 0];
  for (const i of members) {
    if (bins[i] <= cut.bin) low[lows++] = i;
    else high[highs++] = i;
  }
  return [low.subarray(0, lows), high.subarray(0, highs)];
}

/** One tree for the given slopes, or null, and the members of each of its leaves. */
function growTree(columns, members, slopes) {
  const sums = histogramOf(columns, members, slopes);
  const root = bestCut(columns, sums);
  if (root === null) return null;
  const sides = sidesOf(columns, members, root);
  const lowSums = histogramOf(columns, sides[0], slopes);
  const highSums = sums.map((sum, k) => sum - lowSums[k]);
  const inner = [bestCut(columns, lowSums), bestCut(columns, highSums)];
  const quarters = sides.flatMap((side, k) => sidesOf(columns, side, inner[k]));
  const leafOf = (quarter) => {
    let [g, h] = [0, 0];
    for (const i of quarter) {
      g += slopes.gradient[i];
      h += slopes.hessian[i];
    }
    return (-RATE * g) / (h + RIDGE);
  };
  const asCut = (cut) => {
    if (cut === null) return { feature: columns[root.feature].feature, at: NEVER };
    const { feature, cuts } = columns[cut.feature];
    return { feature, at: cuts[cut.bin] };
  };
  return { tree: { cuts: [root, ...inner].map(asCut), leaves: quarters.map(leafOf) }, quarters };
}

/**
 * Trees { cuts: [root, low, high], leaves: [4] } whose sum is the log odds that
 * the target of a row is 1. `columns` are those of `binned`, `members` the rows
 * that count; `targets` and `importance` have an entry for every row. Cuts are
 * { feature, at }; a value above `at` goes to the higher side. Where there are log odds
 * `start` for every row, the trees add to them.
 */
function boost(columns, members, targets, importance, count, start) {
  const random = createUniform(count);
  const n = targets.length;
  const score = Float64Array.from(start ?? new Float64Array(n));
  const slopes = { gradient: new Float64Array(n), hessian: new Float64Array(n) };
  const trees = [];
  for (let t = 0; t < count; t++) {
    for (const i of members) {
      const p = sigmoid(score[i]);
      slopes.gradient[i] = importance[i] * (p - targets[i]);
      slopes.hessian[i] = importance[i] * p * (1 - p);
    }
    const some = columns.filter(() => random() < SHARE_OF_FEATURES);
    const grown = growTree(some, members, slopes);
    if (grown === null) continue;
    grown.quarters.forEach((quarter, k) => {
      for (const i of quarter) score[i] += grown.tree.leaves[k];
    });
    trees.push(grown.tree);
  }
  return trees;
}

/** Sum of the leaves that a row of features reaches. */
function sumOf(trees, row) {
  let sum = 0;
  for (const { cuts, leaves } of trees) {
    const side = row[cuts[0].feature] > cuts[0].at ? 1 : 0;
    const cut = cuts[1 + side];
    sum += leaves[2 * side + (row[cut.feature] > cut.at ? 1 : 0)];
  }
  return sum;
}

module.exports = { binned, boost, sumOf };
