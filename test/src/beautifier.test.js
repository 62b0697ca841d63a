'use strict';

const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const { once } = require('node:events');
const path = require('node:path');
const { test } = require('node:test');
const { Worker } = require('node:worker_threads');

const { Beautifier } = require('../../lib/beautifier.js');
const { loadNative } = require('../../lib/native.js');
const { HEIGHT, INK, WIDTH } = require('../support/strokes.js');

test('arguments are arrays of the right type, read no further than their ends', () => {
  const { Beautifier: Native } = loadNative('beautifier');
  const native = new Native([1], 0, 4, 0.5, true, true, true, true, []);
  const call = (points, others) =>
    native.beautify(points, 3, 1, 1, others, Uint32Array.of(others.length / 2));
  assert.equal(call(new Float64Array(3), new Float64Array(2)).length, 8);
  assert.throws(() => call(new Uint8Array(24), new Float64Array(2)), /Float64Array/);
  assert.throws(() => call(new Float64Array(3), new Float32Array(2)), /Float64Array/);
});

const FILE = JSON.stringify(path.join(__dirname, '..', '..', 'lib', 'beautifier.js'));

test('survives the end of a thread during a call', () => {
  const worker = `
    const { Beautifier } = require(${FILE});
    const beautifier = new Beautifier();
    require('node:worker_threads').parentPort.postMessage('started');
    for (;;) beautifier.beautify(new Float64Array(300), 800, 600);`;
  const main = async (source) => {
    const { Worker } = require('node:worker_threads');
    for (let i = 0; i < 20; i++) {
      const thread = new Worker(source, { eval: true });
      await new Promise((resolve) => thread.once('message', resolve));
      await new Promise((resolve) => setTimeout(resolve, 5));
      await thread.terminate();
    }
    process.stdout.write('all ended');
  };
  const args = ['-e', `(${main})(${JSON.stringify(worker)})`];
  const { stdout, signal } = spawnSync(process.execPath, args, { encoding: 'utf8' });
  assert.deepEqual([stdout, signal], ['all ended', null]);
});

test('answers the same in several threads at once', async () => {
  const source = `
    const { Beautifier } = require(${FILE});
    const { parentPort, workerData } = require('node:worker_threads');
    const beautifier = new Beautifier();
    parentPort.postMessage(workerData.map((stroke) => beautifier.beautify(stroke, 1000, 800)));`;
  const strokes = Object.values(INK);
  const inThread = () => once(new Worker(source, { eval: true, workerData: strokes }), 'message');
  const here = strokes.map((stroke) => new Beautifier().beautify(stroke, WIDTH, HEIGHT));
  for (const [answers] of await Promise.all([inThread(), inThread(), inThread()])) {
    assert.deepEqual(answers, here);
  }
});
