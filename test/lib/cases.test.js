'use strict';

const assert = require('node:assert/strict');
const { execFileSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { test } = require('node:test');

const { initScrivo, optimizeAStroke } = require('../../lib');
const { isWasm, root } = require('../support/native.js');

const folder = path.join(root, 'test', 'cases');
const cases = fs
  .readdirSync(folder)
  .filter((file) => file.endsWith('.json'))
  .map((file) => JSON.parse(fs.readFileSync(path.join(folder, file), 'utf8')));

const toPoint = ([x, y, force]) => (force ? { x, y, force } : { x, y });
const toTriple = ({ x, y, force = 0 }) => [x, y, force];

/** The native module's answers by name, in the form that the core's tests print. */
function answersOfThePackage() {
  const figures = ['rectangle', 'triangle', 'isosceles_triangle', 'ellipse'];
  initScrivo(figures.map((figure) => path.join(folder, 'templates', `${figure}.template`)));
  const answer = ({ path: stroke, width, height, others }) => {
    const otherStrokes = others.map((other) => other.map(toPoint));
    const result = optimizeAStroke(stroke.map(toPoint), width, height, otherStrokes);
    return { path: result.path.map(toTriple), type: result.type };
  };
  return Object.fromEntries(cases.map((figure) => [figure.name, answer(figure)]));
}

/** Built with the module; missing where the module is a prebuilt one. */
const core = path.join(root, 'build', 'release', 'test', 'scrivo', 'case_results');
const prebuilt = !fs.existsSync(path.join(root, 'CMakeLists.txt')) && !fs.existsSync(core);

const answers = answersOfThePackage();

test('no case is missing', () => {
  assert.equal(cases.length, 13);
});

for (const { name, why, type, points, path: stroke, width, height, tolerance } of cases) {
  test(`${name}: ${why}`, () => {
    const answer = answers[name];
    assert.equal(answer.type, type);
    if (points === null) {
      assert.deepEqual(answer.path, stroke);
      return;
    }
    assert.equal(answer.path.length, points.length);
    answer.path.forEach(([x, y, force], i) => {
      const [dx, dy] = [(x - points[i][0]) * width, (y - points[i][1]) * height];
      assert.ok(
        Math.abs(dx) <= tolerance && Math.abs(dy) <= tolerance,
        `${i}: off by ${dx}, ${dy}`,
      );
      assert.equal(force, 0);
    });
  });
}

test('the package answers with the doubles of the core', { skip: prebuilt || isWasm }, () => {
  const answersOfTheCore = JSON.parse(execFileSync(core, { encoding: 'utf8' }));
  assert.deepEqual(answers, answersOfTheCore); // strict: every bit counts
});
