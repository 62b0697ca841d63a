'use strict';

const fs = require('node:fs');
const path = require('node:path');
const { UserError } = require('./user-error.js');

/**
 * Refuses an output that would overwrite a file, before any work is done for it.
 *
 * @param {string} file
 * @param {{force: boolean}} options force allows overwriting
 */
function checkOutput(file, { force }) {
  const directory = path.dirname(file);
  if (!fs.existsSync(directory)) throw new UserError(`${file}: there is no directory ${directory}`);
  const status = fs.statSync(file, { throwIfNoEntry: false });
  if (status?.isDirectory()) throw new UserError(`${file} is a directory: name a file`);
  if (status && !force) throw new UserError(`${file} exists; --force overwrites it`);
}

/**
 * Writes a whole file under a temporary name beside it and renames it into place, so that an
 * interrupted run leaves the old file or the new one and nothing between.
 *
 * @param {string} file
 * @param {string|Uint8Array} content
 * @param {{force: boolean}} options
 */
function writeOutput(file, content, options) {
  checkOutput(file, options);
  const temporary = `${file}.${process.pid}.tmp`;
  try {
    fs.writeFileSync(temporary, content);
    fs.renameSync(temporary, file);
  } catch (error) {
    fs.rmSync(temporary, { force: true });
    throw new UserError(`${file} cannot be written: ${error.message}`);
  }
}

module.exports = { checkOutput, writeOutput };
