'use strict';

const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const path = require('node:path');
const { describe, it } = require('node:test');
const { boundingBox } = require('../../../packages/cli/lib/boxes.js');
const { FIGURES, HANDS, drawInk } = require('../../../research/ink/index.js');
const { root } = require('../../support/native.js');

const names = Object.keys(FIGURES);

describe('ink generator', () => {
  it('repeats a stroke for its seed and varies it for another', () => {
    for (const figure of names) {
      const draw = (seed) => JSON.stringify(drawInk({ figure, seed }));
      assert.equal(draw(5), draw(5), figure);
      assert.notEqual(draw(5), draw(6), figure);
    }
  });

  it('gives samples a device could have recorded', () => {
    for (const figure of names) {
      for (const [name, hand] of Object.entries(HANDS)) {
        const { points } = drawInk({ figure, seed: 3, hand });
        const what = `${figure}, ${name}`;
        assert.ok(points.length >= 10, what);
        points.forEach(([x, y, force, time], i) => {
          assert.ok(force > 0 && force <= 1, `${what}: force ${force}`);
          assert.ok(i === 0 || time >= points[i - 1][3], `${what}: time ${time}`);
          assert.ok(Number.isInteger(x / hand.grid) && Number.isInteger(y / hand.grid), what);
        });
      }
    }
  });

  it('draws at the given size and place', () => {
    for (const figure of names.filter((name) => name !== 'dot')) {
      for (const size of [60, 200, 900]) {
        const hand = HANDS.careful;
        const { points } = drawInk({ figure, seed: 1, size, hand, at: { x: 5000, y: 3000 } });
        const box = boundingBox(points);
        const longer = Math.max(box.width, box.height);
        assert.ok(longer > 0.5 * size && longer < 1.5 * size, `${figure}: ${longer} for ${size}`);
        assert.ok(Math.hypot(box.x - 5000, box.y - 3000) < 2 * size, figure);
      }
    }
    const { points } = drawInk({ figure: 'dot', seed: 1, size: 900 });
    const dot = boundingBox(points);
    assert.ok(Math.max(dot.width, dot.height) < 9, 'a dot stays small');
  });

  it('records at the rate, resolution and pressure of the device', () => {
    const of = (changes) =>
      drawInk({ figure: 'ellipse', seed: 9, hand: { ...HANDS.ordinary, ...changes } }).points;
    const [slow, fast] = [of({ rate: 30 }), of({ rate: 240 })];
    assert.ok(Math.abs(fast.length / slow.length - 8) < 0.5);
    assert.ok(Math.abs(fast.at(-1)[3] - slow.at(-1)[3]) < 1, 'the movement takes as long');
    assert.ok(of({ force: 0 }).every(([, , force]) => force === 0));
    assert.ok(of({ grid: 2 }).every(([x, y]) => x % 2 === 0 && y % 2 === 0));
    const hurried = of({ speed: 2 * HANDS.ordinary.speed }).at(-1)[3];
    assert.ok(Math.abs((2 * hurried) / slow.at(-1)[3] - 1) < 0.05);
  });

  it('writes labelled lines of every figure, seed by seed', () => {
    const tool = path.join(root, 'research', 'ink', 'write.js');
    const run = (...args) => spawnSync(process.execPath, [tool, ...args], { encoding: 'utf8' });
    const { status, stdout } = run('--count', '2', '--seed', '7', '--hand', 'hasty');
    assert.equal(status, 0);
    const strokes = JSON.parse(`[${stdout.trimEnd().replaceAll('\n', ',')}]`);
    const found = strokes.map(({ label }) => label);
    assert.deepEqual(
      found,
      names.flatMap((name) => [name, name]),
    );
    const hand = { ...HANDS.hasty, rate: 60 };
    assert.deepEqual(strokes[3], drawInk({ figure: names[1], seed: 8, hand }));
    assert.equal(run('--hand', 'third').status, 2);
  });
});
