'use strict';

const assert = require('node:assert/strict');
const { spawn, spawnSync } = require('node:child_process');
const { once } = require('node:events');
const fs = require('node:fs');
const path = require('node:path');
const { after, describe, test } = require('node:test');
const zlib = require('node:zlib');
const scrivo = require('../../lib/index.js');
const { createEngine } = require('../../packages/cli/lib/engines.js');
const { EVALUATE_OPTIONS } = require('../../packages/cli/lib/evaluate.js');
const { IDEALISE_OPTIONS } = require('../../packages/cli/lib/idealise.js');
const { RENDER_OPTIONS } = require('../../packages/cli/lib/render.js');
const { mapOrdered } = require('../../packages/cli/lib/run/map-ordered.js');
const {
  PROGRAM,
  drawStrokes,
  makeFolder,
  parseLines,
  run,
  start,
  toNdjson,
  until,
} = require('../support/cli.js');

const OPTIONS = {
  idealise: IDEALISE_OPTIONS,
  render: RENDER_OPTIONS,
  evaluate: EVALUATE_OPTIONS,
};

const folder = makeFolder(after);
const inFolder = (name) => path.join(folder, name);
const write = (name, content) => fs.writeFileSync(inFolder(name), content);
const read = (name) => fs.readFileSync(inFolder(name), 'utf8');
const idealise = (args, stdin) => run(folder, ['idealise', ...args], stdin);

/** A level line of 41 points that trembles by half a unit. */
function shakyLine(left, y) {
  return Array.from({ length: 41 }, (_, i) => [left + 5 * i, y + 0.5 * Math.sin(i)]);
}

function assertClose(actual, expected, tolerance) {
  assert.equal(actual.length, expected.length);
  actual.forEach(([x, y], i) => {
    const off = Math.hypot(x - expected[i][0], y - expected[i][1]);
    assert.ok(off <= tolerance, `point ${i} is off by ${off}`);
  });
}

