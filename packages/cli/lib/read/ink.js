'use strict';

const { UserError } = require('../user-error.js');
const { displayName, openInput, peek } = require('./input.js');
const { isJsonDocument, readJson, rewriteJson } = require('./json.js');
const { readBlocks } = require('./ndjson.js');
const { readXml, rewriteXml } = require('./xml.js');

// Longer than any leading white space or XML declaration.
const MAX_HEAD = 1 << 20;

// The beginning of a JSON document tells its kind.
const JSON_HEAD = 512;

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

function beginsTag(head) {
  // In UTF-16 every other byte is zero.
  return head.find((byte) => byte > 0x20 && !BYTE_ORDER_MARK.has(byte)) === LESS_THAN;
}

function isText(head) {
  return !head.includes(0);
}

module.exports = { readInk };
