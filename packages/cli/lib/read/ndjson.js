'use strict';

const { free } = require('../memory.js');
const { keepIntegers } = require('./long-integers.js');
const { describe, readArea, readPoints } = require('./stroke-points.js');

const LINE_FEED = 10;

// A stroke of some 60,000 points. Parsed, a line may take a hundred times its own memory.
const MAX_LINE_LENGTH = 1024 * 1024;

// Bytes that are processed at a time, about. Each block has a price, in a worker or not.
const BLOCK = 1 << 20;

// A line with it holds many strokes, so that blocks are smaller.
const DRAWING = '"drawing"';
const BLOCK_OF_DRAWINGS = 1 << 15;

// Strokes of a drawing, and those beside a stroke.
const MAX_STROKES = 2000;
const MAX_OTHERS = 10000;

// Characters that the fields of a drawing take, which each of its strokes gets.
const MAX_REPEATED = 4 * 1024 * 1024;

// Lines of a block at most: a dot is a short line, but its figure is a long one.
const BLOCK_LINES = 2048;

const ARRAY_HINT = ` (jq -c '.[]' splits an array into lines)`;

// Replacing invalid bytes would change the text that is passed on.
const UTF8 = new TextDecoder('utf-8', { fatal: true, ignoreBOM: true });

/**
 * Cuts a text into blocks of whole lines, which the workers parse. Whole lines are passed on as
 * soon as they arrive, so that a program may wait for each answer before it writes the next line.
 *
 * @param {AsyncIterable<Buffer>} chunks whose memory is freed
 * @yields {{bytes: Uint8Array, overlong?: true}} a block with a buffer of its own; empty and
 *   overlong for a single line that is too long
 */
async function* readBlocks(chunks) {
  let pending = [];
  let length = 0;
  let overlong = false;
  for await (const chunk of chunks) {
    const end = chunk.lastIndexOf(LINE_FEED) + 1;
    for (let start = 0; start < end;) {
      const feed = chunk.indexOf(LINE_FEED, start) + 1;
      overlong ||= length + feed - 1 - start > MAX_LINE_LENGTH;
      const next = overlong ? feed : endOfBlock(chunk, start);
      yield overlong ? overlongLine() : { bytes: join([...pending, chunk.subarray(start, next)]) };
      pending.forEach(free);
      [pending, length, overlong] = [[], 0, false];
      start = next;
    }
    length += chunk.length - end;
    overlong ||= length > MAX_LINE_LENGTH;
    if (!overlong && end < chunk.length) pending.push(join([chunk.subarray(end)]));
    free(chunk);
  }
  if (overlong) yield overlongLine();
  else if (pending.length > 0) yield { bytes: join(pending) };
}

const overlongLine = () => ({ bytes: new Uint8Array(0), overlong: true });

/** Where the block of whole lines ends that begins at an index. */
function endOfBlock(chunk, start) {
  let end = chunk.indexOf(LINE_FEED, start) + 1;
  const hasDrawing = chunk.subarray(start, start + BLOCK).includes(DRAWING);
  const limit = start + (hasDrawing ? BLOCK_OF_DRAWINGS : BLOCK);
  for (let lines = 1; lines < BLOCK_LINES; lines += 1) {
    const feed = chunk.indexOf(LINE_FEED, end);
    if (feed < 0 || feed >= limit) break;
    end = feed + 1;
  }
  return end;
}

/** A copy that can be transferred to another thread: chunks may share their memory. */
function join(parts) {
  const bytes = Buffer.allocUnsafeSlow(parts.reduce((sum, part) => sum + part.length, 0));
  let offset = 0;
  for (const part of parts) {
    bytes.set(part, offset);
    offset += part.length;
  }
  return bytes;
}

/**
 * Reads the strokes of a block. Empty lines are ignored.
 *
 * @param {{bytes: Uint8Array, overlong?: true}} block
 * @returns {{lines: number, records: Array<{line: number, problem?: string,
 *   fields?: object, stroke?: import('./stroke-points.js').Stroke}>}} the number of lines, and what
 *   they hold, by their numbers from 1 at the start of the block; fields: of a wrong line that is
 *   an object
 */
function parseBlock({ bytes, overlong }) {
  if (overlong) {
    const problem = `longer than ${MAX_LINE_LENGTH / 1024 / 1024} MB, the limit for a line`;
    return { lines: 1, records: [{ line: 1, problem }] };
  }
  const texts = linesOf(Buffer.from(bytes.buffer, bytes.byteOffset, bytes.length));
  // A line feed at the end starts no further line.
  if (texts.at(-1) === '') texts.pop();
  const records = texts.flatMap((untrimmed, i) => {
    // This also removes a byte order mark.
    const text = untrimmed?.trim();
    if (text === '') return [];
    return parseLine(text).map((record) => ({ line: i + 1, ...record }));
  });
  return { lines: texts.length, records };
}

/** The lines of a block; undefined for one that is not UTF-8. */
function linesOf(bytes) {
  const whole = decode(bytes);
  if (whole !== undefined) return whole.split('\n');
  const lines = [];
  for (let start = 0; start <= bytes.length;) {
    const feed = bytes.indexOf(LINE_FEED, start);
    const end = feed < 0 ? bytes.length : feed;
    lines.push(decode(bytes.subarray(start, end)));
    start = end + 1;
  }
  return lines;
}

