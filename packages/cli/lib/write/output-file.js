'use strict';

const crypto = require('node:crypto');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const zlib = require('node:zlib');
const { finished, pipeline } = require('node:stream/promises');
const { onExit } = require('signal-exit');
const { writeFailure } = require('../command.js');
const { isDevice, statusOf } = require('../file-status.js');
const { UserError } = require('../user-error.js');

const STDOUT = '-';

/**
 * Checks an output before any work is done for it, and determines its medium.
 *
 * @param {string} name file, `-` for standard output
 * @param {{force: boolean}} options force: overwrite an existing file
 * @returns {{name: string, force: boolean, medium: 'stdout'|'device'|'file'}} a device, or a named
 *   pipe, is written to directly
 */
function inspectOutput(name, { force }) {
  if (name === STDOUT) return { name: 'standard output', force, medium: 'stdout' };
  if (name === '') throw new UserError('the name of an output is empty: name a file');
  const status = statusOf(name);
  if (isDevice(status)) return { name, force, medium: 'device' };
  checkParent(name);
  if (status?.isDirectory()) throw new UserError(`${name} is a directory: name a file`);
  if (status && !force) throw new UserError(`${name} exists; --force overwrites it`);
  // A link is kept and its target replaced.
  return { name: status ? fs.realpathSync(name) : name, force, medium: 'file' };
}

/** Checks a folder for outputs, and makes it if its parent exists. */
function inspectFolder(name) {
  const folder = name.replace(/(?<=.)[/\\]+$/, '');
  if (statusOf(folder)?.isDirectory()) return;
  checkParent(folder);
  try {
    fs.mkdirSync(folder);
  } catch (error) {
    throw new UserError(`${folder} cannot be made: ${error.message}`);
  }
}

function checkParent(name) {
  const directory = path.dirname(name);
  const status = statusOf(directory);
  if (!status) throw new UserError(`${name}: there is no directory ${directory}`);
  if (!status.isDirectory()) throw new UserError(`${name}: ${directory} is not a directory`);
}

/** A stream that is written piece by piece and reports its failures to the writer. */
class Sink {
  /**
   * @param {string} name in messages
   * @param {NodeJS.WritableStream} target
   * @param {{gzip?: boolean}} [options] gzip: compress what is written
   */
  constructor(name, target, { gzip = false } = {}) {
    this.name = name;
    this.target = target;
    // Without a listener an error would end the process.
    target.on('error', (error) => {
      this.failure ??= error;
    });
    this.stream = gzip ? zlib.createGzip() : target;
    if (gzip) {
      this.compressed = pipeline(this.stream, target);
      this.compressed.catch(() => {});
    }
  }

  /** Resolves when the content has been taken. */
  async write(content) {
    if (content.length === 0) return;
    await this.guard(
      new Promise((resolve, reject) => {
        this.stream.write(content, (error) => (error ? reject(error) : resolve()));
      }),
    );
  }

  async end() {
    this.stream.end();
    await this.guard(this.compressed ?? finished(this.target));
  }

  async guard(writing) {
    try {
      await writing;
    } catch (error) {
      throw writeFailure(this.name, this.failure ?? error);
    }
  }
}

/**
 * An output that is written piece by piece.
 *
 * A file is written under a temporary name in its own directory and renamed when it is complete, so
 * that an interrupted run leaves nothing under the final name.
 */
class Output {
  /**
   * @param {ReturnType<typeof inspectOutput>} target
   * @param {NodeJS.WritableStream} [stdout]
   */
  constructor(target, stdout) {
    this.target = target;
    if (target.medium === 'file') {
      this.temporary = new TemporaryFile(path.dirname(target.name), path.basename(target.name));
    }
    const openStream = () => this.temporary?.stream ?? fs.createWriteStream(target.name);
    this.sink = new Sink(target.name, target.medium === 'stdout' ? stdout : openStream(), {
      gzip: /\.(?:gz|xopp|rnote)$/i.test(target.name),
    });
  }

  write(content) {
    return this.sink.write(content);
  }

  /** Completes the output and gives it its name. */
  async finish() {
    if (this.target.medium === 'stdout') return;
    await this.sink.end();
    this.temporary?.moveTo(this.target.name, this.target.force);
  }

  /** Gives up the output and removes its file. */
  abandon() {
    if (this.target.medium !== 'stdout') this.sink.target.destroy();
    this.temporary?.remove();
  }
}

/** A file that is removed when the process ends, unless it has been moved. */
class TemporaryFile {
  constructor(directory, name) {
    const unique = crypto.randomBytes(4).toString('hex');
    this.path = path.join(directory, `.${name}.${process.pid}.${unique}.tmp`);
    this.stream = fs.createWriteStream(this.path, { flags: 'wx', flush: true });
    // Must not call `forget`: removing a listener during the event skips the next one.
    this.forget = onExit(() => this.delete());
  }

  moveTo(name, force) {
    try {
      if (force) replaceFile(this.path, name);
      else claimName(this.path, name);
    } catch (error) {
      throw new UserError(`${name} cannot be written: ${error.message}`);
    } finally {
      this.remove();
    }
  }

  remove() {
    this.forget();
    this.delete();
  }

  delete() {
    fs.rmSync(this.path, { force: true });
  }
}

function replaceFile(temporary, name) {
  const status = fs.statSync(name, { throwIfNoEntry: false });
  if (status) fs.chmodSync(temporary, status.mode);
  fs.renameSync(temporary, name);
}

/** Renames, and fails if the name was taken in the meantime. */
function claimName(temporary, name) {
  try {
    fs.linkSync(temporary, name);
  } catch (error) {
    if (error.code === 'EEXIST' || fs.existsSync(name)) {
      throw new Error('a file of that name has appeared; --force overwrites it', { cause: error });
    }
    // Not every file system has hard links.
    fs.renameSync(temporary, name);
  }
}

/** Bytes of text that are stored in a temporary file until what precedes them is known. */
class Spool {
  /** @param {ReturnType<typeof inspectOutput>} target whose directory is used if it is a file */
  constructor(target) {
    const directory = target.medium === 'file' ? path.dirname(target.name) : os.tmpdir();
    this.file = new TemporaryFile(directory, 'scrivo-part');
    this.sink = new Sink(target.medium === 'file' ? target.name : directory, this.file.stream);
    /** Where each page begins. */
    this.starts = [0];
    this.length = 0;
  }

  startPage() {
    this.starts.push(this.length);
  }

  write(content) {
    this.length += content.length;
    return this.sink.write(content);
  }

  close() {
    return this.sink.end();
  }

  /** The texts of a page. */
  readPage(i) {
    const [start, end] = [this.starts[i], this.starts[i + 1] ?? this.length];
    if (start === end) return [];
    return fs.createReadStream(this.file.path, { start, end: end - 1, encoding: 'utf8' });
  }

  abandon() {
    this.file.stream.destroy();
    this.file.remove();
  }
}

module.exports = { Output, Spool, inspectFolder, inspectOutput };
