'use strict';

const assert = require('node:assert/strict');
const { test } = require('node:test');
const { read } = require('../../support/read-ink.js');

const MB = 1024 * 1024;
const svg = (content) => `<svg>${content}</svg>`;
const entity = (value) => `<!DOCTYPE svg [<!ENTITY a "${value}">]>`;

test('what would take too much memory or time is refused with the limit', async () => {
  const cases = [
    [
      `${entity('x'.repeat(1000))}${svg('<text>&a;</text>'.repeat(1100))}`,
      /expand to more than 1 MB/,
    ],
    [`${entity('1 1 '.repeat(250))}${svg(`<path d="${'&a;'.repeat(1100)}"/>`)}`, /more than 1 MB/],
    [svg('<g>'.repeat(1001)), /nested more than 1000 deep/],
    [`<ink><trace>${'1 2, '.repeat(MB)}</trace></ink>`, /a tag or text longer than 4 MB/],
    [svg(`<path d="${' '.repeat(5 * MB)}"/>`), /a tag or text longer than 4 MB/],
    [`[${' '.repeat(9 * MB)}]`, /larger than 8 MB/],
    [`[[]${',[]'.repeat(1e6)}]`, /more than 1000000 arrays and objects/],
    [`[\n${'['.repeat(1001)}${']'.repeat(1001)}]`, /nested too deeply/],
  ];
  for (const [content, message] of cases) assert.match((await read(content)).damage, message);
  const crowd = `{"points":[[1,2]],"others":[${Array(10001).fill('[[1,2]]')}]}`;
  assert.match((await read(crowd)).problems[0], /"others" has more than 10000 strokes/);
  const trace = await read(`<ink><trace>${'1 2, '.repeat(MB / 4)}</trace></ink>`);
  assert.match(trace.problems[0], /a trace longer than 1 MB/);
  const parts = await read(svg(`<path d="${'M1 2L3 4'.repeat(10001)}"/>`));
  assert.match(parts.problems[0], /more than 10000 parts/);
  const long = await read(svg(`<path d="M0 0${'L1 2'.repeat(MB / 3)}"/><path d="M0 0L1 2"/>`));
  assert.deepEqual(long.problems, ['1: path data longer than 1 MB']);
  assert.equal(long.strokes.length, 1);
  // Each stroke gets the fields.
  const drawingOf = (count, word) =>
    `{"drawing":[${Array(count).fill('[[1],[2]]')}],"word":"${word}"}`;
  const drawing = drawingOf(1600, 'y'.repeat(3000));
  assert.match((await read(drawingOf(2001, 'y'))).problems[0], /more than 2000 strokes/);
  assert.match((await read(drawing)).problems[0], /more than 4 MB, the limit, with 1600 strokes/);
  for (const depth of [5000, 50000]) {
    const deep = `{"points":[[1,2]],"a":${'['.repeat(depth)}${']'.repeat(depth)}}`;
    const [problem] = (await read(`${deep}\n`)).problems;
    assert.equal(problem, depth > 5000 ? '1: nested too deeply' : undefined);
  }
});

test('huge curves get few points, transforms are combined only once, style sheets read in one go', async () => {
  const curve = 'C1e9 0 1e9 1e9 0 1e9';
  const { strokes } = await read(
    svg(`<path d="M0 0${curve}"/><path d="M0 0${curve.repeat(9000)}"/>`),
  );
  const lengths = strokes.map(({ points }) => points.length);
  assert.ok(lengths[0] >= 16 && lengths[0] < 100 && lengths[1] < 120000, lengths.join());
  const nested = `${'<g transform="rotate(1)">'.repeat(720)}${'<path d="M0 0L1 0"/>'.repeat(1000)}${'</g>'.repeat(720)}`;
  const turned = await read(svg(nested));
  assert.equal(turned.strokes.length, 1000);
  const [x, y] = turned.strokes[999].points[1];
  assert.ok(Math.hypot(x - 1, y) < 1e-9);
  // Matching such a text step by step would take hours.
  const wrong = svg(`<path transform="scale(1)${' '.repeat(200000)}x" d="M0 0L1 1"/>`);
  assert.match((await read(wrong)).problems[0], /transform .* cannot be read/);
  const sheets = ['/*', 'a ', '{', '}'].map((text) => `<style>${text.repeat(500000)}</style>`);
  const filled = '<style>/* path { fill: red } */@media x { .b/* } */{ fill: red } }</style>';
  const paths = '<path d="M0 0L1 1"/><path class="b" d="M0 0L1 1"/>';
  const styled = svg(`${sheets.join('')}${filled}${paths}`);
  assert.equal((await read(styled)).strokes.length, 1);
});
