'use strict';

const fs = require('node:fs');
const { UserError } = require('./user-error.js');

/**
 * The status of a file, links followed.
 *
 * @param {string} name
 * @returns {fs.Stats|undefined} undefined when the name does not exist
 * @throws {UserError} when it cannot be determined, or the name is a link to nothing
 */
function statusOf(name) {
  try {
    return fs.statSync(name);
  } catch (error) {
    if (error.code === 'ENOTDIR') return undefined;
    if (error.code === 'EACCES') throw new UserError(`${name}: no permission to access it`);
    if (error.code === 'ELOOP') throw new UserError(`${name} is a link to itself`);
    if (error.code !== 'ENOENT') throw new UserError(`${name}: ${error.message}`);
  }
  if (!fs.lstatSync(name, { throwIfNoEntry: false })?.isSymbolicLink()) return undefined;
  throw new UserError(
    `${name} is a link to ${fs.readlinkSync(name)}, which does not exist: ` +
      'name that file itself, or remove the link',
  );
}

/** Whether a name is a device or a named pipe, which is written to directly. */
function isDevice(status) {
  return status !== undefined && !status.isFile() && !status.isDirectory();
}

module.exports = { isDevice, statusOf };
