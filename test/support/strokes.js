'use strict';

// Strokes on a drawing area of 1000 by 800 units, each plainly one figure.

const WIDTH = 1000;
const HEIGHT = 800;

const samples = (place, count = 90) =>
  Array.from({ length: count }, (_, i) => {
    const [x, y] = place(i / (count - 1));
    return { x: x / WIDTH, y: y / HEIGHT };
  });

/** A stroke along corners in drawing-area units, `x,y` each, with a little tremor. */
function polyline(text) {
  const corners = text.split(' ').map((corner) => corner.split(',').map(Number));
  const edges = corners.length - 1;
  return samples((t) => {
    const k = Math.min(edges - 1, Math.floor(t * edges));
    const u = t * edges - k;
    const tremor = 0.4 * Math.sin(40 * t);
    return [0, 1].map((axis) => corners[k][axis] * (1 - u) + corners[k + 1][axis] * u + tremor);
  });
}

const round = (rx, ry) =>
  samples((t) => [500 + rx * Math.cos(6.25 * t), 400 + ry * Math.sin(6.25 * t)]);

const INK = {
  dot: samples((t) => [500 + t, 400], 2),
  line: polyline('100,100 500,260'),
  angle: polyline('100,100 400,120 380,420'),
  triangle: polyline('100,400 250,120 420,390 100,400'),
  quadrangle: polyline('100,100 400,105 395,300 102,296 100,100'),
  circle: round(100, 102),
  ellipse: round(160, 80),
};

module.exports = { WIDTH, HEIGHT, INK, polyline };
