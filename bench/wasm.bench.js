'use strict';

// Whole calls from JavaScript through scrivo-wasm, and their time relative to that of the native
// modules, in Node and, for the beautifier, in Chromium. The same strokes go through both in turn, several times; the fastest round
// counts, since other work on the machine slows single rounds.

const native = { ...require('scrivo'), ...require('scrivo/beautifier') };
const path = require('node:path');
const { placeStroke } = require('../packages/cli/lib/placement.js');
const { drawEach } = require('../research/ink/index.js');
const { launchChromium } = require('../test/support/chromium.js');

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

const DIST = path.join(__dirname, '..', 'packages', 'wasm', 'dist');

/** Microseconds per call of the beautifier in a page, the fastest of several rounds. */
async function timeInChromium() {
  const browser = await launchChromium();
  const page = await browser.newPage();
  await page.route('http://localhost/**', (route) => {
    const file = path.basename(new URL(route.request().url()).pathname);
    return file === ''
      ? route.fulfill({ body: '' })
      : route.fulfill({ path: path.join(DIST, file) });
  });
  await page.goto('http://localhost/');
  const best = await page.evaluate(
    async ([given, rounds]) => {
      const { Beautifier, start } = await import('/beautifier.js');
      await start();
      const beautifier = new Beautifier();
      const times = Array.from({ length: rounds }, () => {
        const from = performance.now();
        for (const { points, width, height } of given) beautifier.beautify(points, width, height);
        return ((performance.now() - from) * 1000) / given.length;
      });
      return Math.min(...times);
    },
    [strokes, ROUNDS],
  );
  await browser.close();
  return best;
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
    if (name === 'beautifier, objects') {
      const c = await timeInChromium();
      console.log(`  in Chromium ${c.toFixed(1)} us, ratio ${(c / b).toFixed(2)}`);
    }
  }
}

main();
