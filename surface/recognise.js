'use strict';

// The two engines behind one function.

const { initScrivo, optimizeAStroke, templates } = require('scrivo');
const { Beautifier } = require('scrivo/beautifier');
const { familyOfAnswer, isRedrawn } = require('../packages/cli/lib/template-answer.js');

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

/** The kind of an answer's figure, named as the beautifier names it. */
function kindOf(answer, width, height) {
  const family = familyOfAnswer(answer);
  const isRound = () => isCircle(answer.path.map(({ x, y }) => [x * width, y * height]));
  return family === 'ellipse' && isRound() ? 'circle' : family;
}

/** A polygon can come back as drawn, and a degenerate figure has NaN coordinates: both stay ink. */
function recogniseByTemplates({ stroke, width, height, others }) {
  const answer = optimizeAStroke(stroke, width, height, others);
  if (!isRedrawn(answer) || !answer.path.every(isFinitePoint)) {
    return { path: stroke, figure: null, confidence: null };
  }
  const figure = { kind: kindOf(answer, width, height) };
  return { path: answer.path, figure, confidence: null };
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
