'use strict';

const assert = require('node:assert/strict');
const { once } = require('node:events');
const { after, before, beforeEach, describe, test } = require('node:test');
const { createRecogniser } = require('../../surface/recognise.js');
const { createServer, listen } = require('../../surface/server.js');
const { launchChromium } = require('../support/chromium.js');
const { HEIGHT, WIDTH, inkOf, shakyLine } = require('../support/strokes.js');

// Longer than the animation of ink into a figure.
const ANIMATION_MS = 1200;
const VIEW = { width: WIDTH, height: HEIGHT };

const FROM = [200, 300];
const TO = [700, 420];
const LINE = shakyLine(FROM, TO, 4);

/** Distance of a point from the straight line through `a` and `b`. */
function distanceToLine({ x, y }, a, b) {
  const cross = (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x);
  return Math.abs(cross) / Math.hypot(b.x - a.x, b.y - a.y);
}

/** Largest distance of the points from the straight line through first and last. */
const bend = (points) =>
  Math.max(...points.map((point) => distanceToLine(point, points[0], points.at(-1))));

const toPixels = ({ x, y }) => [x * VIEW.width, y * VIEW.height];

function assertNear(point, [px, py], tolerance) {
  const [x, y] = toPixels(point);
  const distance = Math.hypot(x - px, y - py);
  assert.ok(distance < tolerance, `(${x}, ${y}) is ${distance} pixels from (${px}, ${py})`);
}

describe('the drawing page', () => {
  const server = createServer(createRecogniser());
  const errors = [];
  let address;
  let browser;
  let page;

  before(async () => {
    address = await listen(server, 0);
    browser = await launchChromium();
  });

  after(async () => {
    await browser?.close();
    server.close();
    server.closeAllConnections();
  });

  beforeEach(async () => {
    await page?.close();
    page = await browser.newPage({ viewport: VIEW });
    errors.length = 0;
    page.on('pageerror', (error) => errors.push(error));
    await page.goto(address);
  });

  async function draw(points, holdMs = 0) {
    const count = await page.evaluate(() => window.scrivo.strokes.length);
    await page.mouse.move(...points[0]);
    await page.mouse.down();
    for (const point of points.slice(1)) await page.mouse.move(...point);
    await page.waitForTimeout(holdMs);
    await page.mouse.up();
    await page.waitForFunction((n) => window.scrivo.strokes.length === n, count + 1);
    await page.waitForFunction(() => window.scrivo.pending === 0);
  }

  const strokes = () => page.evaluate(() => window.scrivo.strokes);
  const kinds = async () => (await strokes()).map(({ figure }) => figure?.kind ?? null);
  const status = () => page.textContent('#status');

  /** Darkness of the canvas at a place, from 0 (paper) to 255 (ink). */
  const inkAt = (place) =>
    page.evaluate(([x, y]) => {
      const canvas = document.getElementById('surface').getContext('2d');
      const at = [x, y].map((value) => Math.round(value) * devicePixelRatio);
      return canvas.getImageData(...at, 1, 1).data[3];
    }, place);

  test('turns a click into a dot', async () => {
    await draw([[500, 400]]);
    const [dot] = await strokes();
    assert.deepEqual([dot.figure?.kind, dot.path.length], ['dot', 64]);
    assertNear(dot.path.at(-1), [500, 400], 1);
    assert.match(await status(), /^Dot, confidence \d\d %$/);
    assert.deepEqual(errors, []);
  });

  test('names the kind of a quadrangle and its confidence', async () => {
    await draw(inkOf('square'));
    assert.match(await status(), /^Square, confidence \d\d %$/);
    assert.match(await page.textContent('#label'), /^Square · \d\d %$/);
  });

  test('asks the template engine when it is selected, here by keyboard', async () => {
    await page.focus('input[value=beautifier]');
    await page.keyboard.press('ArrowRight');
    assert.equal(await page.isChecked('input[value=template]'), true);
    await draw([[300, 300]]);
    await draw([[500, 400]], 1500);
    await draw(LINE);
    assert.deepEqual(await kinds(), [null, 'dot', 'line'], 'a dot is a press that is held');
    assert.equal(await status(), 'Line');
    const [, held] = await strokes();
    assertNear(held.path.at(-1), [500, 400], 1);
    assert.deepEqual(errors, []);
  });

  test('turns a shaky line, drawn with the mouse, into a clean one', async () => {
    await draw(LINE);
    const [stroke] = await strokes();
    assert.ok(bend(stroke.drawn) > 1e-3, 'the ink itself is not straight');
    assert.deepEqual([stroke.figure?.kind, stroke.path.length], ['line', 21]);
    assert.ok(bend(stroke.path) < 1e-9);
    assertNear(stroke.path[0], FROM, 8);
    assertNear(stroke.path.at(-1), TO, 8);
    await page.waitForTimeout(ANIMATION_MS);
    assert.equal(await inkAt(toPixels(stroke.path[10])), 255, 'the line is painted');
    const fromLine = (point) => distanceToLine(point, stroke.path[0], stroke.path[20]);
    const peak = stroke.drawn.reduce((p, q) => (fromLine(p) > fromLine(q) ? p : q));
    assert.equal(await inkAt(toPixels(peak)), 0, 'the ink that it came from is gone');
    assert.deepEqual(errors, []);
  });

  test('brings the ink back on undo, and removes it on the next', async () => {
    await draw(LINE);
    assert.deepEqual(await kinds(), ['line']);
    await page.keyboard.press('Control+z');
    const [ink] = await strokes();
    assert.deepEqual([ink.figure, ink.path], [null, null]);
    await page.click('#undo');
    assert.deepEqual(await kinds(), []);
    assert.equal(await page.isDisabled('#undo'), true);
  });

  test('keeps strokes as drawn when told to, and clears the page', async () => {
    await page.click('#keep');
    await draw(LINE);
    assert.deepEqual(await kinds(), [null]);
    await page.click('#keep');
    await draw(shakyLine([200, 100], [700, 120]));
    assert.deepEqual(await kinds(), [null, 'line']);
    await page.click('#clear');
    assert.deepEqual(await kinds(), []);
  });

  test('keeps the ink while the server is down, and retries', async () => {
    const { port } = server.address();
    const closed = once(server, 'close');
    server.close().closeAllConnections();
    await closed;
    await draw(LINE);
    assert.deepEqual(await kinds(), [null]);
    assert.match(await page.textContent('#alert'), /server does not answer/);
    await listen(server, port);
    await page.click('#retry');
    await page.waitForFunction(() => window.scrivo.strokes[0].figure?.kind === 'line');
    assert.equal(await page.isHidden('#alert'), true);
  });
});
