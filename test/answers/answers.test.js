'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const { test } = require('node:test');
const { BEAUTIFIERS, answers, drawStrokes, fileOf } = require('./answers.js');

test('seeded strokes have the answers on file; `npm run answers` writes those that are meant', () => {
  for (const [name, text] of answers()) {
    const expected = fs.readFileSync(fileOf(name), 'utf8').split('\n');
    const actual = text.split('\n');
    assert.equal(actual.length, expected.length);
    const changed = actual.flatMap((line, i) =>
      line === expected[i] ? [] : [`${name}:${i + 1}: ${line}\n   instead of ${expected[i]}`],
    );
    const shown = changed.slice(0, 10).join('\n');
    assert.equal(changed.length, 0, `${changed.length} changed:\n${shown}`);
  }
});

test('strokes drawn backwards have the same answer, except at even odds', () => {
  let sure = 0;
  for (const { label, stroke, rest } of drawStrokes()) {
    const [forwards, backwards] = [stroke, [...stroke].reverse()].map((points) =>
      BEAUTIFIERS[0].beautify(points, ...rest),
    );
    const isSure = Math.min(forwards.confidence, backwards.confidence) > 0.9;
    if (!isSure) continue;
    sure += 1;
    assert.equal(backwards.type, forwards.type, label);
  }
  assert.ok(sure > 400, `${sure} strokes`);
});
