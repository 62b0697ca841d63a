// @ts-check
// Answers requests with the package: by the server with the native modules, in the page with the
// WebAssembly module.

import templateAnswer from '../../../../packages/cli/lib/template-answer.js';
import { figureOfTemplate } from './template-figure.mjs';

const { familyOfAnswer, isRedrawn } = templateAnswer;

// Beautifiers with different options that are kept.
const KEPT = 8;

/**
 * @typedef {object} Package the entry points of the package
 * @property {typeof import('scrivo/beautifier').Beautifier} Beautifier
 * @property {readonly Family[]} FIGURES
 * @property {typeof import('scrivo/beautifier').resample} resample
 * @property {typeof import('scrivo').optimizeAStroke} optimizeAStroke
 */

/**
 * @param {Package} engines
 * @returns {(request: EngineRequest) => Reply | Explanation}
 */
export function createAnswerer({ Beautifier, FIGURES, resample, optimizeAStroke }) {
  /** @type {Map<string, InstanceType<typeof Beautifier>>} */
  const beautifiers = new Map();

  /** @param {EngineRequest['options']} options */
  function beautifierFor(options = {}) {
    const name = JSON.stringify(options);
    const known = beautifiers.get(name);
    if (known) return known;
    if (beautifiers.size >= KEPT) beautifiers.clear();
    // The surface has no edge that figures would have to stay inside.
    const made = new Beautifier({ ...options, insideArea: false, layout: 'xy' });
    beautifiers.set(name, made);
    return made;
  }

  /** @param {EngineRequest} request */
  function beautify({ task, wish, options, ...request }) {
    const beautifier = beautifierFor(options);
    const { stroke, width, height } = strokeOf(request);
    const others = placesOf(request.anchors).map(({ x, y }) =>
      Float64Array.of(x / width, y / height),
    );
    const answer =
      task === 'as' && wish
        ? beautifier.beautifyAs(stroke, wish, width, height, others)
        : beautifier.beautify(stroke, width, height, others);
    const { figure, confidence, reason, alternatives } = answer;
    return {
      engine: /** @type {const} */ ('beautifier'),
      figure,
      confidence,
      reason,
      alternatives,
    };
  }

  /** @param {EngineRequest} request */
  function optimise({ points, anchors, width, height }) {
    const inArea = (/** @type {Place} */ { x, y }) => ({ x: x / width, y: y / height });
    const others = placesOf(anchors).map((place) => [inArea(place)]);
    const answer = optimizeAStroke(placesOf(points).map(inArea), width, height, others);
    const path = answer.path.map(({ x, y }) => ({ x: x * width, y: y * height }));
    const figure = isRedrawn(answer) ? figureOfTemplate(familyOfAnswer(answer), path) : null;
    const reason = figure ? null : 'template';
    return {
      engine: /** @type {const} */ ('template'),
      figure,
      confidence: null,
      reason,
      alternatives: [],
    };
  }

  /**
   * What the beautifier makes of the ink as each family: the points that it fits figures to, and of
   * each family the best fit, which is not level or regular yet, and the figure.
   *
   * @param {EngineRequest} request
   */
  function explain({ options, points, width, height }) {
    const { stroke } = strokeOf({ points, width, height });
    const even = resample(
      placesOf(points).map(({ x, y }) => ({ x: x / width, y: y / height })),
      width,
      height,
    );
    const beautifier = beautifierFor(options);
    const fitter = beautifierFor({ ...options, horizontalVertical: false, regularFigures: false });
    const candidates = FIGURES.map((family) => {
      const { confidence, figure } = beautifier.beautifyAs(stroke, family, width, height);
      const { figure: fitted } = fitter.beautifyAs(stroke, family, width, height);
      return { family, probability: figure ? confidence : 0, figure, fitted };
    });
    return { points: even.map(({ x, y }) => ({ x: x * width, y: y * height })), candidates };
  }

  /** @param {EngineRequest} request */
  function answer(request) {
    const start = performance.now();
    const run =
      request.task === 'explain' ? explain : request.engine === 'template' ? optimise : beautify;
    const result = run(request);
    return { ...result, micros: Math.round(1000 * (performance.now() - start)) };
  }

  // The first call of an engine takes longest: it is made before the first stroke.
  const line = { points: [100, 100, 150, 101, 200, 100], width: 800, height: 600, anchors: [] };
  for (const engine of /** @type {const} */ (['beautifier', 'template'])) {
    answer({ task: 'recognise', engine, ...line });
  }
  return answer;
}

/** @param {{points: number[], width: number, height: number}} request */
function strokeOf({ points, width, height }) {
  return {
    stroke: Float64Array.from(points, (v, i) => v / (i % 2 ? height : width)),
    width,
    height,
  };
}

/** @param {number[]} numbers @returns {Place[]} */
function placesOf(numbers) {
  return Array.from({ length: numbers.length / 2 }, (_, i) => ({
    x: numbers[2 * i],
    y: numbers[2 * i + 1],
  }));
}
