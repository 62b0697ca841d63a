'use strict';

// More strokes from those that were drawn: the same figure drawn otherwise, and
// ink that is no figure made from one that is.

const d = require('./distortions.js');
const { boxOf, generator, hash, scaled } = require('./strokes.js');

const SIDE = 200; // longer side of the strokes that are varied
const LEAST_POINTS = 14; // of a moderately thinned stroke
const LEAST_SPARSE = 5; // of a severely thinned one
const MOST_SQUEEZE = 5;

const CLOSED = ['triangle', 'quadrangle', 'ellipse'];
const OPEN = ['line', 'angle'];

const uniform = (random, low, high) => low + (high - low) * random();

/** Turned by any angle, mirrored when `mirror` is -1. */
function turned(points, random, mirror = 1) {
  const angle = 2 * Math.PI * random();
  const [c, s] = [Math.cos(angle), Math.sin(angle)];
  return points.map(([x, y]) => [c * x - mirror * s * y, s * x + mirror * c * y]);
}

function squeezed(points, random) {
  const k = uniform(random, 1, MOST_SQUEEZE);
  return points.map(random() < 0.5 ? ([x, y]) => [x, y / k] : ([x, y]) => [x / k, y]);
}

/** Thinned to every `most`-th point, or less where few points would be left. */
function thin(points, most, least) {
  return d.thinned(Math.max(1, Math.min(most, Math.floor(points.length / least))))(points);
}

const shaken = (points, random) =>
  thin(points, 4, LEAST_POINTS).map((p) => p.map((v) => v + uniform(random, -0.6, 0.6)));

const rough = (points, random) =>
  random() < 0.7
    ? d.noise(uniform(random, 0.5, 2.2))(points, random)
    : d.tremor(uniform(random, 1, 3.5), uniform(random, 7, 20))(points, random);

/** Point of the path farthest from the line through its ends. */
function vertexOf(points) {
  const [[x0, y0], [x1, y1]] = [points[0], points[points.length - 1]];
  const away = ([x, y]) => Math.abs((x - x0) * (y1 - y0) - (y - y0) * (x1 - x0));
  return points.reduce((best, p, i) => (away(p) > away(points[best]) ? i : best), 0);
}

/** An angle whose bend is spread over half of the shorter leg and more: a J, an arch. */
function roundedAngle(points, random) {
  const lengths = d.lengthsOf(points);
  const vertex = vertexOf(points);
  const whole = lengths[lengths.length - 1];
  const at = lengths[vertex];
  const reach = uniform(random, 0.5, 1) * Math.min(at, whole - at);
  const before = d.part(points, 0, (at - reach) / whole);
  const after = d.part(points, (at + reach) / whole, 1);
  const [a, b, c] = [before[before.length - 1], points[vertex], after[0]];
  const bend = Array.from({ length: 11 }, (_, i) => {
    const t = (i + 1) / 12;
    return [0, 1].map((k) => (1 - t) ** 2 * a[k] + 2 * t * (1 - t) * b[k] + t * t * c[k]);
  });
  return [...before, ...bend, ...after];
}

/** A third leg at the end of an angle: a flag. */
function flagged(points, random) {
  const end = points[points.length - 1];
  const from = d.part(points, 0.9, 1)[0];
  const angle = Math.atan2(end[1] - from[1], end[0] - from[0]);
  const bend = (random() < 0.5 ? -1 : 1) * uniform(random, Math.PI / 3, 0.85 * Math.PI);
  const length = uniform(random, 0.18, 0.5) * SIDE;
  const tip = [
    end[0] + length * Math.cos(angle + bend),
    end[1] + length * Math.sin(angle + bend),
  ];
  return [...points, ...d.dense([end, tip], 8).slice(1)];
}

/** A leg of an angle drawn there and back before the other one: a letter. */
function retracedLeg(points) {
  const leg = points.slice(0, vertexOf(points) + 1);
  return [...[...leg].reverse(), ...points.slice(1)];
}

