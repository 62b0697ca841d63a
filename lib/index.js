'use strict';

const fs = require('node:fs');
const path = require('node:path');

const { FigureType } = require('./figure-type.js');
const { loadNative, unpacked } = require('./native.js');
const { createWarnings } = require('./warnings.js');

const native = loadNative('hello');

// Written out for tools that collect the files of a program, as in native.js.
const templates = Object.freeze([
  unpacked(path.join(__dirname, '../templates/rectangle.template')),
  unpacked(path.join(__dirname, '../templates/triangle.template')),
  unpacked(path.join(__dirname, '../templates/isosceles_triangle.template')),
  unpacked(path.join(__dirname, '../templates/ellipse.template')),
]);

const warnings = createWarnings((message, code) => process.emitWarning(message, { code }));

/** The files that paths name; what is no string names none. */
function filesOf(paths) {
  const names = paths.filter((name) => typeof name === 'string');
  return names.map((name) => ({ name, read: () => fs.readFileSync(name, 'utf8') }));
}

function initScrivo(...args) {
  const result = native.initScrivo(...args);
  warnings.checkTemplates(filesOf(args[0]));
  return result;
}

function optimizeAStroke(...args) {
  const result = native.optimizeAStroke(...args);
  warnings.checkProportion(result);
  return result;
}

module.exports = { initScrivo, optimizeAStroke, FigureType, templates };
