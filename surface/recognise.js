'use strict';

// The two engines behind one function.

const { FigureType, initScrivo, optimizeAStroke, templates } = require('../lib/index.js');
const { Beautifier } = require('../lib/beautifier.js');

/** Kinds of the template engine's figures, named as the beautifier names them. */
const KINDS = {
  [FigureType.POINT]: () => 'dot',
  [FigureType.LINE]: () => 'line',
  [FigureType.ANGLE]: () => 'angle',
  [FigureType.POLYGON]: (path) => POLYGONS[path.length / POINTS_PER_EDGE] ?? 'polygon',
  [FigureType.ELLIPSE]: (path, width, height) =>
    isCircle(path.map(({ x, y }) => [x * width, y * height])) ? 'circle' : 'ellipse',
};
const POINTS_PER_EDGE = 21;
const POLYGONS = { 3: 'triangle', 4: 'quadrangle' };
// The radii of an ellipse that was made a circle differ by rounding only.
const CIRCLE_TOLERANCE = 1e-3;

/** Whether the points of an outline, whose last point is the first, have one distance from its centre. */
function isCircle(outline) {
  const ring = outline.slice(1);
  const mean = (k) => ring.reduce((sum, point) => sum + point[k], 0) / ring.length;
  const [cx, cy] = [mean(0), mean(1)];
  const radii = ring.map(([x, y]) => Math.hypot(x - cx, y - cy));
  const largest = Math.max(...radii);
  return largest - Math.min(...radii) < CIRCLE_TOLERANCE * largest;
}

const isFinitePoint = ({ x, y }) => Number.isFinite(x) && Number.isFinite(y);
const isSamePath = (a, b) =>
  a.length === b.length && a.every(({ x, y }, i) => x === b[i].x && y === b[i].y);

/** A polygon can come back as drawn, and a degenerate figure has NaN coordinates: both stay ink. */
function recogniseByTemplates({ stroke, width, height, others }) {
  const { path, type } = optimizeAStroke(stroke, width, height, others);
  if (type === FigureType.NONE || isSamePath(path, stroke) || !path.every(isFinitePoint)) {
    return { path: stroke, figure: null, confidence: null };
  }
  return { path, figure: { kind: KINDS[type](path, width, height) }, confidence: null };
}

/**
 * Makes the function that answers requests, see `readStrokeRequest`. An answer is
 * {path, figure, confidence}: `figure` has a `kind` and, from the beautifier, its parameters, or is
 * null when the stroke stays as drawn; `confidence` is null from the template engine.
 */
function createRecogniser() {
  initScrivo(templates);
  const beautifier = new Beautifier();
  const engines = {
    beautifier: ({ stroke, width, height, others }) =>
      beautifier.beautify(stroke, width, height, others),
    template: recogniseByTemplates,
  };
  return ({ engine, ...request }) => engines[engine](request);
}

module.exports = { createRecogniser };
