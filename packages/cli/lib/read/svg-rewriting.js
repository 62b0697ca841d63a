'use strict';

const { createRounding, escapeText } = require('../svg.js');

/** The attributes that hold the outline of an element, and how it is written. */
const OUTLINES = {
  path: ['d', (parts) => parts.map((points) => `M${points.join(' ')}`).join('')],
  polyline: ['points', ([points]) => points.join(' ')],
  polygon: ['points', ([points]) => points.join(' ')],
};

/**
 * A tag with the outlines of figures instead of its own.
 *
 * @param {string} tag its text
 * @param {{name: string, matrix: number[]}} span matrix: from the units of the tag to those of the
 *   document
 * @param {Array<{points: number[][], family: string, decimals: number}>} parts points and answers of
 *   its strokes
 */
function rewriteTag(tag, { name, matrix }, parts) {
  if (!Object.hasOwn(OUTLINES, name)) return tag;
  const [attribute, format] = OUTLINES[name];
  const toLocal = inverseOf(matrix);
  if (!toLocal) return tag;
  const round = createRounding(parts[0].decimals + extraDecimals(matrix));
  const places = parts.map(({ points }) =>
    points.map((point) => toLocal(point).map(round).join(',')),
  );
  const families = parts.map(({ family }) => family).join(' ');
  return tag
    .replace(/\sdata-figure\s*=\s*(?:"[^"]*"|'[^']*')/, '')
    .replace(
      new RegExp(`(\\s)${attribute}\\s*=\\s*(?:"[^"]*"|'[^']*')`),
      (_, space) =>
        `${space}${attribute}="${format(places)}" data-figure="${escapeText(families)}"`,
    );
}

/** The inverse of a transform, undefined where it has none. */
function inverseOf([a, b, c, d, x, y]) {
  const size = a * d - b * c;
  if (size === 0 || !Number.isFinite(size)) return undefined;
  return ([px, py]) => {
    const [dx, dy] = [px - x, py - y];
    return [(d * dx - c * dy) / size, (a * dy - b * dx) / size];
  };
}

/** Where the unit of a tag is larger than that of the document, it needs more decimals. */
function extraDecimals([a, b, c, d]) {
  const factor = Math.sqrt(Math.abs(a * d - b * c));
  return Math.min(12, Math.max(0, Math.ceil(Math.log10(factor))));
}

module.exports = { rewriteTag };
