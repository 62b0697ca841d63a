// @ts-check
// Handles of figures, and what dragging one does.

import * as plane from './geometry.mjs';
import {
  angleFigure,
  boundsOf,
  centreOf,
  normalEllipse,
  polygonFigure,
  roundOf,
  transform,
  verticesOf,
} from './figure.mjs';

const { distance } = plane;

// Smallest radius or diagonal that a drag can leave, units.
const MIN_SIZE = 2;

/** @typedef {{id: string, place: Place}} Handle */

/** The ends of the axes of a round figure. @param {NonNullable<ReturnType<typeof roundOf>>} round */
function axisEnds({ centre, rx, ry, rotation }) {
  return [0, 1, 2, 3].map((k) => {
    const reach = k % 2 === 0 ? rx : ry;
    const angle = rotation + (k * Math.PI) / 2;
    return { x: centre.x + reach * Math.cos(angle), y: centre.y + reach * Math.sin(angle) };
  });
}

/**
 * The handles of a figure: `centre`, `turn`, and `corner` or `axis` with a number.
 *
 * @param {Figure} figure @param {number} reach distance of the handle for turning from the figure
 * @returns {Handle[]}
 */
export function handlesOf(figure, reach) {
  const centre = { id: 'centre', place: centreOf(figure) };
  if (figure.kind === 'dot') return [centre];
  const round = roundOf(figure);
  const name = round ? 'axis' : 'corner';
  const rim = (round ? axisEnds(round) : verticesOf(figure)).map((place, i) => ({
    id: `${name} ${i}`,
    place,
  }));
  if (figure.kind === 'line' || figure.kind === 'circle') return [...rim, centre];
  const above = { x: centre.place.x, y: boundsOf(figure).top - reach };
  return [...rim, centre, { id: 'turn', place: above }];
}

/**
 * The figure after a handle has been dragged. Squares and rectangles keep their kind unless `free`.
 *
 * @param {Figure} figure before the drag
 * @param {Handle} handle as `handlesOf` gave it
 * @param {Place} to
 * @param {boolean} [free]
 * @returns {Figure}
 */
export function dragHandle(figure, handle, to, free = false) {
  const [name, number] = handle.id.split(' ');
  const index = Number(number);
  if (name === 'centre') {
    return transform(figure, plane.translation(to.x - handle.place.x, to.y - handle.place.y));
  }
  if (name === 'turn') {
    const { a, b } = plane.drag(centreOf(figure), handle.place, to);
    return transform(figure, plane.about(centreOf(figure), 1, Math.atan2(b, a)));
  }
  return name === 'axis' ? dragAxis(figure, index, to) : dragCorner(figure, index, to, free);
}

/** @param {Figure} figure @param {number} index @param {Place} to @returns {Figure} */
function dragAxis(figure, index, to) {
  if (figure.kind === 'circle') {
    return { ...figure, radius: Math.max(MIN_SIZE, distance(figure.centre, to)) };
  }
  if (figure.kind !== 'ellipse') return figure;
  const { centre, radii, rotation } = figure;
  const angle = rotation + ((index % 2) * Math.PI) / 2;
  const along = (to.x - centre.x) * Math.cos(angle) + (to.y - centre.y) * Math.sin(angle);
  const reach = Math.max(MIN_SIZE, Math.abs(along));
  return normalEllipse(
    centre,
    index % 2 === 0 ? { x: reach, y: radii.y } : { x: radii.x, y: reach },
    rotation,
  );
}

/** @param {Figure} figure @param {number} index @param {Place} to @param {boolean} free @returns {Figure} */
function dragCorner(figure, index, to, free) {
  const places = verticesOf(figure);
  places[index] = to;
  if (figure.kind === 'line') return { ...figure, from: places[0], to: places[1] };
  if (figure.kind === 'angle') return angleFigure(places[0], places[1], places[2]);
  if (figure.kind === 'quadrangle' && !free) {
    if (figure.subtype === 'square') return scaleSquare(figure, index, to);
    if (figure.subtype === 'rectangle') return stretchRectangle(figure, index, to);
  }
  return polygonFigure(places);
}

/** @param {Figure & {kind: 'quadrangle'}} figure @param {number} index @param {Place} to */
function scaleSquare(figure, index, to) {
  const [corner, fixed] = [figure.corners[index], figure.corners[(index + 2) % 4]];
  const [dx, dy] = [corner.x - fixed.x, corner.y - fixed.y];
  const square = dx * dx + dy * dy;
  const share = ((to.x - fixed.x) * dx + (to.y - fixed.y) * dy) / square;
  return transform(figure, plane.about(fixed, Math.max(MIN_SIZE / Math.sqrt(square), share)));
}

/** @param {Figure & {kind: 'quadrangle'}} figure @param {number} index @param {Place} to @returns {Figure} */
function stretchRectangle({ corners }, index, to) {
  const fixed = corners[(index + 2) % 4];
  const along = (/** @type {Place} */ corner) => {
    const [dx, dy] = [corner.x - fixed.x, corner.y - fixed.y];
    const length = Math.hypot(dx, dy);
    const reach = Math.max(MIN_SIZE, ((to.x - fixed.x) * dx + (to.y - fixed.y) * dy) / length);
    return { x: (dx / length) * reach, y: (dy / length) * reach };
  };
  const next = along(corners[(index + 1) % 4]);
  const previous = along(corners[(index + 3) % 4]);
  const places = [...corners];
  places[(index + 1) % 4] = { x: fixed.x + next.x, y: fixed.y + next.y };
  places[(index + 3) % 4] = { x: fixed.x + previous.x, y: fixed.y + previous.y };
  places[index] = { x: fixed.x + next.x + previous.x, y: fixed.y + next.y + previous.y };
  return polygonFigure(places);
}
