'use strict';

const { NO_EDGES, edgesOf, uniteEdges } = require('../boxes.js');
const { parseBlock } = require('../read/ndjson.js');
const { weightOf } = require('../read/stroke-points.js');

const LINE_FEED = 10;

// Points of a document that are looked at, about, and strokes that are needed to judge.
const LOOKED_AT = 100000;
const NEEDED = 5;

// Drawing units: the longer side of the ink of a page, from a label to a wall.
const SMALLEST_PAGE = 30;
const LARGEST_PAGE = 20000;

// Bytes of the first lines that are looked at, and drawing units: the longer side of their median
// stroke, from the dot of a pen to the width of a screen.
const FIRST_LINES = 1 << 16;
const SMALLEST_STROKE = 1;
const LARGEST_STROKE = 2000;

// Drawing units: the longer side of the median stroke where the unit has to be guessed.
const STROKE_SIZE = 40;

/**
 * Gives the strokes of a document whose unit is missing or wrong another one: at a wrong size all of
 * them would be dots, or none. Lines keep theirs, since each is processed on its own, whatever other
 * lines are in the same file.
 *
 * @param {AsyncIterable<object>} jobs of readInk
 * @param {string} name of the input
 * @yields {object} the jobs; before them {warning} if the unit was guessed, or lines need one
 */
async function* withPlausibleSize(jobs, name) {
  const held = [];
  let strokes = [];
  let scale;
  let points = 0;
  let isJudged = false;
  function* judge() {
    isJudged = true;
    scale = guessScale(strokes);
    if (scale !== undefined) yield { warning: describeGuess(strokes, name, scale) };
    for (const job of held) yield rescale(job, scale);
    strokes = [];
  }
  for await (const job of jobs) {
    if (job.bytes && !isJudged) {
      isJudged = true;
      const warning = warningOfLines(job, name);
      if (warning) yield { warning };
    }
    if (isJudged) {
      yield rescale(job, scale);
      continue;
    }
    held.push(job);
    for (const { stroke } of job.records ?? []) {
      if (!stroke) continue;
      strokes.push(stroke);
      points += weightOf(stroke);
    }
    if (points >= LOOKED_AT) yield* judge();
  }
  if (!isJudged) yield* judge();
}

/** Drawing units per unit of strokes at an implausible size; undefined for others. */
function guessScale(strokes) {
  const median = medianSize(strokes);
  if (median === 0) return undefined;
  const page = pageSize(strokes) * (strokes[0].scale ?? 1);
  if (page >= SMALLEST_PAGE && page <= LARGEST_PAGE) return undefined;
  return scaleFor(median);
}

/** Why the unit of a file is likely wrong, by its first lines; undefined if it is not. */
function warningOfLines({ bytes }, name) {
  const first = bytes.subarray(0, FIRST_LINES);
  const whole = first.subarray(0, first.lastIndexOf(LINE_FEED) + 1);
  const strokes = parseBlock({ bytes: whole }).records.flatMap(({ stroke }) => stroke ?? []);
  const median = medianSize(strokes);
  if (median === 0 || (median >= SMALLEST_STROKE && median <= LARGEST_STROKE)) return undefined;
  const size = Number(median.toPrecision(2));
  return (
    `${name}: the first strokes are about ${size} pixels large; if the unit is no pixel, ` +
    `give --scale, such as ${scaleFor(median)}`
  );
}

function medianSize(strokes) {
  const sizes = strokes.map(({ points }) => longerSide(edgesOf(points))).filter((size) => size > 0);
  return sizes.length < NEEDED ? 0 : sizes.sort((a, b) => a - b)[Math.floor(sizes.length / 2)];
}

/** The scale at which a stroke of this size has the usual one. */
function scaleFor(size) {
  return Number((STROKE_SIZE / size).toPrecision(3));
}

function pageSize(strokes) {
  return longerSide(strokes.map(({ points }) => edgesOf(points)).reduce(uniteEdges, NO_EDGES));
}

function longerSide([left, top, right, bottom]) {
  return Math.max(right - left, bottom - top);
}

function describeGuess(strokes, name, scale) {
  const stated = strokes[0].scale;
  const size = Number((pageSize(strokes) * (stated ?? 1)).toPrecision(2));
  const unit = stated === undefined ? 'it states no unit' : 'by the unit that it states';
  return `${name}: the ink is ${size} pixels large (${unit}); --scale ${scale} was assumed`;
}

function rescale(job, scale) {
  if (scale !== undefined) {
    for (const { stroke } of job.records ?? []) if (stroke) stroke.scale = scale;
  }
  return job;
}

module.exports = { withPlausibleSize };
