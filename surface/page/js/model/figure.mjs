// @ts-check
// Figures as objects: their outline, transforms and measures. Places are in document units.

import * as plane from './geometry.mjs';
import { quadrangleKind, triangleKind } from './kinds.mjs';

const { apply, distance, mean, mix } = plane;

// Edges of the polyline that stands for an ellipse where distances are measured.
const ROUND_EDGES = 64;

/** Corners of a polygon, or undefined. @param {Figure} figure */
export const cornersOf = (figure) => ('corners' in figure ? figure.corners : undefined);

/** Whether the outline ends where it starts. @param {Figure} figure */
export const isClosed = ({ kind }) => kind !== 'line' && kind !== 'angle';

/** Radii and rotation of a circle or an ellipse. @param {Figure} figure */
export function roundOf(figure) {
  if (figure.kind === 'circle') {
    return { centre: figure.centre, rx: figure.radius, ry: figure.radius, rotation: 0 };
  }
  if (figure.kind !== 'ellipse') return null;
  const { centre, radii, rotation } = figure;
  return { centre, rx: radii.x, ry: radii.y, rotation };
}

/**
 * Draws the outline. A dot is a disc of the diameter `width`, to be filled; the others are stroked.
 *
 * @template {PathSink} T
 * @param {Figure} figure @param {T} sink @param {number} width
 */
export function trace(figure, sink, width) {
  const round = roundOf(figure);
  if (figure.kind === 'dot') {
    sink.ellipse(figure.centre.x, figure.centre.y, width / 2, width / 2, 0, 0, 2 * Math.PI);
  } else if (round) {
    const { centre, rx, ry, rotation } = round;
    sink.ellipse(centre.x, centre.y, rx, ry, rotation, 0, 2 * Math.PI);
  } else {
    const [first, ...others] = verticesOf(figure);
    sink.moveTo(first.x, first.y);
    for (const { x, y } of others) sink.lineTo(x, y);
  }
  if (isClosed(figure)) sink.closePath();
  return sink;
}

/** Corners and ends; none of round figures. @param {Figure} figure @returns {Place[]} */
export function verticesOf(figure) {
  if (figure.kind === 'line') return [figure.from, figure.to];
  if (figure.kind === 'angle') return [figure.from, figure.vertex, figure.to];
  return [...(cornersOf(figure) ?? [])];
}

/** @param {Figure} figure @returns {Place} */
export const centreOf = (figure) => ('centre' in figure ? figure.centre : mean(verticesOf(figure)));

/** The outline as a polyline, closed when the figure is. @param {Figure} figure @returns {Place[]} */
export function polylineOf(figure) {
  if (figure.kind === 'dot') return [figure.centre];
  const round = roundOf(figure);
  if (!round)
    return isClosed(figure) ? [...verticesOf(figure), verticesOf(figure)[0]] : verticesOf(figure);
  const { centre, rx, ry, rotation } = round;
  const [c, s] = [Math.cos(rotation), Math.sin(rotation)];
  return Array.from({ length: ROUND_EDGES + 1 }, (_, i) => {
    const t = (2 * Math.PI * i) / ROUND_EDGES;
    const [u, v] = [rx * Math.cos(t), ry * Math.sin(t)];
    return { x: centre.x + c * u - s * v, y: centre.y + s * u + c * v };
  });
}

/** @param {Figure} figure @param {Place} place */
export function distanceTo(figure, place) {
  const line = polylineOf(figure);
  if (line.length === 1) return distance(line[0], place);
  const edges = line.slice(1).map((p, i) => plane.distanceToSegment(place, line[i], p));
  return Math.min(...edges);
}

/** @param {Figure} figure @returns {Bounds} */
export function boundsOf(figure) {
  const box = plane.noBounds();
  const round = roundOf(figure);
  if (round) {
    const { centre, rx, ry, rotation } = round;
    const half = (/** @type {number} */ turn) =>
      Math.hypot(rx * Math.cos(turn), ry * Math.sin(turn));
    const [w, h] = [half(rotation), half(rotation - Math.PI / 2)];
    plane.extend(box, centre.x - w, centre.y - h);
    plane.extend(box, centre.x + w, centre.y + h);
  } else {
    for (const { x, y } of polylineOf(figure)) plane.extend(box, x, y);
  }
  return box;
}

