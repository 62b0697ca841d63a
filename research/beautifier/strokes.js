'use strict';

const { readFileSync } = require('node:fs');
const { gunzipSync } = require('node:zlib');
const { boxOf } = require('../ink/outlines.js');

/** Strokes of a (gzipped) file of one JSON object a line. */
function readStrokes(file) {
  const raw = readFileSync(file);
  const text = (raw[0] === 0x1f && raw[1] === 0x8b ? gunzipSync(raw) : raw).toString('utf8');
  return text
    .split('\n')
    .filter((line) => line.trim() !== '')
    .map((line) => JSON.parse(line));
}

/** FNV-1a hash of a text. */
function hash(text) {
  let h = 0x811c9dc5;
  for (let i = 0; i < text.length; i++) h = Math.imul(h ^ text.charCodeAt(i), 0x01000193) >>> 0;
  return h;
}

const boxOfPairs = (points) => boxOf(points.map(([x, y]) => ({ x, y })));

/** The longer side of a stroke's box. */
function extentOf(points) {
  const { width, height } = boxOfPairs(points);
  return Math.max(width, height);
}

/** Moves the points so that the box starts at (0, 0) and its longer side is `side`. */
function scaled(points, side) {
  const { x, y, width, height } = boxOfPairs(points);
  const extent = Math.max(width, height);
  const k = extent > 0 ? side / extent : 1;
  return points.map((p) => [(p[0] - x) * k, (p[1] - y) * k]);
}

module.exports = { extentOf, hash, readStrokes, scaled };
