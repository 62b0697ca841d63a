import { lengthFractions, mix, resample } from './geometry.mjs';

const SAMPLES = 128;
// Starting points on the ink tried for a closed figure.
const TURNS = 64;

/** The point of the ink at a fraction of its length; `samples` are evenly spaced. */
function sampleAt(samples, fraction) {
  const place = fraction * (samples.length - 1);
  const i = Math.min(Math.floor(place), samples.length - 2);
  return mix(samples[i], samples[i + 1], place - i);
}

const wrap = (fraction) => fraction - Math.floor(fraction);

/** Maps from fractions of the figure's length to fractions of the ink's. */
function pairings(closed) {
  if (!closed) return [(s) => s, (s) => 1 - s];
  return Array.from({ length: TURNS }, (_, k) => k / TURNS).flatMap((turn) => [
    (s) => wrap(s + turn),
    (s) => wrap(turn - s),
  ]);
}

function squaredDistance(points, others) {
  return points.reduce(
    (sum, [x, y], i) => sum + (x - others[i][0]) ** 2 + (y - others[i][1]) ** 2,
    0,
  );
}

/**
 * The point of the ink from which each point of the figure comes. Figures need not
 * start where the pen did, so of both directions (and, for a closed figure, of many
 * starting points) the one with the smallest sum of squared distances is taken.
 */
export function originsOf(figure, ink, closed) {
  const samples = resample(closed ? [...ink, ink[0]] : ink, SAMPLES);
  const fractions = lengthFractions(figure);
  let best = null;
  for (const pairing of pairings(closed)) {
    const origins = fractions.map((s) => sampleAt(samples, pairing(s)));
    const cost = squaredDistance(origins, figure);
    if (!best || cost < best.cost) best = { origins, cost };
  }
  return best.origins;
}

/** Starts fast and settles gently. */
export const ease = (t) => 1 - (1 - t) ** 3;
