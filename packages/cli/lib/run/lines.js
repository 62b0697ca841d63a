'use strict';

const { isUtf8 } = require('node:buffer');
const { keepIntegers, stringify } = require('../read/long-integers.js');
const { TOO_DEEP, parseBlock, unlessTooDeep } = require('../read/ndjson.js');
const { PlainLineReader } = require('../read/plain-lines.js');
const { readArea } = require('../read/stroke-points.js');
const { createRounding } = require('../svg.js');
const { LineBytes } = require('../write/line-bytes.js');
const { ANSWER_FIELDS, answerFields } = require('../write/fields.js');
const { addSource, formatLine, formatRecord } = require('../write/ndjson.js');
const { NO_EDGES } = require('../boxes.js');
const { answerPoints, answerStroke } = require('./answer.js');

const LINE_FEED = 10;

// Bytes of a line besides its points.
const MAX_REST = 4096;

/** Stands for the points in the text of a record. */
const POINTS = '\u0000points';
const POINTS_TEXT = JSON.stringify(POINTS);

/**
 * Turns lines into lines. Most of a line is points: where these have the usual form, only the rest
 * is parsed as JSON, and points that stay as drawn are copied.
 *
 * @param {import('../engines.js').Engine} engine
 * @param {import('./processor.js').ProcessorOptions} options
 * @returns {(block: {bytes: Uint8Array, overlong?: true}) => import('./processor.js').JobResult}
 */
function createLineProcessor(engine, options) {
  const reader = new PlainLineReader();
  const restReader = new RestReader();
  const out = new LineBytes();

  /** The answer to a line of the usual form; undefined, with nothing written, for any other. */
  function processPlain(bytes, start, end, source) {
    const place = reader.read(bytes, start);
    // What is longer may be nested too deeply.
    if (!place || end - start - (place.to - place.from) > MAX_REST) return undefined;
    const rest = restReader.read(bytes, start, end, place, source);
    if (!rest) return undefined;
    const values = reader.values.subarray(0, reader.length);
    const answer = answerStroke(engine, { values, area: rest.area }, options);
    const { before, after } = rest.complete(answer);
    out.addText(before);
    if (answer.values) out.addPoints(answer.values, answer.decimals);
    else out.addBytes(bytes, place.from, place.to);
    out.addText(after);
    return answer;
  }

  /** The answers to any line, and what is wrong with it. */
  function processAny(block, source) {
    return parseBlock(block).records.map(({ stroke, problem, fields }) => {
      if (problem) return refuse(problem, fields);
      addSource(stroke.fields, source);
      const answer = answerPoints(engine, stroke, options);
      const write = () => formatLine(stroke, answer, createRounding(answer.decimals)).texts[0];
      const text = unlessTooDeep(write);
      if (text === undefined) return refuse(TOO_DEEP);
      out.addText(text);
      return answer;
    });
  }

  /** The lines of the output stay those of the input. */
  function refuse(problem, fields) {
    out.addText(`${stringify({ ...fields, problem })}\n`);
    return { problem };
  }

  function processLine(block, start, end, { overlong, source }) {
    if (start === end && !overlong) return [];
    const line = { bytes: block.subarray(start, end), overlong };
    // With `others`, which lines may snap to, or in another encoding no line has the usual form.
    const isUsual = !options.snap && !overlong && isUtf8?.(line.bytes);
    const plain = isUsual && processPlain(block, start, end, source);
    return plain ? [plain] : processAny(line, source);
  }

  return ({ bytes, overlong, source }) => {
    const result = { lines: 0, families: {}, problems: [], edges: NO_EDGES, definitions: {} };
    const block = endLine(bytes);
    for (let start = 0; start < block.length;) {
      const end = block.indexOf(LINE_FEED, start);
      result.lines += 1;
      for (const { problem, family } of processLine(block, start, end, { overlong, source })) {
        if (problem) result.problems.push([result.lines, problem]);
        else result.families[family] = (result.families[family] ?? 0) + 1;
      }
      start = end + 1;
    }
    return { ...result, parts: [out.take()] };
  };
}

/** A block with a line feed after its last line. */
function endLine(bytes) {
  const block = Buffer.from(bytes.buffer, bytes.byteOffset, bytes.length);
  return block.at(-1) === LINE_FEED ? block : Buffer.concat([block, Buffer.from('\n')]);
}

/** What a line holds besides points, in the form of its output. */
class RestReader {
  #text;
  #source;
  #rest;

  /**
   * Most lines of a file are alike, so that the last rest is kept.
   *
   * @returns {{area?: object, complete: (answer: object) => {before: string, after: string}}
   *   |undefined} complete: the texts around the points in the output; undefined if it is no JSON,
   *   or has a field to be checked
   */
  read(bytes, start, end, { from, to }, source) {
    const text = `${bytes.utf8Slice(start, from)}0${bytes.utf8Slice(to, end)}`;
    if (text !== this.#text || source !== this.#source) {
      this.#rest = parseRest(text, source);
      this.#text = text;
      this.#source = source;
    }
    return this.#rest;
  }
}

function parseRest(text, source) {
  let fields;
  try {
    fields = JSON.parse(text);
  } catch {
    return undefined;
  }
  if (fields.points !== 0 || fields.others !== undefined) return undefined;
  const { area, problem } = readArea(fields);
  if (problem) return undefined;
  const kept = keepIntegers(text, fields);
  addSource(kept, source);
  const around = splitAtPoints(formatRecord(kept, POINTS, {}));
  if (!around) return undefined;
  if (ANSWER_FIELDS.some((name) => Object.hasOwn(fields, name))) {
    return { area, complete: (answer) => splitAtPoints(formatRecord(kept, POINTS, answer)) };
  }
  const { before } = around;
  const rest = around.after.slice(0, -'}\n'.length);
  const complete = (answer) => {
    const text = JSON.stringify(answerFields(answer));
    return { before, after: `${rest},${text.slice(1)}\n` };
  };
  return { area, complete };
}

/** The texts before and after the points; undefined if these cannot be told from a field. */
function splitAtPoints(text) {
  const at = text.indexOf(POINTS_TEXT);
  if (at !== text.lastIndexOf(POINTS_TEXT)) return undefined;
  return { before: text.slice(0, at), after: text.slice(at + POINTS_TEXT.length) };
}

module.exports = { createLineProcessor };
