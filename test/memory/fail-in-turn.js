'use strict';

// fail-in-turn.js SHIM CALL FIRST: makes a call of a native module again and again, and lets
// one allocation more succeed each time. Prints a line of JSON before each call, so that the
// last one tells how far it got.

const assert = require('node:assert/strict');
const { initScrivo, optimizeAStroke, templates } = require('../../lib/index.js');
const { Beautifier, outlineOf, resample } = require('../../lib/beautifier.js');
const { LineIdealiser } = require('../../lib/lines.js');
const { INK, WIDTH, HEIGHT } = require('../support/strokes.js');

const [shim, name, first] = process.argv.slice(2);
const { failAt, stop, countLive } = require(shim);

const beautifier = new Beautifier();
const others = [INK.line, INK.angle];
const circle = { kind: 'circle', centre: { x: 1, y: 1 }, radius: 1 };
const linesOf = (...strokes) =>
  Buffer.from(
    strokes
      .map((ink) => `{"id":7,"points":[${ink.map(({ x, y }) => `[${900 * x},${600 * y}]`)}]}\n`)
      .join(''),
  );
const lines = linesOf(INK.quadrangle, INK.ellipse);
const CALLS = {
  // One that has been used has the memory that it needs.
  idealise: () => new LineIdealiser().idealise(lines, 'a.ndjson'),
  Beautifier: () => new Beautifier({ anchors: ['end'] }).options,
  beautify: () => beautifier.beautify(INK.quadrangle, WIDTH, HEIGHT, others),
  beautifyAs: () => beautifier.beautifyAs(INK.ellipse, 'square', WIDTH, HEIGHT, others),
  resample: () => resample(INK.quadrangle, WIDTH, HEIGHT),
  outlineOf: () => outlineOf(circle, WIDTH, HEIGHT),
  optimizeAStroke: () => optimizeAStroke(INK.quadrangle, WIDTH, HEIGHT, [INK.dot]),
};

/** Objects are freed some turns after they were collected. */
async function collect() {
  for (let i = 0; i < 3; i++) {
    globalThis.gc();
    await new Promise(setImmediate);
  }
}

function attempt(call) {
  try {
    return { answer: call() };
  } catch (error) {
    assert.ok(error instanceof Error);
    return { error };
  }
}

async function failInTurn(call) {
  initScrivo(templates);
  const expected = call();
  const found = { at: Number(first), failed: 0, thrown: 0, left: 0, done: false };
  for (; !found.done; found.at++) {
    process.stdout.write(`${JSON.stringify(found)}\n`);
    failAt(found.at);
    const { error, answer } = attempt(call);
    if (stop()) found.failed++;
    else found.done = true;
    if (error) found.thrown++;
    else if (name === 'optimizeAStroke' && answer.type === 0) {
      assert.deepEqual(answer.path, INK.quadrangle);
    } else assert.deepEqual(answer, expected);
    assert.deepEqual(call(), expected);
  }
  await collect();
  found.left = countLive();
  process.stdout.write(`${JSON.stringify(found)}\n`);
}

failInTurn(CALLS[name]);
