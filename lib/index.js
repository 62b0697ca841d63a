'use strict';

const path = require('node:path');

const { FigureType } = require('./figure-type.js');
const { loadNative, unpacked } = require('./native.js');
const { checkTemplates, warnOfPixels } = require('./warnings.js');

const native = loadNative('hello');

// Written out for tools that collect the files of a program, as in native.js.
const templates = Object.freeze([
  unpacked(path.join(__dirname, '../templates/rectangle.template')),
  unpacked(path.join(__dirname, '../templates/triangle.template')),
  unpacked(path.join(__dirname, '../templates/isosceles_triangle.template')),
  unpacked(path.join(__dirname, '../templates/ellipse.template')),
]);

function initScrivo(...args) {
  const result = native.initScrivo(...args);
  checkTemplates(args[0]);
  return result;
}

function optimizeAStroke(stroke, width, height, otherStrokes) {
  const result = native.optimizeAStroke(stroke, width, height, otherStrokes);
  warnOfPixels(result);
  return result;
}

module.exports = { initScrivo, optimizeAStroke, FigureType, templates };
