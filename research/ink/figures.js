'use strict';

const { ellipse, polygon, rotate, skew, spaceEvenly, trace, transform } = require('./outlines.js');

/**
 * The path that a person intends for each figure, before the hand distorts it: an open polyline
 * whose longer side is about 1, y down.
 *
 * Closed figures are traced beyond their start by `overshoot` (a share of the outline; a gap when
 * negative).
 *
 * @typedef {object} Figure
 * @property {string} family the right answer
 * @property {(random: object, overshoot: number) => Array<{x: number, y: number}>} path
 */

const DEGREE = Math.PI / 180;

/** @type {Record<string, Figure>} */
const FIGURES = {
  dot: { family: 'dot', path: () => [{ x: 0, y: 0 }] },
  line: { family: 'line', path: linePath },
  angle: { family: 'angle', path: anglePath },
  equilateral: closedFigure('triangle', () => isoscelesCorners(Math.sqrt(3) / 2)),
  isosceles: closedFigure('triangle', (random) => isoscelesCorners(random.uniform(0.6, 1.6))),
  'right triangle': closedFigure('triangle', rightTriangleCorners),
  square: closedFigure('quadrangle', () => rectangleCorners(1)),
  rectangle: closedFigure('quadrangle', (random) => rectangleCorners(random.uniform(0.4, 0.75))),
  rhombus: closedFigure('quadrangle', rhombusCorners),
  parallelogram: closedFigure('quadrangle', parallelogramCorners),
  trapezoid: closedFigure('quadrangle', trapezoidCorners),
  circle: { family: 'ellipse', path: (random, overshoot) => roundPath(1, random, overshoot) },
  ellipse: {
    family: 'ellipse',
    path: (random, overshoot) => roundPath(random.uniform(0.45, 0.75), random, overshoot),
  },
  pentagon: closedFigure('none', () => starCorners(5, 1)),
  star: closedFigure('none', () => starCorners(5, 2)),
  spiral: { family: 'none', path: spiralPath },
  wave: { family: 'none', path: wavePath },
  zigzag: { family: 'none', path: zigzagPath },
  loops: { family: 'none', path: loopsPath },
  scrawl: { family: 'none', path: scrawlPath },
};

function linePath(random) {
  return rotate(
    [
      { x: 0, y: 0 },
      { x: 1, y: 0 },
    ],
    anyTilt(random),
  );
}

function anglePath(random) {
  const opening = random.uniform(30, 110) * DEGREE;
  const leg = random.uniform(0.6, 1);
  const legs = polygon([
    [1, 0],
    [0, 0],
    [leg * Math.cos(opening), leg * Math.sin(opening)],
  ]);
  return rotate(random.chance(0.5) ? legs : legs.reverse(), random.uniform(0, 2 * Math.PI));
}

function closedFigure(family, corners) {
  return {
    family,
    path: (random, overshoot) => {
      const ring = rotate(corners(random), smallTilt(random));
      return traceFromCorner(ring, random, overshoot);
    },
  };
}

/** Starts close to a corner and runs in either direction. */
function traceFromCorner(ring, random, overshoot) {
  const first = random.integer(0, ring.length - 1);
  const turned = [...ring.slice(first), ...ring.slice(0, first)];
  const directed = random.chance(0.5) ? turned : [turned[0], ...turned.slice(1).reverse()];
  const start = Math.abs(random.normal(0, 0.01));
  return trace(directed, start, 1 + overshoot);
}

function isoscelesCorners(height) {
  const longer = Math.max(1, height);
  return transform(
    polygon([
      [0, 0],
      [0.5, height],
      [-0.5, height],
    ]),
    [1 / longer, 0, 0, 1 / longer],
  );
}

function rightTriangleCorners(random) {
  const side = random.uniform(0.6, 1);
  const mirror = random.pick([-1, 1]);
  return polygon([
    [0, 0],
    [0, side],
    [mirror, side],
  ]);
}

function rectangleCorners(height) {
  return polygon([
    [0, 0],
    [1, 0],
    [1, height],
    [0, height],
  ]);
}

