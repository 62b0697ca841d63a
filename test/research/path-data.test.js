'use strict';

const assert = require('node:assert/strict');
const { describe, it } = require('node:test');
const fc = require('fast-check');
const { pathData } = require('../../research/pictures/path-data.js');

/** Absolute points of path data as pathData writes it. */
function parsePath(data) {
  const [start, ...steps] = data.replace('h0', '').split(/(?=l)/);
  const numbers = (text) => (text.match(/-?(\d+\.?\d*|\.\d+)/g) ?? []).map(Number);
  let [x, y] = numbers(start);
  const points = [[x, y]];
  const deltas = steps.flatMap(numbers);
  for (let i = 0; i < deltas.length; i += 2) {
    x += deltas[i];
    y += deltas[i + 1];
    points.push([x, y]);
  }
  return points;
}

function distanceToPolyline({ x, y }, points) {
  const toSegment = ([ax, ay], [bx, by]) => {
    const [dx, dy] = [bx - ax, by - ay];
    const along = ((x - ax) * dx + (y - ay) * dy) / (dx * dx + dy * dy || 1);
    const share = Math.min(1, Math.max(0, along));
    return Math.hypot(x - ax - share * dx, y - ay - share * dy);
  };
  return Math.min(...points.map((point, i) => toSegment(points[Math.max(0, i - 1)], point)));
}

describe('SVG path data', () => {
  const coordinate = fc.double({ min: -500, max: 500, noNaN: true });
  const stroke = fc.array(fc.record({ x: coordinate, y: coordinate }), {
    minLength: 1,
    maxLength: 60,
  });

  it('stays within rounding of every point and keeps both ends', () => {
    fc.assert(
      fc.property(stroke, (points) => {
        const parsed = parsePath(pathData(points));
        for (const point of points) assert.ok(distanceToPolyline(point, parsed) < 0.2);
        for (const [point, [x, y]] of [
          [points[0], parsed[0]],
          [points.at(-1), parsed.at(-1)],
        ]) {
          assert.ok(Math.abs(point.x - x) < 0.051 && Math.abs(point.y - y) < 0.051);
        }
      }),
      { numRuns: 300 },
    );
  });

  it('is short: straight runs lose their inner points, but never a turning back', () => {
    const corners = { a: [0, 0], b: [100, 0], c: [50, 80] };
    const way = (names) =>
      [...names].slice(1).flatMap((to, i) => {
        const [[x0, y0], [x1, y1]] = [corners[names[i]], corners[to]];
        const at = (share) => ({ x: x0 + (x1 - x0) * share, y: y0 + (y1 - y0) * share });
        return Array.from({ length: 21 }, (_, k) => at(k / 20));
      });
    assert.equal(pathData(way('abca')), 'M0 0l100 0-50 80-50-80');
    assert.equal(pathData(way('aba')), 'M0 0l100 0-100 0');
  });

  it('draws a dot where all points are one, and nothing without a finite one', () => {
    assert.equal(pathData([{ x: 3, y: 4 }]), 'M3 4h0');
    assert.equal(pathData(new Array(5).fill({ x: 0.52, y: -0.5 })), 'M.5 -.5h0');
    assert.equal(pathData([{ x: NaN, y: 1 }]), '');
    assert.equal(pathData([]), '');
  });
});
