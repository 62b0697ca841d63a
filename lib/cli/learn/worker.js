'use strict';

const { createEngine } = require('../engines.js');
const { placeStroke } = require('../placement.js');
const { serve } = require('../run/pool.js');
const { createCandidates } = require('./candidates.js');
const { coverOf, prepareCandidates } = require('./search.js');

/** What a worker does to each stroke of a job, by the name of its task. */
const TASKS = {
  /** The candidates that reach it. */
  cover(options) {
    const prepared = prepareCandidates(createCandidates(options));
    return ({ points, width, height }) =>
      coverOf(
        points.map(({ x, y }) => ({ x: x * width, y: y * height })),
        prepared,
      );
  },
  /** What the engine answers. Its templates are those of the process. */
  answer({ templates }) {
    const engine = createEngine('exact');
    engine.load({ templates });
    return (placed) => {
      const { family, type } = engine.answer(placed);
      return { family, type };
    };
  },
};

serve((options) => {
  const work = TASKS[options.task](options);
  return ({ strokes }) => ({
    results: strokes.map((each) => work(placeStroke(each, options.unit))),
  });
});
