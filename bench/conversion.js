'use strict';

// Time to pass a stroke of 85 points to the native module and back, compared with a copy of the
// same points in JavaScript. Microseconds, medians of many rounds. Compare machines by the ratio,
// which is taken within each round.

const { FigureType, optimizeAStroke } = require('scrivo');
const { placeStroke } = require('../packages/cli/lib/placement.js');
const { HANDS, drawInk } = require('../research/ink/index.js');

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

/** A scrawl too large for a dot and too small for anything else: it comes back as drawn. */
function scribble({ withForce }) {
  const hand = { ...HANDS.ordinary, rate: 1200 };
  const { points } = drawInk({ figure: 'scrawl', seed: 1, size: 24, hand });
  const kept = points.slice(0, POINTS).map(([x, y, force]) => (withForce ? [x, y, force] : [x, y]));
  return placeStroke({ points: kept }, 'natural');
}

function copy(stroke) {
  const path = [];
  for (const { x, y, force } of stroke) path.push(force ? { x, y, force } : { x, y });
  return path;
}

for (const withForce of [false, true]) {
  const { points: stroke, width, height } = scribble({ withForce });
  const { type } = optimizeAStroke(stroke, width, height, []);
  if (stroke.length !== POINTS || type !== FigureType.NONE) throw new Error('a wrong scribble');
  const rounds = Array.from({ length: ROUNDS }, () => {
    const empty = time(() => optimizeAStroke([], width, height, []));
    // Another stroke is only read and reduced to its centroid.
    const inwards = time(() => optimizeAStroke([], width, height, [stroke])) - empty;
    // Includes the engine's work until it gives up.
    const both = time(() => optimizeAStroke(stroke, width, height, [])) - empty;
    const plain = time(() => copy(stroke));
    return { empty, inwards, both, plain, ratio: inwards / plain };
  });
  const row = Object.keys(rounds[0]).map((key) => [key, median(rounds.map((r) => r[key]))]);
  const { empty, inwards, both, plain, ratio } = Object.fromEntries(row);
  const us = (value) => `${value.toFixed(2)} us`;
  console.log(
    `${POINTS} points ${withForce ? 'with' : 'without'} force: in ${us(inwards)}, ` +
      `in, judged and out ${us(both)}, empty call ${us(empty)}, ` +
      `copied by JavaScript ${us(plain)}; in / copied ${ratio.toFixed(2)}`,
  );
}
