'use strict';

// The drawing page in Chromium, with the native module behind its server and with WebAssembly in
// the page: from lifting the pen to the picture, frames while drawing, loading, memory, long ink.

const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { HANDS, drawInk } = require('../research/ink/index.js');
const { DrawingPage, PageServer, launchChromium } = require('../test/support/page.js');
const { buildWasm } = require('../tools/build-wasm.js');
const { writeSite } = require('../tools/site.js');

const FILLED = [0, 1000, 3000];
const FIGURES = 10_000;
const LONG = 200_000;

const VIEW = { viewport: { width: 1280, height: 800 } };
const HAND = { ...HANDS.ordinary, rate: 120 };
const NAMES = [
  'line',
  'square',
  'circle',
  'equilateral',
  'ellipse',
  'rectangle',
  'angle',
  'zigzag',
];

/** Three strokes of each figure: points x, y, pressure around `at`. */
const strokesAt = (at) =>
  NAMES.flatMap((figure) =>
    [1, 2, 3].map((seed) => drawInk({ figure, seed, size: 160, hand: HAND, at }).points),
  );

/** Runs in the page: adds strokes, every `figures`-th of them as a figure, each in the steps that drawing takes. */
function fill([count, strokes, figures]) {
  const { drawing } = window.scrivo;
  const frame = { left: 0, top: 0, width: innerWidth, height: innerHeight, scale: 1 };
  for (let i = 0; i < count; i += 1) {
    const [x, y] = [(i * 389) % 1200, (i * 241) % 720];
    const points = strokes[i % strokes.length];
    const samples = Float32Array.from(
      points.flatMap(([px, py, force, time]) => [px / 2 + x, py / 2 + y, force, time]),
    );
    const answer = {
      engine: 'beautifier',
      confidence: 0.98,
      reason: null,
      alternatives: [],
      micros: 60,
    };
    const ink = { id: 1e6 + i, samples, measured: true, frame };
    const style = { colour: i % 6, width: 3.6 };
    const item = { id: drawing.newId(), ink, figure: null, answer, ...style };
    drawing.commit('ink', [item]);
    if (i % figures > 0) continue;
    const corners = [
      { x: x - 40, y: y - 40 },
      { x: x + 40, y: y - 40 },
      { x: x + 40, y: y + 40 },
      { x: x - 40, y: y + 40 },
    ];
    drawing.insert('figure', {
      ...item,
      figure: { kind: 'quadrangle', subtype: 'square', corners },
    });
  }
}

/** Fills the page out of its view, where nothing has to be painted. */
async function fillUnseen(page, count, figures) {
  await page.evaluate(() => window.scrivo.view.pan(1e5, 0));
  await page.evaluate(fill, [count, strokesAt({ x: 0, y: 0 }), figures]);
  await page.waitForTimeout(2000); // until it is stored
}

/** Runs in the page: draws the strokes, a few samples a frame; resolves to times in ms. */
async function drawAll(strokes) {
  const canvas = document.getElementById('surface');
  const { recogniser } = window.scrivo;
  const nextFrame = () => new Promise(requestAnimationFrame);
  const send = (name, [clientX, clientY, pressure]) =>
    canvas.dispatchEvent(
      new PointerEvent(name, {
        ...{ pointerType: 'pen', pointerId: 7, bubbles: true, buttons: 1 },
        ...{ clientX, clientY, pressure },
      }),
    );
  const [painted, shown, frames, scripts] = [[], [], [], []];
  for (const points of strokes) {
    send('pointerdown', points[0]);
    for (let i = 1; i < points.length; i += 2) {
      const before = performance.now();
      await nextFrame();
      const start = performance.now();
      frames.push(start - before);
      for (const point of points.slice(i, i + 2)) send('pointermove', point);
      scripts.push(performance.now() - start);
    }
    const answered = new Promise((resolve) =>
      recogniser.addEventListener('answer', resolve, { once: true }),
    );
    const lifted = performance.now();
    send('pointerup', points.at(-1));
    await answered;
    painted.push(performance.now() - lifted);
    await nextFrame();
    shown.push(performance.now() - lifted);
    await new Promise((resolve) => setTimeout(resolve, 60));
  }
  return { painted, shown, frames, scripts };
}

