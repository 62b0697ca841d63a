'use strict';

const { stringify } = require('../read/long-integers.js');
const { TOO_DEEP, parseBlock, unlessTooDeep } = require('../read/ndjson.js');
const { createRounding } = require('../svg.js');
const { addSource, formatLine } = require('../write/ndjson.js');
const { NO_EDGES } = require('../boxes.js');
const { answerPoints, decimalsAt } = require('./answer.js');

const LINE_FEED = 10;

/**
 * Turns lines into lines. Those in the usual form never become objects; all others, and what is
 * wrong with them, are parsed here.
 *
 * @param {import('../engines.js').Engine} engine
 * @param {import('./processor.js').ProcessorOptions} options
 * @returns {(block: {bytes: Uint8Array, overlong?: true}) => import('./processor.js').JobResult}
 */
function createLineProcessor(engine, options) {
  const { area, scale = 1, decimals = decimalsAt(scale) } = options;
  let usual;

  function answerUsual({ bytes, overlong, source }) {
    // With `others`, which lines may snap to, no line has the usual form.
    if (options.snap || overlong) return leaveAll(bytes);
    usual ??= engine.createLines({ area, scale, decimals });
    return usual.idealise(bytes, source);
  }

  /** The lines of the output that answer a line, and what is wrong with it. */
  function answerOther(line, source) {
    return parseBlock(line).records.map(({ stroke, problem, fields }) => {
      if (problem) return refuse(problem, fields);
      addSource(stroke.fields, source);
      const answer = answerPoints(engine, stroke, options);
      const write = () => formatLine(stroke, answer, createRounding(answer.decimals)).texts[0];
      const text = unlessTooDeep(write);
      return text === undefined ? refuse(TOO_DEEP) : { text, family: answer.family };
    });
  }

  return ({ bytes, overlong, source }) => {
    const block = endLine(bytes);
    const { others, lines, ...answers } = answerUsual({ bytes: block, overlong, source });
    const result = { lines, problems: [], edges: NO_EDGES, definitions: {} };
    const families = { ...answers.families };
    const inserted = [];
    for (const { line, start, end, at } of others) {
      const other = { bytes: block.subarray(start, end), overlong };
      for (const { text, problem, family } of answerOther(other, source)) {
        inserted.push({ text, at });
        if (problem) result.problems.push([line, problem]);
        else families[family] = (families[family] ?? 0) + 1;
      }
    }
    return { ...result, families, parts: [insert(answers.bytes, inserted)] };
  };
}

/** The lines of the output stay those of the input. */
function refuse(problem, fields) {
  return { problem, text: `${stringify({ ...fields, problem })}\n` };
}

/** A block with a line feed after its last line. */
function endLine(bytes) {
  if (bytes.length === 0 || bytes.at(-1) === LINE_FEED) return bytes;
  return Buffer.concat([bytes, Buffer.from('\n')]);
}

/** As of a LineIdealiser that answers no line. */
function leaveAll(bytes) {
  const others = [];
  let lines = 0;
  for (let start = 0; start < bytes.length || lines === 0;) {
    const feed = bytes.indexOf(LINE_FEED, start);
    const end = feed < 0 ? bytes.length : feed;
    lines += 1;
    others.push({ line: lines, start, end, at: 0 });
    start = end + 1;
  }
  return { bytes: new Uint8Array(0), others, families: {}, lines };
}

/** Bytes with texts inserted at places in them, in a buffer of its own. */
function insert(bytes, texts) {
  if (texts.length === 0) return bytes;
  const parts = [];
  let from = 0;
  for (const { text, at } of texts) {
    parts.push(bytes.subarray(from, at), Buffer.from(text));
    from = at;
  }
  parts.push(bytes.subarray(from));
  const whole = new Uint8Array(parts.reduce((sum, part) => sum + part.length, 0));
  let length = 0;
  for (const part of parts) {
    whole.set(part, length);
    length += part.length;
  }
  return whole;
}

module.exports = { createLineProcessor };