function decode(bytes) {
  try {
    return UTF8.decode(bytes);
  } catch {
    return undefined;
  }
}

/** The strokes of a line, or what is wrong with it. */
function parseLine(text) {
  if (text === undefined) {
    return [{ problem: 'not UTF-8: convert the file, for example with iconv' }];
  }
  let value;
  try {
    if (isDeep(text)) return [{ problem: TOO_DEEP }];
    value = JSON.parse(text);
  } catch (error) {
    return [{ problem: `not JSON: ${error.message}${text.startsWith('[') ? ARRAY_HINT : ''}` }];
  }
  return unlessTooDeep(() => readValue(value, text)) ?? [{ problem: TOO_DEEP }];
}

const TOO_DEEP = 'nested too deeply';

// Brackets in brackets; parsed, each takes hundreds of bytes. A short text is harmless.
const MAX_DEPTH = 1000;
const SHORT = 1 << 16;

/** Whether a line is nested too deeply to be parsed. */
function isDeep(text) {
  return text.length >= SHORT && bracketsOf(text).depth > MAX_DEPTH;
}

/** The number of brackets that are opened in a text of JSON, and how many are open at most. */
function bracketsOf(text) {
  let [count, depth, open] = [0, 0, 0];
  let isString = false;
  for (let i = 0; i < text.length; i += 1) {
    const letter = text[i];
    if (letter === '"') isString = !isString;
    else if (isString) i += letter === '\\' ? 1 : 0;
    else if (letter === ']' || letter === '}') open -= 1;
    else if (letter === '[' || letter === '{') {
      open += 1;
      count += 1;
      depth = Math.max(depth, open);
    }
  }
  return { count, depth };
}

/** What a function returns that handles nested values; undefined where the stack overflows. */
function unlessTooDeep(handle) {
  try {
    return handle();
  } catch (error) {
    if (error instanceof RangeError) return undefined;
    throw error;
  }
}

/**
 * The strokes of a JSON value, or what is wrong with it.
 *
 * @param {unknown} value
 * @param {string} [text] from which it was parsed, to keep long integers
 */
function readValue(value, text) {
  if (value === null || typeof value !== 'object' || Array.isArray(value)) {
    const hint = Array.isArray(value) ? ARRAY_HINT : '';
    return [{ problem: `expected an object, found ${describe(value)}${hint}` }];
  }
  const fields = text === undefined ? value : keepIntegers(text, value);
  if (value.points === undefined && Array.isArray(value.drawing)) return readDrawing(value, fields);
  const { points, asObjects, problem } = readPoints(value.points);
  const area = readArea(value);
  const others = readOthers(value);
  const wrong = problem ?? area.problem ?? others.problem;
  if (wrong) return [{ problem: wrong, fields }];
  return [{ stroke: { points, asObjects, fields, ...area, ...others } }];
}

/** A drawing holds its strokes by coordinate: [[x, ...], [y, ...], [time, ...]] of each. */
function readDrawing({ drawing }, fields) {
  const kept = { ...fields };
  delete kept.drawing;
  if (drawing.length > MAX_STROKES) {
    return [{ problem: `more than ${MAX_STROKES} strokes in a drawing, the limit`, fields: kept }];
  }
  if (JSON.stringify(kept).length * drawing.length > MAX_REPEATED) {
    const count = `${drawing.length} strokes`;
    return [
      {
        problem: `fields of more than ${MAX_REPEATED / 1024 / 1024} MB, the limit, with ${count}`,
        fields: kept,
      },
    ];
  }
  return drawing.map((stroke, i) => {
    const [x, y, time] = Array.isArray(stroke) ? stroke : [];
    const isMatching = Array.isArray(x) && Array.isArray(y) && x.length === y.length;
    if (!isMatching) return { problem: `drawing[${i}] must be [[x, ...], [y, ...]]`, fields: kept };
    const timeOf = (k) => (Array.isArray(time) ? [null, time[k]] : []);
    const { points, problem } = readPoints(
      x.map((value, k) => [value, y[k], ...timeOf(k)]),
      `drawing[${i}]`,
    );
    const own = { ...kept, stroke_index: i };
    return problem
      ? { problem, fields: own }
      : { stroke: { points, asObjects: false, fields: own } };
  });
}

function readOthers({ others }) {
  if (others === undefined) return {};
  if (!Array.isArray(others)) {
    return { problem: `"others" must be an array of strokes, found ${describe(others)}` };
  }
  if (others.length > MAX_OTHERS) {
    return { problem: `"others" has more than ${MAX_OTHERS} strokes, the limit` };
  }
  const strokes = others.map((other, i) => readPoints(other, `others[${i}]`));
  const problem = strokes.find((stroke) => stroke.problem)?.problem;
  return problem ? { problem } : { others: strokes.map(({ points }) => points) };
}

module.exports = {
  MAX_DEPTH,
  TOO_DEEP,
  bracketsOf,
  parseBlock,
  readBlocks,
  readValue,
  unlessTooDeep,
};
