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

  test('are counted after twenty, and no failure where a file takes all messages', async () => {
    const wrong = '[]\n'.repeat(25);
    const shown = await idealise(['--jobs', '1'], `{}\n${wrong}`);
    assert.equal(shown.stderr.trim().split('\n').length, 21);
    assert.match(shown.stderr, /\n7 more messages; --errors FILE keeps them all\n$/);
    assert.equal(shown.code, 1);
    write('rest.svg', '<svg><rect/><use/><rect/><path fill="red" d="M0 0h9"/></svg>');
    const args = ['rest.svg', '--errors', 'messages.txt'];
    const kept = await idealise(args, `{}\n${wrong}`);
    assert.equal(kept.code, 0);
    assert.match(kept.stderr, /\n8 more messages, all in messages\.txt\n$/);
    const all = read('messages.txt').trim().split('\n');
    assert.equal(all[0], 'rest.svg: 4 not read as ink: rect 2, use 1, filled outline 1');
    assert.equal(all.length, 28);
    assert.match((await idealise(args, '')).stderr, /messages\.txt exists; --force overwrites it/);
    assert.equal((await idealise(['rest.svg'])).code, 1);
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

test('each input has a file in a folder, or its name in the strokes and its page in a drawing', async () => {
  const page = (y) => `<svg viewBox="0 0 100 50"><path d="M1 ${y}L9 ${y}"/></svg>`;
  write('one.svg', page(1));
  write('two.svg.gz', zlib.gzipSync(page(2)));
  fs.mkdirSync(path.join(folder, 'sub'), { recursive: true });
  write('sub/one.svg', page(3));
  const inputs = ['one.svg', 'two.svg.gz'];
  assert.equal((await idealise([...inputs, '-o', 'pages/', '--format', 'inkml'])).code, 0);
  assert.deepEqual(fs.readdirSync(path.join(folder, 'pages')), ['one.inkml', 'two.inkml']);
  assert.match(read('pages/two.inkml'), /<trace>1 2, /);
  const again = await idealise(['one.svg', '-o', 'pages', '--format', 'inkml']);
  assert.match(again.stderr, /one\.inkml exists; --force overwrites it/);
  const same = await idealise(['one.svg', 'sub/one.svg', '-o', 'pages']);
  assert.match(same.stderr, /one\.svg and sub\/one\.svg would both become one\.ndjson/);
  const sources = parseLines((await idealise(inputs)).stdout).map(({ source }) => source);
  assert.deepEqual(sources, inputs);
  const { stdout } = await idealise([...inputs, '--format', 'svg']);
  assert.match(stdout, /viewBox="0 0 100 110"/);
  assert.match(
    stdout,
    /1,1[^]*<g transform="translate\(0 60\)">\n<polyline [^>]*1,2[^]*<\/g>\n<\/g>/,
  );
});

test('the options of the beautifier are options of the command', async () => {
  write('drawn.ndjson', toNdjson(drawStrokes(40)));
  const figures = async (...args) => {
    const { stdout, stderr } = await idealise(['drawn.ndjson', '--engine', 'beautifier', ...args]);
    assert.equal(stderr, '');
    return parseLines(stdout);
  };
  const all = await figures();
  const families = new Set(all.map(({ figure }) => figure));
  assert.ok(families.size > 4);
  const few = await figures('--figures', 'line,ellipse', '--sensitivity', '0.5');
  assert.deepEqual(new Set(few.map(({ figure }) => figure)), new Set(['none', 'line', 'ellipse']));
  assert.ok((await figures('--min-size', '500')).every(({ figure }) => figure === 'none'));
  const irregular = await figures('--no-regular', '--no-level', '--no-inside', '--tap-size', '2');
  assert.ok(all.some(({ kind }) => kind === 'square'));
  assert.ok(irregular.every(({ kind }) => kind !== 'square' && kind !== 'circle'));
  for (const [args, message] of [
    [['--figures', 'star'], /figures\[0\] must be one of dot, line/],
    [['--sensitivity', '2'], /sensitivity must be from 0 to 1/],
    [['--min-size', '-1'], /min-size/],
    [['--anchors', 'side'], /anchors\[0\] must be one of/],
    [['--min-size', '3', '--engine', 'template'], /minSize is an option of the engine beautifier/],
  ]) {
    const { code, stderr } = await idealise(['drawn.ndjson', ...args]);
    assert.equal(code, 2);
    assert.match(stderr, message);
  }
});

test('a page with a missing or wrong unit is not wrecked', async () => {
  const strokes = drawStrokes(12).map(({ points }) => points.map(([x, y]) => [x / 5000, y / 5000]));
  const traces = strokes
    .map((points) => `<trace>${points.map((p) => p.join(' '))}</trace>`)
    .join('');
  const metres = '<traceFormat><channel name="X" units="mm"/><channel name="Y"/></traceFormat>';
  for (const format of ['', metres]) {
    const { stdout, stderr } = await idealise([], `<ink>${format}${traces}</ink>`);
    assert.match(stderr, /the ink is [\d.]+ pixels large .*; --scale \d+ was assumed\n$/);
    const figures = new Set(parseLines(stdout).map(({ figure }) => figure));
    assert.ok(figures.size > 3, [...figures].join());
    const { stderr: stated } = await idealise(['--scale', '900'], `<ink>${traces}</ink>`);
    assert.equal(stated, '');
  }
  // Lines keep theirs, or the answer to a line would depend on others.
  const lines = strokes.map((points) => `${JSON.stringify({ points })}\n`);
  const { stdout, stderr } = await idealise([], lines.join(''));
  const { stdout: alone } = await idealise([], lines[3]);
  assert.match(stderr, /: the first strokes are about 0\.0\d+ pixels large;/);
  assert.equal(stdout.split('\n')[3], alone.trim());
});
