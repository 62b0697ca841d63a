'use strict';

const { createMatcher, gatesOf, normalise, reachOf } = require('./matching.js');

/**
 * Which outlines would make a stroke be recognised.
 *
 * A stroke of three corners and more is compared with the polygons or with the ellipses alone;
 * any template within its reach then gives the same answer, so choosing templates is choosing a
 * small set of outlines whose reach covers the strokes that gain by being recognised.
 *
 * @typedef {object} Candidate
 * @property {string} figure name of the template file it would stand in
 * @property {Array<{x: number, y: number}>} outline
 */

/**
 * Prepares candidates for coverOf. As in the engine, an outline stands for both its directions.
 *
 * @param {Candidate[]} candidates
 */
function prepareCandidates(candidates) {
  return candidates.map(({ figure, outline }) => ({
    group: figure === 'ellipse' ? 'ellipses' : 'polygons',
    paths: [outline, [...outline].reverse()].map(normalise).filter(Boolean),
  }));
}

/**
 * The candidates that reach a stroke, in arrays of numbers: of thousands of strokes each may be
 * reached by thousands of candidates.
 *
 * @typedef {object} Cover
 * @property {Uint32Array} candidates by their indices
 * @property {Float64Array} left the distance each leaves to the limit of acceptance
 */

/**
 * @param {Array<{x: number, y: number}>} points a stroke in drawing-area units
 * @param {ReturnType<typeof prepareCandidates>} prepared
 * @returns {Cover}
 */
function coverOf(points, prepared) {
  const [candidates, left] = [[], []];
  const { group, share } = gatesOf(points);
  const reach = reachOf(share);
  const path = group !== 'none' && reach > 0 ? normalise(points) : undefined;
  const match = path && createMatcher(path);
  for (let i = 0; match && i < prepared.length; i += 1) {
    if (group !== 'all' && prepared[i].group !== group) continue;
    const distance = Math.min(...prepared[i].paths.map((outline) => match(outline)));
    if (!(distance <= reach)) continue;
    candidates.push(i);
    left.push(reach - distance);
  }
  return { candidates: Uint32Array.from(candidates), left: Float64Array.from(left) };
}

/**
 * @typedef {object} CoveredStroke
 * @property {Cover} cover
 * @property {number} gain what being recognised is worth; negative when it does harm
 */

/**
 * Picks a small set of candidates by greedy selection: in every round the one that adds most,
 * until none adds enough to be worth a template.
 *
 * @param {CoveredStroke[]} strokes
 * @param {object} options
 * @param {number} options.price gain a template must bring to be taken
 * @param {number} options.margin distance by which a stroke must lie within reach for its gain to
 *   count; harm counts up to the limit itself. Strokes not seen yet lie a little further off.
 * @param {number[][]} [options.groups] sets of candidates of which each gives at least one
 * @returns {number[]} chosen candidates, the most useful first
 */
function selectCandidates(strokes, { price, margin, groups = [] }) {
  const reached = indexByCandidate(strokes, margin);
  const open = new Uint8Array(strokes.length).fill(1);
  const chosen = [];
  const take = (candidate) => {
    chosen.push(candidate);
    for (const stroke of reached.get(candidate) ?? []) open[stroke] = 0;
    // Once is enough, also at a price of 0.
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
 * What an answer is worth. A polygon of too many corners comes back as drawn: no help to a figure,
 * and no harm.
 *
 * @param {string} family that the stroke is
 * @param {{family: string, type: number}} answer
 * @param {number} harm what a wrong answer costs, in right answers
 */
function worth(family, answer, harm) {
  if (answer.type === 0) return 0;
  if (answer.family === family) return 1;
  return answer.family === 'polygon' && family !== 'none' ? 0 : -harm;
}

module.exports = { coverOf, prepareCandidates, selectCandidates, worth };
