'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { after, describe, test } = require('node:test');
const zlib = require('node:zlib');
const { Beautifier } = require('../../../lib/beautifier.js');
const scrivo = require('../../../lib/index.js');
const {
  drawStrokes,
  levelLine,
  makeFolder,
  parseLines,
  run,
  runProcess,
  toNdjson,
} = require('../../support/cli.js');

const folder = makeFolder(after);
const write = (name, content) => fs.writeFileSync(path.join(folder, name), content);
const read = (name) => fs.readFileSync(path.join(folder, name), 'utf8');
const idealise = (args, stdin) => run(folder, ['idealise', ...args], stdin);

const ENGINES = {
  beautifier: (...args) => new Beautifier().beautify(...args),
  template: (...args) => scrivo.optimizeAStroke(...args),
};

/** The numbers in nested objects and arrays, in order. */
const numbersOf = (value) =>
  typeof value === 'object'
    ? Object.values(value).flatMap(numbersOf)
    : [value].filter(Number.isFinite);

describe('what comes out', () => {
  for (const [engine, answer] of Object.entries(ENGINES)) {
    test(`is what the ${engine} answers, in the units and form of the input`, async () => {
      const strokes = drawStrokes(40).map((stroke, i) => {
        const [width, height] = [1920 + i, 1080];
        if (i % 2 === 0) return { width, height, ...stroke };
        return { width, height, ...stroke, points: stroke.points.map(([x, y]) => ({ x, y })) };
      });
      const args = engine === 'beautifier' ? [] : ['--engine', engine];
      const { code, stdout, stderr } = await idealise(args, toNdjson(strokes));
      assert.deepEqual([code, stderr], [0, '']);

      const answers = parseLines(stdout);
      assert.equal(answers.length, strokes.length);
      const figures = new Set(answers.map(({ figure }) => figure));
      strokes.forEach(({ width, height, points: drawn, ...fields }, i) => {
        const { points, type, figure, kind, confidence, parameters, ...rest } = answers[i];
        const fractions = drawn.map((point) => {
          const [x, y, force] = i % 2 === 0 ? point : [point.x, point.y];
          return { x: x / width, y: y / height, ...(force && { force }) };
        });
        const expected = answer(fractions, width, height, []);
        assert.deepEqual([type, confidence], [expected.type, expected.confidence ?? null]);
        const { kind: name, subtype = null, ...ofFigure } = expected.figure ?? {};
        assert.equal(kind, name === 'circle' ? name : subtype);
        const given = numbersOf(Object.entries(ofFigure));
        const found = numbersOf(Object.entries(parameters ?? {}));
        assert.equal(found.length, given.length);
        given.forEach((value, k) => assert.ok(Math.abs(found[k] - value) < 0.001, `${i}: ${name}`));
        assert.deepEqual(rest, { width, height, ...fields });
        if (type === 0) {
          assert.deepEqual([points, figure], [drawn, 'none']);
          return;
        }
        const scaled = expected.path.map(({ x, y }) => [
          Math.round(x * width * 1000) / 1000,
          Math.round(y * height * 1000) / 1000,
        ]);
        const plain = points.map((point) => (i % 2 === 0 ? point.slice(0, 2) : [point.x, point.y]));
        assert.deepEqual(plain, scaled);
      });
      for (const figure of ['line', 'angle', 'triangle', 'quadrangle', 'ellipse', 'none']) {
        assert.ok(figures.has(figure), `no ${figure} among the strokes`);
      }
    });
  }

  test('does not depend on position, unit or a distant border', async () => {
    const drawn = drawStrokes(21);
    const moved = (scale, dx) =>
      drawn.map(({ points }) => ({ points: points.map(([x, y]) => [x * scale + dx, y * scale]) }));
    const figuresOf = async (strokes, ...options) => {
      const { stdout } = await idealise(options, toNdjson(strokes));
      return parseLines(stdout).map(({ figure }) => figure);
    };
    const figures = await figuresOf(moved(1, 0));
    assert.ok(new Set(figures).size >= 5, `only ${new Set(figures)}`);
    assert.deepEqual(await figuresOf(moved(1, -4096)), figures);
    assert.deepEqual(await figuresOf(moved(0.001, 0), '--scale', '1000'), figures);
    assert.deepEqual(await figuresOf(moved(64, 0), '--scale', '0.015625'), figures);
  });

  test('is moved into a drawing area that is given, and only then', async () => {
    const circle = Array.from({ length: 80 }, (_, i) => {
      const angle = (2 * Math.PI * i) / 79;
      return [100 + 120 * Math.cos(angle), 300 + 120 * Math.sin(angle)];
    });
    const leftmost = async (...options) => {
      const { stdout } = await idealise(options, toNdjson([{ points: circle }]));
      const [{ figure, points }] = parseLines(stdout);
      assert.equal(figure, 'ellipse');
      return Math.min(...points.map(([x]) => x));
    };
    assert.ok(Math.abs((await leftmost()) + 20) < 1);
    const inside = await leftmost('--width', '800', '--height', '600');
    assert.ok(Math.abs(inside) < 1e-3, `leftmost at ${inside}`);
  });

  test('keeps the other fields of a line, their order and long integers', async () => {
    const line = (points, answer = '') =>
      `{"id":12345678901234567890,"s":"\\u0001 }]\\": 1234567890123456789","type":7,` +
      `"points":${points},"a":{"points":[{"n":[-1234567890123456789]}]}${answer}}`;
    const drawn = ['[[1,2,null]]', JSON.stringify(levelLine(10, 20))];
    const args = ['--engine', 'template'];
    const { stdout } = await idealise(
      args,
      `\uFEFF${drawn.map((each) => line(each)).join('\r\n')}`,
    );
    const [ink, figure] = stdout.split('\n');
    const expected = (points, type, name) =>
      line(points, `,"figure":"${name}","kind":null,"confidence":null,"parameters":null`).replace(
        ':7,',
        `:${type},`,
      );
    assert.equal(ink, expected(drawn[0], 0, 'none'));
    assert.equal(figure, expected(JSON.stringify(JSON.parse(figure).points), 2, 'line'));
  });

  test('lines snap to other strokes only with --snap', async () => {
    const line = { points: levelLine(200, 100) };
    write('besides.ndjson', toNdjson([{ ...line, others: [[[200, 106]]] }]));
    // An earlier stroke of the document, beside the start of the line.
    const earlier = { beautifier: 'M200 106V300', template: 'M200 106h0' };
    const heightIn = (text) => parseLines(text).at(-1).points[0][1];
    for (const engine of Object.keys(ENGINES)) {
      const drawn = `<path d="${earlier[engine]}"/><polyline points="${line.points.join(' ')}"/>`;
      write('page.svg', `<svg>${drawn}</svg>`);
      const heightOf = async (...args) => {
        await idealise([...args, '-o', 'out.ndjson', '--force', '--engine', engine]);
        return heightIn(read('out.ndjson'));
      };
      for (const input of ['besides.ndjson', 'page.svg']) {
        assert.ok(Math.abs((await heightOf(input)) - 100) < 0.5, `${engine}, ${input}`);
        assert.ok(Math.abs((await heightOf(input, '--snap')) - 106) < 0.5, `${engine}, ${input}`);
      }
    }
  });

  test('what the template engine prints when lines snap is not among the output', async () => {
    const points = Array.from({ length: 70 }, (_, i) => [400, 291 + (80 * i) / 69]);
    write('upright.ndjson', toNdjson([{ points, others: [[[392, 284]], [[408.5, 290]]] }]));
    const common = ['idealise', 'upright.ndjson', '--snap', '--engine', 'template'];
    const strokes = await runProcess(folder, common);
    assert.deepEqual([strokes.code, strokes.stderr], [0, '']);
    assert.deepEqual(
      parseLines(strokes.stdout).map(({ figure }) => figure),
      ['line'],
    );
    for (const jobs of ['1', '2']) {
      const args = [...common, '-o', 'out.ndjson', '--force', '--json', '--jobs', jobs];
      const { stdout } = await runProcess(folder, args);
      assert.deepEqual(JSON.parse(stdout).figures, { line: 1 });
    }
  });
});

