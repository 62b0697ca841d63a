'use strict';

// Answers the same generated strokes over and over, by both engines, with new objects for
// each call. Memory must not grow after the first passes, and answers must stay those of
// the first. Needs --expose-gc.

const assert = require('node:assert/strict');
const { createHash } = require('node:crypto');
const { initScrivo, optimizeAStroke, templates } = require('../../lib/index.js');
const { Beautifier } = require('../../lib/beautifier.js');
const { drawEach } = require('../../research/ink/index.js');

const STROKES = 2000;
const AREA = [800, 600];
/** Collections of garbage leave some noise, of which a leak soon makes more. */
const MAX_GROWTH_MB = 16;

function drawStrokes() {
  const optionsOf = () => ({ size: 150, at: { x: 400, y: 300 } });
  return drawEach(STROKES, { seed: 1, optionsOf }).map(({ points }) =>
    points.map(([x, y]) => ({ x: x / AREA[0], y: y / AREA[1] })),
  );
}

/** One digest of all answers of a pass. */
function pass(strokes) {
  const hash = createHash('sha256');
  strokes.forEach((stroke, k) => {
    const others = [strokes[(k + 1) % strokes.length]];
    const answers = [
      optimizeAStroke(stroke, ...AREA, others),
      new Beautifier().beautify(stroke, ...AREA, others),
    ];
    hash.update(JSON.stringify(answers));
  });
  return hash.digest('hex');
}

function residentMegabytes() {
  globalThis.gc();
  return process.memoryUsage().rss / 2 ** 20;
}

function soak(count) {
  initScrivo(templates);
  const strokes = drawStrokes();
  const first = pass(strokes);
  const sizes = [];
  const passes = Math.max(8, Math.ceil(count / STROKES));
  for (let k = 1; k < passes; k++) {
    assert.equal(pass(strokes), first, `answers of pass ${k + 1} differ from the first`);
    sizes.push(residentMegabytes());
  }
  const half = Math.ceil(sizes.length / 2);
  const early = Math.max(...sizes.slice(0, half));
  const late = Math.min(...sizes.slice(half));
  console.log(
    `${passes * STROKES} strokes, each by both engines: the same answers; ` +
      `at most ${early.toFixed(1)} MB in the first half, at least ${late.toFixed(1)} MB in the second`,
  );
  assert.ok(late - early < MAX_GROWTH_MB, `memory grew by ${(late - early).toFixed(1)} MB`);
}

soak(Number(process.argv[2]));
