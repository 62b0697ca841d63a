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

module.exports = { checkOutput };
