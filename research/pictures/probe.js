'use strict';

const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { templates } = require('../../lib/index.js');
const { ROOT, failure } = require('../../tools/support/run.js');

const PROBE = path.join(ROOT, 'build', 'release', 'research', 'pictures', 'picture_probe');

/**
 * What the engine sees in strokes, and what it answers: see probe.cpp.
 *
 * @param {Array<object>} tasks
 * @returns {Array<object>} one finding a task
 */
function probe(tasks) {
  if (!fs.existsSync(PROBE)) throw failure(`${PROBE} is missing. Build it: npm run build`);
  const options = { input: JSON.stringify(tasks), encoding: 'utf8', maxBuffer: 1 << 28 };
  const { status, stdout, stderr } = spawnSync(PROBE, templates, options);
  if (status !== 0) throw failure(`${PROBE} failed: ${stderr}`);
  return JSON.parse(stdout);
}

module.exports = { probe };
