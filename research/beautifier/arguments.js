'use strict';

const { parseArgs } = require('node:util');

/** Wrongly labelled lines to leave out, counted from 0 through all files. */
const WITHOUT = { without: { type: 'string', default: '' } };

const linesOf = (list) => new Set(list.split(',').filter(Boolean).map(Number));

function parse(options) {
  try {
    return parseArgs({ options, allowPositionals: true });
  } catch {
    return null;
  }
}

/**
 * The command line of a script that reads files of strokes; fails with the usage.
 *
 * @param {string} usage
 * @param {object} options in the form of util.parseArgs
 * @param {number} [maxFiles]
 * @returns {object} `files` and the values of the options, `without` as a set of numbers
 */
function readArguments(usage, options, maxFiles = 1) {
  const { values, positionals: files } = parse(options) ?? { positionals: [] };
  if (files.length === 0 || files.length > maxFiles) throw new Error(`usage: ${usage}`);
  return { ...values, files, without: linesOf(values.without ?? '') };
}

module.exports = { WITHOUT, readArguments };
