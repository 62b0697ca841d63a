'use strict';

const FigureType = Object.freeze({
  NONE: 0,
  POINT: 1,
  LINE: 2,
  ANGLE: 4,
  POLYGON: 6,
  ELLIPSE: 7,
});

module.exports = { FigureType };
