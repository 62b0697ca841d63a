'use strict';

const { UserError } = require('../user-error.js');
const { displayName, openInput, peek } = require('./input.js');
const { readBlocks } = require('./ndjson.js');
const { readXml } = require('./xml.js');

// Longer than any leading white space or XML declaration.
const MAX_HEAD = 1 << 20;

const [LESS_THAN, GREATER_THAN] = ['<', '>'].map((character) => character.charCodeAt(0));
const BYTE_ORDER_MARK = new Set([0xef, 0xbb, 0xbf, 0xfe, 0xff]);

/**
 * Reads the ink of an input: NDJSON, InkML or SVG, compressed with gzip or not. The format is
 * detected from the content.
 *
 * @param {string} path file name, `-` for standard input
 * @param {object} options
 * @param {number} options.step distance between samples along SVG curves, drawing units
 * @param {number} [options.scale] drawing units per unit of the input, whatever a document states
 * @param {(count: number) => void} options.onBytes called with the number of bytes read
 * @yields {{bytes: Uint8Array, overlong?: true}|{records: object[], passedOver: string[]}|
 *   {damage: string}} blocks of lines, or records of a document; at the end, why the rest of the
 *   input could not be read
 */
async function* readInk(path, { step, scale, onBytes }) {
  try {
    const { head, whole } = await peek(await openInput(path, onBytes), isTelling);
    yield* isXml(head) ? readXml(head, whole, { step, scale }) : readBlocks(whole);
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
  return head.length >= 4 && head.toString('latin1').trim() !== '';
}

function beginsTag(head) {
  // In UTF-16 every other byte is zero.
  return head.find((byte) => byte > 0x20 && !BYTE_ORDER_MARK.has(byte)) === LESS_THAN;
}

function isXml(head) {
  if (beginsTag(head)) return true;
  if (!head.includes(0)) return false;
  throw new UserError(
    'neither NDJSON (in UTF-8), InkML nor SVG; of compressed files only gzip is read',
  );
}

module.exports = { readInk };
