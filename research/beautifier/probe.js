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

/** Runs the probe on strokes; its lines. */
function linesOf(mode, strokes) {
  if (!existsSync(PROBE)) {
    throw new Error(`${PROBE} is missing. Build it: npm run build`);
  }
  const { status, stdout, stderr } = spawnSync(PROBE, [mode], {
    input: asText(strokes),
    encoding: 'utf8',
    maxBuffer: 1 << 30,
  });
  if (status !== 0) throw new Error(`beautifier_probe failed: ${stderr}`);
  return stdout.split('\n').slice(0, -1);
}

/** Runs the probe on strokes; one object a stroke. */
function probe(mode, strokes) {
  const [head, ...rows] = linesOf(mode, strokes).map((line) => line.trim());
  const names = head.split(' ');
  return rows.map((row) => {
    const values = row.split(' ').map(Number);
    return Object.fromEntries(values.map((value, i) => [names[i], value]));
  });
}

/** Paths of the answers, arrays of [x, y]; the mode is `paths` or `plain`. */
function probePaths(mode, strokes) {
  return linesOf(mode, strokes).map((line) => {
    const values = line.trim().split(' ').map(Number);
    return Array.from({ length: values.length / 2 }, (_, i) => [values[2 * i], values[2 * i + 1]]);
  });
}

module.exports = { PROBE, ROOT, asText, probe, probePaths };
