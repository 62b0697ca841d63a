'use strict';

const { toText } = require('../read/long-integers.js');

/** Fields that are written as ink. */
const INK = new Set(['points', 'others']);

/**
 * The fields of a stroke as texts, without those that are null: numbers, objects and arrays as
 * their JSON.
 *
 * @param {import('../read/stroke-points.js').Stroke} stroke
 * @returns {Map<string, string>} by name
 */
function textFields({ fields, asObjects }) {
  const isFromDocument = asObjects === undefined;
  return new Map(
    Object.entries(fields)
      .filter(([name, value]) => value !== null && (isFromDocument || !INK.has(name)))
      .map(([name, value]) => [name, toText(value)]),
  );
}

/** An answer as fields. The field `family` is the label of a labelled stroke and stays. */
function answerFields({ type, family, kind, confidence, parameters }) {
  return { type, figure: family, kind, confidence, parameters };
}

const ANSWER_FIELDS = Object.keys(answerFields({}));

module.exports = { ANSWER_FIELDS, answerFields, textFields };
