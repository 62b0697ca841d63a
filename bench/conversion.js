'use strict';

// What it costs to carry a stroke of 85 points into the native module and back,
// beside what JavaScript alone needs to copy the same points. Microseconds, the
// median of many rounds; the ratio, taken round by round, is what to compare
// between machines.

const { optimizeAStroke } = require('../lib/index.js');

const POINTS = 85;
const ROUNDS = 101;
const CALLS = 400;

const median = (values) => values.sort((a, b) => a - b)[values.length >> 1];

/** Microseconds per call. */
function time(call) {
  const start = process.hrtime.bigint();
  for (let i = 0; i < CALLS; ++i) call();
  return Number(process.hrtime.bigint() - start) / 1e3 / CALLS;
}

/** A stroke that comes back as drawn: too large for a dot, too small for the rest. */
function scribble(force) {
  return Array.from({ length: POINTS }, (_, i) => ({
    x: 0.5 + 0.012 * Math.sin(i * 2.4),
    y: 0.5 + 0.012 * Math.cos(i * 1.7),
    ...(force && { force }),
  }));
}

function copy(stroke) {
  const path = [];
  for (const { x, y, force } of stroke) path.push(force ? { x, y, force } : { x, y });
  return path;
}

for (const force of [undefined, 0.5]) {
  const stroke = scribble(force);
  const rounds = Array.from({ length: ROUNDS }, () => {
    const empty = time(() => optimizeAStroke([], 1000, 1000, []));
    // As one of the other strokes it is read, summed up, and that is all.
    const inwards = time(() => optimizeAStroke([], 1000, 1000, [stroke])) - empty;
    // Includes what the engine does to find out that it is no figure.
    const both = time(() => optimizeAStroke(stroke, 1000, 1000, [])) - empty;
    const plain = time(() => copy(stroke));
    return { empty, inwards, both, plain, ratio: inwards / plain };
  });
  const row = Object.keys(rounds[0]).map((key) => [key, median(rounds.map((r) => r[key]))]);
  const { empty, inwards, both, plain, ratio } = Object.fromEntries(row);
  const us = (value) => `${value.toFixed(2)} us`;
  console.log(
    `${POINTS} points ${force ? 'with' : 'without'} force: in ${us(inwards)}, ` +
      `in, judged and out ${us(both)}, empty call ${us(empty)}, ` +
      `copied by JavaScript ${us(plain)}; in / copied ${ratio.toFixed(2)}`,
  );
}