describe('wrong lines and inputs', () => {
  test('are reported; the rest goes on, numbered through all blocks', async () => {
    const line = '{"points":[[1,2]]}';
    const lines = Array.from({ length: 8000 }, (_, i) => (i % 2000 === 1321 ? 'broken' : line));
    write('wrong.ndjson', lines.join('\n'));
    write('other.ndjson', `${line}\nbroken too\n`);
    const args = ['wrong.ndjson', 'other.ndjson', 'other.ndjson', '--jobs', '3'];
    const { code, stdout, stderr } = await idealise(args);
    assert.equal(code, 1);
    assert.equal(stdout.split('\n').length - 1, 8000 + 4);
    const places = stderr.split('\n').map((text) => text.split(': ')[0]);
    const wrong = [1322, 3322, 5322, 7322].map((n) => `wrong.ndjson:${n}`);
    assert.deepEqual(places, [...wrong, 'other.ndjson:2', 'other.ndjson:2', '']);
  });

  test('of a damaged input what could be read is kept; the next one is read', async () => {
    const packed = zlib.gzipSync(toNdjson(drawStrokes(200)));
    write('half.gz', packed.subarray(0, packed.length / 2));
    write('picture', Buffer.from([0x89, 0x50, 0x4e, 0x47, 0, 0]));
    write('good', '{"id":"last","points":[[1,2]]}');
    const args = ['half.gz', 'picture', 'good', '-o', 'rest.ndjson', '--json'];
    const { code, stdout, stderr } = await idealise(args);
    assert.equal(code, 1);
    const { strokes, unread, skipped } = JSON.parse(stdout);
    assert.deepEqual([unread, skipped], [['half.gz', 'picture'], 0]);
    const message =
      /^half\.gz: reading failed: unexpected end of file, after line \d+\npicture: of no known/;
    assert.match(stderr, message);
    const answers = parseLines(read('rest.ndjson'));
    assert.equal(answers.length, strokes);
    assert.ok(strokes > 50, `${strokes} strokes`);
    assert.equal(answers.at(-1).id, 'last');
  });

  test('messages contain no control characters of the input', async () => {
    const { stderr } = await idealise([], '{"points":"\\u001b[31m"}\n\u001b[2Jx\n');
    assert.equal(stderr.split('\n').length, 4, stderr);
    assert.ok(!stderr.includes('\u001b'));
  });
});

test('the summary is on standard output, or on standard error when strokes are there', async () => {
  write('three.ndjson', toNdjson([{ points: levelLine(0, 9) }, { points: [[1, 2]] }]));
  const engine = ['--engine', 'template'];
  const filed = await idealise(['three.ndjson', '-o', 'three.svg', '--json', ...engine]);
  const { seconds, cpu_seconds: cpu, ...summary } = JSON.parse(filed.stdout);
  assert.ok(seconds > 0 && cpu > 0);
  assert.deepEqual(summary, {
    ...{ engine: 'template', output: 'three.svg', strokes: 2, figures: { line: 1, none: 1 } },
    ...{ skipped: 0, passed_over: 0, unread: [] },
  });
  const piped = await idealise(['three.ndjson', '--json']);
  assert.equal(parseLines(piped.stdout).length, 2);
  assert.equal(JSON.parse(piped.stderr).engine, 'beautifier');
});
