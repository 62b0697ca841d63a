'use strict';

// Whole calls from JavaScript through scrivo-wasm, and their time relative to that of the native
// modules, in Node. The same strokes go through both in turn, several times; the fastest round
// counts, since other work on the machine slows single rounds.

const native = { ...require('scrivo'), ...require('scrivo/beautifier') };
const { placeStroke } = require('../packages/cli/lib/placement.js');
const { drawEach } = require('../research/ink/index.js');

const STROKES = 1000;
const ROUNDS = 15;

const strokes = drawEach(STROKES).map((stroke) => placeStroke(stroke, 200));

/** What a whiteboard calls, by name. */
function callsOf({ Beautifier, optimizeAStroke }) {
  const beautifier = new Beautifier({ layout: 'xy' });
  const packed = new Map(
    strokes.map(({ points }) => [points, Float64Array.from(points.flatMap(({ x, y }) => [x, y]))]),
  );
  return {
    'template engine': ({ points, width, height }) => optimizeAStroke(points, width, height, []),
    'beautifier, objects': ({ points, width, height }) =>
      beautifier.beautify(points, width, height),
    'beautifier, Float64Array': ({ points, width, height }) =>
      beautifier.beautify(packed.get(points), width, height),
  };
}

/** Microseconds per call. */
function time(call) {
  const start = performance.now();
  for (const stroke of strokes) call(stroke);
  return ((performance.now() - start) * 1000) / strokes.length;
}

async function main() {
  const wasm = await import('scrivo-wasm');
  await wasm.start();
  for (const { initScrivo, templates } of [native, wasm]) initScrivo(templates);
  const [ours, theirs] = [wasm, native].map(callsOf);
  for (const name of Object.keys(ours)) {
    const best = [Infinity, Infinity];
    for (let round = 0; round < ROUNDS; round++) {
      best[0] = Math.min(best[0], time(ours[name]));
      best[1] = Math.min(best[1], time(theirs[name]));
    }
    const [a, b] = best;
    console.log(
      `${name}: ${a.toFixed(1)} us, native ${b.toFixed(1)} us, ratio ${(a / b).toFixed(2)}`,
    );
  }
}

main();
