'use strict';

// Small trees boosted by Newton's method (Friedman: Greedy function approximation:
// a gradient boosting machine, 2001). Two questions deep, so a tree weighs two
// features against each other, which a sum of terms cannot. Deterministic: the
// generator is seeded, ties go to the first feature and the lowest cut.

const { sigmoid } = require('./learn.js');
const { generator } = require('./strokes.js');

const BINS = 64;
const RATE = 0.1; // share of the best step that a tree takes
const RIDGE = 1; // added to the second derivatives of a leaf
const LEAST_HESSIAN = 1; // on either side of a cut
const NEVER = 1e9; // a cut that no value exceeds
const LEAST_GAIN = 1e-9;
const SHARE_OF_FEATURES = 0.3; // that a tree may ask for, so that trees differ

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

/** The named features of `rows` as columns of bins. */
function binned(rows, names) {
  return names.map((name) => {
    const values = rows.map((row) => row[name]);
    const cuts = cutsOf(values);
    return { name, cuts, bins: Uint8Array.from(values, (value) => binOf(value, cuts)) };
  });
}

/** Sums of gradient and hessian of `members`, over all bins of the columns. */
function histogramOf(columns, members, { gradient, hessian }) {
  const sums = new Float64Array(2 * BINS * columns.length);
  columns.forEach(({ bins }, feature) => {
    const start = 2 * BINS * feature;
    for (let k = 0; k < members.length; k++) {
      const i = members[k];
      const at = start + 2 * bins[i];
      sums[at] += gradient[i];
      sums[at + 1] += hessian[i];
    }
  });
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
      if (lowH < LEAST_HESSIAN || h - lowH < LEAST_HESSIAN) continue;
      const gain = worth(lowG, lowH) + worth(g - lowG, h - lowH) - worth(g, h);
      if (gain > (best?.gain ?? LEAST_GAIN)) best = { feature, bin, gain };
    }
  });
  return best;
}

/** Members on the lower and on the higher side of a cut; without one all are low. */
function sidesOf(columns, members, cut) {
  if (cut === null) return [members, members.subarray(0, 0)];
  const { bins } = columns[cut.feature];
  return [members.filter((i) => bins[i] <= cut.bin), members.filter((i) => bins[i] > cut.bin)];
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
    if (cut === null) return { feature: columns[root.feature].name, at: NEVER };
    const { name, cuts } = columns[cut.feature];
    return { feature: name, at: cuts[cut.bin] };
  };
  return { tree: { cuts: [root, ...inner].map(asCut), leaves: quarters.map(leafOf) }, quarters };
}

/**
 * Trees { cuts: [root, low, high], leaves: [4] } whose sum is the log odds that
 * the target of a row (an object of features) is 1. Cuts are { feature, at }; a
 * value above `at` goes to the higher side.
 */
function boost(rows, names, targets, importance, count) {
  const columns = binned(rows, names);
  const random = generator(count);
  const n = rows.length;
  const score = new Float64Array(n);
  const slopes = { gradient: new Float64Array(n), hessian: new Float64Array(n) };
  const all = Int32Array.from({ length: n }, (_, i) => i);
  const trees = [];
  for (let t = 0; t < count; t++) {
    for (let i = 0; i < n; i++) {
      const p = sigmoid(score[i]);
      slopes.gradient[i] = importance[i] * (p - targets[i]);
      slopes.hessian[i] = importance[i] * p * (1 - p);
    }
    const some = columns.filter(() => random() < SHARE_OF_FEATURES);
    const grown = growTree(some, all, slopes);
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

module.exports = { boost, sumOf };
