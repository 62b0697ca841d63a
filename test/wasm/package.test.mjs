import assert from 'node:assert/strict';
import fs from 'node:fs';
import { createRequire } from 'node:module';
import { test } from 'node:test';
import { gzipSync } from 'node:zlib';

const require = createRequire(import.meta.url);
const { drawEach } = require('../../research/ink/index.js');
const native = { ...require('scrivo'), ...require('scrivo/beautifier') };

const dist = new URL('../../packages/wasm/dist/', import.meta.url);
const read = (file) => fs.readFileSync(new URL(file, dist));

/** A fresh copy of an entry, with an instance of its own. */
let copies = 0;
const load = (entry) => import(`${new URL(entry, dist)}?${copies++}`);

const CIRCLE = Array.from({ length: 60 }, (_, i) => ({
  x: 0.5 + 0.2 * Math.cos(i / 9.5),
  y: 0.5 + 0.2 * Math.sin(i / 9.5),
}));

test('the beautifier alone loads 110 kB, both engines 150 kB', () => {
  const size = (...files) => files.reduce((sum, file) => sum + gzipSync(read(file)).length, 0);
  assert.ok(size('beautifier.js', 'beautifier.wasm') <= 110e3);
  assert.ok(size('beautifier.js', 'beautifier-scalar.wasm') <= 110e3);
  assert.ok(size('index.js', 'scrivo.wasm') <= 150e3);
  assert.ok(size('index.js', 'scrivo-scalar.wasm') <= 150e3);
});

test('a call before the start says what is missing, and start() can be repeated', async () => {
  const { Beautifier, start } = await load('beautifier.js');
  const beautifier = new Beautifier();
  assert.throws(() => beautifier.beautify(CIRCLE, 800, 800), /await start\(\)/);
  await assert.rejects(start(new Uint8Array(8)), WebAssembly.CompileError);
  await Promise.all([start(), start()]);
  assert.equal(beautifier.beautify(CIRCLE, 800, 800).figure.kind, 'circle');
});

test('starts from bytes, a module, an address and the answer of fetch()', async () => {
  const bytes = read('beautifier.wasm');
  const headers = { 'content-type': 'application/wasm' };
  const sources = [
    bytes,
    new WebAssembly.Module(bytes),
    new URL('beautifier.wasm', dist),
    new URL('beautifier.wasm', dist).href,
    new Response(bytes, { headers }),
    Promise.resolve(new Response(bytes)),
  ];
  for (const source of sources) {
    const { outlineOf, start } = await load('beautifier.js');
    await start(source);
    assert.equal(outlineOf({ kind: 'dot', centre: { x: 1, y: 1 } }, 10, 10).length, 64);
  }
  const { start, startSync, FIGURES } = await load('beautifier.js');
  await assert.rejects(start(new Response('', { status: 404 })), /404/);
  startSync(bytes);
  assert.ok(Object.isFrozen(FIGURES));
});

test('goes on with the same templates after memory has run out', async () => {
  const wasm = await load('index.js');
  await wasm.start();
  wasm.initScrivo(wasm.templates);
  const before = wasm.optimizeAStroke(CIRCLE, 800, 800, []);
  assert.equal(before.type, 7);
  const long = new Float64Array(3 * 1.2e7);
  const beautifier = new wasm.Beautifier();
  assert.throws(() => beautifier.beautify(long, 800, 800), /out of memory/);
  assert.deepEqual(wasm.optimizeAStroke(CIRCLE, 800, 800, []), before);
  assert.equal(beautifier.beautify(CIRCLE, 800, 800).figure.kind, 'circle');
});

test('reads template files given as text or bytes', async () => {
  const answers = [];
  const files = native.templates.map((name) => ({ name, content: fs.readFileSync(name, 'utf8') }));
  const asBytes = files.map(({ name, content }) => ({ name, content: Buffer.from(content) }));
  for (const elements of [files, asBytes, ['no.template', files[3]], ['no/ellipse.template']]) {
    const { initScrivo, optimizeAStroke, start } = await load('index.js');
    await start();
    assert.equal(initScrivo(elements), true);
    answers.push(optimizeAStroke(CIRCLE, 800, 800, []).type);
  }
  assert.deepEqual(answers, [7, 7, 7, 0]);
});

test('warns on the console where the native package warns the process', async (t) => {
  const { initScrivo, optimizeAStroke, start, templates } = await load('index.js');
  await start();
  const warn = t.mock.method(console, 'warn', () => {});
  initScrivo([...templates, 'my/ellipse.template', { name: 'triangle.template', content: '1 2' }]);
  const line = Array.from({ length: 40 }, (_, i) => ({ x: 10 * i, y: 300 }));
  for (let i = 0; i < 2; i++) optimizeAStroke(line, 800, 600, []);
  const [files, figure, ...rest] = warn.mock.calls.map(({ arguments: [message] }) => message);
  assert.match(files, /^SCRIVO_NO_TEMPLATES: .*triangle.template.*my\/ellipse.template/);
  assert.match(figure, /^SCRIVO_PIXELS: /);
  assert.deepEqual(rest, []);
});

test('gives the same answers without vector instructions', async (t) => {
  const strokes = Array.from(drawEach(60), ({ points }) =>
    points.map(([x, y]) => ({ x: x / 1200 + 0.4, y: y / 900 + 0.4 })),
  );
  const answersOf = async () => {
    const [both, alone] = [await load('index.js'), await load('beautifier.js')];
    await both.start();
    await alone.start();
    both.initScrivo(both.templates);
    const beautifiers = [both, alone].map(({ Beautifier }) => new Beautifier());
    return strokes.map((stroke) => [
      both.optimizeAStroke(stroke, 1200, 900, []),
      ...beautifiers.map((beautifier) => beautifier.beautify(stroke, 1200, 900)),
    ]);
  };
  const answers = await answersOf();
  const compile = t.mock.method(WebAssembly, 'compile');
  t.mock.method(WebAssembly, 'validate', () => false);
  assert.deepEqual(await answersOf(), answers);
  const compiled = compile.mock.calls.map(({ arguments: [bytes] }) => Buffer.from(bytes));
  assert.deepEqual(compiled, [read('scrivo-scalar.wasm'), read('beautifier-scalar.wasm')]);
});

test('answers as the native modules do', async () => {
  const wasm = await load('index.js');
  await wasm.start();
  const place = ([x, y]) => ({ x: x / 1200 + 0.4, y: y / 900 + 0.4 });
  const engines = [native, wasm].map(({ Beautifier, initScrivo, optimizeAStroke, templates }) => {
    initScrivo(templates);
    const beautifier = new Beautifier();
    return [
      (stroke, others) => optimizeAStroke(stroke, 1200, 900, others),
      (stroke, others) => beautifier.beautify(stroke, 1200, 900, others),
    ];
  });
  let last = [];
  for (const { points } of drawEach(600)) {
    const stroke = points.map(place);
    for (const k of [0, 1]) {
      const [a, b] = engines.map((engine) => engine[k](stroke, [last]));
      assert.deepEqual([a.type, a.reason, a.path.length], [b.type, b.reason, b.path.length]);
      a.path.forEach(({ x, y }, i) => {
        assert.ok(Math.abs(x - b.path[i].x) < 1e-9 && Math.abs(y - b.path[i].y) < 1e-9);
      });
    }
    last = stroke;
  }
});
