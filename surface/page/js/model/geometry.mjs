// @ts-check
// Places and similarities of the plane, y downwards.

/** @type {Similarity} */
export const IDENTITY = { a: 1, b: 0, e: 0, f: 0 };

/** @param {Place} p @param {Place} q */
export const distance = (p, q) => Math.hypot(p.x - q.x, p.y - q.y);

/** @param {Place} p @param {Place} q @param {number} t @returns {Place} */
export const mix = (p, q, t) => ({ x: p.x + (q.x - p.x) * t, y: p.y + (q.y - p.y) * t });

/** @param {Place[]} places @returns {Place} */
export function mean(places) {
  const sum = places.reduce((s, p) => ({ x: s.x + p.x, y: s.y + p.y }), { x: 0, y: 0 });
  return { x: sum.x / places.length, y: sum.y / places.length };
}

/** @param {Similarity} m @param {Place} p @returns {Place} */
export const apply = ({ a, b, e, f }, { x, y }) => ({ x: a * x - b * y + e, y: b * x + a * y + f });

/** @param {number} dx @param {number} dy @returns {Similarity} */
export const translation = (dx, dy) => ({ a: 1, b: 0, e: dx, f: dy });

/**
 * Turns by `angle` radians, clockwise on the screen, and scales by `factor` about `centre`.
 *
 * @param {Place} centre @param {number} factor @param {number} [angle] @returns {Similarity}
 */
export function about(centre, factor, angle = 0) {
  const [a, b] = [factor * Math.cos(angle), factor * Math.sin(angle)];
  return {
    a,
    b,
    e: centre.x - a * centre.x + b * centre.y,
    f: centre.y - b * centre.x - a * centre.y,
  };
}

/**
 * The similarity about `pivot` that takes `from` to `to`.
 *
 * @param {Place} pivot @param {Place} from @param {Place} to @returns {Similarity}
 */
export function drag(pivot, from, to) {
  const reach = distance(pivot, from);
  if (reach < 1e-6) return IDENTITY;
  const turn =
    Math.atan2(to.y - pivot.y, to.x - pivot.x) - Math.atan2(from.y - pivot.y, from.x - pivot.x);
  return about(pivot, Math.max(0.02, distance(pivot, to) / reach), turn);
}

/** Scale of a similarity. @param {Similarity} m */
export const scaleOf = ({ a, b }) => Math.hypot(a, b);

/** Angle by which a similarity turns, radians. @param {Similarity} m */
export const angleOf = ({ a, b }) => Math.atan2(b, a);

/** @returns {Bounds} */
export const noBounds = () => ({
  left: Infinity,
  top: Infinity,
  right: -Infinity,
  bottom: -Infinity,
});

/** @param {Bounds} box @param {number} x @param {number} y */
export function extend(box, x, y) {
  if (x < box.left) box.left = x;
  if (x > box.right) box.right = x;
  if (y < box.top) box.top = y;
  if (y > box.bottom) box.bottom = y;
}

/** @param {Bounds[]} boxes @returns {Bounds} */
export function unite(boxes) {
  const box = noBounds();
  for (const { left, top, right, bottom } of boxes) {
    extend(box, left, top);
    extend(box, right, bottom);
  }
  return box;
}

/** @param {Bounds} box @param {number} margin @returns {Bounds} */
export const grow = ({ left, top, right, bottom }, margin) => ({
  left: left - margin,
  top: top - margin,
  right: right + margin,
  bottom: bottom + margin,
});

/** The box that reaches so far from a place. @param {Place} p @param {number} reach @returns {Bounds} */
export const around = ({ x, y }, reach) => grow({ left: x, top: y, right: x, bottom: y }, reach);

/** @param {Bounds} p @param {Bounds} q */
export const overlap = (p, q) =>
  p.left <= q.right && q.left <= p.right && p.top <= q.bottom && q.top <= p.bottom;

/** Whether a box, enlarged by a margin, holds a place. @param {Bounds} box @param {Place} p @param {number} [margin] */
export const contains = ({ left, top, right, bottom }, { x, y }, margin = 0) =>
  x >= left - margin && x <= right + margin && y >= top - margin && y <= bottom + margin;

/** Distance of `p` from the segment from `a` to `b`. @param {Place} p @param {Place} a @param {Place} b */
export function distanceToSegment(p, a, b) {
  const [dx, dy] = [b.x - a.x, b.y - a.y];
  const square = dx * dx + dy * dy;
  const t = square > 0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / square : 0;
  return distance(p, mix(a, b, Math.min(1, Math.max(0, t))));
}
