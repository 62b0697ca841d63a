'use strict';

const { LABELLED_FAMILIES } = require('../families.js');
const { createProgress } = require('../progress.js');
const { readInk } = require('./ink.js');
const { displayName } = require('./input.js');
const { toText } = require('./long-integers.js');
const { parseBlock } = require('./ndjson.js');
const { describe } = require('./stroke-points.js');

// Further wrong lines of a file are only counted.
const WRONG_LINES_SHOWN = 20;

// Distance between samples along SVG curves, in drawing units.
const STEP = 4;

/**
 * @typedef {object} LabelledStroke
 * @property {string} family one of LABELLED_FAMILIES: the right answer
 * @property {string} label what was drawn, finer than the family; by default the family
 * @property {string} [writer] who drew it
 * @property {number[][]} points [x, y, force, time]: any unit, y down; a force or time that was
 *   not recorded is null, or missing at the end
 * @property {string} file the name of its input
 * @property {number} line its line there, from 1
 */

/**
 * Reads the labelled strokes of all inputs, with a progress bar. What cannot be read is reported
 * and counted; the rest is still read.
 *
 * @param {object} options
 * @param {string[]} options.inputs names, `-` for standard input
 * @param {number} [options.totalBytes] of all of them together, if known
 * @param {NodeJS.WriteStream} stderr
 * @param {(stroke: LabelledStroke) => void} take
 * @returns {Promise<{skipped: number, unread: string[]}>} the number of wrong lines, and the inputs
 *   that could not be read to the end
 */
async function takeLabelledStrokes({ inputs, totalBytes }, stderr, take) {
  const counts = { skipped: 0, unread: [] };
  const progress = createProgress({ totalBytes, stream: stderr });
  let taken = 0;
  try {
    for (const input of inputs) {
      for await (const stroke of readFile(input, progress, counts)) {
        take(stroke);
        progress.count((taken += 1));
      }
    }
  } finally {
    progress.stop();
  }
  return counts;
}

async function* readFile(input, progress, counts) {
  const name = displayName(input);
  let wrong = 0;
  for await (const record of readRecords(input, (bytes) => progress.advance(bytes))) {
    const { line, stroke, problem, damage } = record;
    if (damage) {
      counts.unread.push(name);
      progress.log(damage);
    } else if (problem) {
      wrong += 1;
      if (wrong <= WRONG_LINES_SHOWN) progress.log(`${name}:${line}: ${problem}`);
    } else {
      yield { ...stroke, file: name, line };
    }
  }
  if (wrong > WRONG_LINES_SHOWN) {
    progress.log(`${name}: ${wrong - WRONG_LINES_SHOWN} more wrong lines`);
  }
  counts.skipped += wrong;
}

/** The records of an input with their lines; at the end, why the rest could not be read. */
async function* readRecords(input, onBytes) {
  let before = 0;
  for await (const job of readInk(input, { step: STEP, onBytes })) {
    if (job.damage) {
      yield { damage: before > 0 ? `${job.damage}, after line ${before}` : job.damage };
      continue;
    }
    const { records, lines = 0 } = job.records ? job : parseBlock(job);
    for (const { line, stroke, problem } of records) {
      yield { line: before + line, ...(problem ? { problem } : labelOf(stroke)) };
    }
    before += lines;
  }
}

function labelOf({ fields, points }) {
  const { family, label = family, writer } = fields;
  if (family === undefined) return { problem: '"family" is missing' };
  if (!LABELLED_FAMILIES.includes(family)) {
    const known = LABELLED_FAMILIES.join(', ');
    return { problem: `"family" must be one of ${known}, found ${describe(family)}` };
  }
  const isNamed = writer !== undefined && writer !== null;
  return {
    stroke: { family, label: toText(label), ...(isNamed && { writer: toText(writer) }), points },
  };
}

module.exports = { takeLabelledStrokes };
