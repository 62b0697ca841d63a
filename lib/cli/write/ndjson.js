'use strict';

/**
 * A stroke as a line of JSON: the fields it came with, its points replaced by those of the figure,
 * and the figure. Points are written in the form they were read in, and a stroke that is no
 * figure keeps its own to the letter.
 */
function formatLine({ fields, points: drawn, asObjects, text }, answer, round) {
  const { points, type, figure } = answer;
  const isAsDrawn = points === drawn;
  if (isAsDrawn && text && fields.type === undefined && fields.figure === undefined) {
    return [`${text.slice(0, -1)},"type":${type},"figure":"${figure}"}\n`];
  }
  // Only a line of JSON has its points among its fields; of a document they may be a remark.
  const own = text ? fields.points : drawn;
  const ideal = isAsDrawn ? own : formatPoints(points, asObjects, round);
  return [`${JSON.stringify({ ...fields, points: ideal, type, figure })}\n`];
}

function formatPoints(points, asObjects, round) {
  return points.map(([x, y, ...rest]) => {
    if (!asObjects) return [round(x), round(y), ...rest];
    const [force] = rest;
    return { x: round(x), y: round(y), ...(force !== undefined && { force }) };
  });
}

module.exports = { formatLine };
