'use strict';

const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const path = require('node:path');
const { describe, it } = require('node:test');
const { boundingBox } = require('../../../packages/cli/lib/boxes.js');
const { FIGURES, HANDS, drawInk } = require('../../../research/ink/index.js');
const { root } = require('../../support/native.js');

const names = Object.keys(FIGURES);

/** Speeds between neighbouring samples, units a second. */
function speedsOf(points) {
  return points
    .slice(1)
    .map(([x, y, , time], i) => {
      const [x0, y0, , time0] = points[i];
      return (1000 * Math.hypot(x - x0, y - y0)) / (time - time0);
    })
    .filter(Number.isFinite);
}

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

  it('slows down in corners and at both ends, where it presses lightly', () => {
    const { points } = drawInk({ figure: 'square', seed: 2, hand: HANDS.careful });
    const force = points.map((point) => point[2]);
    const firm = force[Math.floor(force.length / 2)];
    assert.ok(force[0] < 0.5 * firm && force.at(-1) < 0.5 * firm);
    const speeds = speedsOf(points);
    const median = [...speeds].sort((a, b) => a - b)[Math.floor(speeds.length / 2)];
    assert.ok(speeds[0] < 0.5 * median && speeds.at(-1) < 0.5 * median);
    // A corner is a run of slow samples; three lie inside a square, the fourth at its ends.
    const slow = speeds.map((speed) => speed < 0.75 * median);
    const runs = slow.filter((isSlow, i) => isSlow && !slow[i - 1]).length;
    assert.ok(runs >= 4, `${runs} slow runs`);
  });

  it('draws exact figures with a hand without deviations', () => {
    const none = { rounding: 0, closing: 0, drift: 0, wobble: 0, tremor: 0, grid: 0 };
    const hand = { ...HANDS.ordinary, ...none };
    const draw = (figure) => drawInk({ figure, seed: 4, hand }).points;
    const line = draw('line');
    const [[ax, ay], [bx, by]] = [line[0], line.at(-1)];
    assert.ok(Math.abs(Math.hypot(bx - ax, by - ay) - 200) < 1e-6);
    for (const [x, y] of line) {
      assert.ok(Math.abs((bx - ax) * (y - ay) - (by - ay) * (x - ax)) / 200 < 1e-6);
    }
    // The circle is made of chords, of which the middle lies 0.05 units inside.
    for (const [x, y] of draw('circle')) assert.ok(Math.abs(Math.hypot(x, y) - 100) < 0.1);
    const square = boundingBox(draw('square'));
    assert.ok(Math.abs(square.width - square.height) < 1);
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

  it('leaves gaps and overshoots as large as the hand does', () => {
    const gapOf = (hand, seed) => {
      const { points } = drawInk({ figure: 'circle', seed, hand });
      return Math.hypot(points.at(-1)[0] - points[0][0], points.at(-1)[1] - points[0][1]);
    };
    const mean = (hand) =>
      Array.from({ length: 40 }, (_, i) => gapOf(hand, i)).reduce((a, b) => a + b) / 40;
    assert.ok(mean(HANDS.careful) < 0.5 * mean(HANDS.hasty));
    assert.ok(mean(HANDS.hasty) < 0.2 * 200);
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