function rhombusCorners(random) {
  const half = random.uniform(0.3, 0.45);
  return polygon([
    [0, -0.5],
    [half, 0],
    [0, 0.5],
    [-half, 0],
  ]);
}

function parallelogramCorners(random) {
  return skew(rectangleCorners(random.uniform(0.4, 0.6)), random.pick([-1, 1]) * 0.5);
}

function trapezoidCorners(random) {
  const inset = random.uniform(0.15, 0.3);
  return polygon([
    [inset, 0],
    [1 - inset, 0],
    [1, 0.6],
    [0, 0.6],
  ]);
}

/** Every `step`-th corner of a regular polygon in turn. */
function starCorners(count, step) {
  return polygon(
    Array.from({ length: count }, (_, i) => {
      const angle = (2 * Math.PI * i * step) / count - Math.PI / 2;
      return [0.5 * Math.cos(angle), 0.5 * Math.sin(angle)];
    }),
  );
}

/** Round figures start near the top and mostly run counter-clockwise. */
function roundPath(height, random, overshoot) {
  const ring = ellipse(0.5, height / 2);
  const directed = random.chance(0.75) ? [ring[0], ...ring.slice(1).reverse()] : ring;
  const top = random.chance(0.75) ? 0.25 : 0.75;
  return rotate(trace(directed, random.normal(top, 0.04), 1 + overshoot), smallTilt(random));
}

function spiralPath(random) {
  const turns = random.uniform(2.2, 3.5);
  const mirror = random.pick([-1, 1]);
  return curve(40 * turns, (t) => {
    const angle = 2 * Math.PI * turns * t;
    const radius = 0.06 + 0.44 * t;
    return [mirror * radius * Math.cos(angle), radius * Math.sin(angle)];
  });
}

function wavePath(random) {
  const periods = random.uniform(1.5, 3);
  const height = random.uniform(0.1, 0.2);
  return curve(120, (t) => [t, height * Math.sin(2 * Math.PI * periods * t)]);
}

function zigzagPath(random) {
  const teeth = random.integer(4, 7);
  return polygon(
    Array.from({ length: teeth + 1 }, (_, i) => [
      i / teeth,
      (i % 2 === 0 ? -1 : 1) * random.uniform(0.12, 0.25),
    ]),
  );
}

/** Joined loops, like a row of the letters e and l. */
function loopsPath(random) {
  const loops = random.integer(3, 5);
  const heights = Array.from({ length: loops + 1 }, () => random.pick([0.14, 0.14, 0.3]));
  return curve(loops * 40, (t) => {
    const angle = 2 * Math.PI * loops * t;
    const height = heights[Math.floor(t * loops)];
    return [t - 0.08 * Math.sin(angle), -height * (1 - Math.cos(angle))];
  });
}

/** A smooth curve through a few random points, like a hasty letter. */
function scrawlPath(random) {
  const knots = Array.from({ length: random.integer(5, 8) }, () => [
    random.uniform(-0.4, 0.4),
    random.uniform(-0.5, 0.5),
  ]);
  const last = knots.length - 1;
  return curve(last * 20, (t) => {
    const at = Math.min(last - 1, Math.floor(t * last));
    return catmullRom(
      [knots[Math.max(0, at - 1)], knots[at], knots[at + 1], knots[Math.min(last, at + 2)]],
      t * last - at,
    );
  });
}

/** Uniform Catmull-Rom spline: the piece between the second and third of four knots. */
function catmullRom([a, b, c, d], t) {
  return [0, 1].map(
    (axis) =>
      0.5 *
      (2 * b[axis] +
        (c[axis] - a[axis]) * t +
        (2 * a[axis] - 5 * b[axis] + 4 * c[axis] - d[axis]) * t ** 2 +
        (3 * b[axis] - a[axis] - 3 * c[axis] + d[axis]) * t ** 3),
  );
}

function curve(steps, at) {
  const count = Math.ceil(steps) + 1;
  return spaceEvenly(polygon(Array.from({ length: count }, (_, i) => at(i / (count - 1)))), count);
}

function smallTilt(random) {
  return random.normal(0, 3 * DEGREE);
}

function anyTilt(random) {
  return random.uniform(0, 2 * Math.PI);
}

module.exports = { FIGURES };
