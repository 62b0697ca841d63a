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
 * Checks an output before any work is done for it, and finds out what kind it is.
 *
 * @param {string} name file, `-` for standard output
 * @param {{force: boolean}} options force allows overwriting
 * @returns {{name: string, force: boolean, kind: 'stdout'|'device'|'file'}} a device, or a named
 *   pipe, is written to as it stands
 */
function inspectOutput(name, { force }) {
  if (name === STDOUT) return { name, force, kind: 'stdout' };
  if (name === '') throw new UserError('the name of an output is empty: name a file');
  const status = statusOf(name);
  if (isDevice(status)) return { name, force, kind: 'device' };
  checkParent(name);
  if (status?.isDirectory()) throw new UserError(`${name} is a directory: name a file`);
  if (status && !force) throw new UserError(`${name} exists; --force overwrites it`);
  // A link stays one: what it leads to is replaced.
  return { name: status ? fs.realpathSync(name) : name, force, kind: 'file' };
}

/** Refuses a name in a folder that is not there. */
function checkParent(name) {
  const directory = path.dirname(name);
  const status = statusOf(directory);
  if (!status) throw new UserError(`${name}: there is no directory ${directory}`);
  if (!status.isDirectory()) throw new UserError(`${name}: ${directory} is no directory`);
}

/**
 * An output that is written bit by bit.
 *
 * A file is written under a temporary name in its own folder and renamed when it is complete: an
 * interrupted run leaves nothing under the final name.
 */
class Output {
  /** @param {ReturnType<typeof inspectOutput>} target */
  constructor(target) {
    this.target = target;
    if (target.kind === 'stdout') this.sink = process.stdout;
    else if (target.kind === 'device') this.sink = fs.createWriteStream(target.name);
    else {
      this.temporary = new TemporaryFile(path.dirname(target.name), path.basename(target.name));
      this.sink = this.temporary.stream;
    }
    this.stream = target.name.endsWith('.gz') ? this.zip() : this.sink;
    // Failures reach the one who writes; without a listener they would end the process.
    this.sink.on('error', (error) => {
      this.failure ??= error;
    });
  }

  zip() {
    const gzip = zlib.createGzip();
    this.zipped = pipeline(gzip, this.sink);
    this.zipped.catch(() => {});
    return gzip;
  }

  /** Resolves when the output can take more. */
  async write(content) {
    if (content.length === 0) return;
    await this.guard(
      new Promise((resolve, reject) => {
        this.stream.write(content, (error) => (error ? reject(error) : resolve()));
      }),
    );
  }

  /** Completes the output and gives it its name. */
  async finish() {
    if (this.stream === process.stdout) return;
    this.stream.end();
    await this.guard(this.zipped ?? finished(this.sink));
    if (this.temporary) this.temporary.moveTo(this.target.name, this.target.force);
  }

  /** Gives up the output; nothing is left of a file. */
  abandon() {
    if (this.sink !== process.stdout) this.sink.destroy();
    this.temporary?.remove();
  }

  async guard(writing) {
    try {
      await writing;
    } catch (error) {
      const cause = this.failure ?? error;
      throw writeFailure(
        this.target.kind === 'stdout' ? 'standard output' : this.target.name,
        cause,
      );
    }
  }
}

/** A file that goes when the process does, unless it was moved. */
class TemporaryFile {
  constructor(directory, name) {
    const unique = crypto.randomBytes(4).toString('hex');
    this.path = path.join(directory, `.${name}.${process.pid}.${unique}.tmp`);
    this.stream = fs.createWriteStream(this.path, { flags: 'wx', flush: true });
    // One that took itself off the list would keep the next on it from being called.
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

/** Renames, and fails if the name was taken while we worked. */
function claimName(temporary, name) {
  try {
    fs.linkSync(temporary, name);
  } catch (error) {
    if (error.code === 'EEXIST' || fs.existsSync(name)) {
      throw new Error('a file of that name has been made meanwhile; --force overwrites it', {
        cause: error,
      });
    }
    // Not every file system has links.
    fs.renameSync(temporary, name);
  }
}

/** Text put aside until what comes before it is known. */
class Spool {
  /** @param {ReturnType<typeof inspectOutput>} target whose folder is used if it is a file */
  constructor(target) {
    const directory = target.kind === 'file' ? path.dirname(target.name) : os.tmpdir();
    this.name = target.kind === 'file' ? target.name : directory;
    this.file = new TemporaryFile(directory, 'scrivo-part');
    this.file.stream.on('error', (error) => {
      this.failure ??= error;
    });
  }

  async write(content) {
    if (content.length === 0) return;
    await this.guard(
      new Promise((resolve, reject) => {
        this.file.stream.write(content, (error) => (error ? reject(error) : resolve()));
      }),
    );
  }

  async close() {
    this.file.stream.end();
    await this.guard(finished(this.file.stream));
  }

  async guard(writing) {
    try {
      await writing;
    } catch (error) {
      throw new UserError(`${this.name} cannot be written: ${(this.failure ?? error).message}`);
    }
  }

  read() {
    return fs.createReadStream(this.file.path);
  }

  abandon() {
    this.file.stream.destroy();
    this.file.remove();
  }
}

module.exports = { Output, Spool, inspectOutput };
