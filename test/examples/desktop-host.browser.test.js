'use strict';

// The example for desktop hosts, in the layout of its packager: JavaScript in a folder that
// stands for the archive, beside it only what `asarUnpack` names. The host is a substitute
// that copies messages; the page runs in a browser.

const assert = require('node:assert/strict');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { after, before, beforeEach, describe, test } = require('node:test');
const { pathToFileURL } = require('node:url');

const { findNative } = require('../../lib/native.js');
const { ROOT } = require('../../tools/support/run.js');
const { launchChromium } = require('../support/chromium.js');
const { HEIGHT, WIDTH, inkOf } = require('../support/strokes.js');

const EXAMPLE = path.join(ROOT, 'examples', 'desktop-host');
const HOST = `
  const handlers = new Map();
  const seen = (exports.seen = { windows: [], world: {} });
  exports.app = { whenReady: () => Promise.resolve(), on: () => {} };
  exports.BrowserWindow = class {
    constructor(options) { seen.windows.push(options.webPreferences); }
    async loadFile(file) { seen.file = file; }
  };
  exports.contextBridge = { exposeInMainWorld: (name, value) => (seen.world[name] = value) };
  exports.ipcMain = { handle: (channel, handler) => handlers.set(channel, handler) };
  exports.ipcRenderer = {
    invoke: async (channel, message) =>
      structuredClone(await handlers.get(channel)({}, structuredClone(message))),
  };`;

/** Folders of the package that the packager keeps beside the archive. */
function unpackedFolders() {
  const { build } = JSON.parse(fs.readFileSync(path.join(EXAMPLE, 'package.json'), 'utf8'));
  const pattern = /^\*\*\/node_modules\/scrivo\/(\w+)\/\*\*$/;
  return build.asarUnpack.map((glob) => pattern.exec(glob)[1]);
}

function packageExample(resources) {
  const archive = path.join(resources, 'app.asar');
  const modules = path.join(archive, 'node_modules');
  const shipped = path.join(resources, 'shipped');
  const copy = (from, to) => fs.cpSync(from, to, { recursive: true });
  copy(EXAMPLE, archive);
  for (const name of ['lib', 'package.json']) {
    copy(path.join(ROOT, name), path.join(modules, 'scrivo', name));
  }
  const target = `${process.platform}-${process.arch}`;
  copy(findNative('beautifier'), path.join(shipped, 'prebuilds', target, 'beautifier.node'));
  for (const name of unpackedFolders()) {
    copy(path.join(shipped, name), path.join(`${archive}.unpacked/node_modules/scrivo`, name));
  }
  fs.mkdirSync(path.join(modules, 'electron'));
  fs.writeFileSync(path.join(modules, 'electron', 'index.js'), HOST);
  return archive;
}

describe('the example for desktop hosts', () => {
  const resources = fs.realpathSync(fs.mkdtempSync(path.join(os.tmpdir(), 'scrivo-host-')));
  let seen;
  let browser;
  let page;
  let answer; // resolves when the page gets its answer

  before(async () => {
    const archive = packageExample(resources);
    ({ seen } = require(path.join(archive, 'node_modules', 'electron')));
    require(path.join(archive, 'main.js'));
    await new Promise(setImmediate); // the window opens once the host is ready
    require(seen.windows[0].preload);
    browser = await launchChromium();
  });

  after(async () => {
    await browser?.close();
    fs.rmSync(resources, { recursive: true });
  });

  beforeEach(async () => {
    answer = Promise.resolve();
    await page?.close();
    page = await browser.newPage({ viewport: { width: WIDTH, height: HEIGHT } });
    await page.exposeFunction('bridge', async (...call) => {
      const result = await seen.world.scrivo.beautify(...call);
      await answer;
      return result;
    });
    await page.addInitScript('window.scrivo = { beautify: window.bridge };');
    await page.goto(pathToFileURL(seen.file).href);
  });

  const strokes = () => page.evaluate('strokes');
  const undo = () => page.click('button');

  async function draw(points) {
    await page.mouse.move(...points[0]);
    await page.mouse.down();
    for (const point of points.slice(1)) await page.mouse.move(...point);
    await page.mouse.up();
  }

  test('exposes one function to the page', () => {
    const [{ contextIsolation, nodeIntegration, sandbox }] = seen.windows;
    assert.deepEqual([contextIsolation, nodeIntegration, sandbox], [true, undefined, true]);
    assert.deepEqual(Object.keys(seen.world), ['scrivo']);
    assert.deepEqual(Object.keys(seen.world.scrivo), ['beautify']);
  });

  test('passes an error on to the page', async () => {
    await assert.rejects(seen.world.scrivo.beautify([null], 600, 600, []), TypeError);
  });

  test('shows the figure, undoes it to the ink, and then removes that', async () => {
    await draw(inkOf('circle'));
    await page.waitForFunction('strokes[0].path');
    const [{ ink, path: circle }] = await strokes();
    assert.equal(circle.length, 85);
    await undo();
    assert.deepEqual(await strokes(), [{ ink, path: null }]);
    await undo();
    assert.deepEqual(await strokes(), []);
  });

  test('keeps ink that is no figure', async () => {
    const zigzag = inkOf('zigzag');
    await draw(zigzag);
    await page.waitForFunction('strokes.length === 1');
    await page.evaluate('window.scrivo.beautify([], 1, 1, [])'); // answered after the stroke
    const [{ ink, path: shape }] = await strokes();
    assert.equal(shape, null);
    assert.equal(ink.length, zigzag.length);
  });

  test('drops a figure whose stroke is gone', async () => {
    let release;
    answer = new Promise((resolve) => (release = resolve));
    await draw(inkOf('circle'));
    assert.equal((await strokes())[0].path, null, 'the ink stays until there is an answer');
    await undo();
    release();
    await page.evaluate('window.scrivo.beautify([], 1, 1, [])');
    assert.deepEqual(await strokes(), []);
  });
});
