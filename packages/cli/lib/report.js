'use strict';

const { ANSWERS, FAMILIES, LABELLED_FAMILIES } = require('./families.js');

/**
 * The results of a run as a table.
 *
 * @param {import('./score.js').Score} score
 * @param {object} run
 * @param {string} run.engine
 * @param {number|'natural'} run.unit
 * @param {number} run.skipped lines that held no usable stroke
 * @returns {string}
 */
function formatReport(score, { engine, unit, skipped }) {
  const summary = score.summary();
  const size = unit === 'natural' ? 'at the size they were drawn in' : `scaled to ${unit} units`;
  return [
    `Engine ${engine}, ${score.strokes} strokes ${size}; rows: label, columns: answer`,
    '',
    formatTable(confusionRows(score, summary)),
    '',
    formatRecall(summary),
    ...formatNegatives(summary.negatives),
    formatTime(summary.microseconds),
    ...(skipped > 0 ? [`${skipped} lines skipped`] : []),
    '',
  ].join('\n');
}

function confusionRows(score, { families }) {
  const rows = LABELLED_FAMILIES.filter((family) => families[family].n > 0).map((family) => [
    family,
    ...Object.keys(ANSWERS).map((answer) => score.count(family, answer) || '.'),
    families[family].n,
    percent(families[family].right, families[family].n),
  ]);
  return [['', ...Object.keys(ANSWERS), 'all', 'right'], ...rows];
}

function formatRecall({ families, recall }) {
  if (recall === null) return 'No figures among the strokes';
  const n = FAMILIES.reduce((total, family) => total + families[family].n, 0);
  const right = FAMILIES.reduce((total, family) => total + families[family].right, 0);
  return `Figures right: ${right} of ${n} (${percent(right, n)})`;
}

function formatNegatives({ n, changed, by_label: byLabel }) {
  if (n === 0) return ['All strokes are figures'];
  const rows = Object.entries(byLabel).map(([label, counts]) => [
    `  ${label}`,
    counts.changed,
    'of',
    counts.n,
    percent(counts.changed, counts.n),
  ]);
  return [`No figure, but changed: ${changed} of ${n} (${percent(changed, n)})`, formatTable(rows)];
}

function formatTime({ median, p99 }) {
  return `Time per stroke: median ${median.toFixed(1)} us, 99th percentile ${p99.toFixed(1)} us`;
}

/** Rows as aligned columns, the first to the left, the others to the right. */
function formatTable(rows) {
  const widths = rows[0].map((_, column) =>
    Math.max(...rows.map((row) => String(row[column]).length)),
  );
  const cell = (value, column) =>
    column === 0 ? String(value).padEnd(widths[0]) : String(value).padStart(widths[column]);
  return rows.map((row) => row.map(cell).join('  ').trimEnd()).join('\n');
}

function percent(part, whole) {
  return `${((100 * part) / whole).toFixed(1)} %`;
}

module.exports = { formatReport };
