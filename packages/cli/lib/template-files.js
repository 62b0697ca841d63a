'use strict';

const fs = require('node:fs');
const path = require('node:path');
const { statusOf } = require('./file-status.js');
const { UserError } = require('./user-error.js');

/**
 * The names of template files, in the order in which they are loaded. The engine looks for them
 * anywhere in a path; the name of the isosceles file contains that of the triangle file.
 */
const TEMPLATE_FILES = [
  'rectangle.template',
  'isosceles_triangle.template',
  'triangle.template',
  'ellipse.template',
];

/**
 * The list of files for the template engine. The engine ignores a file that is missing or has
 * another name; here that is an error.
 *
 * @param {string[]} names files, or directories that hold them
 * @returns {string[]} existing files, at most one of each name
 */
function resolveTemplates(names) {
  const files = names.flatMap(expandDirectory);
  const taken = new Map();
  for (const file of files) {
    const slot = TEMPLATE_FILES.find((name) => file.includes(name));
    if (!slot) {
      throw new UserError(`${file}: the name must contain one of ${TEMPLATE_FILES.join(', ')}`);
    }
    if (taken.has(slot)) {
      throw new UserError(`${taken.get(slot)} and ${file} are both ${slot}: name one`);
    }
    taken.set(slot, file);
  }
  return files;
}

function expandDirectory(name) {
  const status = statusOf(name);
  if (!status) throw new UserError(`${name}: no such template file`);
  if (!status.isDirectory()) return [name];
  const files = TEMPLATE_FILES.map((file) => path.join(name, file)).filter(fs.existsSync);
  if (files.length > 0) return files;
  throw new UserError(`${name} holds none of ${TEMPLATE_FILES.join(', ')}`);
}

module.exports = { resolveTemplates };
