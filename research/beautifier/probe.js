'use strict';

const { spawnSync } = require('node:child_process');
const { existsSync } = require('node:fs');
const path = require('node:path');

const ROOT = path.join(__dirname, '..', '..');
const PROBE = path.join(ROOT, 'build', 'release', 'research', 'beautifier', 'beautifier_probe');

/** The probe's input: one stroke (an array of [x, y]) a line. */
function asText(strokes) {
  const line = (points) => `${points.length} ${points.map((p) => `${p[0]} ${p[1]}`).join(' ')}\n`;
  return strokes.map(line).join('');
}

/** Runs the probe on strokes: { names, rows } of the table that it writes. */
function tableOf(mode, strokes) {
  if (!existsSync(PROBE)) {
    throw new Error(`${PROBE} is missing. Build it: npm run build`);
  }
  const { status, stdout, stderr } = spawnSync(PROBE, [mode], {
    input: asText(strokes),
    encoding: 'utf8',
    maxBuffer: 1 << 30,
  });
  if (status !== 0) throw new Error(`beautifier_probe failed: ${stderr}`);
  const [head, ...rows] = stdout.trim().split('\n');
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

module.exports = { PROBE, ROOT, asText, probe, tableOf };
