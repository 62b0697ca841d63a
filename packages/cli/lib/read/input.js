'use strict';

const fs = require('node:fs');
const { Readable, pipeline } = require('node:stream');
const zlib = require('node:zlib');
const { statusOf } = require('../file-status.js');
const { UserError } = require('../user-error.js');

const STDIN = '-';

/** The first bytes of gzip data. */
const GZIP = [0x1f, 0x8b];

// Bytes of a file that are read at a time: several blocks, see readBlocks, so that all threads have
// work until the next are read.
const CHUNK = 1 << 21;

/** The name of an input in messages. */
function displayName(path) {
  return path === STDIN ? 'standard input' : path;
}

/**
 * The inputs of a command: standard input where none is named, unless that is a terminal.
 *
 * @param {string[]} names
 * @param {string} command
 * @param {string} content what the files hold
 * @returns {string[]}
 */
function inputsOf(names, command, content) {
  if (names.length > 0) return names;
  if (!process.stdin.isTTY) return [STDIN];
  throw new UserError(
    `name a file of ${content}, or - for standard input\nscrivo ${command} --help`,
  );
}

/**
 * Checks that every input can be opened, so that a long run does not fail on a misspelt name.
 *
 * @param {string[]} paths file names, `-` for standard input
 * @returns {number|undefined} total size in bytes, undefined when an input has no known size
 */
function checkInputs(paths) {
  if (paths.filter((path) => path === STDIN).length > 1) {
    throw new UserError('standard input (-) can be read only once');
  }
  const sizes = paths.map((path) => (path === STDIN ? undefined : sizeOfInput(path)));
  return sizes.includes(undefined) ? undefined : sizes.reduce((sum, size) => sum + size, 0);
}

function sizeOfInput(path) {
  if (path === '') throw new UserError('the name of an input is empty: name a file');
  const status = statusOf(path);
  if (!status) throw new UserError(`${path}: no such file`);
  if (status.isDirectory()) throw new UserError(`${path} is a directory: name the files in it`);
  try {
    fs.accessSync(path, fs.constants.R_OK);
  } catch (error) {
    const isDenied = error.code === 'EACCES';
    throw new UserError(`${path}: ${isDenied ? 'no permission to read it' : error.message}`);
  }
  return status.isFile() ? status.size : undefined;
}

/**
 * Opens an input and decompresses gzip data.
 *
 * @param {string} path file name, `-` for standard input
 * @param {(count: number) => void} onBytes called with the number of bytes read, before
 *   decompression
 * @returns {Promise<AsyncIterable<Buffer>>}
 */
async function openInput(path, onBytes) {
  const raw = path === STDIN ? process.stdin : fs.createReadStream(path, { highWaterMark: CHUNK });
  const { head, whole } = await peek(countBytes(raw, onBytes), ({ length }) => length >= 2);
  const bytes = Readable.from(whole, { objectMode: false });
  const isGzip = head[0] === GZIP[0] && head[1] === GZIP[1];
  // The reader of the result gets the error; without a callback it would be thrown as well.
  return isGzip ? pipeline(bytes, zlib.createGunzip(), () => {}) : bytes;
}

async function* countBytes(stream, onBytes) {
  for await (const chunk of stream) {
    onBytes(chunk.length);
    yield chunk;
  }
}

/**
 * Reads ahead until the head of some bytes is long enough, or they end.
 *
 * @param {AsyncIterable<Buffer>} bytes
 * @param {(head: Buffer) => boolean} isEnough
 * @returns {Promise<{head: Buffer, whole: AsyncIterable<Buffer>}>} whole: the bytes, head included
 */
async function peek(bytes, isEnough) {
  const chunks = bytes[Symbol.asyncIterator]();
  let head = Buffer.alloc(0);
  while (!isEnough(head)) {
    const { value, done } = await chunks.next();
    if (done) break;
    head = head.length === 0 ? value : Buffer.concat([head, value]);
  }
  return { head, whole: chain(head, chunks) };
}

async function* chain(head, rest) {
  if (head.length > 0) yield head;
  yield* { [Symbol.asyncIterator]: () => rest };
}

module.exports = { GZIP, STDIN, checkInputs, displayName, inputsOf, openInput, peek };
