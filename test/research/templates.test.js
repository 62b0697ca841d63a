'use strict';

const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { after, before, describe, it } = require('node:test');
const { createEngine } = require('../../packages/cli/lib/engines.js');
const { TEMPLATE_FIGURES } = require('../../research/templates/candidates.js');
const { gatesOf, normalise } = require('../../research/templates/matching.js');
const {
  lengthOf,
  polygon,
  roundCorners,
  trace,
  turnAt,
} = require('../../research/templates/outlines.js');
const { createUniform } = require('../../research/templates/random.js');
const {
  coverOf,
  prepareCandidates,
  selectCandidates,
} = require('../../research/templates/search.js');
const {
  sampleParameters,
  templateOutline,
} = require('../../research/templates/template-outlines.js');
const { boundingBox, placeStroke } = require('../../packages/cli/lib/placement.js');
const { FIGURES, HANDS, drawInk } = require('../../research/ink/index.js');
const { makeFolder } = require('../support/cli.js');
const { readParameters, writeTemplates } = require('../../research/templates/main.js');

const TEMPLATE_FILES = TEMPLATE_FIGURES.map((figure) => `${figure}.template`);
const SHIPPED = path.join(__dirname, '..', '..', 'templates');

function inUnits(stroke) {
  const placed = placeStroke(stroke, 200);
  const points = placed.points.map(({ x, y }) => ({ x: x * placed.width, y: y * placed.height }));
  return { placed, points };
}

describe('template files', () => {
  const folder = makeFolder(after);
  before(() => writeTemplates(folder, readParameters()));

  it('are what their generator writes', () => {
    for (const file of TEMPLATE_FILES) {
      const written = fs.readFileSync(path.join(folder, file), 'utf8');
      assert.equal(fs.readFileSync(path.join(SHIPPED, file), 'utf8'), written, file);
    }
  });

  it('let figures of an ordinary hand come back as what they are', () => {
    const engine = createEngine('exact');
    engine.load({});
    const hand = { ...HANDS.ordinary, rate: 60 };
    const closed = Object.keys(FIGURES).filter((name) =>
      ['triangle', 'quadrangle', 'ellipse'].includes(FIGURES[name].family),
    );
    for (const figure of closed) {
      const strokes = Array.from({ length: 20 }, (_, seed) => drawInk({ figure, seed, hand }));
      const right = strokes.filter(
        (stroke) => engine.answer(placeStroke(stroke, 200)).family === stroke.family,
      );
      assert.ok(right.length >= 18, `${figure}: ${right.length} of 20`);
    }
  });
});

describe('template search', () => {
  // The search works the matching out by itself; were it to differ from the engine, it would
  // choose for another one.
  it('foresees which strokes the engine recognises', () => {
    const prepared = prepareCandidates(
      readParameters().map((each) => ({ figure: each.figure, outline: templateOutline(each) })),
    );
    const engine = createEngine('exact');
    engine.load({});
    const foreseen = { polygons: 0, ellipses: 0, none: 0 };
    for (const figure of Object.keys(FIGURES)) {
      for (const hand of Object.values(HANDS)) {
        for (const seed of [1, 2, 3, 4]) {
          const { placed, points } = inUnits(drawInk({ figure, seed, hand }));
          const { group } = gatesOf(points);
          if (group === 'all') continue; // the nearest decides, not only who is reached
          const reached = coverOf(points, prepared).candidates.length > 0;
          const { type } = engine.answer(placed);
          assert.equal(type === 6 || type === 7, reached, `${figure} ${seed}`);
          if (reached) assert.equal(type, group === 'polygons' ? 6 : 7);
          foreseen[reached ? group : 'none'] += 1;
        }
      }
    }
    assert.ok(Math.min(...Object.values(foreseen)) > 10, JSON.stringify(foreseen));
  });

  it('takes what adds most, stops at its price and shuns harm', () => {
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
    fs.writeFileSync(train, ['{"family":"dot"}', ...strokes].join('\n'));
    const tool = path.join(__dirname, '..', '..', 'research', 'templates', 'main.js');
    const options = ['--parameters', parameters, '--output', output, '--candidates', '40'];
    const run = (...args) =>
      spawnSync(process.execPath, [tool, ...options, ...args], { encoding: 'utf8' });
    const { status, stdout, stderr } = run('--search', train);
    assert.equal(status, 0, stderr);
    assert.match(stderr, /train\.ndjson:1: "points" is missing/);
    assert.match(stdout, /^first +size +train triangles/m);
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

describe('outlines', () => {
  const square = polygon(JSON.parse('[[0,0],[10,0],[10,10],[0,10]]'));

  it('are traced from anywhere, short of the start or beyond it', () => {
    const ends = (...args) => {
      const way = trace(square, ...args);
      return [way[0], way.at(-1)].map(({ x, y }) => `${x},${y}`).join(' ');
    };
    assert.equal(ends(0, 1), '0,0 0,0');
    assert.equal(ends(0.125, 1.25), '5,0 10,5');
    assert.equal(ends(0.5, 0.75), '10,10 10,0');
    for (const start of [0, 0.1, 0.25, 0.9]) {
      for (const sweep of [0.8, 1, 1.3]) {
        assert.ok(Math.abs(lengthOf(trace(square, start, sweep)) - 40 * sweep) < 1e-9);
      }
    }
  });

  it('of candidates repeat for a seed, have the asked size and a common form', () => {
    const sample = () => sampleParameters(createUniform(3), 50);
    assert.deepEqual(sample(), sample());
    for (const parameters of sample()) {
      const outline = templateOutline(parameters);
      const box = boundingBox(outline.map(({ x, y }) => [x, y]));
      const what = JSON.stringify(parameters);
      assert.ok(Math.max(box.width, box.height) <= 200.1, what);
      assert.ok(Math.max(box.width, box.height) > 100, what);
      assert.equal(normalise(outline)?.length, 128, what);
    }
  });

  it('lose their corners to arcs and keep their ends', () => {
    const way = trace(square, 0.125, 1);
    const rounded = roundCorners(way, 2);
    const turns = rounded.slice(1, -1).map((point, i) => turnAt(rounded[i], point, rounded[i + 2]));
    assert.ok(Math.max(...turns) < 0.5, 'no turn of 90 degrees is left');
    assert.deepEqual([rounded[0], rounded.at(-1)], [way[0], way.at(-1)]);
    assert.ok(lengthOf(rounded) < lengthOf(way));
    assert.deepEqual(roundCorners(way, 0), way);
  });
});
