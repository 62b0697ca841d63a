'use strict';

const { boundingBox } = require('../../packages/cli/lib/boxes.js');

/**
 * Outlines of plane figures as polylines: lists of {x, y}, y down, in any unit.
 *
 * A ring is a closed outline without its first point repeated at the end. Tracing a ring gives the
 * open polyline that a pen follows along it.
 *
 * @typedef {{x: number, y: number}} Point
 */

// A turn below this is part of a curve, in radians (20 degrees).
const CORNER_TURN = 0.35;

// Points of a rounded corner.
const ARC_STEPS = 6;

function distance(a, b) {
  return Math.hypot(b.x - a.x, b.y - a.y);
}

function between(a, b, t) {
  return { x: a.x + (b.x - a.x) * t, y: a.y + (b.y - a.y) * t };
}

/** Length of an open polyline. */
function lengthOf(points) {
  let length = 0;
  for (let i = 1; i < points.length; i += 1) length += distance(points[i - 1], points[i]);
  return length;
}

/** The bounding box of points {x, y}. */
function boxOf(points) {
  return boundingBox(points.map(({ x, y }) => [x, y]));
}

/**
 * @param {Array<[number, number]>} corners
 * @returns {Point[]} ring
 */
function polygon(corners) {
  return corners.map(([x, y]) => ({ x, y }));
}

/**
 * Ring of an ellipse about the origin with its axes along x and y, starting at (rx, 0).
 *
 * @param {number} rx half-axis along x
 * @param {number} ry half-axis along y
 * @param {number} [count] points
 */
function ellipse(rx, ry, count = 96) {
  return Array.from({ length: count }, (_, i) => {
    const angle = (2 * Math.PI * i) / count;
    return { x: rx * Math.cos(angle), y: ry * Math.sin(angle) };
  });
}

/**
 * Applies the matrix [a b; c d] to every point: (a x + b y, c x + d y).
 *
 * @param {Point[]} points
 * @param {[number, number, number, number]} matrix
 */
function transform(points, [a, b, c, d]) {
  return points.map(({ x, y }) => ({ x: a * x + b * y, y: c * x + d * y }));
}

/** Turns by an angle in radians, clockwise as seen with y down. */
function rotate(points, angle) {
  const [cos, sin] = [Math.cos(angle), Math.sin(angle)];
  return transform(points, [cos, -sin, sin, cos]);
}

/** Leans verticals over: x grows by `slope` times y. */
function skew(points, slope) {
  return transform(points, [1, slope, 0, 1]);
}

/**
 * The path of a pen along a ring.
 *
 * @param {Point[]} ring
 * @param {number} start where the pen begins, as a share of the ring's length from its first point
 * @param {number} sweep share of the ring that is drawn: 1 ends where it began, more overshoots,
 *   less leaves a gap
 * @returns {Point[]} open polyline
 */
function trace(ring, start, sweep) {
  const closed = [...ring, ring[0]];
  const total = lengthOf(closed);
  const laps = Math.ceil(start + sweep) + 1;
  const track = [ring[0], ...Array.from({ length: laps }, () => closed.slice(1)).flat()];
  return cut(track, start * total, (start + sweep) * total);
}

/** The piece of a polyline from one length along it to another. */
function cut(points, from, to) {
  const piece = [];
  let travelled = 0;
  for (let i = 1; i < points.length && travelled < to; i += 1) {
    const step = distance(points[i - 1], points[i]);
    const at = (length) => between(points[i - 1], points[i], (length - travelled) / step);
    if (piece.length === 0 && travelled + step > from) piece.push(at(from));
    if (piece.length > 0) piece.push(travelled + step < to ? points[i] : at(to));
    travelled += step;
  }
  return piece;
}

/**
 * Points at equal distances along an open polyline, both ends included.
 *
 * @param {Point[]} points
 * @param {number} count at least 2
 */
function spaceEvenly(points, count) {
  const step = lengthOf(points) / (count - 1);
  const spaced = [points[0]];
  let travelled = 0;
  for (let i = 1; i < points.length; i += 1) {
    const edge = distance(points[i - 1], points[i]);
    while (spaced.length < count - 1 && spaced.length * step <= travelled + edge) {
      spaced.push(between(points[i - 1], points[i], (spaced.length * step - travelled) / edge));
    }
    travelled += edge;
  }
  return [...spaced, points.at(-1)];
}

/**
 * Shifts every point in proportion to its distance along the path, so that the end misses its place.
 *
 * @param {Point[]} points
 * @param {Point} miss shift of the end
 */
function drift(points, miss) {
  const total = lengthOf(points);
  let travelled = 0;
  return points.map((point, i) => {
    if (i > 0) travelled += distance(points[i - 1], point);
    const share = travelled / total;
    return { x: point.x + share * miss.x, y: point.y + share * miss.y };
  });
}

/**
 * Replaces the corners inside an open polyline by arcs that leave and join its edges smoothly.
 *
 * @param {Point[]} points
 * @param {number} radius length cut from each edge; at most half of the edge is
 */
function roundCorners(points, radius) {
  if (radius <= 0) return points;
  const inner = points.slice(1, -1).flatMap((corner, i) => {
    const [before, after] = [points[i], points[i + 2]];
    return turnAt(before, corner, after) < CORNER_TURN
      ? [corner]
      : cornerArc(before, corner, after, radius);
  });
  return [points[0], ...inner, points.at(-1)];
}

/** Size of the change of direction at b, from 0 to pi. */
function turnAt(a, b, c) {
  const [ux, uy, vx, vy] = [b.x - a.x, b.y - a.y, c.x - b.x, c.y - b.y];
  return Math.abs(Math.atan2(ux * vy - uy * vx, ux * vx + uy * vy));
}

/** A quadratic Bezier curve with the corner as its control point. */
function cornerArc(before, corner, after, radius) {
  const reach = (end) => Math.min(0.5, radius / distance(corner, end));
  const from = between(corner, before, reach(before));
  const to = between(corner, after, reach(after));
  return Array.from({ length: ARC_STEPS + 1 }, (_, i) => {
    const t = i / ARC_STEPS;
    return between(between(from, corner, t), between(corner, to, t), t);
  });
}

module.exports = {
  boxOf,
  drift,
  ellipse,
  lengthOf,
  polygon,
  rotate,
  roundCorners,
  skew,
  spaceEvenly,
  trace,
  transform,
};
