'use strict';

/**
 * What the template recogniser does to a stroke, for choosing templates by it: the gates a stroke
 * passes, and its distance to any outline. The engine itself takes templates for good and tells
 * the winner alone, where a search needs the distance to each of thousands of candidates.
 *
 * Points are {x, y}; a normalised outline is a Float64Array [x0, y0, x1, y1, ...].
 */

const POINTS = 64;
const SQUARE = 250;
const HALF_DIAGONAL = 176.7766952966369;
const GOLDEN = 0.6180339887498949;
const ANGLE_RANGE = 45;
const ANGLE_PRECISION = 2;

// Ends further apart than this share of the length leave a stroke open.
const CLOSED_GAP = 0.15;

const STRAIGHT = 0.95;
const SPAN = 9;

const { fround } = Math;

/** Root of a sum of squares in single precision: thresholds on these sums are tuned to it. */
function singleDistance(a, b) {
  const [dx, dy] = [a.x - b.x, a.y - b.y];
  return fround(Math.sqrt(fround(dy * dy + dx * dx)));
}

function doubleDistance(a, b) {
  const [dx, dy] = [b.x - a.x, b.y - a.y];
  return Math.sqrt(dx * dx + dy * dy);
}

/**
 * Indices of the corners of a stroke, both ends included, found by the straightness of a span of
 * nine segments that slides along it.
 *
 * @param {Array<{x: number, y: number}>} points
 * @returns {number[]}
 */
function cornersOf(points) {
  const n = points.length;
  if (n < SPAN + 1) return [0, n - 1];
  const corners = [0];
  if (n === SPAN + 1) return corners;
  const segment = (i) => singleDistance(points[i - 1], points[i]);
  let span = 0;
  for (let i = 1; i <= SPAN; i += 1) span = fround(span + segment(i));
  let previous = 1;
  for (let i = SPAN + 1; i < n; i += 1) {
    if (i + 5 > n) return [...corners, n - 1];
    span = fround(fround(span + segment(i)) - segment(i - SPAN));
    const ratio = fround(singleDistance(points[i - SPAN], points[i]) / span);
    if (!(previous < STRAIGHT && ratio >= previous)) {
      previous = ratio;
      continue;
    }
    previous = 1;
    const corner = sharpestIn(points, i);
    if (corner < 5 || n < corner + 5) continue;
    corners.push(corner);
    span = 0;
    let last = i - 1;
    for (; last <= i + 7 && last < n; last += 1) span = fround(span + segment(last));
    if (last >= n) return [...corners, n - 1];
    i += 7;
  }
  return corners;
}

/** The point that lies furthest off the chord of the span before i, by the detour it makes. */
function sharpestIn(points, i) {
  const [from, to] = [points[i - SPAN - 1], points[i - 1]];
  const base = singleDistance(from, to);
  let [best, corner] = [0, -1];
  for (let j = i - SPAN; j <= i - 2; j += 1) {
    const detour = fround(
      fround(singleDistance(from, points[j]) + singleDistance(points[j], to)) / base,
    );
    if (detour > best) [best, corner] = [detour, j];
  }
  return corner;
}

function isStraight(points, from, to) {
  let arc = 0;
  for (let i = from; i < to; i += 1) arc += singleDistance(points[i], points[i + 1]);
  return singleDistance(points[from], points[to]) / arc > STRAIGHT;
}

/**
 * Which templates a stroke is compared with, and how its score counts.
 *
 * @param {Array<{x: number, y: number}>} points in drawing-area units
 * @returns {{group: 'none'|'all'|'polygons'|'ellipses', share: number}} group none for a stroke
 *   that no template can win: too short, open, or of too many corners
 */
function gatesOf(points) {
  const none = { group: 'none', share: 0 };
  if (points.length < 2) return none;
  let length = 0;
  for (let i = 1; i < points.length; i += 1) length += doubleDistance(points[i - 1], points[i]);
  if (length === 0 || doubleDistance(points.at(-1), points[0]) / length > CLOSED_GAP) return none;
  const corners = cornersOf(points);
  if (corners.length < 3) return { group: 'all', share: 1 };
  let straight = 0;
  for (let k = 0; k + 1 < corners.length; k += 1) {
    if (isStraight(points, corners[k], corners[k + 1])) straight += 1;
  }
  const share = straight / (corners.length - 1);
  if (share > 0.5) return corners.length < 9 ? { group: 'polygons', share } : none;
  return corners.length < 8 ? { group: 'ellipses', share: 1 - share } : none;
}

/**
 * The greatest mean distance to the best template at which a match is good enough to be an answer,
 * 0 when none is.
 *
 * @param {number} share from gatesOf
 */
