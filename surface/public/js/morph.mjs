import { lengthFractions, mix, resample } from './geometry.mjs';

const SAMPLES = 128;
// Starting points tried when a closed figure is laid over the ink.
const TURNS = 64;

/** Where the ink of `samples`, closed to a ring or not, is at a fraction of its length. */
function sampleAt(samples, fraction) {
  const place = fraction * (samples.length - 1);
  const i = Math.min(Math.floor(place), samples.length - 2);
  return mix(samples[i], samples[i + 1], place - i);
}

const wrap = (fraction) => fraction - Math.floor(fraction);

/** Ways to run along the ink while running along the figure from 0 to 1. */
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
 * The points of the ink from which the points of the figure come, one each:
 * of all directions (and, for a closed figure, starting points) those with the
 * shortest ways. Figures are not drawn from where the pen started.
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
