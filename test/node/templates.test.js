'use strict';

const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { after, before, describe, it } = require('node:test');
const { createEngine } = require('../../lib/cli/engines.js');
const { divideIntoFolds } = require('../../lib/cli/learn/folds.js');
const { gatesOf, normalise } = require('../../lib/cli/learn/matching.js');
const {
  lengthOf,
  polygon,
  roundCorners,
  trace,
  turnAt,
} = require('../../lib/cli/learn/outlines.js');
const { createUniform } = require('../../lib/cli/learn/random.js');
const { coverOf, prepareCandidates, selectCandidates } = require('../../lib/cli/learn/search.js');
const { sampleParameters, templateOutline } = require('../../lib/cli/learn/template-outlines.js');
const { boundingBox, placeStroke } = require('../../lib/cli/placement.js');
const { TEMPLATE_FILES } = require('../../lib/cli/template-files.js');
const { FIGURES, HANDS, drawInk } = require('../../tools/ink/index.js');
const { makeFolder, run, start, toNdjson, until } = require('./support/cli.js');
const { readParameters, writeTemplates } = require('../../tools/templates.js');

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

  it('holds out every stroke once, all of a writer together', () => {
    const writers = ['a', 'a', 'a', 'b', undefined, 'c', 'b', undefined, 'd', 'd'];
    const strokes = writers.map((writer) => ({ writer }));
    const folds = divideIntoFolds(strokes, { byWriter: true, folds: 3, seed: 1 });
    assert.deepEqual(folds.flat().sort(), [...strokes.keys()]);
    assert.deepEqual(folds.map((fold) => fold.length).sort(), [3, 3, 4]);
    for (const writer of ['a', 'b', 'c', 'd']) {
      const its = folds.filter((fold) => fold.some((i) => writers[i] === writer));
      assert.equal(its.length, 1, writer);
    }
    const alone = divideIntoFolds(strokes, { byWriter: false, folds: 50, seed: 1 });
    assert.equal(alone.length, 10);
    const other = divideIntoFolds(strokes, { byWriter: false, folds: 50, seed: 2 });
    assert.notDeepEqual(other, alone);
  });
});

