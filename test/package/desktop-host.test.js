'use strict';

// The example for desktop hosts, main process and preload script, under a host
// that is not there: a stand-in passes messages on as copies, as the real one does.

const assert = require('node:assert/strict');
const fs = require('node:fs');
const Module = require('node:module');
const path = require('node:path');
const { after, test } = require('node:test');

const { ROOT } = require('../../tools/support/run.js');

const folder = path.join(ROOT, 'examples', 'desktop-host');
const handlers = new Map();
const world = {};
const windows = [];

const electron = {
  app: { whenReady: () => Promise.resolve(), on: () => {} },
  BrowserWindow: class {
    constructor(options) {
      windows.push(options);
    }
    loadFile(file) {
      assert.ok(fs.existsSync(file));
    }
  },
  contextBridge: { exposeInMainWorld: (name, value) => (world[name] = value) },
  ipcMain: { handle: (channel, handler) => handlers.set(channel, handler) },
  ipcRenderer: {
    invoke: async (channel, message) =>
      structuredClone(await handlers.get(channel)({}, structuredClone(message))),
  },
};

const installed = { electron, scrivo: require('../..') };
const { _load: load } = Module;
Module._load = (name, ...rest) => installed[name] ?? load(name, ...rest);
after(() => (Module._load = load));

test('the page gets a figure for its stroke', async () => {
  require(path.join(folder, 'main.js'));
  await electron.app.whenReady();
  require(windows[0].webPreferences.preload);
  assert.deepEqual(Object.keys(world), ['scrivo']);
  assert.deepEqual(Object.keys(world.scrivo), ['idealise']);

  const turn = (i) => (2 * Math.PI * i) / 64;
  const circle = Array.from({ length: 65 }, (_, i) => ({
    x: 0.5 + 0.3 * Math.cos(turn(i)),
    y: 0.5 + 0.3 * Math.sin(turn(i)),
    force: 0.5,
  }));
  const { path: outline, type } = await world.scrivo.idealise(circle, 600, 600, []);
  assert.deepEqual([type, outline.length], [7, 85]);
  await assert.rejects(world.scrivo.idealise([null], 600, 600, []), TypeError);
});

test('what native code opens is kept out of the archive', () => {
  const { build } = JSON.parse(fs.readFileSync(path.join(folder, 'package.json'), 'utf8'));
  const opened = ['prebuilds', 'templates'].map((name) => `node_modules/scrivo/${name}`);
  assert.deepEqual(build.asarUnpack, opened);
  assert.equal(build.npmRebuild, false, 'there is nothing to rebuild: no node-gyp project');
});
