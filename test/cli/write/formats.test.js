'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { after, describe, test } = require('node:test');
const {
  drawStrokes,
  levelLine,
  makeFolder,
  parseLines,
  run,
  toNdjson,
} = require('../../support/cli.js');

const folder = makeFolder(after);
const inFolder = (name) => path.join(folder, name);
const write = (name, content) => fs.writeFileSync(inFolder(name), content);
const read = (name) => fs.readFileSync(inFolder(name), 'utf8');
// The template engine leaves strokes of a few points as they are.
const idealise = (args, stdin) => run(folder, ['idealise', '--engine', 'template', ...args], stdin);

function assertClose(actual, expected, tolerance) {
  assert.equal(actual.length, expected.length);
  actual.forEach(([x, y], i) => {
    const off = Math.hypot(x - expected[i][0], y - expected[i][1]);
    assert.ok(off <= tolerance, `point ${i} is off by ${off}`);
  });
}

describe('formats', () => {
  test('ink survives conversion through all formats, also gzip', async () => {
    const strokes = drawStrokes(24).map(({ id, points }) => ({ id, points }));
    write('ink.ndjson', toNdjson(strokes));
    const steps = ['a.inkml', 'b.svg', 'c.ndjson.gz', 'd.svg.gz', 'e.inkml.gz', 'f.ndjson'];
    let from = 'ink.ndjson';
    for (const to of steps) {
      // At 22 units most strokes are too large for a dot and too small for a figure.
      const { code, stderr } = await idealise([from, '-o', to, '--scale', '0.15', '--force']);
      assert.deepEqual([code, stderr], [0, '']);
      from = to;
    }
    const back = parseLines(read('f.ndjson'));
    assert.equal(back.length, strokes.length);
    back.forEach(({ id, points, figure }, i) => {
      assert.equal(id, strokes[i].id);
      if (figure === 'none') assertClose(points, strokes[i].points, 0.002);
    });
    const asDrawn = back.filter(({ figure }) => figure === 'none').length;
    assert.ok(asDrawn >= 18, `${asDrawn} as drawn`);
    assert.equal(fs.readFileSync(inFolder('d.svg.gz')).readUInt16BE(), 0x1f8b);
  });

  test('text that XML cannot express does no harm', async () => {
    const [a, b] = ['1,2', '3,4'].map((pair) => pair.split(',').map(Number));
    const stroke = { id: '<"&>\u0000\ud800é', 'a"b': 'x', points: [a, b] };
    for (const format of ['inkml', 'svg']) {
      const written = await idealise(['--format', format], toNdjson([stroke]));
      const { code, stdout, stderr } = await idealise([], written.stdout);
      assert.deepEqual([code, stderr], [0, '']);
      const [{ id, points }] = parseLines(stdout);
      assert.deepEqual(points, stroke.points);
      assert.match(id, /^<"&>\ufffd?é$/);
    }
  });

  test('InkML keeps times, the unit, the brush and all fields', async () => {
    const line =
      '{"id":12345678901234567890,"ok":true,"tags":["<a>"],"no":null,"stroke":"#f00",' +
      '"stroke-width":3,"points":[[1,2,0.5,10],[3,4,null,20],[5,6]]}';
    const { stdout } = await idealise(['--format', 'inkml', '--scale', '0.5'], `${line}\n${line}`);
    assert.equal(stdout.match(/<definitions>/g).length, 2, 'unit and brush, once each');
    write('kept.inkml', stdout);
    const [back] = parseLines((await idealise(['kept.inkml'])).stdout);
    assert.deepEqual(back, {
      ...{ id: '12345678901234567890', ok: 'true', tags: '["<a>"]' },
      ...{ stroke: '#f00', 'stroke-width': '3', type: 0, figure: 'none' },
      ...{ kind: null, confidence: null, parameters: null },
      points: JSON.parse(line).points,
    });
    // A margin of 10 pixels around ink with half a pixel per unit.
    const { stdout: drawing } = await idealise(['kept.inkml', '--format', 'svg']);
    assert.match(drawing, /width="22" height="22" viewBox="-19 -18 44 44">\n<g [^>]*width="4"/);
    assert.match(drawing, /stroke="#f00" stroke-width="3"/);
  });

  test('InkML keeps the drawing area; what is not one makes no wrong line', async () => {
    const line = (fields) =>
      `{${fields}"type":0,"figure":"none","points":[[1,2]],"kind":null,"confidence":null,"parameters":null}\n`;
    const page = line('"width":640,"height":480,');
    const { stdout: ink } = await idealise(['--format', 'inkml'], page);
    const cases = [
      [ink, page],
      [ink.replace('640', 'wide'), line('')],
      [ink.replace('"width"', '"others"'), line('')],
    ];
    for (const [document, expected] of cases) {
      assert.equal((await idealise([], document)).stdout, expected);
    }
  });

  test('an SVG document keeps its drawing area and size; other ink is framed', async () => {
    const page = (size) =>
      `<svg ${size} viewBox="0 0 640 480"><path stroke="red" d="M1 2L3 4"/></svg>`;
    // Two inputs make a drawing of their strokes.
    write('none.ndjson', '');
    const compose = (input) => idealise(['none.ndjson', '--format', 'svg'], input);
    const kept = await compose(page(''));
    assert.match(kept.stdout, /<svg xmlns="[^"]+" viewBox="0 0 640 480">/);
    assert.match(kept.stdout, /<polyline stroke="red" data-figure="none" points="1,2 3,4"\/>/);
    const sized = await compose(page('width="20in"'));
    assert.match(sized.stdout, / width="1920" height="1440" viewBox="0 0 640 480">/);
    const framed = await idealise(['--format', 'svg'], '{"points":[[100,50],[300,90]]}');
    assert.match(framed.stdout, /viewBox="90 40 220 60"/);
    const empty = await idealise(['--format', 'svg'], '');
    assert.match(empty.stdout, /^<svg [^>]*viewBox="0 0 100 100">[^]*<\/svg>\n$/);
  });

  test('coordinates are rounded', async () => {
    const ink = toNdjson([{ points: levelLine(0.12345, 100) }]);
    const { stdout } = await idealise(['--decimals', '1'], ink);
    const [{ points, figure }] = parseLines(stdout);
    assert.equal(figure, 'line');
    for (const value of points.flat()) assert.equal(value, Number(value.toFixed(1)));
    const far = await idealise(['--format', 'inkml'], toNdjson([{ points: [[1.5e308, 1.23456]] }]));
    assert.match(far.stdout, /<trace>1.5e\+308 1.235</);
  });
});