describe('scrivo templates', () => {
  const folder = makeFolder(after);
  const inFolder = (...names) => path.join(folder, ...names);
  const learn = (...args) => run(folder, ['templates', ...args, '--candidates', '60']);

  /** Flat ellipses, four times as wide as high, that the shipped outlines pass over; and waves. */
  function flatInk() {
    const flat = Array.from({ length: 24 }, (_, seed) => {
      const { points } = drawInk({ figure: 'circle', seed });
      const [, y0] = points[0];
      return {
        family: 'ellipse',
        writer: `w${seed % 6}`,
        points: points.map(([x, y]) => [x, y0 + (y - y0) / 4]),
      };
    });
    const waves = [1, 2, 3, 4, 5].map((seed) => drawInk({ figure: 'wave', seed }));
    return [...flat, ...waves];
  }

  before(() => fs.writeFileSync(inFolder('ink.ndjson'), toNdjson(flatInk())));

  it('adds outlines, says what they gain on held-out strokes, and writes them', async () => {
    const made = await learn('ink.ndjson', '-o', 'mine', '--json', '-j', '2');
    assert.deepEqual([made.code, made.stderr], [0, '']);
    const summary = JSON.parse(made.stdout);
    assert.deepEqual(summary.held_out, { by: 'writer', folds: 5 });
    const { none, shipped, learnt, every } = summary.templates;
    assert.equal(none.families.ellipse.right, 0);
    assert.deepEqual([none.outlines, shipped.outlines], [[0], [16]]);
    const right = [shipped, learnt, every].map(({ families }) => families.ellipse.right);
    assert.ok(right[1] > right[0] && right[2] >= right[1], `right: ${right}`);
    assert.equal(summary.gain, right[1] - right[0]);
    assert.equal(summary.better, summary.gain);

    // The engine takes the files, and they do what was foreseen.
    assert.deepEqual(fs.readdirSync(inFolder('mine')).sort(), [...TEMPLATE_FILES].sort());
    const args = ['evaluate', 'ink.ndjson', '--json', '--templates', 'mine'];
    const { stdout } = await run(folder, args);
    assert.ok(JSON.parse(stdout).families.ellipse.right >= right[1]);
    for (const file of TEMPLATE_FILES) {
      const [shippedText, text] = [path.join(SHIPPED, file), inFolder('mine', file)].map((name) =>
        fs.readFileSync(name, 'utf8'),
      );
      assert.ok(text.startsWith(shippedText), `${file} keeps the shipped outlines`);
    }

    const alone = await learn('ink.ndjson', '--from-scratch', '--by', 'stroke', '-j', '1');
    assert.equal(alone.code, 0);
    assert.match(alone.stdout, /^29 strokes; each of 5 parts, by stroke/);
    assert.match(alone.stdout, /^learnt +\d(-\d)? +\d+ +0$/m);
    assert.match(
      alone.stdout,
      /Against the shipped templates: \d+ strokes answered better, \d+ worse; at --harm 2\.5 /,
    );
    assert.match(alone.stdout, /not written \(-o FOLDER\)/);
  });

  it('replaces files only when told to, and leaves all else alone', async () => {
    fs.mkdirSync(inFolder('own'));
    for (const name of ['ellipse.template', 'notes.txt']) {
      fs.writeFileSync(inFolder('own', name), 'mine');
    }
    const refused = await learn('ink.ndjson', '-o', 'own');
    assert.equal(refused.code, 2);
    assert.match(refused.stderr, /own is not empty; --force replaces the template files in it/);
    assert.equal(fs.readFileSync(inFolder('own', 'ellipse.template'), 'utf8'), 'mine');
    assert.equal((await learn('ink.ndjson', '-o', 'own', '--force')).code, 0);
    const all = [...TEMPLATE_FILES, 'notes.txt'].sort();
    assert.deepEqual(fs.readdirSync(inFolder('own')).sort(), all);
    assert.equal(fs.readFileSync(inFolder('own', 'notes.txt'), 'utf8'), 'mine');
    assert.notEqual(fs.readFileSync(inFolder('own', 'ellipse.template'), 'utf8'), 'mine');
  });

  it('names wrong lines and refuses what it cannot do', async () => {
    const wrong = toNdjson(flatInk().slice(0, 6)).replace('"writer"', '"author"');
    fs.writeFileSync(inFolder('wrong.ndjson'), `{"family":"dot"}\n${wrong}`);
    fs.writeFileSync(inFolder('lines.ndjson'), '{"family":"line","points":[[1,2],[3,4]]}\n');
    const some = await learn('wrong.ndjson', '--without', '3,4');
    assert.equal(some.code, 1);
    assert.equal(some.stderr, 'wrong.ndjson:1: "points" is missing\n');
    assert.match(some.stdout, /^4 strokes; [^]*1 lines skipped\n2 lines left out by --without\n/);
    const cases = [
      [[], /there is no triangle, quadrangle, ellipse among the strokes/],
      [['lines.ndjson'], /there is no triangle/],
      [['ink.ndjson', '-o', ''], /-o needs the name of a folder/],
      [['ink.ndjson', '-o', 'ink.ndjson'], /ink\.ndjson is a file: name a folder/],
      [['ink.ndjson', '-o', 'no/mine'], /no\/mine: there is no directory/],
      [['ink.ndjson', '-o', 'my.ellipse.template'], /would take every file in it for ellipse/],
      [['ink.ndjson', '--by', 'colour'], /--by must be writer or stroke, found colour/],
      [['lines.ndjson', '--harm', 'much'], /--harm must be a positive number, found much/],
      [['ink.ndjson', '--fold', '3'], /Unknown option '--fold' - did you mean --folds\?/],
    ];
    const before = fs.readdirSync(folder);
    for (const [args, message] of cases) {
      const { code, stdout, stderr } = await learn(...args);
      assert.deepEqual([code, stdout], [2, ''], args.join(' '));
      assert.match(stderr, message);
    }
    assert.deepEqual(fs.readdirSync(folder), before);
  });

  it('leaves nothing behind when it is interrupted', async () => {
    fs.mkdirSync(inFolder('tmp'));
    const args = ['templates', 'ink.ndjson', '-o', 'never', '--candidates', '60'];
    const child = start(folder, args, [], { TMPDIR: inFolder('tmp') });
    await until(() => fs.readdirSync(inFolder('tmp')).some((name) => /^scrivo-temp/.test(name)));
    child.kill('SIGINT');
    assert.equal((await child.ended).signal, 'SIGINT');
    assert.deepEqual(fs.readdirSync(inFolder('tmp')), []);
    assert.ok(!fs.existsSync(inFolder('never')));
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
    const tool = path.join(__dirname, '..', '..', 'tools', 'templates.js');
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