const median = (values) => [...values].sort((a, b) => a - b)[values.length >> 1].toFixed(1);

async function open(browser, address) {
  const requests = [];
  const context = await browser.newContext(VIEW);
  context.on('request', (request) => requests.push(request.url()));
  const drawing = new DrawingPage();
  drawing.page = await context.newPage();
  await drawing.load(address);
  return { drawing, requests };
}

async function measureDrawing(browser, address, count) {
  const { drawing } = await open(browser, address);
  const { page } = drawing;
  await fillUnseen(page, count, 2);
  await page.evaluate(() => window.scrivo.view.pan(-1e5, 0));
  await page.waitForTimeout(1000);
  const times = await page.evaluate(drawAll, strokesAt({ x: 600, y: 400 }));
  const text = Object.entries(times).map(([name, values]) => `${name} ${median(values)}`);
  console.log(`  ${String(count).padStart(4)} strokes, ms: ${text.join(', ')}`);
  await drawing.close();
}

async function measureLoading(browser, address) {
  const { drawing, requests } = await open(browser, address);
  const times = [];
  for (let i = 0; i < 5; i += 1) {
    const start = performance.now();
    await drawing.load(address);
    times.push(performance.now() - start);
  }
  await drawing.draw(strokesAt({ x: 600, y: 400 })[3].map(([x, y]) => [x, y]));
  const beyond = requests.filter((url) => !/^(file:|data:|blob:|http:\/\/127\.0\.0\.1:)/.test(url));
  console.log(`  loads in ${median(times)} ms; ${beyond.length} requests beyond this computer`);
  await drawing.close();
}

/** Bytes that the page holds, its arrays included. */
async function heapOf(page) {
  const client = await page.context().newCDPSession(page);
  for (let i = 0; i < 3; i += 1) await client.send('HeapProfiler.collectGarbage');
  const usage = await client.send('Runtime.getHeapUsage');
  return usage.usedSize + usage.backingStorageSize + usage.embedderHeapUsedSize;
}

async function measureMemory(browser, address) {
  const { drawing } = await open(browser, address);
  const before = await heapOf(drawing.page);
  await fillUnseen(drawing.page, FIGURES, 1);
  const after = await heapOf(drawing.page);
  console.log(
    `  ${FIGURES} figures with their history take ${((after - before) / 1e6).toFixed(1)} MB`,
  );
  await drawing.close();
}

async function measureLongInk(browser, address) {
  const { drawing } = await open(browser, address);
  const start = performance.now();
  await drawing.drawLong(LONG);
  const ms = Math.round(performance.now() - start);
  await drawing.page.waitForTimeout(1000);
  await drawing.load(address);
  const [{ samples }] = await drawing.items();
  console.log(
    `  ${LONG} samples are drawn and answered in ${ms} ms; ${samples} are there after a reload`,
  );
  await drawing.close();
}

async function measure(title, browser, address) {
  console.log(title);
  await measureLoading(browser, address);
  for (const count of FILLED) await measureDrawing(browser, address, count);
  await measureMemory(browser, address);
  await measureLongInk(browser, address);
}

async function main() {
  await buildWasm();
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'scrivo-site-'));
  const [server, browser] = await Promise.all([PageServer.create(), launchChromium()]);
  try {
    await writeSite(folder);
    console.log(
      'Medians from lifting the pen: painted is when the figure is on the canvas, shown the frame\n' +
        'after it; frames is their distance while drawing, scripts the part that the page takes of it.',
    );
    await measure('Native, on the local server', browser, server.address);
    await measure('WebAssembly, from disk as one file', browser, `file://${folder}/scrivo.html`);
  } finally {
    await browser.close();
    await server.stop();
    fs.rmSync(folder, { recursive: true });
  }
}

main();
