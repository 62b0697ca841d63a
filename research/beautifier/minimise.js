'use strict';

const STEP = 1e-5;

function gradient(loss, at) {
  return at.map((_, i) => {
    const moved = (by) => at.map((value, k) => (k === i ? value + by : value));
    return (loss(moved(STEP)) - loss(moved(-STEP))) / (2 * STEP);
  });
}

const dot = (a, b) => a.reduce((sum, value, i) => sum + value * b[i], 0);
const times = (matrix, vector) => matrix.map((row) => dot(row, vector));

/** Updates the inverse Hessian by a step and the change of the gradient. */
function update(inverse, step, change) {
  const curvature = dot(step, change);
  if (!(curvature > 1e-12)) return inverse;
  const h = times(inverse, change);
  const factor = 1 + dot(change, h) / curvature;
  return inverse.map((row, i) =>
    row.map(
      (value, k) =>
        value + (factor * step[i] * step[k] - h[i] * step[k] - step[i] * h[k]) / curvature,
    ),
  );
}

/** Minimum of a smooth function of few variables (BFGS, numeric gradient). */
function minimise(loss, start, steps = 300) {
  let at = start;
  let value = loss(at);
  let slope = gradient(loss, at);
  let inverse = start.map((_, i) => start.map((__, k) => (i === k ? 0.1 : 0)));
  for (let k = 0; k < steps; k++) {
    const direction = times(inverse, slope).map((v) => -v);
    const descent = dot(direction, slope);
    let length = 1;
    const ahead = () => at.map((v, i) => v + length * direction[i]);
    while (length > 1e-9 && !(loss(ahead()) < value + 1e-4 * length * descent)) length /= 2;
    if (length <= 1e-9) break;
    const next = ahead();
    const nextSlope = gradient(loss, next);
    const nextValue = loss(next);
    const step = next.map((v, i) => v - at[i]);
    inverse = update(
      inverse,
      step,
      nextSlope.map((v, i) => v - slope[i]),
    );
    const isDone = value - nextValue < 1e-9;
    [at, value, slope] = [next, nextValue, nextSlope];
    if (isDone) break;
  }
  return at;
}

module.exports = { minimise };
