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

/** Runs the probe on strokes; one object a stroke. */
function probe(mode, strokes) {
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
  const names = head.split(' ');
  return rows.map((row) => {
    const values = row.split(' ').map(Number);
    return Object.fromEntries(values.map((value, i) => [names[i], value]));
  });
}

module.exports = { PROBE, ROOT, asText, probe };
