'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { after, describe, test } = require('node:test');
const { FIGURES } = require('../../lib/beautifier.js');
const { createEngine } = require('../../packages/cli/lib/engines.js');
const { ANSWERS, FAMILIES } = require('../../packages/cli/lib/families.js');
const { familyOfAnswer } = require('../../packages/cli/lib/template-answer.js');
const { resolveTemplates } = require('../../packages/cli/lib/template-files.js');
const { makeFolder } = require('../support/cli.js');

const folder = makeFolder(after);

describe('engines', () => {
  test('every family of the beautifier has a code, a colour and a label', () => {
    assert.deepEqual(FAMILIES, [...FIGURES]);
    for (const [name, { type, colour, label }] of Object.entries(ANSWERS)) {
      assert.ok(Number.isInteger(type), name);
      assert.match(colour, /^#[\da-f]{6}$/, name);
      assert.ok(label, name);
    }
  });

  test('a family without an entry stops the run', () => {
    const { dot } = ANSWERS;
    delete ANSWERS.dot;
    try {
      assert.throws(() => createEngine('beautifier').load({}), /families\.js lacks dot/);
    } finally {
      ANSWERS.dot = dot;
    }
  });

  test('polygons of the template engine are named by their edges', () => {
    const outline = (edges) =>
      Array.from({ length: edges }, (_, i) => [
        ...Array(20).fill({ x: i, y: i }),
        { x: (i + 1) % edges, y: (i + 1) % edges },
      ]).flat();
    const drawn = Array.from({ length: 63 }, (_, i) => ({ x: i / 63, y: 0.5 }));
    const names = [outline(3), outline(4), outline(5), outline(2), drawn].map((points) =>
      familyOfAnswer({ type: 6, path: points }),
    );
    assert.deepEqual(names, ['triangle', 'quadrangle', 'polygon', 'polygon', 'polygon']);
    assert.deepEqual(
      [0, 1, 2, 4, 7].map((type) => familyOfAnswer({ type, path: outline(4) })),
      ['none', 'dot', 'line', 'angle', 'ellipse'],
    );
  });
});

test('templates are files, or a directory of which the known names are taken', () => {
  const templates = path.join(folder, 'templates');
  fs.mkdirSync(templates);
  assert.throws(() => resolveTemplates([templates]), /holds none of rectangle\.template/);
  for (const name of ['ellipse.template', 'notes.txt', 'isosceles_triangle.template']) {
    fs.writeFileSync(path.join(templates, name), '0,0,1,1\n');
  }
  assert.deepEqual(
    resolveTemplates([templates]).map((file) => path.basename(file)),
    ['isosceles_triangle.template', 'ellipse.template'],
  );
  const own = path.join(folder, 'my.ellipse.template.txt');
  fs.writeFileSync(own, '0,0,1,1\n');
  assert.deepEqual(resolveTemplates([own]), [own]);
  assert.throws(() => resolveTemplates([templates, own]), /are both ellipse\.template: name one/);
  assert.deepEqual(resolveTemplates([]), []);
});
