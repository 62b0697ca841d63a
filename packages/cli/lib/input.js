'use strict';

const fs = require('node:fs');
const { Readable, pipeline } = require('node:stream');
const zlib = require('node:zlib');
const { statusOf } = require('./file-status.js');
const { UserError } = require('./user-error.js');

const STDIN = '-';

/** Name of an input for messages. */
function displayName(path) {
  return path === STDIN ? 'standard input' : path;
}

/**
 * The inputs of a command. Without a name it is a filter, unless that would wait for somebody to
 * type.
 *
 * @param {string[]} names
 * @param {string} command
 * @param {string} kind of files that it reads
 * @returns {string[]}
 */
function inputsOf(names, command, kind) {
  if (names.length > 0) return names;
  if (!process.stdin.isTTY) return [STDIN];
  throw new UserError(`name a file of ${kind}, or - for standard input\nscrivo ${command} --help`);
}

/**
 * Checks that every input can be opened, so that a long run does not end on a misspelt name.
 *
 * @param {string[]} paths file names, `-` for standard input
 * @returns {number|undefined} total size in bytes, undefined when an input has no known size
 */
function checkInputs(paths) {
  if (paths.filter((path) => path === STDIN).length > 1) {
    throw new UserError('standard input (-) can be read once only');
  }
  const sizes = paths.map((path) => (path === STDIN ? undefined : sizeOfInput(path)));
  return sizes.includes(undefined) ? undefined : sizes.reduce((sum, size) => sum + size, 0);
}

function sizeOfInput(path) {
  if (path === '') throw new UserError('the name of an input is empty: name a file');
  try {
    const status = statusOf(path);
    if (!status) throw new UserError(`${path}: no such file`);
    if (status.isDirectory()) {
      throw new UserError(`${path} is a directory: name the files in it`);
    }
    fs.accessSync(path, fs.constants.R_OK);
    return status.isFile() ? status.size : undefined;
  } catch (error) {
    throw error instanceof UserError ? error : new UserError(openFailure(path, error));
  }
}

function openFailure(path, error) {
  if (error.code === 'EACCES') return `${path}: no permission to read it`;
  return `${path}: ${error.message}`;
}

/** The error to show when an input breaks off: it is unreadable, or its gzip data is damaged. */
function readFailure(path, error) {
  if (error instanceof UserError) return error;
  return new UserError(`${displayName(path)}: reading failed: ${error.message}`);
}

/**
 * Opens an input, unpacked if it is gzip data.
 *
 * @param {string} path file name, `-` for standard input
 * @param {(count: number) => void} onBytes told the bytes taken from the input, packed
 * @returns {Promise<AsyncIterable<Buffer>>}
 */
async function openInput(path, onBytes) {
  const raw = path === STDIN ? process.stdin : fs.createReadStream(path);
  const chunks = countBytes(raw, onBytes);
  const head = await takeHead(chunks, 2);
  const whole = Readable.from(chain(head, chunks), { objectMode: false });
  const isGzip = head.length >= 2 && head[0] === 0x1f && head[1] === 0x8b;
  // The callback only silences the rejection: the reader of the result sees the error.
  return isGzip ? pipeline(whole, zlib.createGunzip(), () => {}) : whole;
}

async function* countBytes(stream, onBytes) {
  for await (const chunk of stream) {
    onBytes(chunk.length);
    yield chunk;
  }
}

async function takeHead(chunks, length) {
  let head = Buffer.alloc(0);
  while (head.length < length) {
    const { value, done } = await chunks.next();
    if (done) break;
    head = Buffer.concat([head, value]);
  }
  return head;
}

async function* chain(head, rest) {
  if (head.length > 0) yield head;
  yield* rest;
}

module.exports = {
  STDIN,
  checkInputs,
  displayName,
  inputsOf,
  openInput,
  readFailure,
};
