'use strict';

// large.js CASE: one call with a huge input. Prints how long it took, and how much memory the
// process took at most beyond that of the input.

const assert = require('node:assert/strict');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { initScrivo, optimizeAStroke, templates } = require('../../lib/index.js');
const { Beautifier } = require('../../lib/beautifier.js');

const AREA = [800, 600];
const POINTS = 10_000_000;
const OTHERS = 100_000;
const TEMPLATE_BYTES = 100_000_000;

const onEllipse = (i, count) => {
  const turn = (2 * Math.PI * i) / count;
  return [0.5 + 0.3 * Math.cos(turn), 0.5 + 0.2 * Math.sin(turn)];
};
const toObject = ([x, y]) => ({ x, y });
const ellipse = (count) => Array.from({ length: count }, (_, i) => toObject(onEllipse(i, count)));
const line = Array.from({ length: 40 }, (_, i) => ({ x: 0.2 + i / 80, y: 0.5 }));
const others = () =>
  Array.from({ length: OTHERS }, (_, i) =>
    [0, 1, 2, 3, 4].map((k) => ({ x: (i % 300) / 300 + k / 1e4, y: i / OTHERS })),
  );

/** A file of one template with as many numbers as fill it. */
function templateFile() {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'scrivo-large-'));
  const file = path.join(folder, 'ellipse.template');
  const part = Array.from({ length: 10_000 }, (_, i) => onEllipse(i, 10_000).join(',')).join(',');
  const count = Math.ceil(TEMPLATE_BYTES / part.length);
  for (let i = 0; i < count; i++) fs.appendFileSync(file, `${i > 0 ? ',' : ''}${part}`);
  process.on('exit', () => fs.rmSync(folder, { recursive: true }));
  return file;
}

/** Each prepares its input, and returns the call and its megabytes at most. */
const CASES = {
  'a stroke of 10 million points, beautifier': () => {
    const stroke = new Float64Array(2 * POINTS);
    for (let i = 0; i < POINTS; i++) stroke.set(onEllipse(i, POINTS), 2 * i);
    const beautifier = new Beautifier({ layout: 'xy' });
    return [() => assert.equal(beautifier.beautify(stroke, ...AREA).type, 7), 1000];
  },
  'a stroke of 10 million points, template engine': () => {
    const stroke = ellipse(POINTS);
    return [() => assert.equal(optimizeAStroke(stroke, ...AREA, []).type, 7), 3000];
  },
  '100,000 other strokes, beautifier': () => {
    const around = others();
    return [() => assert.equal(new Beautifier().beautify(line, ...AREA, around).type, 2), 300];
  },
  '100,000 other strokes, template engine': () => {
    const around = others();
    return [() => assert.equal(optimizeAStroke(line, ...AREA, around).type, 2), 300];
  },
  'a template file of 100 MB': () => {
    const file = templateFile();
    return [() => assert.equal(initScrivo([file]), true), 500];
  },
};

const megabytes = (bytes) => bytes / 2 ** 20;

function measure(name) {
  initScrivo(templates);
  const [call, most] = CASES[name]();
  globalThis.gc();
  const before = process.memoryUsage().rss;
  const start = performance.now();
  call();
  const seconds = (performance.now() - start) / 1000;
  const used = megabytes(1024 * process.resourceUsage().maxRSS - before);
  console.log(`${name}: ${seconds.toFixed(1)} s, ${used.toFixed(0)} MB`);
  assert.ok(used < most, `more than ${most} MB`);
}

module.exports = { names: Object.keys(CASES) };

if (require.main === module) measure(process.argv[2]);
