'use strict';

const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { after, test } = require('node:test');
const { drawInk } = require('../../research/ink/index.js');
const { makeFolder } = require('../support/cli.js');

const TOOL = path.join(__dirname, '..', '..', 'tools', 'evaluate.js');
const FIGURES = ['line', 'angle', 'isosceles', 'rectangle', 'square', 'circle', 'ellipse', 'wave'];

test('evaluate prints kinds and distances for the beautifier alone', () => {
  const folder = makeFolder(after);
  const file = path.join(folder, 'labelled.ndjson');
  const strokes = FIGURES.map((figure, seed) => JSON.stringify(drawInk({ figure, seed })));
  fs.writeFileSync(file, strokes.join('\n'));
  const evaluate = (...args) => {
    const { status, stdout, stderr } = spawnSync(process.execPath, [TOOL, ...args, file]);
    assert.equal(status, 0, String(stderr));
    return String(stdout);
  };
  const text = evaluate();
  assert.match(text, /^ +rectangle +1 +rectangle 100\.0 %$/m);
  assert.match(text, /^ +circle +1 +circle 100\.0 %$/m);
  assert.match(text, /^ +quadrangle +mean distance, median: \d\.\d\d %/m);
  assert.doesNotMatch(evaluate('--engine', 'template'), /mean distance/);
  assert.equal(JSON.parse(evaluate('--json')).strokes, FIGURES.length);
});
