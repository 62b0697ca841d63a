'use strict';

const path = require('node:path');

const { loadNative, root } = require('./native.js');

const { initScrivo, optimizeAStroke } = loadNative('hello');

const FigureType = Object.freeze({
  NONE: 0,
  POINT: 1,
  LINE: 2,
  ANGLE: 4,
  POLYGON: 6,
  ELLIPSE: 7,
});

const templates = Object.freeze(
  ['rectangle', 'triangle', 'isosceles_triangle', 'ellipse'].map((figure) =>
    path.join(root, 'templates', `${figure}.template`),
  ),
);

module.exports = { initScrivo, optimizeAStroke, FigureType, templates };
