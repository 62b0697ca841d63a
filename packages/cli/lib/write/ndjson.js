'use strict';

const { stringify } = require('../read/long-integers.js');
const { answerFields } = require('./fields.js');

/** Fields that are numbers or arrays in a line; a document may have texts of these names. */
const NOT_TEXT = ['points', 'others', 'width', 'height'];

/**
 * A stroke as a line of JSON: its fields, with the points of the figure in the form in which the
 * points were read, and the answer.
 */
function formatLine({ fields, points: drawn, asObjects }, answer, round) {
  const isAsDrawn = answer.points === drawn;
  const { points: kept = drawn } = fields;
  const points = isAsDrawn ? kept : formatPoints(answer.points, asObjects, round);
  return { texts: [formatRecord(fields, points, answer)] };
}

/** A line of JSON, with the given points and the answer. */
function formatRecord(fields, points, answer) {
  const kept = { ...fields };
  for (const name of NOT_TEXT) if (typeof kept[name] === 'string') delete kept[name];
  return `${stringify({ ...kept, points, ...answerFields(answer) })}\n`;
}

/** Names the input of a stroke, unless a field of its line does so. */
function addSource(fields, source) {
  if (source !== undefined) fields.source ??= source;
}

function formatPoints(points, asObjects, round) {
  return points.map(([x, y, ...rest]) => {
    if (!asObjects) return [round(x), round(y), ...rest];
    const [force] = rest;
    return { x: round(x), y: round(y), ...(force !== undefined && { force }) };
  });
}

module.exports = { addSource, formatLine, formatRecord };
