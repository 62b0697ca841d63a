'use strict';

const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { after, describe, it } = require('node:test');
const zlib = require('node:zlib');
const { familyOfAnswer } = require('../../packages/cli/lib/engines.js');
const { boundingBox, placeStroke } = require('../../packages/cli/lib/placement.js');
const { Score } = require('../../packages/cli/lib/score.js');
const { drawInk } = require('../../research/ink/index.js');
const { makeFolder } = require('../support/cli.js');

const TOOL = path.join(__dirname, '..', '..', 'tools', 'evaluate.js');
const FIGURES = ['dot', 'line', 'line', 'circle', 'ellipse', 'wave', 'zigzag'];
const STROKES = FIGURES.map((figure, i) => drawInk({ figure, seed: i }));
const LINES = STROKES.map((stroke) => JSON.stringify(stroke));

const folder = makeFolder(after);

function write(name, content) {
  const file = path.join(folder, name);
  fs.writeFileSync(file, content);
  return file;
}

function evaluate(args, input) {
  const { status, stdout, stderr } = spawnSync(process.execPath, [TOOL, ...args], {
    input,
    encoding: 'utf8',
  });
  return { status, stdout, stderr };
}

function figuresOf(args, input, status = 0) {
  const run = evaluate(['--json', ...args], input);
  assert.equal(run.status, status, run.stderr);
  const { microseconds, ...figures } = JSON.parse(run.stdout);
  assert.ok(microseconds.median > 0 && microseconds.p99 >= microseconds.median);
  return { ...run, figures };
}

