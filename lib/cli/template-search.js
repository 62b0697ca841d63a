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
    paths: [outline, [...outline].reverse()].map(normalise),
  }));
}

/**
 * @param {Array<{x: number, y: number}>} points a stroke in drawing-area units
 * @param {ReturnType<typeof prepareCandidates>} prepared
 * @returns {Map<number, number>} distance left to the limit of acceptance, by candidate; without
 *   the candidates that do not reach the stroke
 */
function coverOf(points, prepared) {
  const cover = new Map();
  const { group, share } = gatesOf(points);
  const reach = reachOf(share);
  const path = group !== 'none' && reach > 0 ? normalise(points) : undefined;
  if (!path) return cover;
  const match = createMatcher(path);
  prepared.forEach((candidate, i) => {
    if (group !== 'all' && candidate.group !== group) return;
    const distance = Math.min(...candidate.paths.map((outline) => match(outline)));
    if (distance <= reach) cover.set(i, reach - distance);
  });
  return cover;
}

/**
 * @typedef {object} CoveredStroke
 * @property {Map<number, number>} cover from coverOf
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
  const open = new Set(strokes.keys());
  const chosen = [];
  const take = (candidate) => {
    chosen.push(candidate);
    reached.get(candidate).forEach((stroke) => open.delete(stroke));
  };
  for (;;) {
    const best = bestOf(reached.keys(), reached, strokes, open);
    if (!best || best.gain < price) break;
    take(best.candidate);
  }
  for (const group of groups) {
    if (group.some((candidate) => chosen.includes(candidate))) continue;
    const best = bestOf(
      group.filter((candidate) => reached.has(candidate)),
      reached,
      strokes,
      open,
    );
    if (best) take(best.candidate);
  }
  return chosen;
}

function indexByCandidate(strokes, margin) {
  const reached = new Map();
  strokes.forEach(({ cover, gain }, stroke) => {
    for (const [candidate, left] of cover) {
      if (gain === 0 || (gain > 0 && left < margin)) continue;
      if (!reached.has(candidate)) reached.set(candidate, []);
      reached.get(candidate).push(stroke);
    }
  });
  return reached;
}

function bestOf(candidates, reached, strokes, open) {
  let best;
  for (const candidate of candidates) {
    let gain = 0;
    for (const stroke of reached.get(candidate)) {
      if (open.has(stroke)) gain += strokes[stroke].gain;
    }
    if (!best || gain > best.gain) best = { candidate, gain };
  }
  return best;
}

module.exports = { coverOf, prepareCandidates, selectCandidates };
