'use strict';

const { ANSWERS } = require('./families.js');
const { resolveTemplates } = require('./template-files.js');
const { UserError } = require('./user-error.js');

/**
 * @typedef {object} Answer
 * @property {string} family a name of ANSWERS
 * @property {Array<{x: number, y: number}>} path the redrawn stroke, fractions of the area
 * @property {number} type the figure code
 * @property {string|null} kind what the figure is within its family, such as a square; null where
 *   the engine does not say
 * @property {number|null} confidence probability that the answer is right, from 0 to 1; null where
 *   the engine has none
 */

/**
 * @typedef {object} Engine
 * @property {string} name
 * @property {(options: {templates?: string[]}) => void} load to be called once in a process,
 *   before any of its threads asks for an answer
 * @property {(stroke: import('./placement.js').PlacedStroke) => Answer} answer in any thread
 */

/** Fits every figure to the stroke. */
function beautifierEngine() {
  let instance;
  const entry = () => requireEntry('scrivo/beautifier', 'beautifier');
  return {
    name: 'beautifier',
    load({ templates }) {
      if (templates !== undefined) {
        throw new UserError('--templates is for the template engine: add --engine template');
      }
      checkFamilies(entry().FIGURES);
    },
    answer({ points, width, height, others = [] }) {
      instance ??= new (entry().Beautifier)();
      const { path, type, figure, confidence } = instance.beautify(points, width, height, others);
      return { ...nameFigure(figure), path, type, confidence };
    },
  };
}

/** Fails for a family that has no colour and label here, rather than drawing it wrongly. */
function checkFamilies(families) {
  const missing = families.filter((family) => !Object.hasOwn(ANSWERS, family));
  if (missing.length > 0) throw new Error(`families.js lacks ${missing.join(', ')}`);
}

/** The family and kind of a figure of the beautifier, which reports circles apart. */
function nameFigure(figure) {
  if (figure === null) return { family: 'none', kind: null };
  if (figure.kind === 'circle') return { family: 'ellipse', kind: 'circle' };
  return { family: figure.kind, kind: figure.subtype ?? null };
}

/**
 * Compares with templates. Those are shared by all threads of the process, and loading adds to
 * them.
 */
function templateEngine() {
  const entry = () => requireEntry('scrivo', 'template');
  return {
    name: 'template',
    load({ templates }) {
      entry().initScrivo(templates ? resolveTemplates(templates) : entry().templates);
    },
    answer({ points, width, height, others = [] }) {
      const { path, type } = entry().optimizeAStroke(points, width, height, others);
      return { family: familyOfAnswer({ type, path }), kind: null, path, type, confidence: null };
    },
  };
}

const POINTS_AN_EDGE = 21;

// Fractions of the drawing area: rounding moves a point by far less.
const SAME_PLACE = 1e-9;

/**
 * Names the figure of an answer. A polygon has 21 points an edge, however many edges, or is left
 * as drawn: when fewer than three corners were found, or its first two points lie further apart
 * than its edges are long. A drawn stroke may happen to have as many points, but its corners do
 * not come twice, as the end of an edge and the start of the next.
 */
function familyOfAnswer({ type, path }) {
  if (type === ANSWERS.polygon.type) {
    return { 3: 'triangle', 4: 'quadrangle' }[edgesOf(path)] ?? 'polygon';
  }
  return Object.keys(ANSWERS).find((family) => ANSWERS[family].type === type) ?? 'none';
}

/** Edges of an outline that was redrawn, 0 for one that was not. */
function edgesOf(path) {
  const edges = path.length / POINTS_AN_EDGE;
  for (let edge = 0; edge < edges; edge += 1) {
    const end = path[(edge + 1) * POINTS_AN_EDGE - 1];
    const start = path[((edge + 1) % edges) * POINTS_AN_EDGE];
    if (!end || !start || Math.hypot(end.x - start.x, end.y - start.y) > SAME_PLACE) return 0;
  }
  return edges;
}

/** Loads an entry of the engines' package, and with it the native module. */
function requireEntry(name, engine) {
  try {
    return require(name);
  } catch (error) {
    throw new UserError(`the engine ${engine} cannot be loaded: ${error.message}`);
  }
}

/** By name; the first is the default. */
const ENGINES = { beautifier: beautifierEngine, template: templateEngine };
const ENGINE_NAMES = Object.keys(ENGINES);

const ALIASES = { exact: 'template' };

/** @returns {Engine} */
function createEngine(given) {
  const name = ALIASES[given] ?? given;
  if (Object.hasOwn(ENGINES, name)) return ENGINES[name]();
  throw new UserError(`there is no engine ${given}: choose ${ENGINE_NAMES.join(' or ')}`);
}

module.exports = { ENGINE_NAMES, createEngine, familyOfAnswer };
