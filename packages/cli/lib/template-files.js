'use strict';

const fs = require('node:fs');
const path = require('node:path');
const { statusOf } = require('./file-status.js');
const { UserError } = require('./user-error.js');

/** The names of template files in a directory, in the order in which they are loaded. */
const TEMPLATE_FILES = [
  'rectangle.template',
  'triangle.template',
  'isosceles_triangle.template',
  'ellipse.template',
];

// The engine looks for these anywhere in a path, in this order: the name of the isosceles file
// contains that of the triangle file.
const SLOTS = [
  'rectangle.template',
  'isosceles_triangle.template',
  'triangle.template',
  'ellipse.template',
];

/**
 * Turns template arguments into the list an engine is given.
 *
 * The engine passes over a file that is missing or bears another name without a word; a user
 * who named it wants to know.
 *
 * @param {string[]} names files, or directories that hold them
 * @returns {string[]} existing files, no two of one kind
 */
function resolveTemplates(names) {
  const files = names.flatMap(expandDirectory);
  const taken = new Map();
  for (const file of files) {
    const slot = slotOf(file);
    if (!slot) throw new UserError(`${file}: the name contains none of ${SLOTS.join(', ')}`);
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
  if (files.length === 0) {
    throw new UserError(`${name} holds none of ${TEMPLATE_FILES.join(', ')}`);
  }
  return files;
}

/**
 * Of "--templates *.template" the option takes the first name only; the shell makes arguments of
 * the others.
 *
 * @param {string[]|undefined} templates names given to the option
 * @param {string[]} positionals
 * @returns {{files: string[], templates: string[]|undefined}}
 */
function takeTemplates(templates, positionals) {
  if (templates === undefined) return { files: positionals, templates };
  const isTemplate = (name) => name.includes('.template');
  return {
    files: positionals.filter((name) => !isTemplate(name)),
    templates: [...templates, ...positionals.filter(isTemplate)],
  };
}

/** The kind of template file that the engine takes a path for, undefined for none. */
function slotOf(file) {
  return SLOTS.find((name) => file.includes(name));
}

module.exports = { resolveTemplates, takeTemplates };
