'use strict';

const { LABELLED_FAMILIES } = require('../families.js');
const { displayName } = require('../input.js');
const { createProgress } = require('../progress.js');
const { UserError } = require('../user-error.js');
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

const WITHOUT_HELP = `      --without LINES   lines to leave out, as those that are wrongly labelled: 3,17 or, of several
                        files, FILE:3,17; may be given again`;

/**
 * Reads what --without says.
 *
 * @param {string[]|undefined} texts
 * @param {string[]} inputs
 * @returns {Map<string, Set<number>>} lines, from 1, by the names of their inputs
 */
function parseWithout(texts = [], inputs) {
  const names = inputs.map(displayName);
  const lines = new Map();
  for (const text of texts) {
    const [, file, list] = /^(?:(.*):)?(\d+(?:,\d+)*)$/.exec(text) ?? [];
    if (!list) throw new UserError(`--without takes lines, such as 3,17, found ${text}`);
    if (file === undefined && names.length > 1) {
      throw new UserError(`--without ${text}: of which file? say ${names[0]}:${text}`);
    }
    const name = file === undefined ? names[0] : displayName(file);
    if (!names.includes(name)) throw new UserError(`--without ${text}: ${name} is no input`);
    const numbers = list.split(',').map(Number);
    lines.set(name, new Set([...(lines.get(name) ?? []), ...numbers]));
  }
  return lines;
}

/**
 * Reads the labelled strokes of all inputs behind a progress bar. What cannot be read is told and
 * counted; the rest is still read.
 *
 * @param {object} options
 * @param {string[]} options.inputs names, `-` for standard input
 * @param {number} [options.totalBytes] of all of them together, if known
 * @param {Map<string, Set<number>>} [options.without] see parseWithout
 * @param {NodeJS.WriteStream} stderr
 * @param {(stroke: LabelledStroke) => void} take
 * @returns {Promise<{skipped: number, without: number, unread: string[]}>} wrong lines, lines left
 *   out, and inputs that broke off
 */
async function takeLabelledStrokes({ inputs, totalBytes, without = new Map() }, stderr, take) {
  const counts = { skipped: 0, without: 0, unread: [] };
  const progress = createProgress({ totalBytes, stream: stderr });
  let taken = 0;
  try {
    for (const input of inputs) {
      const unwanted = new Set(without.get(displayName(input)));
      for await (const stroke of readFile(input, unwanted, progress, counts)) {
        take(stroke);
        progress.count((taken += 1));
      }
    }
  } finally {
    progress.stop();
  }
  return counts;
}

/** The labelled strokes of an input, but for those of unwanted lines. */
async function* readFile(input, unwanted, progress, counts) {
  const name = displayName(input);
  const met = new Set();
  let wrong = 0;
  for await (const record of readRecords(input, (bytes) => progress.advance(bytes))) {
    const { line, stroke, problem, damage } = record;
    if (damage) {
      counts.unread.push(name);
      progress.log(damage);
    } else if (unwanted.has(line)) {
      met.add(line);
      counts.without += 1;
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
  for (const line of unwanted) {
    if (!met.has(line)) progress.log(`${name}:${line}: --without names it, but no stroke is there`);
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

module.exports = { WITHOUT_HELP, parseWithout, takeLabelledStrokes };
