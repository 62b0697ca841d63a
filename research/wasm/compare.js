'use strict';

// Compares the answers of scrivo-wasm with those of the native modules, for generated strokes
// and for files of strokes:
//
//   node research/wasm/compare.js --count 100000 [STROKES.ndjson.gz ...]
//
// Types must be the same and points within 1e-9 of the area's sides; exits with 1 where they are not. How
// many answers have the same bits is reported too.

const { parseArgs } = require('node:util');
const native = { ...require('scrivo'), ...require('scrivo/beautifier') };
const { FIGURES, HANDS, drawInk } = require('../ink/index.js');
const { createRandom } = require('../ink/random.js');
const { readStrokes } = require('../beautifier/strokes.js');

const TOLERANCE = 1e-9;
const WIDTH = 1200;
const HEIGHT = 900;
const SIZES = [20, 60, 120, 200, 400];
const RATES = [20, 60, 120, 240];
const NAMES = Object.keys(FIGURES);

const place = ([x, y, force]) => ({ x: x / WIDTH, y: y / HEIGHT, ...(force ? { force } : {}) });

/** A stroke of some figure, hand, size and rate, and up to three drawn before. */
function* generated(count, seed) {
  const random = createRandom(seed);
  const hands = Object.values(HANDS);
  let recent = [];
  for (let i = 0; i < count; i++) {
    const { points } = drawInk({
      figure: NAMES[i % NAMES.length],
      seed: seed + i,
      size: random.pick(SIZES),
      at: { x: 100 + ((i * 37) % 1000), y: 100 + ((i * 53) % 700) },
      hand: { ...random.pick(hands), rate: random.pick(RATES) },
    });
    const stroke = points.map(place);
    yield { stroke, others: i % 3 === 0 ? recent : [] };
    recent = [...recent.slice(-2), stroke];
  }
}

/** Collected strokes at their own size, and with a longer side of 200 units. */
function* collected(file) {
  for (const { points } of readStrokes(file)) {
    const [xs, ys] = [0, 1].map((axis) => points.map((point) => point[axis]));
    const [left, top] = [Math.min(...xs), Math.min(...ys)];
    const extent = Math.max(Math.max(...xs) - left, Math.max(...ys) - top) || 1;
    const normal = points.map(([x, y, force]) => [
      ((x - left) * 200) / extent + 100,
      ((y - top) * 200) / extent + 100,
      force,
    ]);
    yield { stroke: points.map(place), others: [] };
    yield { stroke: normal.map(place), others: [] };
  }
}

/** The largest difference of a coordinate of two paths; infinite for another answer. */
function difference(a, b) {
  if (a.type !== b.type || a.reason !== b.reason || a.path.length !== b.path.length) {
    return Infinity;
  }
  return a.path.reduce((most, { x, y }, i) => {
    const [dx, dy] = [x - b.path[i].x, y - b.path[i].y];
    // NaN and infinities in the same places are no difference.
    const off = (d, p, q) => (Object.is(p, q) ? 0 : Math.abs(d));
    return Math.max(most, off(dx, x, b.path[i].x), off(dy, y, b.path[i].y));
  }, 0);
}

class Tally {
  /** By type: [answers, with the same bits, largest finite difference]. */
  #rows = new Map();
  wrong = 0;

  add(type, off) {
    const row = this.#rows.get(type) ?? [0, 0, 0];
    this.#rows.set(type, row);
    row[0]++;
    if (off === 0) row[1]++;
    if (off < Infinity) row[2] = Math.max(row[2], off);
    if (off > TOLERANCE) this.wrong++;
  }

  print(title) {
    console.log(`${title}: ${this.wrong} wrong`);
    for (const [type, [count, same, most]] of [...this.#rows].sort(([a], [b]) => a - b)) {
      console.log(
        `  type ${type}: ${count} answers, ${count - same} in other bits, ` +
          `largest difference ${most.toExponential(1)}`,
      );
    }
  }
}

/** The answers of an engine in both forms, for a stroke. */
function enginesOf({ Beautifier, optimizeAStroke }) {
  const beautifier = new Beautifier();
  return {
    'template engine': (stroke, others) => optimizeAStroke(stroke, WIDTH, HEIGHT, others),
    beautifier: (stroke, others) => beautifier.beautify(stroke, WIDTH, HEIGHT, others),
  };
}

/** Whether every answer to these strokes is the same. */
function compare(title, strokes, engines) {
  const tallies = Object.keys(engines[0]).map((name) => [name, new Tally()]);
  for (const { stroke, others } of strokes) {
    for (const [name, tally] of tallies) {
      const [a, b] = engines.map((engine) => engine[name](stroke, others));
      tally.add(a.type, difference(a, b));
    }
  }
  for (const [name, tally] of tallies) tally.print(`${title}, ${name}`);
  return tallies.every(([, { wrong }]) => wrong === 0);
}

async function main() {
  const { values, positionals } = parseArgs({
    options: {
      count: { type: 'string', default: '10000' },
      seed: { type: 'string', default: '1' },
    },
    allowPositionals: true,
  });
  const wasm = await import('scrivo-wasm');
  await wasm.start();
  for (const { initScrivo, templates } of [native, wasm]) initScrivo(templates);
  const engines = [native, wasm].map(enginesOf);
  const sources = [
    [`${values.count} generated`, generated(Number(values.count), Number(values.seed))],
    ...positionals.map((file) => [file, collected(file)]),
  ];
  const same = sources.map(([title, strokes]) => compare(title, strokes, engines));
  process.exitCode = same.every(Boolean) ? 0 : 1;
}

main();