function reachOf(share) {
  const score = share < 0.66 ? 0.8 / share : Math.min(0.83, 0.8 / share);
  return Math.max(0, (1 - score) * HALF_DIAGONAL);
}

/**
 * Brings an outline to the common form: 64 points at equal distances, turned so that the middle
 * lies level with the first point, stretched to a square, about the origin.
 *
 * @param {Array<{x: number, y: number}>} points at least two, not all the same
 * @returns {Float64Array|undefined} undefined when there is no such form
 */
function normalise(points) {
  const path = Float64Array.from(resample(points).flatMap(({ x, y }) => [x, y]));
  if (path.length !== 2 * POINTS) return undefined;
  const centre = centroid(path);
  const turned = rotated(path, -Math.atan2(centre.y - path[1], centre.x - path[0]));
  const stretched = toSquare(turned);
  const middle = centroid(stretched);
  const result = stretched.map((value, i) => value - (i % 2 === 0 ? middle.x : middle.y));
  return result.every(Number.isFinite) ? result : undefined;
}

function resample(points) {
  let length = 0;
  for (let i = 1; i < points.length; i += 1) length += doubleDistance(points[i - 1], points[i]);
  const interval = length / (POINTS - 1);
  const result = [points[0]];
  let travelled = 0;
  let from = points[0];
  for (let i = 1; i < points.length && result.length <= POINTS;) {
    const step = doubleDistance(from, points[i]);
    if (!(travelled + step >= interval)) {
      travelled += step;
      from = points[i];
      i += 1;
      continue;
    }
    const share = (interval - travelled) / step;
    from = {
      x: from.x + share * (points[i].x - from.x),
      y: from.y + share * (points[i].y - from.y),
    };
    result.push(from);
    travelled = 0;
  }
  return result.length === POINTS - 1 ? [...result, points.at(-1)] : result;
}

function centroid(path) {
  let [x, y] = [0, 0];
  for (let i = 0; i < path.length; i += 2) {
    x += path[i];
    y += path[i + 1];
  }
  return { x: (2 * x) / path.length, y: (2 * y) / path.length };
}

function rotated(path, angle) {
  const { x, y } = centroid(path);
  const [cos, sin] = [Math.cos(angle), Math.sin(angle)];
  const result = new Float64Array(path.length);
  for (let i = 0; i < path.length; i += 2) {
    const [dx, dy] = [path[i] - x, path[i + 1] - y];
    result[i] = dx * cos - dy * sin + x;
    result[i + 1] = dx * sin + dy * cos + y;
  }
  return result;
}

function toSquare(path) {
  const low = [Infinity, Infinity];
  const high = [-Infinity, -Infinity];
  path.forEach((value, i) => {
    low[i % 2] = Math.min(low[i % 2], value);
    high[i % 2] = Math.max(high[i % 2], value);
  });
  return path.map((value, i) => value * (SQUARE / (high[i % 2] - low[i % 2])));
}

/**
 * A stroke ready to be compared with many outlines: its rotations are kept, since the angles of
 * the search form a small tree that all comparisons share.
 *
 * @param {Float64Array} path normalised
 */
function createMatcher(path) {
  const turned = new Map();
  const at = (angle) => {
    let rotation = turned.get(angle);
    if (!rotation) turned.set(angle, (rotation = rotated(path, angle)));
    return rotation;
  };
  /** Mean distance to an outline at the best angle that the golden-section search meets. */
  return (outline) => searchAngle((angle) => meanDistance(at(angle), outline));
}

function searchAngle(distanceAt) {
  let [low, high] = [-ANGLE_RANGE, ANGLE_RANGE];
  let left = GOLDEN * low + (1 - GOLDEN) * high;
  let right = (1 - GOLDEN) * low + GOLDEN * high;
  let [atLeft, atRight] = [distanceAt(left), distanceAt(right)];
  while (Math.abs(high - low) > ANGLE_PRECISION) {
    if (atLeft < atRight) {
      [high, right, atRight] = [right, left, atLeft];
      left = GOLDEN * low + (1 - GOLDEN) * high;
      atLeft = distanceAt(left);
    } else {
      [low, left, atLeft] = [left, right, atRight];
      right = (1 - GOLDEN) * low + GOLDEN * high;
      atRight = distanceAt(right);
    }
  }
  return Math.min(atLeft, atRight);
}

function meanDistance(path, outline) {
  let sum = 0;
  for (let i = 0; i < 2 * POINTS; i += 2) {
    const [dx, dy] = [outline[i] - path[i], outline[i + 1] - path[i + 1]];
    sum += Math.sqrt(dx * dx + dy * dy);
  }
  return sum / POINTS;
}

module.exports = { createMatcher, gatesOf, normalise, reachOf };
