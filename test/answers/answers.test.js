'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const { test } = require('node:test');
const { FILE, answers } = require('./answers.js');

test('seeded strokes have the answers on file; `npm run answers` writes those that are meant', () => {
  const expected = fs.readFileSync(FILE, 'utf8').split('\n');
  const actual = answers().split('\n');
  assert.equal(actual.length, expected.length);
  const changed = actual.flatMap((line, i) =>
    line === expected[i] ? [] : [`${i + 1}: ${line}\n   instead of ${expected[i]}`],
  );
  assert.equal(changed.length, 0, `${changed.length} changed:\n${changed.slice(0, 10).join('\n')}`);
});
