'use strict';

const os = require('node:os');
const path = require('node:path');
const { mapOrdered } = require('../run/map-ordered.js');
const { createPool } = require('../run/pool.js');
const { Score } = require('../score.js');
const { readShipped } = require('../template-files.js');
const { TemporaryFolder } = require('../write/output-folder.js');
const { TEMPLATE_FIGURES, createCandidates, templateFiles } = require('./candidates.js');
const { divideIntoFolds } = require('./folds.js');
const { selectCandidates, worth } = require('./search.js');

const WORKER = path.join(__dirname, 'worker.js');

// Strokes of a job: enough for a worker to be busy for a while, few enough for a bar to move.
const JOB = 32;

/**
 * @typedef {object} LearnSettings
 * @property {number|'natural'} unit see placeStroke
 * @property {number} candidates generated outlines of each figure to choose from
 * @property {number} seed of these and of the parts that are held out
 * @property {number} harm what a wrong answer costs, in right answers
 * @property {number} price right answers an outline must add to be taken
 * @property {number} margin see selectCandidates
 * @property {boolean} keepShipped the shipped outlines stay, others come to them
 * @property {boolean} byWriter see divideIntoFolds
 * @property {number} folds
 * @property {number} jobs worker threads
 */

/**
 * Learns templates from labelled strokes, and finds out what they gain on strokes that they were
 * not learnt from: every part of the strokes is answered with templates learnt from the others.
 *
 * @param {import('../read/labelled.js').LabelledStroke[]} strokes
 * @param {LearnSettings} settings
 * @param {(strokes: number) => void} onProgress told the strokes that were compared
 * @returns {Promise<object>} `files`: texts of the template files by figure; `outlines`: how many
 *   each has; `folds`: how many parts; `sets`: for no templates, the shipped, the learnt ones and
 *   all that there is to choose from, the numbers of outlines and the score; `better` and `worse`:
 *   strokes whose answer is worth more or less with the learnt ones than with the shipped ones;
 *   `gain`: by how much, all together
 */
async function learn(strokes, settings, onProgress) {
  const candidates = createCandidates(settings);
  const covers = await coverAll(strokes, settings, onProgress);
  const answer = (templates, some) => answerAll(templates, some, settings);
  const answers = {
    none: await answer([], strokes),
    shipped: await answer(undefined, strokes),
    // Which template reaches a stroke is of no account: a small set that reaches all there is to
    // reach shows what comes of being reached.
    reached: await withFiles(witnesses(covers, candidates), (files) => answer(files, strokes)),
  };
  const weighted = strokes.map(({ family }, i) => ({
    cover: covers[i],
    gain:
      worth(family, answers.reached[i], settings.harm) -
      worth(family, answers.none[i], settings.harm),
  }));
  const choose = (some) => chooseFiles(some, candidates, settings);

  const folds = divideIntoFolds(strokes, settings);
  const held = { answers: new Array(strokes.length), sizes: [] };
  for (const fold of folds) {
    const isOut = new Set(fold);
    const { files, size } = choose(weighted.filter((_, i) => !isOut.has(i)));
    const part = fold.map((i) => strokes[i]);
    const heldOut = await withFiles(files, (names) => answer(names, part));
    fold.forEach((i, k) => (held.answers[i] = heldOut[k]));
    held.sizes.push(size);
  }
  const { files, outlines } = choose(weighted);
  return {
    files,
    outlines,
    folds: folds.length,
    sets: {
      none: { outlines: [0], score: scoreOf(strokes, answers.none) },
      shipped: { outlines: [readShipped().length], score: scoreOf(strokes, answers.shipped) },
      learnt: { outlines: held.sizes, score: scoreOf(strokes, held.answers) },
      every: { outlines: [candidates.length], score: scoreOf(strokes, answers.reached) },
    },
    ...compare(strokes, answers.shipped, held.answers, settings.harm),
  };
}

/** The candidates that reach each stroke, worked out by all threads. */
async function coverAll(strokes, { unit, candidates, seed, jobs }, onProgress) {
  const pool = createPool(WORKER, { task: 'cover', unit, candidates, seed }, { workers: jobs });
  try {
    const covers = [];
    for await (const { results } of mapOrdered(jobsOf(strokes), (job) => pool.run(job), 3 * jobs)) {
      covers.push(...results);
      onProgress(results.length);
    }
    return covers;
  } finally {
    await pool.close();
  }
}

/** The engine's answers with some templates, from a process that has no others. */
async function answerAll(templates, strokes, { unit }) {
  const how = { type: 'process', workers: 1 };
  const pool = createPool(WORKER, { task: 'answer', unit, templates }, how);
  try {
    const answers = [];
    for await (const job of jobsOf(strokes)) answers.push(...(await pool.run(job)).results);
    return answers;
  } finally {
    await pool.close();
  }
}

async function* jobsOf(strokes) {
  for (let i = 0; i < strokes.length; i += JOB) {
    const part = strokes.slice(i, i + JOB);
    yield { strokes: part.map(({ family, points }) => ({ family, points })) };
  }
}

/** Calls a function with a folder of template files that is there for as long as it runs. */
async function withFiles(files, use) {
  const folder = new TemporaryFolder(os.tmpdir(), 'scrivo-templates', files);
  try {
    return await use([folder.path]);
  } finally {
    folder.remove();
  }
}

function witnesses(covers, candidates) {
  const everything = covers.map((cover) => ({ cover, gain: 1 }));
  return templateFiles(pick(candidates, selectCandidates(everything, { price: 1, margin: 0 })));
}

/** Template files for strokes whose gain is known. */
function chooseFiles(weighted, candidates, { price, margin, keepShipped }) {
  const ofFigure = (figure) =>
    [...candidates.keys()].filter((i) => candidates[i].figure === figure);
  const chosen = selectCandidates(weighted, {
    price,
    margin,
    groups: TEMPLATE_FIGURES.map(ofFigure),
    // They are the first of the candidates.
    given: keepShipped ? [...readShipped().keys()] : [],
  });
  const picked = pick(candidates, chosen);
  const count = (figure) => picked.filter((each) => each.figure === figure).length;
  return {
    files: templateFiles(picked),
    size: chosen.length,
    outlines: Object.fromEntries(TEMPLATE_FIGURES.map((figure) => [figure, count(figure)])),
  };
}

function pick(candidates, chosen) {
  return chosen.map((i) => candidates[i]);
}

function scoreOf(strokes, answers) {
  const score = new Score();
  strokes.forEach((stroke, i) => score.add(stroke, answers[i]));
  return score;
}

function compare(strokes, before, after, harm) {
  let [better, worse, gain] = [0, 0, 0];
  strokes.forEach(({ family }, i) => {
    const change = worth(family, after[i], harm) - worth(family, before[i], harm);
    if (change > 0) better += 1;
    if (change < 0) worse += 1;
    gain += change;
  });
  return { better, worse, gain };
}

module.exports = { learn };
