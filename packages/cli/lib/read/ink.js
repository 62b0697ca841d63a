'use strict';

const { displayName, openInput, readFailure } = require('../input.js');
const { UserError } = require('../user-error.js');
const { readBlocks } = require('./ndjson.js');
const { readXml } = require('./xml.js');

// White space beyond this is no indentation of a document, and a tag no declaration.
const MOST_SPACE = 1 << 20;

const [LESS_THAN, GREATER_THAN] = ['<', '>'].map((character) => character.charCodeAt(0));

/**
 * Reads the ink of an input, whatever its name: NDJSON, InkML or SVG, gzip or not.
 *
 * @param {string} path file name, `-` for standard input
 * @param {object} options
 * @param {number} options.step distance of samples along SVG curves, drawing units
 * @param {number} [options.scale] drawing units a unit of the input, whatever a document says
 * @param {(count: number) => void} options.onBytes told the bytes taken from the input
 * @yields {{bytes: Uint8Array, overlong?: true}|{records: object[], passedOver: string[]}|
 *   {damage: string}} blocks of lines, records of a document, and last what kept the rest of the
 *   input from being read
 */
async function* readInk(path, { step, scale, onBytes }) {
  try {
    const chunks = (await openInput(path, onBytes))[Symbol.asyncIterator]();
    const head = await takeHead(chunks);
    const whole = chain(head, chunks);
    yield* isXml(head) ? readXml(head, whole, { step, scale }) : readBlocks(whole);
  } catch (error) {
    const { message } = readFailure(path, error);
    const name = displayName(path);
    yield { damage: message.startsWith(`${name}:`) ? message : `${name}: ${message}` };
  }
}

/**
 * As many bytes as tell what the input is, with what came along: the first that are no white space,
 * and of XML its first tag or declaration, which may name the encoding.
 */
async function takeHead(chunks) {
  let head = Buffer.alloc(0);
  for (;;) {
    const { value, done } = await chunks.next();
    if (done) return head;
    head = head.length === 0 ? value : Buffer.concat([head, value]);
    const isTold = head.length >= 4 && head.toString('latin1').trim() !== '';
    const isCut = beginsTag(head) && !head.includes(GREATER_THAN);
    if ((isTold && !isCut) || head.length > MOST_SPACE) return head;
  }
}

function beginsTag(head) {
  // Byte order marks, and the zeros of two-byte characters.
  return head.find((byte) => !MARK_BYTES.has(byte) && byte > 0x20) === LESS_THAN;
}

function isXml(head) {
  if (beginsTag(head)) return true;
  const packed = PACKED.find(({ mark }) => mark.every((byte, i) => head[i] === byte));
  if (packed) throw new UserError(`packed with ${packed.by}, but only gzip is read: unpack it`);
  if (head.includes(0)) throw new UserError('neither NDJSON (in UTF-8), InkML nor SVG');
  return false;
}

/** How other archives begin. */
const PACKED = [
  { by: 'zip', mark: [0x50, 0x4b, 3, 4] },
  { by: 'xz', mark: [0xfd, 0x37, 0x7a, 0x58] },
  { by: 'zstd', mark: [0x28, 0xb5, 0x2f, 0xfd] },
  { by: 'bzip2', mark: [0x42, 0x5a, 0x68] },
];

const MARK_BYTES = new Set([0xef, 0xbb, 0xbf, 0xfe, 0xff]);

async function* chain(head, rest) {
  if (head.length > 0) yield head;
  yield* { [Symbol.asyncIterator]: () => rest };
}

module.exports = { readInk };
