'use strict';

const assert = require('node:assert/strict');
const { test } = require('node:test');
const svgpath = require('svgpath');
const { splitCommands } = require('../../../packages/cli/lib/read/path-data.js');

const TIMES = 7000;

// Repetitions of each command, in notations that only just keep the numbers apart.
const REPEATED = {
  M: ['1 2', '-3.5.25', '10,20'],
  l: ['1e1-2', '.5.5', '12 34'],
  H: ['-12.50', '+3', '4'],
  v: ['1', '22', '.333'],
  C: ['1 2 3 4 5 6', '-1-2-3-4-5-6', '.1.2.3.4.5.6'],
  s: ['1 2 3 4', '10-20 30-40'],
  Q: ['1 2 3 4', '1.5.5.5.5'],
  t: ['1 2', '-1e-2,3E+1'],
  a: ['5 5 0 0110 10', '5,5,30,1,0-3-4', '3 4 .5 11.5.5'],
};

const dataOf = (letter, texts) =>
  `M1 1${letter}${Array.from({ length: TIMES }, (_, i) => texts[i % texts.length]).join(' ')}`;

test('a long command becomes short ones of the same meaning', () => {
  for (const [letter, texts] of Object.entries(REPEATED)) {
    const data = dataOf(letter, texts);
    const split = splitCommands(`${data}${' '.repeat(50000)}Z`);
    const runs = split.match(/[a-df-z][^a-df-z]*/gi);
    assert.ok(runs.length > TIMES / 1000, letter);
    const { segments, err } = svgpath(`${data}Z`);
    assert.deepEqual([svgpath(split).segments, err], [segments, ''], letter);
  }
});

test('what is wrong in path data stays wrong', () => {
  for (const wrong of ['5', '1.', '3.25', '#', '1 2 x', '..']) {
    const data = `M1 1L${'12 34.5 '.repeat(7000)}${wrong}`;
    const [whole, split] = [data, splitCommands(data)].map((each) => svgpath(each));
    assert.equal(split.err === '', whole.err === '', wrong);
    assert.deepEqual(split.segments.length, whole.segments.length, wrong);
  }
});
