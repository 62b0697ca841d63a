'use strict';

const { replaceMembers } = require('../json-members.js');

/** Fields of a line that mean something to whoever reads it, and are numbers or arrays. */
const NO_TEXTS = new Set(['width', 'height', 'others']);

/**
 * A stroke as a line of JSON: the fields it came with, its points replaced by those of the figure,
 * and the figure. Points are written in the form they were read in. Of a line that was read all
 * else stays to the letter, and so do the points of a stroke that is no figure.
 */
function formatLine(stroke, answer, round) {
  return { texts: [`${lineOf(stroke, answer, round)}\n`] };
}

function lineOf({ fields, points: drawn, asObjects, text }, { points, type, figure }, round) {
  const isAsDrawn = points === drawn;
  const ideal = isAsDrawn ? drawn : formatPoints(points, asObjects, round);
  if (!text) return JSON.stringify({ ...lineFields(fields), points: ideal, type, figure });
  if (!isAsDrawn) return replaceMembers(text, { points: ideal, type, figure });
  if (Object.hasOwn(fields, 'type') || Object.hasOwn(fields, 'figure')) {
    return replaceMembers(text, { type, figure });
  }
  return `${text.slice(0, -1)},"type":${type},"figure":"${figure}"}`;
}

/** The fields of a document's stroke, without the texts that a line would be wrong with. */
function lineFields(fields) {
  const isWrong = ([name, value]) => NO_TEXTS.has(name) && typeof value === 'string';
  return Object.fromEntries(Object.entries(fields).filter((field) => !isWrong(field)));
}

function formatPoints(points, asObjects, round) {
  return points.map(([x, y, ...rest]) => {
    if (!asObjects) return [round(x), round(y), ...rest];
    const [force] = rest;
    return { x: round(x), y: round(y), ...(force !== undefined && { force }) };
  });
}

module.exports = { formatLine };
