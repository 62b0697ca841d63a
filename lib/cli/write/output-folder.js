'use strict';

const crypto = require('node:crypto');
const fs = require('node:fs');
const path = require('node:path');
const { onExit } = require('signal-exit');
const { statusOf } = require('../file-status.js');
const { UserError } = require('../user-error.js');
const { Output, checkParent, inspectOutput } = require('./output-file.js');

/**
 * Checks a folder that files are to be written into, before any work is done for it.
 *
 * @param {string} name
 * @param {{force: boolean}} options force allows replacing files in a folder that is there
 * @returns {{name: string, force: boolean, isNew: boolean}}
 */
function inspectFolder(name, { force }) {
  const status = statusOf(name);
  checkParent(name);
  if (!status) return { name: path.resolve(name), force, isNew: true };
  if (!status.isDirectory()) throw new UserError(`${name} is a file: name a folder`);
  if (!force && fs.readdirSync(name).length > 0) {
    throw new UserError(`${name} is not empty; --force replaces the template files in it`);
  }
  return { name, force, isNew: false };
}

/**
 * Writes files into a folder: all of them, or none. A new folder gets its name when it is complete;
 * in one that is there each file replaces its predecessor when all are written.
 *
 * @param {ReturnType<typeof inspectFolder>} target
 * @param {Record<string, string>} files texts by name
 */
async function writeFolder(target, files) {
  if (!target.isNew) return replaceFiles(target, files);
  const { dir, base } = path.parse(target.name);
  let folder;
  try {
    folder = new TemporaryFolder(dir, `.${base}`, files);
    fs.renameSync(folder.path, target.name);
  } catch (error) {
    throw new UserError(`${target.name} cannot be written: ${error.message}`);
  } finally {
    folder?.remove();
  }
}

async function replaceFiles({ name, force }, files) {
  const outputs = [];
  try {
    for (const [file, text] of Object.entries(files)) {
      const output = new Output(inspectOutput(path.join(name, file), { force }));
      outputs.push(output);
      await output.write(text);
    }
    for (const output of outputs) await output.finish();
  } finally {
    for (const output of outputs) output.abandon();
  }
}

/** A folder of files that goes when the process does, unless it was moved. */
class TemporaryFolder {
  /**
   * @param {string} directory that it is in
   * @param {string} name that it begins with
   * @param {Record<string, string>} files texts by name
   */
  constructor(directory, name, files) {
    const unique = crypto.randomBytes(4).toString('hex');
    this.path = path.join(directory, `${name}.${process.pid}.${unique}.tmp`);
    this.forget = onExit(() => this.delete());
    try {
      fs.mkdirSync(this.path);
      for (const [file, text] of Object.entries(files)) {
        fs.writeFileSync(path.join(this.path, file), text, { flush: true });
      }
    } catch (error) {
      this.remove();
      throw error;
    }
  }

  remove() {
    this.forget();
    this.delete();
  }

  delete() {
    fs.rmSync(this.path, { recursive: true, force: true });
  }
}

module.exports = { TemporaryFolder, inspectFolder, writeFolder };
