'use strict';

const { ROOT } = require('../../tools/support/run.js');
const { runProbe } = require('../probe/index.js');

/** The probe's input: one stroke (an array of [x, y]) a line. */
function asText(strokes) {
  const line = (points) => `${points.length} ${points.map((p) => `${p[0]} ${p[1]}`).join(' ')}\n`;
  return strokes.map(line).join('');
}

/** Lines that the probe prints about strokes. */
const linesOf = (mode, strokes) => runProbe([mode], asText(strokes)).trimEnd().split('\n');

/** Runs the probe on strokes: { names, rows } of the table that it writes. */
function tableOf(mode, strokes) {
  const [head, ...rows] = linesOf(mode, strokes).map((line) => line.trim());
  return {
    names: head.split(' '),
    rows: rows.map((row) => Float64Array.from(row.split(' '), Number)),
  };
}

/** The same as one object a stroke. */
function probe(mode, strokes) {
  const { names, rows } = tableOf(mode, strokes);
  return rows.map((row) => Object.fromEntries(names.map((name, i) => [name, row[i]])));
}

/** Paths of the answers, arrays of [x, y]; the mode is `paths` or `plain`. */
function probePaths(mode, strokes) {
  return linesOf(mode, strokes).map((line) => {
    const values = line.trim().split(' ').map(Number);
    return Array.from({ length: values.length / 2 }, (_, i) => values.slice(2 * i, 2 * i + 2));
  });
}

module.exports = { ROOT, probe, probePaths, tableOf };
