'use strict';

const fs = require('node:fs');
const zlib = require('node:zlib');
const { UserError } = require('../user-error.js');
const { GZIP, STDIN, displayName, openInput, peek } = require('./input.js');
const { isJsonDocument, readJson, rewriteJson } = require('./json.js');
const { readBlocks } = require('./ndjson.js');
const { readXml, rewriteXml } = require('./xml.js');

// Longer than any leading white space or XML declaration.
const MAX_HEAD = 1 << 20;

// The beginning of a JSON document tells its format.
const JSON_HEAD = 512;

// Bytes of files that are read as one job.
const SMALL_FILE = 4 * 1024 * 1024;
const SMALL_ARCHIVE = 128 * 1024;

/** How inputs are read: the first whose content it is. */
const READERS = [
  { isOf: beginsTag, read: readXml, rewrite: rewriteXml },
  { isOf: isJsonDocument, read: (head, whole) => readJson(whole), rewrite: rewriteJson },
  { isOf: isText, read: (head, whole) => readBlocks(whole) },
];

const [LINE_FEED, LESS_THAN, GREATER_THAN] = Buffer.from('\n<>');
const BYTE_ORDER_MARK = new Set([0xef, 0xbb, 0xbf, 0xfe, 0xff]);

/**
 * Reads the ink of an input, compressed with gzip or not. The format is detected from the content.
 *
 * @param {string} path file name, `-` for standard input
 * @param {object} options
 * @param {number} options.step distance between samples along SVG curves, drawing units
 * @param {number} [options.scale] drawing units per unit of the input, whatever a document states
 * @param {string} [options.keep] name of a format: a document of this format is kept whole, to be
 *   rewritten
 * @param {(count: number) => void} options.onBytes called with the number of bytes read
 * @yields {{bytes: Uint8Array, overlong?: true}|{records: object[], passedOver: string[],
 *   rewrite?: Function}|{damage: string}} blocks of lines, or records of a document; at the end, why
 *   the rest of the input could not be read; rewrite: (answers) => the text of the document with
 *   the figures of its records
 */
async function* readInk(path, { step, scale, keep, onBytes }) {
  try {
    const { head, whole } = await peek(await openInput(path, onBytes), isTelling);
    const reader = READERS.find(({ isOf }) => isOf(head));
    if (!reader) throw new UserError('of no known format; of compressed files only gzip is read');
    const read = (keep && reader.rewrite) || reader.read;
    yield* read(head, whole, { step, scale, keep });
  } catch (error) {
    const isExpected = error instanceof UserError;
    const reason = isExpected ? error.message : `reading failed: ${error.message}`;
    yield { damage: `${displayName(path)}: ${reason}` };
  }
}

/**
 * Whether a head shows the format: its first character that is no white space, and in XML the whole
 * first tag or declaration, which may name the encoding.
 */
function isTelling(head) {
  if (head.length > MAX_HEAD) return true;
  if (beginsTag(head)) return head.includes(GREATER_THAN);
  const isBegun = head.length >= 4 && head.toString('latin1').trim() !== '';
  return isBegun && (head.length >= JSON_HEAD || head.includes(LINE_FEED) || !isText(head));
}

/**
 * Whether a file is a document that a single job can hold. Compressed documents may be much larger
 * than their files.
 */
function isSmallDocument(path) {
  const status = path === STDIN ? undefined : fs.statSync(path, { throwIfNoEntry: false });
  if (!status?.isFile() || status.size > SMALL_FILE) return false;
  const head = headOf(path);
  if (head[0] !== GZIP[0] || head[1] !== GZIP[1]) return isDocument(head);
  if (status.size > SMALL_ARCHIVE) return false;
  try {
    return isDocument(zlib.gunzipSync(head, { finishFlush: zlib.constants.Z_SYNC_FLUSH }));
  } catch {
    return false;
  }
}

function headOf(path) {
  const head = Buffer.alloc(JSON_HEAD);
  const file = fs.openSync(path);
  try {
    return head.subarray(0, fs.readSync(file, head));
  } finally {
    fs.closeSync(file);
  }
}

function isDocument(head) {
  return beginsTag(head) || isJsonDocument(head);
}

function beginsTag(head) {
  // In UTF-16 every other byte is zero.
  return head.find((byte) => byte > 0x20 && !BYTE_ORDER_MARK.has(byte)) === LESS_THAN;
}

function isText(head) {
  return !head.includes(0);
}

module.exports = { isSmallDocument, readInk };
