'use strict';

const { UserError } = require('../user-error.js');
const { checkSize, figuresOf, readWhole } = require('./kept.js');
const { readExcalidraw, rewriteElement } = require('./excalidraw.js');
const { readValue } = require('./ndjson.js');
const { readRnote, rewriteBrush } = require('./rnote.js');

// A parsed document takes about ten times the memory of its text.
const MAX_LENGTH = 8 * 1024 * 1024;

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
  const [{ records, passedOver }] = format.read(root);
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

/** One stroke, or an array of them. */
function* readStrokes(root) {
  const values = Array.isArray(root) ? root : [root];
  const records = values.flatMap((value, i) =>
    readValue(value).map((record) => ({ line: i + 1, ...record })),
  );
  yield { records, passedOver: [] };
}

module.exports = { isJsonDocument, readJson, rewriteJson };