/** A line that goes back over a part of itself. */
function retracedPart(points, random) {
  const back = [...points].reverse();
  return [...points, ...d.part(back, 0, uniform(random, 0.15, 0.9)).slice(1)];
}

/** A pole at the end of a closed figure, pointing away from it. */
function withPole(points, random) {
  const middle = [0, 1].map((k) => points.reduce((sum, p) => sum + p[k], 0) / points.length);
  const end = points[points.length - 1];
  const angle =
    Math.atan2(end[1] - middle[1], end[0] - middle[0]) + uniform(random, -1, 1) * (Math.PI / 3);
  const length = uniform(random, 0.25, 0.8) * SIDE;
  const tip = [end[0] + length * Math.cos(angle), end[1] + length * Math.sin(angle)];
  return [...points, ...d.dense([end, tip], 8).slice(1)];
}

/** A closed curve that is drawn on for up to another lap while it shrinks or grows. */
function spiral(points, random) {
  const middle = [0, 1].map((k) => points.reduce((sum, p) => sum + p[k], 0) / points.length);
  const path = d.runOn(uniform(random, 0.35, 1))(points);
  const least = uniform(random, 0.35, 0.7);
  return path.map((p, i) => {
    const k = 1 - ((1 - least) * i) / (path.length - 1);
    return [0, 1].map((c) => middle[c] + k * (p[c] - middle[c]));
  });
}

/** [weight, families, what becomes of them, how]; 'same' keeps the family. */
const VARIANTS = [
  [1, null, 'same', (points) => points],
  [0.5, null, 'same', (points, random) => turned([...points].reverse(), random)],
  [0.5, null, 'same', (points, random) => shaken(turned(points, random, -1), random)],
  // Slim rectangles and ovals are rare in what people drew for collections. A line
  // or an angle becomes another figure by squeezing, and a slim triangle is a line
  // that was drawn there and back.
  [0.25, ['quadrangle', 'ellipse', 'none'], 'same', (p, random) => turned(squeezed(p, random), random)],
  [0.25, null, 'same', (points) => thin(points, 6, LEAST_SPARSE)],
  [0.25, null, 'same', rough],
  [0.25, CLOSED, 'same', (points, random) => d.gap(uniform(random, 0.03, 0.14))(points)],
  [0.25, [...CLOSED, 'none'], 'same', (points, random) => d.runOn(uniform(random, 0.05, 0.28))(points)],
  [0.25, null, 'same', (points, random) => d.hooks(uniform(random, 0.03, 0.1) * SIDE)(points, random)],
  [0.25, OPEN, 'same', (points, random) => shaken(d.thereAndBack(points), random)],
  [0.25, ['line'], 'same', retracedPart],
  [0.25, ['angle'], 'none', retracedLeg],
  [0.25, ['angle'], 'none', roundedAngle],
  [0.25, ['angle'], 'none', flagged],
  [0.25, CLOSED, 'none', withPole],
  [0.25, ['ellipse'], 'none', spiral],
];

/** All variants of a stroke: { points, family, importance }, the stroke itself first. */
function variants(stroke) {
  const { family } = stroke;
  const plain = stroke.points.map(([x, y]) => [x, y]);
  const seed = hash(stroke.source + stroke.id);
  const extent = boxOf(plain).extent;
  return VARIANTS.flatMap(([importance, families, becomes, vary], i) => {
    if (families !== null && !families.includes(family)) return [];
    if (process.env.VARS && !process.env.VARS.split(',').includes(String(i))) return [];
    if (i > 0 && !(extent > 0)) return [];
    const random = generator(seed + i);
    const points = i === 0 ? plain : vary(scaled(plain, SIDE), random);
    if (i > 3 && process.env.VW) importance = +process.env.VW;
    return [{ points, family: becomes === 'same' ? family : becomes, importance, original: i === 0 }];
  });
}

module.exports = { variants };
