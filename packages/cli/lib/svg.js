'use strict';

const ESCAPES = { '&': '&amp;', '<': '&lt;', '>': '&gt;', '"': '&quot;' };

// XML cannot express these, even escaped.
// eslint-disable-next-line no-control-regex
const NOT_IN_XML = /[\u0000-\u0008\u000b\u000c\u000e-\u001f\ufffe\uffff]/g;

/** Text between XML tags or inside an attribute. */
function escapeText(text) {
  return String(text)
    .replace(/[&<>"]/g, (character) => ESCAPES[character])
    .replace(NOT_IN_XML, '');
}

/**
 * The points of a polyline. A single point comes twice: a line of no length is drawn as a dot, a
 * polyline of one point is not drawn.
 *
 * @param {number[][]} points [x, y, ...]
 * @param {(value: number) => number} round
 */
function polylinePoints(points, round) {
  const pairs = points.map(([x, y]) => `${round(x)},${round(y)}`);
  if (pairs.length === 1) pairs.push(pairs[0]);
  return pairs.join(' ');
}

/** Rounds to a number of decimals; not at all where that is undefined. */
function createRounding(decimals) {
  if (decimals === undefined) return (value) => value;
  const factor = 10 ** decimals;
  return (value) => {
    const rounded = Math.round(value * factor);
    // Larger numbers have no such decimals, and the factor may make them infinite.
    return Number.isSafeInteger(rounded) ? rounded / factor : value;
  };
}

module.exports = { createRounding, escapeText, polylinePoints };
