'use strict';

const { ROOT } = require('../../tools/support/run.js');
const { runProbe } = require('../probe/index.js');

/** The probe's input: one stroke (an array of [x, y]) a line. */
function asText(strokes) {
  const line = (points) => `${points.length} ${points.map((p) => `${p[0]} ${p[1]}`).join(' ')}\n`;
  return strokes.map(line).join('');
}

/** Runs the probe on strokes; one object a stroke. */
function probe(mode, strokes) {
  const [head, ...rows] = runProbe([mode], asText(strokes)).trim().split('\n');
  const names = head.split(' ');
  return rows.map((row) => {
    const values = row.split(' ').map(Number);
    return Object.fromEntries(values.map((value, i) => [names[i], value]));
  });
}

/** The paths that the beautifier gives strokes, as arrays of [x, y]. */
function paths(strokes) {
  const rows = runProbe(['paths'], asText(strokes)).trimEnd().split('\n');
  return rows.map((row) => {
    const values = row.trim().split(' ').map(Number);
    return Array.from({ length: values.length / 2 }, (_, i) => values.slice(2 * i, 2 * i + 2));
  });
}

module.exports = { ROOT, paths, probe };
