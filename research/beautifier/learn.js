'use strict';

// Logistic regression with a quadratic penalty, by Newton's method. Everything
// is deterministic: no random start, sums in a fixed order.

/** Sum of the products. */
function dot(a, b) {
  let sum = 0;
  for (let i = 0; i < a.length; i++) sum += a[i] * b[i];
  return sum;
}
const sigmoid = (z) => (z >= 0 ? 1 / (1 + Math.exp(-z)) : Math.exp(z) / (1 + Math.exp(z)));

/** Solves the symmetric positive system `matrix` x = `right` (Cholesky). */
function solve(matrix, right) {
  const n = right.length;
  const l = matrix.map((row) => Float64Array.from(row));
  for (let i = 0; i < n; i++) {
    for (let j = 0; j <= i; j++) {
      let sum = l[i][j];
      for (let k = 0; k < j; k++) sum -= l[i][k] * l[j][k];
      l[i][j] = i === j ? Math.sqrt(sum) : sum / l[j][j];
    }
  }
  const x = Float64Array.from(right);
  for (let i = 0; i < n; i++) {
    for (let k = 0; k < i; k++) x[i] -= l[i][k] * x[k];
    x[i] /= l[i][i];
  }
  for (let i = n - 1; i >= 0; i--) {
    for (let k = i + 1; k < n; k++) x[i] -= l[k][i] * x[k];
    x[i] /= l[i][i];
  }
  return x;
}

/** Mean and spread of every column. */
function standardisation(rows) {
  const width = rows[0].length;
  const mean = new Float64Array(width);
  const spread = new Float64Array(width);
  for (const row of rows) for (let j = 0; j < width; j++) mean[j] += row[j] / rows.length;
  for (const row of rows) {
    for (let j = 0; j < width; j++) spread[j] += (row[j] - mean[j]) ** 2 / rows.length;
  }
  return { mean, spread: spread.map((value) => Math.sqrt(value) || 1) };
}

/** Gradient and second derivatives of the loss at weights `w`; `table` ends with a column of ones. */
function slopesOf(table, targets, importance, w) {
  const n = w.length;
  const gradient = new Float64Array(n);
  const hessian = Array.from({ length: n }, () => new Float64Array(n));
  for (let i = 0; i < table.length; i++) {
    const row = table[i];
    let z = 0;
    for (let j = 0; j < n; j++) z += w[j] * row[j];
    const p = sigmoid(z);
    const g = importance[i] * (p - targets[i]);
    const h = importance[i] * Math.max(p * (1 - p), 1e-6);
    for (let j = 0; j < n; j++) {
      gradient[j] += g * row[j];
      const hr = h * row[j];
      const line = hessian[j];
      for (let k = 0; k <= j; k++) line[k] += hr * row[k];
    }
  }
  return { gradient, hessian };
}

/**
 * Weights and bias for `rows` (arrays of numbers) with `targets` (0..1) and
 * `importance` (one weight a row). `penalty` multiplies half the squared
 * weights of the standardised columns.
 */
function logistic(rows, targets, importance, penalty) {
  const { mean, spread } = standardisation(rows);
  const n = mean.length + 1;
  const table = rows.map((row) => {
    const out = new Float64Array(n);
    for (let j = 0; j < n - 1; j++) out[j] = (row[j] - mean[j]) / spread[j];
    out[n - 1] = 1;
    return out;
  });
  let w = new Float64Array(n);
  for (let step = 0; step < 25; step++) {
    const { gradient, hessian } = slopesOf(table, targets, importance, w);
    for (let j = 0; j < n; j++) {
      gradient[j] += (j < n - 1 ? penalty : 0) * w[j];
      hessian[j][j] += j < n - 1 ? penalty : 1e-9;
      for (let k = 0; k < j; k++) hessian[k][j] = hessian[j][k];
    }
    const move = solve(hessian, gradient);
    const size = Math.sqrt(dot(move, move));
    const limit = Math.min(1, 5 / (size || 1));
    w = w.map((value, j) => value - limit * move[j]);
    if (size < 1e-6) break;
  }
  const weights = Array.from(mean, (_, j) => w[j] / spread[j]);
  const bias = w[n - 1] - dot(weights, Array.from(mean));
  return { weights, bias };
}

module.exports = { dot, logistic, sigmoid };