/** @param {Figure} figure @param {Similarity} m @returns {Figure} */
export function transform(figure, m) {
  const at = (/** @type {Place} */ p) => apply(m, p);
  const scale = plane.scaleOf(m);
  switch (figure.kind) {
    case 'dot':
      return { ...figure, centre: at(figure.centre) };
    case 'line':
      return { ...figure, from: at(figure.from), to: at(figure.to) };
    case 'angle':
      return { ...figure, from: at(figure.from), vertex: at(figure.vertex), to: at(figure.to) };
    case 'circle':
      return { ...figure, centre: at(figure.centre), radius: figure.radius * scale };
    case 'ellipse': {
      const radii = { x: figure.radii.x * scale, y: figure.radii.y * scale };
      return normalEllipse(at(figure.centre), radii, figure.rotation + plane.angleOf(m));
    }
    case 'triangle':
      return { ...figure, corners: /** @type {[Place, Place, Place]} */ (figure.corners.map(at)) };
    default:
      return {
        ...figure,
        corners: /** @type {[Place, Place, Place, Place]} */ (figure.corners.map(at)),
      };
  }
}

/**
 * An ellipse with a rotation within [-pi/4, pi/4], as the beautifier's are.
 *
 * @param {Place} centre @param {Place} radii @param {number} rotation @returns {Figure}
 */
export function normalEllipse(centre, radii, rotation) {
  const quarters = Math.round(rotation / (Math.PI / 2));
  const swapped = quarters % 2 !== 0;
  return {
    kind: 'ellipse',
    centre,
    radii: swapped ? { x: radii.y, y: radii.x } : radii,
    rotation: rotation - (quarters * Math.PI) / 2,
  };
}

/** @param {Place} from @param {Place} vertex @param {Place} to @returns {Figure} */
export function angleFigure(from, vertex, to) {
  return { kind: 'angle', from, vertex, to, opening: cornerAngle(from, vertex, to) };
}

/** A polygon whose kind is what its corners are. @param {Place[]} corners @returns {Figure} */
export function polygonFigure(corners) {
  if (corners.length === 3) {
    const three = /** @type {[Place, Place, Place]} */ (corners);
    return { kind: 'triangle', corners: three, subtype: triangleKind(three) };
  }
  const four = /** @type {[Place, Place, Place, Place]} */ (corners);
  return { kind: 'quadrangle', corners: four, subtype: quadrangleKind(four) };
}

/** Radians from 0 to pi. @param {Place} p @param {Place} vertex @param {Place} q */
export function cornerAngle(p, vertex, q) {
  const [ux, uy, vx, vy] = [p.x - vertex.x, p.y - vertex.y, q.x - vertex.x, q.y - vertex.y];
  return Math.abs(Math.atan2(ux * vy - uy * vx, ux * vx + uy * vy));
}

/**
 * Where the ends of lines snap to: ends, corners, the middles of edges and the centre.
 *
 * @param {Figure} figure @returns {Place[]}
 */
export function anchorsOf(figure) {
  const round = roundOf(figure);
  if (round) {
    const rim = polylineOf(figure);
    return [round.centre, ...[0, 1, 2, 3].map((k) => rim[(k * ROUND_EDGES) / 4])];
  }
  const line = polylineOf(figure);
  const middles = line.slice(1).map((p, i) => mix(line[i], p, 0.5));
  const vertices = verticesOf(figure);
  return isClosed(figure) ? [...vertices, ...middles, centreOf(figure)] : [...vertices, ...middles];
}

/** The largest difference of two figures of one kind in any number. @param {Figure} p @param {Figure} q */
export function difference(p, q) {
  const [a, b] = [p, q].map((figure) => polylineOf(figure));
  return Math.max(...a.map((place, i) => (b[i] ? distance(place, b[i]) : Infinity)));
}