describe('evaluate', () => {
  it('counts the answers by family', () => {
    const { figures } = figuresOf([write('strokes.ndjson', `${LINES.join('\n')}\n`)]);
    const { families, recall, negatives, ...counts } = figures;
    assert.deepEqual(counts, { engine: 'exact', strokes: 7, skipped: 0, without: 0 });
    const right = Object.entries(families).map(
      ([name, { n, right: some }]) => `${name} ${some}/${n}`,
    );
    assert.equal(
      right.join(', '),
      'dot 1/1, line 2/2, angle 0/0, triangle 0/0, quadrangle 0/0, ellipse 2/2, none 2/2',
    );
    assert.equal(recall, 1);
    const by_label = { wave: { n: 1, changed: 0 }, zigzag: { n: 1, changed: 0 } };
    assert.deepEqual(negatives, { n: 2, changed: 0, by_label });
  });

  it('prints a table for people', () => {
    const { status, stdout } = evaluate([write('table.ndjson', LINES.join('\n'))]);
    assert.equal(status, 0);
    assert.match(stdout, /Engine exact, 7 strokes scaled to 200 units/);
    assert.match(stdout, /^line +\. +2 .* 2 +100\.0 %$/m);
    assert.match(stdout, /No figure, yet changed: 0 of 2 \(0\.0 %\)/);
  });

  it('reads gzip, several files and standard input alike', () => {
    const plain = write('a.ndjson', LINES.slice(0, 3).join('\n'));
    // Two gzip members one after the other are one file.
    const members = [`${LINES[3]}\n`, LINES[4]].map((text) => zlib.gzipSync(text));
    const packed = write('b.ndjson', Buffer.concat(members));
    const { figures } = figuresOf([plain, packed, '-'], zlib.gzipSync(LINES.slice(5).join('\r\n')));
    assert.deepEqual(figures, figuresOf([], `\uFEFF${LINES.join('\n\n')}`).figures);
  });

  it('says what is wrong with a line, counts it and goes on', () => {
    const wrong = [
      ['{"family":', /not JSON/],
      ['{"points":[[1,2]]}', /"family" is missing/],
      ['{"family":"cube","points":[[1,2]]}', /"family" must be one of .*, found "cube"/],
      ['{"family":"dot"}', /"points" is missing/],
    ];
    const lines = [LINES[0], ...wrong.map(([line]) => line), LINES[1]];
    const file = write('wrong.ndjson', lines.join('\n'));
    const { figures, stderr } = figuresOf([file], '', 1);
    assert.deepEqual([figures.strokes, figures.skipped], [2, wrong.length]);
    const messages = stderr.trimEnd().split('\n');
    wrong.forEach(([, message], i) => {
      assert.match(messages[i], message);
      assert.ok(messages[i].startsWith(`${file}:${i + 2}: `), messages[i]);
    });
    assert.match(evaluate([file]).stdout, /4 lines skipped/);
  });

  it('leaves out the lines it is told to, wrong ones too', () => {
    const [a, b] = [
      write('left.ndjson', LINES.join('\n')),
      write('wrong.ndjson', `\n${LINES[3]}\n1`),
    ];
    const args = [a, b, '--without', `${b}:3`, '--without', `${a}:2,4`, '--without', `${a}:7,9`];
    const { figures, stderr } = figuresOf(args, '');
    assert.deepEqual([figures.strokes, figures.skipped, figures.without], [5, 0, 4]);
    assert.deepEqual(figures.families.line, { n: 1, right: 1 });
    assert.equal(stderr, `${a}:9: --without names it, but no stroke is there\n`);
  });

  it('scores what a broken archive still gives, and fails', () => {
    const many = Array.from({ length: 200 }, () => LINES[2]);
    const packed = zlib.gzipSync(many.join('\n'));
    const run = evaluate(['--json', write('cut.ndjson.gz', packed.subarray(0, packed.length / 2))]);
    assert.equal(run.status, 1);
    assert.match(
      run.stderr,
      /cut\.ndjson\.gz: reading failed: unexpected end of file, after line \d/,
    );
    assert.ok(JSON.parse(run.stdout).strokes > 10);
  });

  it('refuses a command line it cannot obey', () => {
    const file = write('one.ndjson', LINES[0]);
    const empty = write('empty.ndjson', '\n');
    const misnamed = write('square.txt', '0,0,1,1');
    const cases = [
      [[], /there is no stroke in the input/],
      [['--without', '3-5', file], /--without takes lines, such as 3,17, found 3-5/],
      [['--without', '3', file, empty], /--without 3: of which file\? say .*one\.ndjson:3/],
      [['--without', 'a:3', file], /--without a:3: a is no input/],
      [['--fast', file], /--fast/],
      [['--unit=-3', file], /--unit must be a positive number or natural, found -3/],
      [['--templates', misnamed, file], /square\.txt: the name contains none of rectangle/],
      [['--templates', path.join(folder, 'nowhere'), file], /nowhere: no such template file/],
      [[path.join(folder, 'missing.ndjson')], /missing\.ndjson: no such file/],
      [[empty], /there is no stroke in the input/],
      [['--svg', '-', file], /--svg needs a file/],
      [['--svg', path.join(folder, 'no', 'sheet.svg'), file], /there is no directory/],
    ];
    for (const [args, message] of cases) {
      const run = evaluate(args);
      assert.equal(run.status, 2, `${args}: ${run.stderr}`);
      assert.match(run.stderr, message);
      assert.equal(run.stdout, '');
    }
  });

  it('draws the wrong answers on a sheet and never overwrites unasked', () => {
    // A line that claims to be a wave is answered wrongly.
    const mislabelled = { ...STROKES[1], family: 'none', label: '<wave> & co' };
    const file = write('sheet.ndjson', [...LINES, JSON.stringify(mislabelled)].join('\n'));
    const sheet = path.join(folder, 'sheet.svg');
    assert.equal(evaluate([file, '--svg', sheet]).status, 0);
    const drawn = fs.readFileSync(sheet, 'utf8');
    assert.equal(drawn.match(/<g /g).length, 1);
    assert.match(drawn, />&lt;wave&gt; &amp; co<.*>line</);

    fs.writeFileSync(sheet, 'precious');
    const refused = evaluate([file, '--svg', sheet]);
    assert.equal(refused.status, 2);
    assert.match(refused.stderr, /sheet\.svg exists; --force overwrites it/);
    assert.equal(fs.readFileSync(sheet, 'utf8'), 'precious');
    assert.equal(evaluate([file, '--svg', sheet, '--force']).status, 0);
    assert.equal(fs.readFileSync(sheet, 'utf8'), drawn);
    assert.ok(!fs.readdirSync(folder).some((name) => name.endsWith('.tmp')));
  });
});

