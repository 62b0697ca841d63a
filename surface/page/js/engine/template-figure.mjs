// @ts-check
// The template engine answers with an outline only: this finds the figure that it shows.

import { angleFigure, normalEllipse, polygonFigure } from '../model/figure.mjs';
import { mean } from '../model/geometry.mjs';

const POINTS_PER_EDGE = 21;

// The radii of an ellipse that was made a circle differ by rounding only.
const CIRCLE_TOLERANCE = 1e-3;

/** @typedef {(path: Place[]) => Figure} Reader */

/** @type {Record<string, Reader>} */
const READERS = {
  dot: (path) => ({ kind: 'dot', centre: path[path.length - 1] }),
  line: (path) => ({ kind: 'line', from: path[0], to: path[path.length - 1] }),
  angle: (path) => angleFigure(path[0], path[POINTS_PER_EDGE - 1], path[path.length - 1]),
  triangle: (path) => polygonFigure(cornersOf(path)),
  quadrangle: (path) => polygonFigure(cornersOf(path)),
  ellipse: readEllipse,
};

/** @param {Place[]} path */
const cornersOf = (path) => path.filter((_, i) => i % POINTS_PER_EDGE === 0);

/**
 * The outline is sampled at even steps of its parameter, so that the mean square of the distance
 * along each axis is half the square of the radius. The last point is the first again.
 *
 * @type {Reader}
 */
function readEllipse(path) {
  const ring = path.slice(1);
  const centre = mean(ring);
  let [xx, xy, yy] = [0, 0, 0];
  for (const { x, y } of ring) {
    const [dx, dy] = [x - centre.x, y - centre.y];
    [xx, xy, yy] = [xx + dx * dx, xy + dx * dy, yy + dy * dy];
  }
  const [half, spread] = [(xx + yy) / 2, Math.hypot((xx - yy) / 2, xy)];
  const radius = (/** @type {number} */ sum) => Math.sqrt((2 * Math.max(0, sum)) / ring.length);
  const radii = { x: radius(half + spread), y: radius(half - spread) };
  if (radii.x - radii.y < CIRCLE_TOLERANCE * radii.x)
    return { kind: 'circle', centre, radius: radii.x };
  return normalEllipse(centre, radii, Math.atan2(2 * xy, xx - yy) / 2);
}

/** @param {string} family as `familyOfAnswer` names it @param {Place[]} path in units @returns {Figure | null} */
export function figureOfTemplate(family, path) {
  // A degenerate figure has coordinates that are no numbers.
  const isFinite = path.every(({ x, y }) => Number.isFinite(x) && Number.isFinite(y));
  return isFinite && Object.hasOwn(READERS, family) ? READERS[family](path) : null;
}
