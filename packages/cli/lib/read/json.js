'use strict';

const { UserError } = require('../user-error.js');
const { checkSize, figuresOf, readWhole } = require('./kept.js');
const { readExcalidraw, rewriteElement } = require('./excalidraw.js');
const { MAX_DEPTH, TOO_DEEP, bracketsOf, readValue } = require('./ndjson.js');
const { readRnote, rewriteBrush } = require('./rnote.js');

// A parsed document takes about ten times the memory of its text.
const MAX_LENGTH = 8 * 1024 * 1024;

// Arrays and objects of a document. Empty ones take a hundred times their text.
const MAX_VALUES = 1e6;

// Values of an array that are processed at a time.
const PART = 500;

/** Kinds of documents by what their root shows. */
const FORMATS = [
  {
    name: 'excalidraw',
    isOf: (root) => root?.type === 'excalidraw',
    read: readExcalidraw,
    rewrite: rewriteElement,
  },
  {
    name: 'rnote',
    isOf: (root) => root?.data && 'version' in root,
    read: readRnote,
    rewrite: rewriteBrush,
  },
  { name: 'json', isOf: () => true, read: readStrokes },
];

/** The beginnings of documents, which otherwise would be lines. */
const DOCUMENT =
  /^\s*(?:\[|\{\s*(?:[\r\n]|$)|\{\s*"(?:type"\s*:\s*"excalidraw"|version"\s*:\s*"[^"]*"\s*,\s*"data"))/;

/** Whether a head begins a JSON document rather than lines of JSON. */
function isJsonDocument(head) {
  const text = head.toString('latin1').replace(/^\u00ef\u00bb\u00bf/, '');
  return DOCUMENT.test(text) && !isLine(text);
}

/** Whether a text begins with a line that is a value, and goes on after it. */
function isLine(text) {
  const [line, ...rest] = text.trimStart().split('\n');
  if (rest.join('').trim() === '') return false;
  try {
    JSON.parse(line);
    return true;
  } catch {
    return false;
  }
}

/** Parses a document and detects its format. */
async function parseDocument(chunks) {
  const text = (await readWhole(chunks, MAX_LENGTH)).toString('utf8').replace(/^\ufeff/, '');
  const { count, depth } = bracketsOf(text);
  if (depth > MAX_DEPTH) throw new UserError(TOO_DEEP);
  if (count > MAX_VALUES)
    throw new UserError(`more than ${MAX_VALUES} arrays and objects, the limit`);
  let root;
  try {
    root = JSON.parse(text);
  } catch (error) {
    throw new UserError(`not one JSON value (jq -c . writes each on a line): ${error.message}`);
  }
  const indent = /^\s*\{\s*\n/.test(text) ? 2 : 0;
  return { root, indent, format: FORMATS.find(({ isOf }) => isOf(root)) };
}

/** See readInk. */
async function* readJson(chunks) {
  const { root, format } = await parseDocument(chunks);
  for (const { records, passedOver } of format.read(root)) {
    yield { records: records.map(withoutElement), passedOver };
  }
}

/** See readInk. */
async function* rewriteJson(head, chunks, { keep }) {
  const { root, format, indent } = await parseDocument(chunks);
  const parts = [...format.read(root)];
  const records = parts.flatMap((part) => part.records);
  const passedOver = parts.flatMap((part) => part.passedOver);
  checkSize(records);
  const isKept = format.name === keep;
  const rewrite = (answers) => {
    for (const answer of figuresOf(answers)) format.rewrite(records[answer.index].element, answer);
    return JSON.stringify(root, null, indent);
  };
  yield {
    records: records.map(withoutElement),
    passedOver: isKept ? [] : passedOver,
    ...(isKept && { rewrite }),
  };
}

function withoutElement({ element: _, ...record }) {
  return record;
}

/** One stroke, or an array of them, in parts. */
function* readStrokes(root) {
  const values = Array.isArray(root) ? root : [root];
  for (let start = 0; start === 0 || start < values.length; start += PART) {
    const records = values
      .slice(start, start + PART)
      .flatMap((value, i) =>
        readValue(value).map((record) => ({ line: start + i + 1, ...record })),
      );
    yield { records, passedOver: [] };
  }
}

module.exports = { isJsonDocument, readJson, rewriteJson };
