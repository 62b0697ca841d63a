'use strict';

const fc = require('fast-check');

const seconds = Number(process.env.SCRIVO_FUZZ_SECONDS ?? 0);

/** The same few cases in every run of the tests; others for as long as `npm run fuzz` asks for. */
const SETTINGS =
  seconds > 0
    ? { numRuns: 2 ** 31 - 1, interruptAfterTimeLimit: 1000 * seconds }
    : { numRuns: 500, seed: 1 };

/** Checks a property; prints how many cases it held for. */
async function holds(t, property) {
  const details = await fc.check(property, SETTINGS);
  if (details.failed) {
    throw new Error(fc.defaultReportMessage(details), { cause: details.errorInstance });
  }
  t.diagnostic(`${details.numRuns} cases`);
}

module.exports = { holds };
