'use strict';

// Augmentation of the training set: the same figure drawn in other ways, and ink that
// is no figure, made from figures.

const { createUniform } = require('../ink/random.js');
const d = require('./distortions.js');
const { extentOf, hash, scaled } = require('./strokes.js');

const SIDE = 200; // longer side of the strokes that are varied
const MIN_POINTS = 14; // of a moderately thinned stroke
const MIN_POINTS_SPARSE = 5; // of a severely thinned one
const MIN_POINTS_SPARSEST = 3.4; // so that 20 points become four
const MAX_SQUEEZE = 5;

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
  const k = uniform(random, 1, MAX_SQUEEZE);
  return points.map(random() < 0.5 ? ([x, y]) => [x, y / k] : ([x, y]) => [x / k, y]);
}

/** Thinned to every `maxStep`-th point, or less where few points would be left. */
function thin(points, maxStep, minPoints) {
  return d.thinned(Math.max(1, Math.floor(Math.min(maxStep, points.length / minPoints))))(points);
}

/** Thinned to every third to eighth point, from either end. */
function sparse(points, random) {
  const from = random() < 0.5 ? points : [...points].reverse();
  return thin(from, 3 + Math.floor(6 * random()), MIN_POINTS_SPARSEST);
}

function distanceToChord([x, y], [x0, y0], [x1, y1]) {
  const [dx, dy] = [x1 - x0, y1 - y0];
  const t = ((x - x0) * dx + (y - y0) * dy) / (dx * dx + dy * dy || 1);
  const at = Math.min(Math.max(t, 0), 1);
  return Math.hypot(x - x0 - at * dx, y - y0 - at * dy);
}

/**
 * As few points as keep the path within `tolerance`, which are the corners of a polygon
 * (Douglas, Peucker: Algorithms for the reduction of the number of points required to
 * represent a digitized line or its caricature, 1973).
 */
function simplified(points, tolerance) {
  const [first, last] = [points[0], points[points.length - 1]];
  const away = points.map((p) => distanceToChord(p, first, last));
  const k = away.reduce((best, value, i) => (value > away[best] ? i : best), 0);
  if (!(away[k] > tolerance)) return [first, last];
  const before = simplified(points.slice(0, k + 1), tolerance);
  return [...before, ...simplified(points.slice(k), tolerance).slice(1)];
}

const shaken = (points, random) =>
  thin(points, 4, MIN_POINTS).map((p) => p.map((v) => v + uniform(random, -0.6, 0.6)));

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

// Weight of unusually drawn strokes: enough to learn them, too little to affect the
// usual ones.
const FEW = 0.08;
// Sparse strokes weigh more, since a feature tells them apart.
const SPARSE = 0.5;
const SPARSER = 0.3;

/** [weight, families (null for all), family of the variant, function]. */
const VARIANTS = [
  [1, null, 'same', (points) => points],
  [0.5, null, 'same', (points, random) => turned([...points].reverse(), random)],
  [0.5, null, 'same', (points, random) => shaken(turned(points, random, -1), random)],
  // Slim rectangles and ovals are rare in collections of drawings. A line
  // or an angle becomes another figure by squeezing, and a slim triangle is a line
  // that was drawn there and back.
  [
    0.25,
    ['quadrangle', 'ellipse', 'none'],
    'same',
    (p, random) => turned(squeezed(p, random), random),
  ],
  [SPARSE, null, 'same', (points) => thin(points, 6, MIN_POINTS_SPARSE)],
  [SPARSER, null, 'same', (points, random) => thin(points, 3 + Math.floor(6 * random()), 4)],
  [FEW, null, 'same', rough],
  [FEW, CLOSED, 'same', (points, random) => d.gap(uniform(random, 0.03, 0.14))(points)],
  [
    FEW,
    [...CLOSED, 'none'],
    'same',
    (points, random) => d.runOn(uniform(random, 0.05, 0.28))(points),
  ],
  [
    FEW,
    null,
    'same',
    (points, random) => d.hooks(uniform(random, 0.03, 0.1) * SIDE)(points, random),
  ],
  [FEW, OPEN, 'same', (points, random) => shaken(d.thereAndBack(points), random)],
  [FEW, ['line'], 'same', retracedPart],
  [FEW, ['angle'], 'none', retracedLeg],
];

/** More sparse strokes, for the part of the scores that sparse strokes alone have. */
const SPARSE_VARIANTS = [
  [SPARSE, null, 'same', (points) => thin([...points].reverse(), 4, MIN_POINTS_SPARSE)],
  [SPARSER, null, 'same', sparse],
  [SPARSER, null, 'same', sparse],
  // A polygon of its corners alone, as programs store it, is no thinned oval.
  [
    SPARSER,
    ['triangle', 'quadrangle'],
    'same',
    (points, random) => simplified(points, uniform(random, 0.02, 0.06) * SIDE),
  ],
];

/**
 * All variants of a stroke: { points, family, importance, sparseImportance, original }, the
 * stroke itself first. The importances are those for all scores and for what sparse
 * strokes add to them.
 */
function variants(stroke) {
  const { family } = stroke;
  const plain = stroke.points.map(([x, y]) => [x, y]);
  const seed = hash(stroke.source + stroke.id);
  const extent = extentOf(plain);
  return [...VARIANTS, ...SPARSE_VARIANTS].flatMap(([weight, families, becomes, vary], i) => {
    if (families !== null && !families.includes(family)) return [];
    if (i > 0 && !(extent > 0)) return [];
    const random = createUniform(seed + i);
    const points = i === 0 ? plain : vary(scaled(plain, SIDE), random);
    return [
      {
        points,
        family: becomes === 'same' ? family : becomes,
        importance: i < VARIANTS.length ? weight : 0,
        sparseImportance: weight,
        original: i === 0,
      },
    ];
  });
}

module.exports = { variants };
