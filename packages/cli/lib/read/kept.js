'use strict';

const { createRounding } = require('../svg.js');
const { UserError } = require('../user-error.js');

/** Documents that are kept whole, so that all but their strokes stays as it is. */

const MAX_LENGTH = 32 * 1024 * 1024;
const MAX_POINTS = 1e6;

/**
 * @param {AsyncIterable<Buffer>} chunks
 * @returns {Promise<Buffer>}
 */
async function readWhole(chunks, limit = MAX_LENGTH) {
  const parts = [];
  let length = 0;
  for await (const chunk of chunks) {
    length += chunk.length;
    if (length > limit) {
      throw new UserError(`larger than ${limit / 1024 / 1024} MB, the limit for such a document`);
    }
    parts.push(chunk);
  }
  return Buffer.concat(parts);
}

/** @param {Array<{stroke?: import('./stroke-points.js').Stroke}>} records */
function checkSize(records) {
  let points = 0;
  for (const { stroke } of records) points += stroke?.points.length ?? 0;
  if (points > MAX_POINTS) throw new UserError(`more than ${MAX_POINTS} points, the limit`);
}

/** The answers that change their strokes, with the index of each, points rounded. */
function figuresOf(answers) {
  return answers.flatMap((answer, index) => {
    if (!answer || answer.type === 0) return [];
    const round = createRounding(answer.decimals);
    const points = answer.points.map(([x, y]) => [round(x), round(y)]);
    return [{ ...answer, index, points }];
  });
}

module.exports = { checkSize, figuresOf, readWhole };
