'use strict';

const { LABELLED_FAMILIES } = require('../families.js');
const { displayName } = require('../input.js');
const { readInk } = require('./ink.js');
const { parseBlock } = require('./ndjson.js');
const { describe } = require('./stroke-points.js');

// More wrong lines of one file are only counted: they tell nothing new.
const WRONG_LINES_SHOWN = 20;

// Distance of samples along SVG curves, in drawing units.
const STEP = 4;

/**
 * @typedef {object} LabelledStroke
 * @property {string} family one of LABELLED_FAMILIES: the answer a perfect recogniser gives
 * @property {string} label what was drawn, finer than the family; the family when not given
 * @property {string} [writer] who drew it
 * @property {number[][]} points [x, y, force, time]: any unit, y down; a force or time that was
 *   not recorded is null, or missing at the end
 * @property {string} file the name of its input
 * @property {number} line where it stands there, from 1
 */

/**
 * Reads the labelled strokes of all inputs. What cannot be read is told and counted; the rest is
 * still read.
 *
 * @param {string[]} files names, `-` for standard input
 * @param {object} on
 * @param {(message: string) => void} on.message told what cannot be read, and where
 * @param {(count: number) => void} on.bytes told the bytes taken from an input
 * @param {{skipped: number, unread: string[]}} counts wrong lines and inputs that broke off, to be
 *   counted up
 * @yields {LabelledStroke}
 */
async function* readLabelledStrokes(files, on, counts) {
  for (const file of files) {
    const name = displayName(file);
    let wrong = 0;
    for await (const { line, stroke, problem, damage } of readRecords(file, on.bytes)) {
      if (damage) {
        counts.unread.push(name);
        on.message(damage);
      } else if (problem) {
        wrong += 1;
        if (wrong <= WRONG_LINES_SHOWN) on.message(`${name}:${line}: ${problem}`);
      } else {
        yield { ...stroke, file: name, line };
      }
    }
    if (wrong > WRONG_LINES_SHOWN) {
      on.message(`${name}: ${wrong - WRONG_LINES_SHOWN} more wrong lines`);
    }
    counts.skipped += wrong;
  }
}

/** The records of an input, each with its line; last, perhaps, what broke it off. */
async function* readRecords(file, onBytes) {
  let before = 0;
  for await (const job of readInk(file, { step: STEP, onBytes })) {
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
    stroke: { family, label: String(label), ...(isNamed && { writer: String(writer) }), points },
  };
}

module.exports = { readLabelledStrokes };
