'use strict';

const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { ROOT, failure } = require('../../tools/support/run.js');

const PROBE = path.join(ROOT, 'build', 'release', 'research', 'probe', 'probe');

/**
 * Runs a subcommand of the probe; its sources say what each reads and writes.
 *
 * @param {string[]} args
 * @param {string} input
 * @returns {string} what it wrote
 */
function runProbe(args, input) {
  if (!fs.existsSync(PROBE)) throw failure(`${PROBE} is missing. Build it: npm run build`);
  const options = { input, encoding: 'utf8', maxBuffer: 1 << 30 };
  const { status, signal, stdout, stderr } = spawnSync(PROBE, args, options);
  if (status !== 0) throw failure(`${PROBE} ended with ${signal ?? status}: ${stderr}`);
  return stdout;
}

/** The same for subcommands that read and write JSON. */
const askProbe = (args, value) => JSON.parse(runProbe(args, JSON.stringify(value)));

module.exports = { askProbe, runProbe };
