// @ts-check
// Words for figures, their measures and reasons.

import { centreOf, cornerAngle, verticesOf } from '../model/figure.mjs';
import { distance } from '../model/geometry.mjs';

/** The everyday name of a figure: "Square", "Right triangle", "Circle". @param {Figure} figure */
export function figureLabel(figure) {
  const { kind } = figure;
  const subtype = 'subtype' in figure ? figure.subtype : 'general';
  if (kind === 'quadrangle' && subtype !== 'general') return capital(subtype);
  return capital(subtype === 'general' ? kind : `${subtype} ${kind}`);
}

/** @param {string} text */
export const capital = (text) => text[0].toUpperCase() + text.slice(1);

/** A confidence in whole percent. Rounded down: 100 % would claim certainty. @param {number} confidence */
export const percent = (confidence) => `${Math.floor(100 * confidence)}\u00a0%`;

/** @param {number} v */
const length = (v) => (v < 10 ? v.toFixed(1) : String(Math.round(v)));

/** @param {number} radians */
const degrees = (radians) => `${Math.round((radians * 180) / Math.PI)}°`;

/** Values that are all the same are given once. @param {string[]} values */
const list = (values) => (new Set(values).size === 1 ? values[0] : values.join(' · '));

/** @param {Place[]} corners */
function polygonMeasures(corners) {
  const at = (/** @type {number} */ i) => corners[i % corners.length];
  const sides = corners.map((corner, i) => length(distance(corner, at(i + 1))));
  const angles = corners.map((corner, i) =>
    degrees(cornerAngle(at(i + corners.length - 1), corner, at(i + 1))),
  );
  return [
    ['Sides', list(sides)],
    ['Angles', list(angles)],
  ];
}

/** Lengths in units and angles of a figure: names and values. @param {Figure} figure @returns {string[][]} */
export function measuresOf(figure) {
  const { x, y } = centreOf(figure);
  const place = ['Centre', `${Math.round(x)}, ${Math.round(y)}`];
  switch (figure.kind) {
    case 'dot':
      return [place];
    case 'line': {
      const { from, to } = figure;
      const slope = Math.atan2(Math.abs(to.y - from.y), Math.abs(to.x - from.x));
      return [
        ['Length', length(distance(from, to))],
        ['Slope', degrees(slope)],
      ];
    }
    case 'angle': {
      const [from, vertex, to] = verticesOf(figure);
      return [
        ['Opening', degrees(figure.opening)],
        ['Legs', [from, to].map((end) => length(distance(end, vertex))).join(' · ')],
      ];
    }
    case 'circle':
      return [['Radius', length(figure.radius)], place];
    case 'ellipse':
      return [
        ['Radii', `${length(figure.radii.x)} · ${length(figure.radii.y)}`],
        ['Turned', degrees(figure.rotation)],
        place,
      ];
    default:
      return [...polygonMeasures([...figure.corners]), place];
  }
}

/** Why ink was left as drawn. */
const REASONS = {
  invalid: 'The stroke has no usable points.',
  'too-small': 'It is smaller than the minimum size in the settings, so it counts as handwriting.',
  'not-wanted': 'It resembles a figure that is switched off in the settings.',
  'not-sure': 'It resembles a figure, but not closely enough at this sensitivity.',
  'no-figure': 'It resembles no figure.',
  template: 'The template engine found no figure; it gives no reason.',
  kept: 'It was kept as drawn: figures are off, or wait for the pen to rest.',
  restored: 'The page was closed while it was drawn.',
  refused: 'The engine could not read this stroke.',
};

/** @param {string} reason */
export const reasonText = (reason) =>
  REASONS[/** @type {keyof typeof REASONS} */ (reason)] ?? reason;

/** The kinds that a figure could be made instead, by its kind. @type {Record<string, Wish[]>} */
const RELATED = {
  square: ['rectangle', 'rhombus'],
  rectangle: ['square', 'parallelogram'],
  rhombus: ['square', 'kite'],
  parallelogram: ['rectangle', 'rhombus'],
  trapezoid: ['rectangle', 'parallelogram'],
  kite: ['rhombus', 'square'],
  quadrangle: ['rectangle', 'trapezoid'],
  circle: ['ellipse'],
  ellipse: ['circle'],
  triangle: ['isosceles', 'right'],
  right: ['isosceles', 'equilateral'],
  isosceles: ['equilateral', 'right'],
  equilateral: ['isosceles', 'right'],
  line: ['angle'],
  angle: ['line', 'triangle'],
  dot: [],
};

const CROSSWISE = /** @type {Record<string, Wish[]>} */ ({
  quadrangle: ['ellipse'],
  ellipse: ['rectangle'],
});

/**
 * Wishes worth offering for an item, likeliest first, each with its probability if it is known.
 *
 * @param {Item} item @returns {{wish: Wish, probability: number | null}[]}
 */
export function wishesFor({ figure, answer }) {
  /** @type {{wish: Wish, probability: number | null}[]} */
  const wishes = (answer?.alternatives ?? []).map(({ family, probability }) => ({
    wish: family,
    probability,
  }));
  const add = (/** @type {Wish} */ wish) => {
    if (!wishes.some((known) => known.wish === wish)) wishes.push({ wish, probability: null });
  };
  if (figure) {
    const subtype =
      'subtype' in figure && figure.subtype !== 'general' ? figure.subtype : figure.kind;
    RELATED[subtype].forEach(add);
    (CROSSWISE[figure.kind === 'circle' ? 'ellipse' : figure.kind] ?? []).forEach(add);
  } else if (wishes.length === 0) {
    /** @type {Wish[]} */ (['line', 'triangle', 'rectangle', 'ellipse']).forEach(add);
  }
  return wishes.slice(0, 4);
}

/** @param {Wish} wish */
export const wishLabel = (wish) =>
  capital(['equilateral', 'isosceles', 'right'].includes(wish) ? `${wish} triangle` : wish);
