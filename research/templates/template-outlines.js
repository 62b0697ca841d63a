'use strict';

const {
  boxOf,
  ellipse,
  polygon,
  roundCorners,
  skew,
  trace,
  transform,
} = require('../ink/outlines.js');

/**
 * The outlines of templates: figures as people draw them, from a few parameters.
 *
 * The recogniser rotates every path until its centroid is level with its first point, so the
 * orientation of a template is irrelevant. Its start is not: it determines the orientation after
 * that rotation, and so how scaling to a square distorts the outline. The recogniser resamples at equal
 * distances, so speed is irrelevant too.
 *
 * @typedef {object} TemplateParameters
 * @property {'rectangle'|'triangle'|'isosceles_triangle'|'ellipse'} figure also names the file
 * @property {number} aspect height over width (of the box, of the base, of the axes)
 * @property {number} [lean] slope of the upright sides of a quadrangle
 * @property {number} [taper] how much the first side of a quadrangle is shorter, as its share
 * @property {number} [apex] foot of a triangle's height on its base, 0 and 1 at the ends
 * @property {number} [rounding] share of the longer side cut off each edge at a corner
 * @property {number} start where the pen begins, as a share of the outline
 * @property {number} sweep share of the outline drawn: overshoot above 1, gap below
 */

// Longer side of a written outline. Tenths of a unit are then far below what a hand can draw.
const SIZE = 200;

const RINGS = {
  rectangle: ({ aspect, lean, taper }) =>
    skew(
      polygon([
        [taper / 2, 0],
        [1 - taper / 2, 0],
        [1, aspect],
        [0, aspect],
      ]),
      lean,
    ),
  triangle: ({ aspect, apex }) =>
    polygon([
      [0, 0],
      [1, 0],
      [apex, aspect],
    ]),
  isosceles_triangle: ({ aspect }) => RINGS.triangle({ aspect, apex: 0.5 }),
  ellipse: ({ aspect }) => ellipse(0.5, 0.5 * aspect, 64),
};

/**
 * @param {TemplateParameters} parameters
 * @returns {Array<{x: number, y: number}>} open polyline, rounded to what a file holds
 */
function templateOutline(parameters) {
  const ring = RINGS[parameters.figure](parameters);
  const path = trace(toSize(ring), parameters.start, parameters.sweep);
  const drawn = roundCorners(path, SIZE * (parameters.rounding ?? 0));
  return drawn.map(({ x, y }) => ({ x: roundTo(x, 10), y: roundTo(y, 10) }));
}

function toSize(ring) {
  const { width, height } = boxOf(ring);
  const scale = SIZE / Math.max(width, height);
  return transform(ring, [scale, 0, 0, scale]);
}

/**
 * Parameters of many outlines, spread over the range in which people draw.
 *
 * @param {(low: number, high: number) => number} uniform see createUniform
 * @param {number} count of each figure
 * @returns {TemplateParameters[]}
 */
function sampleParameters(uniform, count) {
  const between = (low, high) => roundTo(uniform(low, high), 100);
  // Ratios are drawn so that a and 1 / a are equally likely.
  const ratio = (limit) => roundTo(limit ** uniform(-1, 1), 100);
  const closing = () => ({ start: between(0, 0.99), sweep: between(0.86, 1.2) });
  const makers = {
    rectangle: () => ({
      aspect: ratio(3),
      lean: between(-0.5, 0.5),
      taper: between(0, 0.5),
      rounding: between(0, 0.15),
    }),
    triangle: () => ({ aspect: ratio(2), apex: between(-0.2, 0.5), rounding: between(0, 0.15) }),
    isosceles_triangle: () => ({ aspect: ratio(2), rounding: between(0, 0.15) }),
    ellipse: () => ({ aspect: ratio(3) }),
  };
  return Object.entries(makers).flatMap(([figure, make]) =>
    Array.from({ length: count }, () => ({ figure, ...make(), ...closing() })),
  );
}

function roundTo(value, parts) {
  return Math.round(value * parts) / parts;
}

module.exports = { sampleParameters, templateOutline };
