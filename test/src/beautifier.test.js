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

test('any wrong arguments throw once, and the process goes on', () => {
  const { Beautifier: Native, outlineOf, resample } = loadNative('beautifier');
  const options = [[1], 0, 4, 0.5, true, true, true, true, []];
  const native = new Native(...options);
  const stroke = [new Float64Array(3), 3, 1, 1, new Float64Array(4), Uint32Array.of(2)];
  const calls = [
    [(...args) => new Native(...args), options],
    [(...args) => native.beautify(...args), stroke],
    [(...args) => native.beautifyAs(...args), [...stroke, 1, -1]],
    [outlineOf, [2, new Float64Array(4), 1, 1]],
    [resample, [new Float64Array(4), 1, 1]],
  ];
  const throwing = Object.defineProperty([1], 0, {
    get() {
      throw new Error('getter');
    },
  });
  const wrong = [undefined, null, {}, 'a', Symbol('s'), new Uint8Array(1), [-1], [256], throwing];
  for (const [call, args] of calls) {
    assert.doesNotThrow(() => call(...args));
    for (const i of args.keys()) {
      for (const value of wrong) {
        const changed = Object.assign([...args], { [i]: value });
        assert.throws(() => call(...changed), Error, `value ${wrong.indexOf(value)} as ${i}`);
      }
      if (args.length === i + 1) continue;
      assert.throws(() => call(...args.slice(0, i)), Error, `${i} arguments`);
    }
  }
  assert.throws(() => new Native([7]), Error);
  assert.throws(() => Native(...options), /needs new/);
  for (const self of [undefined, 1, {}, Object.create(native)]) {
    assert.throws(() => native.beautify.call(self, ...stroke), Error);
  }
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
