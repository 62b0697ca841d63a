// Polylines are arrays of [x, y] in pixels.

const lerp = (a, b, t) => a + (b - a) * t;

/** Length of a polyline up to each of its points. */
function runningLengths(points) {
  let length = 0;
  return points.map(([x, y], i) => {
    if (i > 0) length += Math.hypot(x - points[i - 1][0], y - points[i - 1][1]);
    return length;
  });
}

/** Fraction of the whole length at which each point lies; evenly spread if the length is 0. */
export function lengthFractions(points) {
  const lengths = runningLengths(points);
  const total = lengths.at(-1);
  return lengths.map((length, i) => (total > 0 ? length / total : i / lengths.length));
}

/** `count` points at equal distances along a polyline, both ends included. */
export function resample(points, count) {
  const lengths = runningLengths(points);
  const step = lengths.at(-1) / (count - 1);
  let i = 1;
  return Array.from({ length: count }, (_, k) => {
    if (points.length === 1) return points[0];
    while (i < points.length - 1 && lengths[i] < k * step) i += 1;
    const span = lengths[i] - lengths[i - 1];
    const t = span > 0 ? Math.min(1, (k * step - lengths[i - 1]) / span) : 0;
    return mix(points[i - 1], points[i], t);
  });
}

/** A polyline with `parts` - 1 points inserted into each segment. */
export function refine(points, parts) {
  const between = (a, b) => Array.from({ length: parts }, (_, k) => mix(a, b, k / parts));
  const pieces = points.slice(1).map((point, i) => between(points[i], point));
  return [...pieces.flat(), points.at(-1)];
}

export const mix = ([ax, ay], [bx, by], t) => [lerp(ax, bx, t), lerp(ay, by, t)];

/** Whether an outline ends where it starts. Its points are the engine's, equal up to rounding. */
export function isClosed(points) {
  const [[ax, ay], [bx, by]] = [points[0], points.at(-1)];
  return Math.hypot(ax - bx, ay - by) < 1e-3;
}

/** The edges of the box around points. */
export function bounds(points) {
  let [left, top, right, bottom] = [Infinity, Infinity, -Infinity, -Infinity];
  for (const [x, y] of points) {
    [left, right] = [Math.min(left, x), Math.max(right, x)];
    [top, bottom] = [Math.min(top, y), Math.max(bottom, y)];
  }
  return { left, right, top, bottom };
}
