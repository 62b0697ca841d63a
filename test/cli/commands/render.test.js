'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { after, test } = require('node:test');
const { ANSWERS } = require('../../../packages/cli/lib/families.js');
const { drawStrokes, makeFolder, run, toNdjson } = require('../../support/cli.js');

const folder = makeFolder(after);

test('draws ink and figures side by side, as SVG and PNG', async () => {
  fs.writeFileSync(path.join(folder, 'page.ndjson'), toNdjson(drawStrokes(24)));
  const { code, stdout } = await run(folder, ['render', 'page.ndjson']);
  assert.equal(code, 0);
  assert.match(stdout, /<tspan fill="#007b83">ellipse \d+<\/tspan>/);
  assert.equal(stdout.match(/<polyline /g).length, 3 * 24, 'ink, its copy and its figure');
  assert.doesNotMatch(stdout, /NaN|Infinity|undefined/);
  const colors = new Set(Array.from(stdout.matchAll(/<polyline stroke="([^"]+)/g), ([, c]) => c));
  assert.ok(colors.size > 5, `colours ${[...colors]}`);
  const known = Object.values(ANSWERS).map(({ colour }) => colour);
  for (const color of colors) assert.ok(known.includes(color), color);

  const png = await run(folder, ['render', 'page.ndjson', '-o', 'page.png', '--pixels', '640']);
  assert.deepEqual([png.code, png.stderr], [0, '']);
  const bytes = fs.readFileSync(path.join(folder, 'page.png'));
  assert.equal(bytes.toString('latin1', 1, 4), 'PNG');
  assert.equal(bytes.readUInt32BE(16), 640, 'width in the header');
});

test('shows the drawing area of the ink', async () => {
  const page = '<svg width="20in" viewBox="0 0 640 480"><path d="M1 2L3 4"/></svg>';
  const { stdout } = await run(folder, ['render'], page);
  assert.match(stdout, /translate\(24 44\) scale\(0\.41\d+\) translate\(0 0\)/);
});
