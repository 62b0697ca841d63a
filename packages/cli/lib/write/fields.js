'use strict';

const { membersOf } = require('../json-members.js');

/** What of a line is written as ink, not as a field. */
const INK = new Set(['points', 'others']);

/**
 * The fields of a stroke as texts, for formats that have nothing else: of a JSON line those that
 * are no text as they stand there, so that numbers keep their digits and objects what is in them.
 *
 * @param {import('../read/stroke-points.js').Stroke} stroke
 * @returns {Map<string, string>} by name, without those that are null
 */
function textFields({ fields, text }) {
  if (!text) return new Map(Object.entries(fields));
  const texts = new Map();
  for (const { name, start, end } of membersOf(text)) {
    if (INK.has(name) || fields[name] === null) continue;
    texts.set(name, typeof fields[name] === 'string' ? fields[name] : text.slice(start, end));
  }
  return texts;
}

module.exports = { textFields };
