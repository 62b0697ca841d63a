'use strict';

// Distortions of strokes: the same figure, drawn more roughly or in another way.
// Each takes points [x, y] in units of the drawing area and a seeded generator, and
// returns points.

const { normalFrom } = require('../ink/random.js');

const distance = (a, b) => Math.hypot(b[0] - a[0], b[1] - a[1]);
const between = (a, b, t) => [a[0] + t * (b[0] - a[0]), a[1] + t * (b[1] - a[1])];

/** Arc length up to every point. */
function lengthsOf(points) {
  const lengths = [0];
  for (let i = 1; i < points.length; i++) {
    lengths.push(lengths[i - 1] + distance(points[i - 1], points[i]));
  }
  return lengths;
}

/** The part of the path between two shares of its length. */
function part(points, from, to) {
  const lengths = lengthsOf(points);
  const whole = lengths[lengths.length - 1];
  if (whole === 0) return points;
  const at = (length) => {
    let i = 1;
    while (i < points.length - 1 && lengths[i] < length) i++;
    const piece = lengths[i] - lengths[i - 1];
    return between(points[i - 1], points[i], piece > 0 ? (length - lengths[i - 1]) / piece : 0);
  };
  const inside = points.filter((_, i) => lengths[i] > from * whole && lengths[i] < to * whole);
  return [at(from * whole), ...inside, at(to * whole)];
}

/** Points no further apart than `step`, along the same pieces. */
function dense(points, step) {
  return points.flatMap((p, i) => {
    if (i === 0) return [p];
    const count = Math.max(1, Math.ceil(distance(points[i - 1], p) / step));
    return Array.from({ length: count }, (_, k) => between(points[i - 1], p, (k + 1) / count));
  });
}

/** Every `step`-th point and the last one. */
const thinned = (step) => (points) =>
  points.filter((_, i) => i % step === 0 || i === points.length - 1);

/** Every point moved by a normal deviate in x and y. */
const noise = (spread) => (points, random) =>
  points.map(([x, y]) => [x + spread * normalFrom(random), y + spread * normalFrom(random)]);

/** A wave across the path. */
const tremor = (amplitude, wave) => (points, random) => {
  const path = dense(points, wave / 8);
  const lengths = lengthsOf(path);
  const phase = 2 * Math.PI * random();
  return path.map(([x, y], i) => {
    const a = path[Math.max(0, i - 2)];
    const b = path[Math.min(path.length - 1, i + 2)];
    const chord = distance(a, b) || 1;
    const shift = (amplitude * Math.sin(phase + (2 * Math.PI * lengths[i]) / wave)) / chord;
    return [x - shift * (b[1] - a[1]), y + shift * (b[0] - a[0])];
  });
};

/** The end of the path is missing. */
const gap = (share) => (points) => part(points, 0, 1 - share);

/** The path goes on over its start. */
const runOn = (share) => (points) => [...points, ...part(points, 0, share)];

/** Short straight flicks of `length` at both ends, at random angles of 90 to 160 degrees. */
const hooks = (length) => (points, random) => {
  const hook = (path) => {
    const inner = part(path, 0, 0.05)[1];
    const [end] = path;
    const angle = Math.atan2(end[1] - inner[1], end[0] - inner[0]);
    const bend = ((random() < 0.5 ? -1 : 1) * Math.PI * (90 + 70 * random())) / 180;
    const tip = [
      end[0] + length * Math.cos(angle + bend),
      end[1] + length * Math.sin(angle + bend),
    ];
    return dense([tip, end], 4).slice(0, -1);
  };
  const backwards = [...points].reverse();
  return [...hook(points), ...points, ...hook(backwards).reverse()];
};

/** The path and the same path back. */
const thereAndBack = (points) => [...points, ...[...points].reverse().slice(1)];

const CLOSED = ['triangle', 'quadrangle', 'ellipse'];
const OPEN = ['line', 'angle'];
const ALL = [...CLOSED, ...OPEN];

/** [name, families that are distorted, distortion] */
const TABLE = [
  ['as drawn', ALL, (points) => points],
  ['every 4th point', ALL, thinned(4)],
  ['every 6th point', ALL, thinned(6)],
  ['white noise of 1.5 units', ALL, noise(1.5)],
  ['white noise of 2 units', ALL, noise(2)],
  ['tremor of 3 units, wave of 12', ALL, tremor(3, 12)],
  ['gap of 12 % of the path', ALL, gap(0.12)],
  ['ends run on by 25 %', CLOSED, runOn(0.25)],
  ['hooks of 8 % at both ends', ALL, hooks(0.08 * 200)],
  ['there and back', OPEN, thereAndBack],
];

module.exports = {
  TABLE,
  CLOSED,
  OPEN,
  gap,
  hooks,
  noise,
  part,
  runOn,
  thereAndBack,
  thinned,
  tremor,
};
