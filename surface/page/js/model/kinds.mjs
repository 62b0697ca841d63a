// @ts-check
// The kinds of polygons by their corners, for figures that came without one or were changed by hand.

import { distance } from './geometry.mjs';

// Edges count as equal when they differ by less than this share, directions as parallel or at right
// angles when they differ by less than this sine. The engines' figures differ by rounding only.
const SHARE = 0.004;
const SINE = 0.006;

/** @param {number} p @param {number} q */
const near = (p, q) => Math.abs(p - q) <= SHARE * Math.max(p, q);

/** @param {readonly Place[]} corners */
const edgesOf = (corners) =>
  corners.map((p, i) => {
    const q = corners[(i + 1) % corners.length];
    const length = distance(p, q);
    return { length, x: (q.x - p.x) / length, y: (q.y - p.y) / length };
  });

/** @typedef {ReturnType<typeof edgesOf>[number]} Edge */

/** @param {Edge} p @param {Edge} q */
const parallel = (p, q) => Math.abs(p.x * q.y - p.y * q.x) < SINE;

/** @param {Edge} p @param {Edge} q */
const square = (p, q) => Math.abs(p.x * q.x + p.y * q.y) < SINE;

/** @param {readonly Place[]} corners */
export function triangleKind(corners) {
  const [a, b, c] = edgesOf(corners);
  if (near(a.length, b.length) && near(b.length, c.length)) return 'equilateral';
  if (square(a, b) || square(b, c) || square(c, a)) return 'right';
  const isosceles =
    near(a.length, b.length) || near(b.length, c.length) || near(c.length, a.length);
  return isosceles ? 'isosceles' : 'general';
}

/** @param {readonly Place[]} corners */
export function quadrangleKind(corners) {
  const [a, b, c, d] = edgesOf(corners);
  const equal = near(a.length, b.length) && near(b.length, c.length) && near(c.length, d.length);
  if (parallel(a, c) && parallel(b, d)) {
    if (square(a, b)) return equal ? 'square' : 'rectangle';
    return equal ? 'rhombus' : 'parallelogram';
  }
  if (parallel(a, c) || parallel(b, d)) return 'trapezoid';
  const kite = (/** @type {Edge[]} */ p, /** @type {Edge[]} */ q) =>
    near(p[0].length, p[1].length) && near(q[0].length, q[1].length);
  return kite([a, b], [c, d]) || kite([b, c], [d, a]) ? 'kite' : 'general';
}
