'use strict';

const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { after, before, describe, it } = require('node:test');
const { createEngine } = require('../../../packages/cli/lib/engines.js');
const { placeStroke } = require('../../../packages/cli/lib/placement.js');
const { scaled } = require('../../../research/beautifier/strokes.js');
const { FIGURES, HANDS, drawInk } = require('../../../research/ink/index.js');
const { TEMPLATE_FIGURES } = require('../../../research/templates/candidates.js');
const { readParameters, writeTemplates } = require('../../../research/templates/main.js');
const { coversOf, selectCandidates } = require('../../../research/templates/search.js');
const { templateOutline } = require('../../../research/templates/template-outlines.js');
const { makeFolder } = require('../../support/cli.js');
const { root } = require('../../support/native.js');

const TEMPLATE_FILES = TEMPLATE_FIGURES.map((figure) => `${figure}.template`);
const SHIPPED = path.join(root, 'templates');

/** As in the search: of a longer side of 200 units, but for dots. */
const inUnits = ({ family, points }) => (family === 'dot' ? points : scaled(points, 200));

const engine = createEngine('template');
before(() => engine.load({}));
const answer = (points) => engine.answer(placeStroke({ points }, 'natural'));

describe('template files', () => {
  const folder = makeFolder(after);
  before(() => writeTemplates(folder, readParameters()));

  it('are what their generator writes', () => {
    for (const file of TEMPLATE_FILES) {
      const written = fs.readFileSync(path.join(folder, file), 'utf8');
      assert.equal(fs.readFileSync(path.join(SHIPPED, file), 'utf8'), written, file);
    }
  });

  it('recognise the figures of an ordinary hand', () => {
    const hand = { ...HANDS.ordinary, rate: 60 };
    const closed = Object.keys(FIGURES).filter((name) =>
      ['triangle', 'quadrangle', 'ellipse'].includes(FIGURES[name].family),
    );
    for (const figure of closed) {
      const strokes = Array.from({ length: 20 }, (_, seed) => drawInk({ figure, seed, hand }));
      const right = strokes.filter(
        (stroke) => answer(inUnits(stroke)).family === stroke.family,
      );
      assert.ok(right.length >= 18, `${figure}: ${right.length} of 20`);
    }
  });
});

describe('template search', () => {
  it('foresees which strokes the engine recognises', () => {
    const candidates = readParameters().map((each) => ({
      figure: each.figure,
      outline: templateOutline(each),
    }));
    const strokes = Object.keys(FIGURES).flatMap((figure) =>
      Object.values(HANDS).flatMap((hand) =>
        [1, 2, 3, 4].map((seed) => inUnits(drawInk({ figure, seed, hand }))),
      ),
    );
    const foreseen = { polygons: 0, ellipses: 0, none: 0 };
    coversOf(strokes, candidates).forEach((cover, i) => {
      if (cover.group === 'all') return; // any template may be the nearest
      const isReached = cover.candidates.length > 0;
      const { type } = answer(strokes[i]);
      assert.equal(type === 6 || type === 7, isReached, `stroke ${i}`);
      if (isReached) assert.equal(type, cover.group === 'polygons' ? 6 : 7);
      foreseen[isReached ? cover.group : 'none'] += 1;
    });
    assert.ok(Math.min(...Object.values(foreseen)) > 10, JSON.stringify(foreseen));
  });

  it('takes what adds most, stops at its price and avoids harm', () => {
    const stroke = (gain, cover) => ({
      gain,
      cover: { candidates: Object.keys(cover).map(Number), left: Object.values(cover) },
    });
    const strokes = [
      stroke(1, { 0: 9, 1: 9 }),
      stroke(1, { 0: 9, 2: 9 }),
      stroke(1, { 1: 9, 3: 9 }),
      stroke(1, { 0: 9 }),
      stroke(-2, { 3: 0.5 }),
      stroke(1, { 4: 0.5 }),
    ];
    assert.deepEqual(selectCandidates(strokes, { price: 1, margin: 1 }), [0, 1]);
    assert.deepEqual(selectCandidates(strokes, { price: 2, margin: 1 }), [0]);
    // Without a margin the stroke at the edge of reach counts too.
    assert.deepEqual(selectCandidates(strokes, { price: 1, margin: 0 }), [0, 1, 4]);
    const groups = ['2,4', '1,3'].map((group) => group.split(',').map(Number));
    assert.deepEqual(selectCandidates(strokes, { price: 5, margin: 1, groups }), [2, 1]);
  });
});

describe('the search for the shipped parameters', () => {
  const folder = makeFolder(after);

  it('chooses by labelled strokes and writes what it chose', () => {
    const strokes = ['circle', 'ellipse', 'square', 'equilateral', 'pentagon', 'spiral'].flatMap(
      (figure) => [1, 2, 3, 4].map((seed) => JSON.stringify(drawInk({ figure, seed }))),
    );
    const [train, parameters, output] = ['train.ndjson', 'parameters.json', 'made'].map((name) =>
      path.join(folder, name),
    );
    fs.writeFileSync(train, strokes.join('\n'));
    const tool = path.join(root, 'research', 'templates', 'main.js');
    const options = ['--parameters', parameters, '--output', output, '--candidates', '40'];
    const run = (...args) =>
      spawnSync(process.execPath, [tool, ...options, ...args], { encoding: 'utf8' });
    const { status, stdout, stderr } = run('--search', train);
    assert.equal(status, 0, stderr);
    assert.match(stdout, /first.*size.*train triangle/);
    const { madeBy, templates } = JSON.parse(fs.readFileSync(parameters, 'utf8'));
    assert.match(madeBy, /--candidates 40 --seed 1/);
    // Each file gets an outline, even one that adds little.
    for (const file of TEMPLATE_FILES) {
      const figure = path.basename(file, '.template');
      const chosen = templates.filter((each) => each.figure === figure).length;
      const lines = fs.readFileSync(path.join(output, file), 'utf8').split('\n').length - 1;
      assert.ok(chosen >= 1 && lines === chosen, `${file}: ${lines} of ${chosen}`);
    }
    assert.deepEqual(
      [run('--search', train, '--harm', 'much'), run('--quick')].map((each) => each.status),
      [2, 2],
    );
  });
});
