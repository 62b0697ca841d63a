'use strict';

const path = require('node:path');

const { FigureType } = require('./figure-type.js');
const { loadNative, root } = require('./native.js');

const { initScrivo, optimizeAStroke } = loadNative('hello');

const templates = Object.freeze(
  ['rectangle', 'triangle', 'isosceles_triangle', 'ellipse'].map((figure) =>
    path.join(root, 'templates', `${figure}.template`),
  ),
);

module.exports = { initScrivo, optimizeAStroke, FigureType, templates };
