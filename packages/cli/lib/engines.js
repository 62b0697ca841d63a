'use strict';

const { ANSWERS } = require('./families.js');
const { ReusedNumbers } = require('./reused-numbers.js');
const { familyOfAnswer } = require('./template-answer.js');
const { resolveTemplates } = require('./template-files.js');
const { UserError } = require('./user-error.js');

/**
 * @typedef {object} Answer
 * @property {string} family a name of ANSWERS
 * @property {Array<{x: number, y: number}>|Float64Array} path the redrawn stroke, fractions of the
 *   area, in the form of the stroke's points; as numbers, until the next answer of the engine
 * @property {number} type the figure code
 * @property {string|null} kind what the figure is within its family, such as a square; null where
 *   the engine does not say
 * @property {number|null} confidence probability that the answer is right, from 0 to 1; null where
 *   the engine has none
 * @property {object|null} figure its parameters in drawing units, see Figure of scrivo/beautifier;
 *   null where the engine has none
 */

/**
 * @typedef {object} Engine
 * @property {string} name
 * @property {(options: {templates?: string[]}) => void} load to be called once in a process,
 *   before any of its threads asks for an answer
 * @property {(stroke: import('./placement.js').PlacedStroke) => Answer} answer in any thread
 * @property {(settings: import('scrivo/lines').LineOptions) => import('scrivo/lines').LineIdealiser}
 *   createLines answers whole lines, in any thread
 */

/**
 * Fits every family to the stroke.
 *
 * @param {import('scrivo/beautifier').BeautifierOptions} options
 */
function beautifierEngine(options) {
  let instance;
  const entry = () => requireEntry('scrivo/beautifier', 'beautifier');
  return {
    name: 'beautifier',
    load({ templates }) {
      if (templates !== undefined) {
        throw new UserError('--templates is for the template engine: add --engine template');
      }
      checkFamilies(entry().FIGURES);
      try {
        instance = new (entry().Beautifier)(options);
      } catch (error) {
        throw new UserError(error.message.replace(/^options\./, ''));
      }
    },
    answer({ points, width, height, others = [] }) {
      instance ??= new (entry().Beautifier)(options);
      const { path, type, figure, confidence } = instance.beautify(points, width, height, others);
      return { ...nameFigure(figure), path, type, confidence, figure };
    },
    createLines: (settings) =>
      new (linesEntry().LineIdealiser)({ ...settings, engine: 'beautifier', beautifier: options }),
  };
}

/** Throws for a family without colour and label, which would be drawn wrongly. */
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

/** Compares with templates, which all threads of the process share. Loading adds to them. */
function templateEngine(options) {
  const entry = () => requireEntry('scrivo', 'template');
  let scrivo;
  // The engine keeps no points, so that those of one stroke can serve the next.
  const reused = [];
  const packed = new ReusedNumbers();
  const [option] = Object.keys(options);
  if (option) throw new UserError(`${option} is an option of the engine beautifier`);
  return {
    name: 'template',
    load({ templates }) {
      const files = templates ? resolveTemplates(templates) : entry().templates;
      entry().initScrivo(files);
      linesEntry().loadTemplates(files);
    },
    answer({ points, width, height, others = [] }) {
      const isPacked = points instanceof Float64Array;
      const stroke = isPacked ? unpack(points, reused) : points;
      const neighbours = isPacked ? others.map((other) => unpack(other)) : others;
      scrivo ??= entry();
      const { path, type } = scrivo.optimizeAStroke(stroke, width, height, neighbours);
      return {
        family: familyOfAnswer({ type, path }),
        kind: null,
        type,
        confidence: null,
        path: isPacked ? pack(path, packed.take(3 * path.length)) : path,
        figure: null,
      };
    },
    createLines: (settings) =>
      new (linesEntry().LineIdealiser)({ ...settings, engine: 'template' }),
  };
}

/**
 * x, y and force of each point as objects.
 *
 * @param {Float64Array} values
 * @param {Array<object>} [spare] objects to use, to which missing ones are added
 */
function unpack(values, spare = []) {
  const count = values.length / 3;
  while (spare.length < count) spare.push({ x: 0.5, y: 0.5, force: 0.5 });
  const points = spare.length === count ? spare : spare.slice(0, count);
  for (let i = 0, k = 0; i < count; i += 1, k += 3) {
    const point = points[i];
    point.x = values[k];
    point.y = values[k + 1];
    point.force = values[k + 2];
  }
  return points;
}

function pack(points, values) {
  for (let i = 0, k = 0; i < points.length; i += 1, k += 3) {
    const { x, y, force = 0 } = points[i];
    values[k] = x;
    values[k + 1] = y;
    values[k + 2] = force;
  }
  return values;
}

/** Loads an entry of the engines' package, and with it the native module. */
function requireEntry(name, engine) {
  try {
    return require(name);
  } catch (error) {
    throw new UserError(`the engine ${engine} cannot be loaded: ${error.message}`);
  }
}

const linesEntry = () => requireEntry('scrivo/lines', 'of lines');

/** By name; the first is the default. */
const ENGINES = { beautifier: beautifierEngine, template: templateEngine };
const ENGINE_NAMES = Object.keys(ENGINES);

/**
 * @param {string} name
 * @param {import('scrivo/beautifier').BeautifierOptions} [options] of the beautifier
 * @returns {Engine}
 */
function createEngine(name, options = {}) {
  if (Object.hasOwn(ENGINES, name)) return ENGINES[name](options);
  throw new UserError(`there is no engine ${name}: choose ${ENGINE_NAMES.join(' or ')}`);
}

module.exports = { ENGINE_NAMES, createEngine };
