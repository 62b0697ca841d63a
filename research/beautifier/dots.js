'use strict';

// Dots, by the longer side of the box (in units of which a tap leaves four) and by the
// length of the path without tremor over the diagonal. Up to 1.5 units every mark is a
// dot. Up to 4 units, a short path may be a slip of a tap and a very long one a held
// press; those between are small letters.

const DOTS = [
  { extent: 1.5, min: 0, max: 1e6, sure: true },
  { extent: 4, min: 0, max: 2.1, sure: false },
  { extent: 4, min: 15, max: 1e6, sure: false },
];

const fits = ({ extent, diagonal, travel }, limits) =>
  extent <= limits.extent &&
  (diagonal === 0 || (limits.min * diagonal <= travel && travel <= limits.max * diagonal));

/** Whether a row { extent, diagonal, travel } of a stroke as drawn is a dot. */
const isDot = (row) => DOTS.some((limits) => fits(row, limits));

/** Log odds that a row { family, ... } within the limits of `DOTS` is a dot. */
function dotModels(rows) {
  let rest = rows;
  return DOTS.map((limits) => {
    const inside = rest.filter((row) => fits(row, limits));
    rest = rest.filter((row) => !fits(row, limits));
    const right = inside.filter(({ family }) => family === 'dot').length;
    return { ...limits, logit: Math.log((right + 1) / (inside.length - right + 1)) };
  });
}

module.exports = { dotModels, isDot };