describe('what comes out', () => {
  test('is what the engine answers, in the units and form of the input', async () => {
    const strokes = drawStrokes(40).map((stroke, i) => {
      const [width, height] = [1920 + i, 1080];
      if (i % 2 === 0) return { width, height, ...stroke };
      return { width, height, ...stroke, points: stroke.points.map(([x, y]) => ({ x, y })) };
    });
    const { code, stdout, stderr } = await idealise(['-'], toNdjson(strokes));
    assert.deepEqual([code, stderr], [0, '']);

    createEngine('exact').load({});
    const answers = parseLines(stdout);
    assert.equal(answers.length, strokes.length);
    const figures = new Set(answers.map(({ figure }) => figure));
    strokes.forEach(({ width, height, points: drawn, ...fields }, i) => {
      const { points, type, ...rest } = answers[i];
      const fractions = drawn.map((point) => {
        const [x, y, force] = i % 2 === 0 ? point : [point.x, point.y];
        return { x: x / width, y: y / height, ...(force && { force }) };
      });
      const expected = scrivo.optimizeAStroke(fractions, width, height, []);
      assert.equal(type, expected.type);
      assert.deepEqual(rest, { width, height, ...fields, figure: rest.figure });
      if (type === 0) assert.deepEqual(points, drawn);
      else {
        const scaled = expected.path.map(({ x, y }) => [x * width, y * height]);
        const plain = points.map((point) => (i % 2 === 0 ? point.slice(0, 2) : [point.x, point.y]));
        assert.deepEqual(plain, scaled);
      }
    });
    for (const figure of ['line', 'angle', 'triangle', 'quadrangle', 'ellipse', 'none']) {
      assert.ok(figures.has(figure), `no ${figure} among the strokes`);
    }
  });

  test('does not depend on where the ink lies, on its unit or on borders it has not', async () => {
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

  test('stays in the drawing area that is given, and only there', async () => {
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

  test('of a line all but its points, type and figure stays to the letter', async () => {
    const line = (points) =>
      `{"id":1e400,"s":"\\ud800 }]\\"","poin\\u0074s" : ${points} ,"a":{"points":[{}]}}`;
    const lines = [
      '{ "n": 12345678901234567890, "points": [[1.0, 2e0, null]] }',
      '{"points":[[1.0,2]],"type" : 7,"x":1.10}',
      line(JSON.stringify(shakyLine(10, 20))),
    ];
    const { stdout } = await idealise([], `\uFEFF${lines.join('\r\n')}`);
    const answers = stdout.split('\n');
    assert.equal(answers[0], `${lines[0].slice(0, -1)},"type":0,"figure":"none"}`);
    assert.equal(answers[1], '{"points":[[1.0,2]],"type" : 0,"x":1.10,"figure":"none"}');
    const ideal = JSON.stringify(JSON.parse(answers[2]).points);
    assert.equal(answers[2], `${line(ideal).slice(0, -1)},"type":2,"figure":"line"}`);
  });

  test('lines snap to other strokes only when asked to', async () => {
    const dot = { points: [[300, 106]] };
    const line = { points: shakyLine(200, 100) };
    const heightOf = async (args, stdin) => {
      const { stdout } = await idealise(args, stdin);
      return parseLines(stdout).at(-1).points[0][1];
    };
    const besides = toNdjson([{ ...line, others: [dot.points] }]);
    assert.ok(Math.abs((await heightOf([], besides)) - 100) < 0.5);
    assert.ok(Math.abs((await heightOf(['--snap'], besides)) - 106) < 0.5);

    write(
      'dot.svg',
      `<svg><path d="M300 106h0"/><polyline points="${line.points.join(' ')}"/></svg>`,
    );
    assert.ok(Math.abs((await heightOf(['dot.svg'])) - 100) < 0.5);
    assert.ok(Math.abs((await heightOf(['dot.svg', '--snap'])) - 106) < 0.5);
    await idealise(['dot.svg', '--snap', '-o', 'snapped.ndjson']);
    assert.ok(Math.abs(parseLines(read('snapped.ndjson'))[1].points[0][1] - 106) < 0.5);
  });
});

describe('formats', () => {
  test('ink goes round all formats, gzip too, and comes back', async () => {
    const strokes = drawStrokes(24).map(({ id, points }) => ({ id, points }));
    write('ink.ndjson', toNdjson(strokes));
    const steps = ['a.inkml', 'b.svg', 'c.ndjson.gz', 'd.svg.gz', 'e.inkml.gz', 'f.ndjson'];
    let from = 'ink.ndjson';
    for (const to of steps) {
      // At 22 units across, between a dot and the least figure, nearly all stay as drawn.
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

  test('text that XML has no place for does no harm', async () => {
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
      points: JSON.parse(line).points,
    });
    // A margin of 10 pixels around ink of half a pixel a unit.
    const { stdout: drawing } = await idealise(['kept.inkml', '--format', 'svg']);
    assert.match(drawing, /width="22" height="22" viewBox="-19 -18 44 44">\n<g [^>]*width="4"/);
    assert.match(drawing, /stroke="#f00" stroke-width="3"/);
  });

  test('InkML keeps the drawing area, and what is none makes no wrong line', async () => {
    const line = (fields) => `{${fields}"type":0,"figure":"none","points":[[1,2]]}\n`;
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
    const kept = await idealise(['--format', 'svg'], page(''));
    assert.match(kept.stdout, /<svg xmlns="[^"]+" viewBox="0 0 640 480">/);
    assert.match(kept.stdout, /<polyline stroke="red" data-figure="none" points="1,2 3,4"\/>/);
    const sized = await idealise(['--format', 'svg'], page('width="20in"'));
    assert.match(sized.stdout, / width="1920" height="1440" viewBox="0 0 640 480">/);
    const picture = await run(folder, ['render'], page('width="20in"'));
    assert.match(picture.stdout, /translate\(24 44\) scale\(0\.41\d+\) translate\(0 0\)/);
    const framed = await idealise(['--format', 'svg'], '{"points":[[100,50],[300,90]]}');
    assert.match(framed.stdout, /viewBox="90 40 220 60"/);
    const empty = await idealise(['--format', 'svg'], '');
    assert.match(empty.stdout, /^<svg [^>]*viewBox="0 0 100 100">[^]*<\/svg>\n$/);
  });

  test('decimals', async () => {
    const ink = toNdjson([{ points: shakyLine(0.12345, 100) }]);
    const { stdout } = await idealise(['--decimals', '1'], ink);
    const [{ points, figure }] = parseLines(stdout);
    assert.equal(figure, 'line');
    for (const value of points.flat()) assert.equal(value, Number(value.toFixed(1)));
    const far = await idealise(['--format', 'inkml'], toNdjson([{ points: [[1.5e308, 1.23456]] }]));
    assert.match(far.stdout, /<trace>1.5e\+308 1.235</);
  });

  test('render draws ink and figures side by side, as SVG and PNG', async () => {
    write('page.ndjson', toNdjson(drawStrokes(24)));
    const svg = await run(folder, ['render', 'page.ndjson']);
    assert.equal(svg.code, 0);
    assert.match(svg.stdout, /<tspan fill="[^"]+">ellipse \d+<\/tspan>/);
    const paths = svg.stdout.match(/<path /g);
    assert.equal(paths.length, 3 * 24, 'ink, its shadow and its figure');
    assert.doesNotMatch(svg.stdout, /NaN|Infinity|undefined/);

    const png = await run(folder, ['render', 'page.ndjson', '-o', 'page.png', '--pixels', '640']);
    assert.deepEqual([png.code, png.stderr], [0, '']);
    const bytes = fs.readFileSync(inFolder('page.png'));
    assert.equal(bytes.toString('latin1', 1, 4), 'PNG');
    assert.equal(bytes.readUInt32BE(16), 640, 'width in the header');
  });
});

describe('wrong lines and inputs', () => {
  test('are named; the rest goes on, numbered through all blocks', async () => {
    const line = '{"points":[[1,2]]}';
    const lines = Array.from({ length: 20000 }, (_, i) => (i % 5000 === 4321 ? 'broken' : line));
    write('wrong.ndjson', lines.join('\n'));
    write('other.ndjson', `${line}\nbroken too\n`);
    const args = ['wrong.ndjson', 'other.ndjson', 'other.ndjson', '--jobs', '3'];
    const { code, stdout, stderr } = await idealise(args);
    assert.equal(code, 1);
    assert.equal(stdout.split('\n').length - 1, 19996 + 2);
    const places = stderr.split('\n').map((text) => text.split(': ')[0]);
    const wrong = [4322, 9322, 14322, 19322].map((n) => `wrong.ndjson:${n}`);
    assert.deepEqual(places, [...wrong, 'other.ndjson:2', 'other.ndjson:2', '']);
  });

  test('an input that breaks off keeps what could be read; the next one is read', async () => {
    const packed = zlib.gzipSync(toNdjson(drawStrokes(200)));
    write('half.gz', packed.subarray(0, packed.length / 2));
    write('picture', Buffer.from([0x89, 0x50, 0x4e, 0x47, 0, 0]));
    write('good', '{"id":"last","points":[[1,2]]}');
    const args = ['half.gz', 'picture', 'good', '-o', 'rest.ndjson', '--json'];
    const { code, stdout, stderr } = await idealise(args);
    assert.equal(code, 1);
    const { strokes, unread, skipped } = JSON.parse(stdout);
    assert.deepEqual([unread, skipped], [['half.gz', 'picture'], 0]);
    assert.match(
      stderr,
      /^half\.gz: reading failed: unexpected end of file, after line \d+\npicture: neither/,
    );
    const answers = parseLines(read('rest.ndjson'));
    assert.equal(answers.length, strokes);
    assert.ok(strokes > 50, `${strokes} strokes`);
    assert.equal(answers.at(-1).id, 'last');
  });

  test('a command line that cannot be carried out says what to do, and does nothing', async () => {
    write('taken.ndjson', 'mine');
    fs.mkdirSync(inFolder('sub'), { recursive: true });
    fs.symlinkSync('gone', inFolder('dangling.ndjson'));
    const cases = [
      ['', /name a command/],
      ['frobnicate', /there is no command frobnicate\n/],
      ['idealize- a', /there is no command idealize- - did you mean idealise\?/],
      ['idealise missing.ndjson', /missing\.ndjson: no such file/],
      ['idealise taken.ndjson/x', /taken\.ndjson\/x: no such file/],
      ['idealise sub', /sub is a directory/],
      ['idealise dangling.ndjson', /dangling\.ndjson is a link to gone, which is not there/],
      ['idealise ,', /the name of an input is empty/],
      ['idealise - -', /standard input \(-\) can be read once only/],
      ['idealise -o taken.ndjson', /taken\.ndjson exists; --force overwrites it/],
      ['idealise -o dangling.ndjson', /dangling\.ndjson is a link to gone, which is not there/],
      ['idealise -o no/where.ndjson', /there is no directory no/],
      ['idealise -o taken.ndjson/x.svg', /taken\.ndjson is no directory/],
      ['idealise -o sub', /sub is a directory: name a file/],
      ['idealise -o ,', /-o needs a name/],
      ['idealise -o ink.pdf', /the name tells no format .* say --format ndjson/],
      ['idealise --format pdf', /--format must be one of ndjson, svg, inkml, found pdf/],
      ['idealise --colour', /Unknown option '--colour'\nscrivo idealise --help lists the options/],
      ['idealise --ouput x', /Unknown option '--ouput' - did you mean --output\?/],
      ['idealise --force=yes', /Option '--force' does not take an argument\n/],
      ['idealise --width 10', /give both --width and --height/],
      ['idealise --scale 0', /--scale must be a positive number, found 0/],
      ['idealise --jobs 1.5', /--jobs must be a whole number/],
      ['idealise --engine steam', /there is no engine steam; known: exact, beautifier/],
      ['idealise --templates nowhere', /nowhere: no such template file/],
      ['render --pixels 0', /--pixels must be a whole number/],
    ];
    const before = fs.readdirSync(folder);
    for (const [line, message] of cases) {
      // A comma stands for an empty name.
      const args = line.split(' ').map((word) => (word === ',' ? '' : word));
      const { code, stdout, stderr } = await run(folder, args);
      assert.deepEqual([code, stdout], [2, ''], line);
      assert.match(stderr, message);
      assert.doesNotMatch(stderr, /\.js:\d/, 'no stack');
    }
    assert.deepEqual(fs.readdirSync(folder), before);
    assert.equal(read('taken.ndjson'), 'mine');
  });

  test('a full or closed standard output is told by the exit code, never by a stack', async () => {
    write('labelled.ndjson', '{"family":"dot","points":[[1,2]]}\n');
    const commands = [
      '--help',
      'idealise labelled.ndjson',
      'idealise labelled.ndjson -o summed.ndjson --force --json',
      'evaluate labelled.ndjson',
    ];
    const shell = async (line) => {
      const child = spawn('bash', ['-c', line], { cwd: folder });
      let text = '';
      child.stderr.on('data', (chunk) => (text += chunk));
      const [code] = await once(child, 'close');
      return { code, text };
    };
    for (const command of commands) {
      const program = `"${process.execPath}" "${PROGRAM}" ${command}`;
      const full = await shell(`${program} > /dev/full`);
      assert.equal(full.code, 2, full.text);
      assert.match(full.text, /scrivo \S+: standard output cannot be written: ENOSPC[^\n]*\n$/);
      const closed = await shell(`${program} | true; exit \${PIPESTATUS[0]}`);
      assert.equal(closed.code, 0, closed.text);
      assert.doesNotMatch(closed.text, /EPIPE/);
      const mute = await shell(`${program} --no-such-option 2> /dev/full`);
      assert.equal(mute.code, command === '--help' ? 0 : 2);
    }
  });

  test('messages cannot steer the terminal', async () => {
    const { stderr } = await idealise([], '{"points":"\\u001b[31m"}\n\u001b[2Jx\n');
    assert.equal(stderr.split('\n').length, 3);
    assert.ok(!stderr.includes('\u001b'));
  });

  test('help and version go to standard output', async () => {
    const { version } = require('../../packages/cli/package.json');
    assert.equal((await run(folder, ['--version'])).stdout, `${version}\n`);
    assert.match((await run(folder, ['--help'])).stdout, /usage: scrivo COMMAND/);
    for (const [command, options] of Object.entries(OPTIONS)) {
      const { code, stdout, stderr } = await run(folder, [command, '-h']);
      assert.deepEqual([code, stderr], [0, '']);
      assert.match(stdout, /^examples\n {2}scrivo /m);
      const explained = Array.from(
        stdout.matchAll(/^ {2}(?:-\w,| {3}) --([\w-]+)/gm),
        ([, name]) => name,
      );
      const also = stdout.includes('--width N --height N') ? ['height'] : [];
      assert.deepEqual([...explained, ...also].sort(), Object.keys(options).sort(), command);
    }
  });
});

describe('many strokes', () => {
  const ink = toNdjson(drawStrokes(1500));

  test('keep their order and their answers, however many threads work on them', async () => {
    const [alone, ...others] = await Promise.all(
      ['1', '2', '5'].map((jobs) => idealise(['--jobs', jobs], ink)),
    );
    const ids = parseLines(alone.stdout).map(({ id }) => id);
    assert.equal(ids.join(), Array.from({ length: 1500 }, (_, i) => `s${i}`).join());
    for (const { code, stdout, stderr } of others) {
      assert.deepEqual([code, stderr], [0, '']);
      assert.ok(stdout === alone.stdout, 'other answers than one thread gives');
    }
  });

  test('a worker that is killed ends the run with a message and no output file', async () => {
    const child = start(folder, ['idealise', '--snap', '-j', '2', '--format', 'svg']);
    child.stdin.write(ink);
    const list = `/proc/${child.pid}/task/${child.pid}/children`;
    const workers = () => fs.readFileSync(list, 'utf8').split(' ').filter(Boolean);
    await until(() => workers().length > 0);
    for (const worker of workers()) process.kill(Number(worker), 'SIGKILL');
    child.stdin.end();
    const { code, stdout, stderr } = await child.ended;
    assert.deepEqual([code, stdout], [2, '']);
    assert.match(stderr, /^scrivo idealise: a worker was ended by SIGKILL before its work/);
  });

  test('need no more memory than few', async () => {
    // 48 MB; of all the strokes at once a heap of 32 MB could not even hold the text.
    write('large.ndjson', ink.repeat(12));
    assert.ok(fs.statSync(inFolder('large.ndjson')).size > 40e6);
    for (const jobs of ['1', '2']) {
      const args = ['idealise', 'large.ndjson', '-o', 'large.svg', '--force', '--jobs', jobs];
      const flags = ['--max-old-space-size=32'];
      const { code, stderr } = await start(folder, args, flags).ended;
      assert.deepEqual([code, stderr], [0, '']);
    }
  });

  test('a reader that has enough ends the run, also while more could come', async () => {
    const child = start(folder, ['idealise']);
    child.stdout.once('data', () => child.stdout.destroy());
    const feeding = setInterval(() => child.stdin.write(ink), 20);
    const { code, stderr } = await child.ended;
    clearInterval(feeding);
    assert.deepEqual([code, stderr], [0, '']);
  });

  test('an answer does not wait for the next line', async () => {
    for (const jobs of ['1', '2']) {
      const child = start(folder, ['idealise', '--jobs', jobs]);
      for (let i = 0; i < 3; i += 1) {
        child.stdin.write(`{"id":${i},"points":[[1,2]]}\n`);
        const [text] = await once(child.stdout, 'data');
        assert.equal(JSON.parse(text).id, i);
      }
      child.stdin.end();
      assert.equal((await child.ended).code, 0);
    }
  });

  test('no more is taken ahead than asked for, and failures arrive in their turn', async () => {
    let taken;
    async function* endless() {
      for (taken = 1; ; taken += 1) yield taken;
    }
    const takeAll = async (task, last) => {
      let given = 0;
      for await (const item of mapOrdered(endless(), task, 4)) {
        assert.equal(item, (given += 1));
        assert.ok(taken - given <= 5, `${taken} taken, ${given} given`);
        if (given === last) break;
      }
      return given;
    };
    const later = (item) => new Promise((resolve) => setTimeout(resolve, item % 3, item));
    assert.equal(await takeAll(later, 50), 50);
    const failing = async (item) => (item === 3 ? Promise.reject(new Error('third')) : item);
    assert.equal(await takeAll(failing, 2), 2);
    await assert.rejects(takeAll(failing, 3), /third/);
  });
});

describe('the output file', () => {
  /** Starts a run that has begun to write and waits for more. */
  async function interruptible(name) {
    const child = start(folder, ['idealise', '-o', name, '--jobs', '2']);
    child.stdin.write(toNdjson(drawStrokes(100)));
    const begun = () => fs.readdirSync(folder).filter((file) => file.endsWith('.tmp'));
    await until(() => begun().some((file) => fs.statSync(inFolder(file)).size > 0));
    return child;
  }

  test('an interrupted run leaves no half file, and its scraps only if it was killed', async () => {
    const before = fs.readdirSync(folder);
    for (const [signal, name, scraps] of [
      ['SIGINT', 'cut.ndjson', 0],
      ['SIGTERM', 'cut.svg', 0],
      ['SIGKILL', 'cut.svg', 2],
    ]) {
      const child = await interruptible(name);
      child.kill(signal);
      assert.equal((await child.ended).signal, signal);
      const left = fs.readdirSync(folder).filter((file) => !before.includes(file));
      assert.equal(left.filter((file) => file.endsWith('.tmp')).length, scraps, left.join());
      assert.equal(left.length, scraps, left.join());
      for (const file of left) fs.rmSync(inFolder(file));
    }
  });

  test('a file that appears meanwhile is not overwritten', async () => {
    const child = await interruptible('contested.ndjson');
    write('contested.ndjson', 'mine');
    child.stdin.end();
    const { code, stderr } = await child.ended;
    assert.equal(code, 2);
    assert.match(stderr, /contested\.ndjson cannot be written: .*meanwhile/);
    assert.equal(read('contested.ndjson'), 'mine');
    const scraps = fs.readdirSync(folder).filter((file) => file.startsWith('.contested'));
    assert.deepEqual(scraps, []);
  });

  test('--force replaces what a link leads to, keeps its permissions, also onto its input', async () => {
    write('real.ndjson', '{"points":[[1,2]]}\n');
    fs.chmodSync(inFolder('real.ndjson'), 0o640);
    fs.symlinkSync('real.ndjson', inFolder('link.ndjson'));
    const args = ['link.ndjson', '-o', 'link.ndjson', '--force'];
    assert.equal((await idealise(args)).code, 0);
    assert.ok(fs.lstatSync(inFolder('link.ndjson')).isSymbolicLink());
    assert.equal(fs.statSync(inFolder('real.ndjson')).mode & 0o777, 0o640);
    assert.equal(parseLines(read('real.ndjson'))[0].figure, 'none');
  });

  test('a device is written to as it is, and a full one is an error', async () => {
    const ink = '{"points":[[1,2]]}\n';
    const nowhere = await idealise(['-o', '/dev/null'], ink);
    assert.deepEqual([nowhere.code, nowhere.stderr], [0, '']);
    const full = await idealise(['-o', '/dev/full'], ink);
    assert.equal(full.code, 2);
    assert.match(full.stderr, /\/dev\/full cannot be written: ENOSPC/);
    assert.ok(fs.statSync('/dev/null').isCharacterDevice());
    spawnSync('mkfifo', [inFolder('pipe')]);
    const writing = idealise(['-o', 'pipe', '--format', 'svg'], ink);
    const [drawing, { code }] = await Promise.all([
      fs.promises.readFile(inFolder('pipe')),
      writing,
    ]);
    assert.equal(code, 0);
    assert.match(drawing.toString(), /^<svg [^]*<\/svg>\n$/);
  });

  test('the summary is on standard output, or on standard error when strokes are there', async () => {
    write('three.ndjson', toNdjson([{ points: shakyLine(0, 9) }, { points: [[1, 2]] }]));
    const filed = await idealise(['three.ndjson', '-o', 'three.svg', '--json']);
    const { seconds, cpu_seconds: cpu, ...summary } = JSON.parse(filed.stdout);
    assert.ok(seconds > 0 && cpu > 0);
    assert.deepEqual(summary, {
      engine: 'exact',
      output: 'three.svg',
      strokes: 2,
      figures: { line: 1, none: 1 },
      skipped: 0,
      passed_over: 0,
      unread: [],
    });
    const piped = await idealise(['three.ndjson', '--json']);
    assert.equal(parseLines(piped.stdout).length, 2);
    assert.equal(JSON.parse(piped.stderr).strokes, 2);
  });
});
