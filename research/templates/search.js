'use strict';

const { askProbe } = require('../probe/index.js');

/**
 * Chooses a small set of outlines as templates.
 *
 * A stroke with three corners or more is compared with the polygons or with the ellipses alone; any
 * template within its reach then gives the same answer. The choice is therefore a covering problem:
 * outlines whose reach covers the strokes that gain by being recognised.
 *
 * @typedef {object} Candidate
 * @property {string} figure name of its template file
 * @property {Array<{x: number, y: number}>} outline
 */

/** Ids of templates, by the names of their files. */
const IDS = { rectangle: 1, triangle: 2, isosceles_triangle: 2, ellipse: 3 };

// Strokes that the probe is asked about at once: each may be reached by thousands of candidates.
const BATCH = 400;

/**
 * The candidates that reach a stroke.
 *
 * @typedef {object} Cover
 * @property {string} group what the stroke is compared with: none, all, polygons or ellipses
 * @property {Uint32Array} candidates by their indices
 * @property {Float64Array} left the distance each leaves to the limit of acceptance, in units of
 *   the reference square
 */

/**
 * @param {Array<Array<[number, number]>>} strokes in drawing-area units
 * @param {Candidate[]} candidates
 * @returns {Cover[]} one per stroke
 */
function coversOf(strokes, candidates) {
  const outlines = candidates.map(({ figure, outline }) => ({
    id: IDS[figure],
    points: outline.map(({ x, y }) => [x, y]),
  }));
  const covers = [];
  for (let i = 0; i < strokes.length; i += BATCH) {
    const batch = strokes.slice(i, i + BATCH);
    for (const { group, reached, left } of askProbe(['reach'], { outlines, strokes: batch })) {
      covers.push({
        group,
        candidates: Uint32Array.from(reached),
        left: Float64Array.from(left),
      });
    }
  }
  return covers;
}

/**
 * @typedef {object} CoveredStroke
 * @property {Cover} cover
 * @property {number} gain of recognising it; negative where that is wrong
 */

/**
 * Greedy selection: in every round the candidate that adds most, until none adds enough to be worth
 * a template.
 *
 * @param {CoveredStroke[]} strokes
 * @param {object} options
 * @param {number} options.price least gain for which a template is taken
 * @param {number} options.margin distance by which a stroke must lie within reach for a gain to
 *   count, since unseen strokes lie a little farther off; losses count up to the limit itself
 * @param {number[][]} [options.groups] sets of candidates, at least one of each of which is taken
 * @returns {number[]} chosen candidates, the most useful first
 */
function selectCandidates(strokes, { price, margin, groups = [] }) {
  const reached = indexByCandidate(strokes, margin);
  const open = new Uint8Array(strokes.length).fill(1);
  const chosen = [];
  const take = (candidate) => {
    chosen.push(candidate);
    for (const stroke of reached.get(candidate) ?? []) open[stroke] = 0;
    // Not twice, even at a price of 0.
    reached.delete(candidate);
  };
  for (;;) {
    const best = bestOf(reached.keys(), reached, strokes, open);
    if (!best || best.gain < price) break;
    take(best.candidate);
  }
  for (const group of groups) {
    if (group.some((candidate) => chosen.includes(candidate))) continue;
    const reaching = group.filter((candidate) => reached.has(candidate));
    const best = bestOf(reaching, reached, strokes, open);
    if (best) take(best.candidate);
  }
  return chosen;
}

/** The strokes that count for each candidate. */
function indexByCandidate(strokes, margin) {
  const reached = new Map();
  strokes.forEach(({ cover, gain }, stroke) => {
    if (gain === 0) return;
    cover.candidates.forEach((candidate, i) => {
      if (gain > 0 && cover.left[i] < margin) return;
      if (!reached.has(candidate)) reached.set(candidate, []);
      reached.get(candidate).push(stroke);
    });
  });
  return reached;
}

function bestOf(candidates, reached, strokes, open) {
  let best;
  for (const candidate of candidates) {
    let gain = 0;
    for (const stroke of reached.get(candidate)) {
      if (open[stroke]) gain += strokes[stroke].gain;
    }
    if (!best || gain > best.gain) best = { candidate, gain };
  }
  return best;
}

/**
 * The value of an answer. A figure that is answered as a polygon of too many corners comes back as
 * drawn, which neither helps nor harms.
 *
 * @param {string} family of the stroke
 * @param {{family: string, type: number}} answer
 * @param {number} harm cost of a wrong answer, in right answers
 */
function worth(family, answer, harm) {
  if (answer.type === 0) return 0;
  if (answer.family === family) return 1;
  return answer.family === 'polygon' && family !== 'none' ? 0 : -harm;
}

module.exports = { coversOf, selectCandidates, worth };
