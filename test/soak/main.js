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
/** Passes before memory is measured, which fill the caches of the allocators. */
const WARM_UP = 3;
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
  let warm = residentMegabytes();
  let most = 0;
  const passes = Math.max(WARM_UP + 1, Math.ceil(count / STROKES));
  for (let k = 2; k <= passes; k++) {
    assert.equal(pass(strokes), first, `answers of pass ${k} differ from the first`);
    const now = residentMegabytes();
    if (k <= WARM_UP) warm = Math.max(warm, now);
    else most = Math.max(most, now - warm);
  }
  console.log(
    `${passes * STROKES} strokes, each by both engines: the same answers; ` +
      `${warm.toFixed(1)} MB after warm-up, at most ${most.toFixed(1)} MB more`,
  );
  assert.ok(most < MAX_GROWTH_MB, `memory grew by ${most.toFixed(1)} MB`);
}

soak(Number(process.argv[2]));
