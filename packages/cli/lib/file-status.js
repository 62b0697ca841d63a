'use strict';

const fs = require('node:fs');
const { UserError } = require('./user-error.js');

/**
 * What a name stands for, links followed.
 *
 * @param {string} name
 * @returns {fs.Stats|undefined} undefined when there is nothing of that name
 * @throws {UserError} when that cannot be told, or a link of that name leads nowhere
 */
function statusOf(name) {
  try {
    return fs.statSync(name);
  } catch (error) {
    if (error.code === 'ENOTDIR') return undefined;
    if (error.code === 'EACCES') throw new UserError(`${name}: no permission to look at it`);
    if (error.code === 'ELOOP') throw new UserError(`${name} is a link that leads back to itself`);
    if (error.code !== 'ENOENT') throw new UserError(`${name}: ${error.message}`);
  }
  if (!fs.lstatSync(name, { throwIfNoEntry: false })?.isSymbolicLink()) return undefined;
  throw new UserError(
    `${name} is a link to ${fs.readlinkSync(name)}, which is not there: ` +
      'name that file itself, or remove the link',
  );
}

/** Whether what is written under this name goes somewhere at once: a device or a named pipe. */
function isDevice(status) {
  return status !== undefined && !status.isFile() && !status.isDirectory();
}

module.exports = { isDevice, statusOf };
