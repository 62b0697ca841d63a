'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { describe, test } = require('node:test');

const { root, skipIn } = require('../support/native.js');
const scrivo = require('scrivo');

describe('the entry scrivo', () => {
  const reason = { deno: 'import() in a CommonJS file takes the entry for require()' };
  test('exports the same by require() and import', { skip: skipIn(reason) }, async () => {
    const names = ['FigureType', 'initScrivo', 'optimizeAStroke', 'templates'];
    const imported = await import('scrivo');
    assert.deepEqual(Object.keys(scrivo).sort(), names);
    assert.deepEqual(Object.keys(imported).sort(), names);
    for (const name of names) assert.equal(imported[name], scrivo[name]);
  });

  test('exports only its entry points', () => {
    assert.equal(require('scrivo/package.json').name, 'scrivo');
    assert.throws(() => require('scrivo/lib/native.js'), /lib.native/);
  });

  test('names the figure codes, which cannot change', () => {
    const codes = { NONE: 0, POINT: 1, LINE: 2, ANGLE: 4, POLYGON: 6, ELLIPSE: 7 };
    assert.deepEqual(scrivo.FigureType, codes);
    assert.ok(Object.isFrozen(scrivo.FigureType));
  });

  test('lists the four template files, which exist', () => {
    const { templates } = scrivo;
    const names = ['rectangle', 'triangle', 'isosceles_triangle', 'ellipse'];
    const files = names.map((name) => path.join(root, 'templates', `${name}.template`));
    assert.deepEqual(templates, files);
    for (const file of templates) assert.ok(fs.statSync(file).size > 0, file);
    assert.ok(Object.isFrozen(templates));
  });
});
