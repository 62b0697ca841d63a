'use strict';

const { resolveTemplates } = require('./template-files.js');
const { UserError } = require('./user-error.js');

/**
 * @typedef {object} Answer
 * @property {string} family a figure, 'polygon' for one that has neither three nor four edges or
 *   was left as drawn, or 'none'
 * @property {Array<{x: number, y: number}>} path the redrawn stroke, fractions of the area
 * @property {number} type the figure code
 */

/**
 * @typedef {object} Engine
 * @property {string} name
 * @property {(options: {templates?: string[]}) => void} load to be called once in a process,
 *   before any of its threads asks for an answer
 * @property {(stroke: import('./placement.js').PlacedStroke) => Answer} answer in any thread
 */

const FAMILY_OF_TYPE = { 0: 'none', 1: 'dot', 2: 'line', 4: 'angle', 7: 'ellipse' };
const POLYGON_TYPE = 6;
const POINTS_AN_EDGE = 21;

// Fractions of the drawing area: rounding alone moves a point by far less.
const SAME_PLACE = 1e-9;

/**
 * Names the figure of an answer. A polygon comes as 21 points an edge, however many it has, or as
 * it was drawn: when less than three corners were found in it, or its first two points lie further
 * apart than its edges are long. What was drawn may have as many points by chance, but not the
 * corners twice, as the end of an edge and the start of the next.
 */
function familyOfAnswer({ type, path }) {
  if (type !== POLYGON_TYPE) return FAMILY_OF_TYPE[type] ?? 'none';
  return { 3: 'triangle', 4: 'quadrangle' }[edgesOf(path)] ?? 'polygon';
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

/**
 * The template-matching engine. Its templates are those of the process: loading adds to them,
 * and its threads share them.
 */
function exactEngine() {
  let native;
  const binding = () => (native ??= requireEntry('scrivo', 'exact'));
  return {
    name: 'exact',
    load({ templates }) {
      binding().initScrivo(templates ? resolveTemplates(templates) : binding().templates);
    },
    answer({ points, width, height, others = [] }) {
      const { path, type } = binding().optimizeAStroke(points, width, height, others);
      return { family: familyOfAnswer({ type, path }), path, type };
    },
  };
}

const POLYGON_FAMILY = { triangle: 'triangle', quadrangle: 'quadrangle' };

/** Fits figures directly; needs no templates, so it takes none. */
function beautifierEngine() {
  let instance;
  const beautifier = () =>
    (instance ??= new (requireEntry('scrivo/beautifier', 'beautifier').Beautifier)());
  return {
    name: 'beautifier',
    load({ templates }) {
      if (templates?.length > 0) {
        throw new UserError('the beautifier needs no templates: leave --templates out');
      }
      beautifier();
    },
    answer({ points, width, height, others = [] }) {
      const { path, type, figure } = beautifier().beautify(points, width, height, others);
      const family = POLYGON_FAMILY[figure?.kind] ?? FAMILY_OF_TYPE[type];
      return { family, path, type };
    },
  };
}

const ENGINES = { exact: exactEngine, beautifier: beautifierEngine };

/** Loads an entry of the engines' package, and with it the native module. */
function requireEntry(name, engine) {
  try {
    return require(name);
  } catch (error) {
    throw new UserError(`engine ${engine} cannot be loaded: ${error.message}`);
  }
}

/** @returns {Engine} */
function createEngine(name) {
  if (Object.hasOwn(ENGINES, name)) return ENGINES[name]();
  throw new UserError(`there is no engine ${name}; known: ${Object.keys(ENGINES).join(', ')}`);
}

module.exports = { ENGINE_NAMES: Object.keys(ENGINES), createEngine, familyOfAnswer };
