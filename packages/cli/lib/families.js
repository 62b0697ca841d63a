'use strict';

/**
 * What an engine can answer, in the order of tables and legends: the figure code, and the colour
 * and label that stand for it in pictures and summaries.
 */
const ANSWERS = {
  dot: { type: 1, colour: '#a142f4', label: 'dot' },
  line: { type: 2, colour: '#1a73e8', label: 'line' },
  angle: { type: 4, colour: '#e8710a', label: 'angle' },
  triangle: { type: 6, colour: '#188038', label: 'triangle' },
  quadrangle: { type: 6, colour: '#d93025', label: 'quadrangle' },
  ellipse: { type: 7, colour: '#007b83', label: 'ellipse' },
  /** Of the template engine: neither three nor four edges, or left as drawn. */
  polygon: { type: 6, colour: '#d93025', label: 'polygon' },
  /** The stroke as drawn. */
  none: { type: 0, colour: '#3c4043', label: 'as drawn' },
};

/** The families of figures. */
const FAMILIES = Object.keys(ANSWERS).filter((name) => name !== 'polygon' && name !== 'none');

/** What a stroke can be labelled with; `none` for ink that is no figure. */
const LABELLED_FAMILIES = [...FAMILIES, 'none'];

module.exports = { ANSWERS, FAMILIES, LABELLED_FAMILIES };
