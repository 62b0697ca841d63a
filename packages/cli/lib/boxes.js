'use strict';

/** The edges of nothing. */
const NO_EDGES = [Infinity, Infinity, -Infinity, -Infinity];

/**
 * @param {Array<ArrayLike<number>>} points [x, y, ...]
 * @returns {number[]} left, top, right, bottom
 */
function edgesOf(points) {
  let [left, top, right, bottom] = NO_EDGES;
  for (const [x, y] of points) {
    left = Math.min(left, x);
    right = Math.max(right, x);
    top = Math.min(top, y);
    bottom = Math.max(bottom, y);
  }
  return [left, top, right, bottom];
}

/** The edges of the smallest box around two. */
function uniteEdges(a, b) {
  return [Math.min(a[0], b[0]), Math.min(a[1], b[1]), Math.max(a[2], b[2]), Math.max(a[3], b[3])];
}

/**
 * @param {Array<ArrayLike<number>>} points [x, y, ...]
 * @returns {{x: number, y: number, width: number, height: number}} upper left corner and size
 */
function boundingBox(points) {
  const [left, top, right, bottom] = edgesOf(points);
  return { x: left, y: top, width: right - left, height: bottom - top };
}

module.exports = { NO_EDGES, boundingBox, edgesOf, uniteEdges };
