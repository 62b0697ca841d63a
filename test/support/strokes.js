'use strict';

// Ink of the generator on a drawing area of 1000 by 800 units.

const { HANDS, drawInk } = require('../../research/ink/index.js');

const WIDTH = 1000;
const HEIGHT = 800;

// Pages get pointer events at the rate of the screen.
const HAND = { ...HANDS.ordinary, rate: 60 };

/** A figure in the middle of the area: points [x, y] in units. */
const inkOf = (figure) =>
  drawInk({ figure, seed: 1, hand: HAND, at: { x: 500, y: 400 } }).points.map(([x, y]) => [x, y]);

/** The same as points {x, y} in fractions of the area. */
const strokeOf = (figure) => inkOf(figure).map(([x, y]) => ({ x: x / WIDTH, y: y / HEIGHT }));

/** A stroke for each value of `figure.kind`. */
const INK = {
  dot: strokeOf('dot'),
  line: strokeOf('line'),
  angle: strokeOf('angle'),
  triangle: strokeOf('isosceles'),
  quadrangle: strokeOf('rectangle'),
  circle: strokeOf('circle'),
  ellipse: strokeOf('ellipse'),
};

/** 60 points [x, y] along a straight line, trembling by up to `tremor` units across it. */
function shakyLine(from, to, tremor = 0.5) {
  const [dx, dy] = [to[0] - from[0], to[1] - from[1]];
  const length = Math.hypot(dx, dy);
  return Array.from({ length: 60 }, (_, i) => {
    const t = i / 59;
    const across = (tremor * (Math.sin(2.3 * i) + Math.sin(0.9 * i))) / 2;
    return [from[0] + t * dx - (across * dy) / length, from[1] + t * dy + (across * dx) / length];
  });
}

module.exports = { WIDTH, HEIGHT, INK, inkOf, shakyLine, strokeOf };