describe('placement of a stroke', () => {
  const boxOf = (stroke, unit) => {
    const { points, width, height } = placeStroke(stroke, unit);
    return boundingBox(points.map(({ x, y }) => [x * width, y * height]));
  };

  it('scales the longer side, dots excepted, and stays inside the area', () => {
    const points = JSON.parse('[[-50,4000],[-30,4000],[-30,4010]]');
    const triangle = { family: 'triangle', points };
    const box = boxOf(triangle, 200);
    assert.ok(Math.abs(box.width - 200) < 1e-9 && Math.abs(box.height - 100) < 1e-9);
    assert.ok(Math.abs(boxOf({ ...triangle, family: 'dot' }, 200).width - 20) < 1e-9);
    assert.ok(Math.abs(boxOf(triangle, 'natural').width - 20) < 1e-9);
    for (const unit of [200, 5000]) {
      const placed = placeStroke(triangle, unit);
      const values = placed.points.flatMap(({ x, y }) => [x, y]);
      assert.ok(Math.min(...values) > 0 && Math.max(...values) < 1, `unit ${unit}`);
    }
  });

  it('hands force and time on only where they were recorded', () => {
    const drawn = JSON.parse('[[0,0,0,null],[1,1,0.5,7]]');
    const { points } = placeStroke({ family: 'line', points: drawn }, 200);
    assert.deepEqual(Object.keys(points[0]), ['x', 'y']);
    assert.equal(points[1].force, 0.5);
    assert.equal(points[1].time, 7);
  });
});

describe('score', () => {
  it('names polygons by the points of their path', () => {
    const outline = (edges) =>
      Array.from({ length: edges }, (_, i) => [
        ...Array(20).fill({ x: i, y: i }),
        { x: (i + 1) % edges, y: (i + 1) % edges },
      ]).flat();
    const drawn = Array.from({ length: 63 }, (_, i) => ({ x: i / 63, y: 0.5 }));
    const names = [outline(3), outline(4), outline(5), outline(2), drawn].map((path) =>
      familyOfAnswer({ type: 6, path }),
    );
    assert.deepEqual(names, ['triangle', 'quadrangle', 'polygon', 'polygon', 'polygon']);
    assert.deepEqual(
      [0, 1, 2, 4, 7].map((type) => familyOfAnswer({ type, path: outline(4) })),
      ['none', 'dot', 'line', 'angle', 'ellipse'],
    );
  });

  it('counts an unnamed polygon as a change and as no figure; has no recall without figures', () => {
    const score = new Score();
    score.add({ family: 'none', label: 'wave' }, { family: 'none', type: 0 }, 1n);
    assert.equal(score.summary().recall, null);
    const polygon = { family: 'polygon', type: 6 };
    assert.equal(score.add({ family: 'none', label: 'star' }, polygon, 1000n), false);
    assert.equal(score.add({ family: 'quadrangle', label: 'square' }, polygon, 3000n), false);
    const { families, recall, negatives } = score.summary();
    assert.deepEqual(families.quadrangle, { n: 1, right: 0 });
    assert.equal(recall, 0);
    const by_label = { star: { n: 1, changed: 1 }, wave: { n: 1, changed: 0 } };
    assert.deepEqual(negatives, { n: 2, changed: 1, by_label });
  });
});
