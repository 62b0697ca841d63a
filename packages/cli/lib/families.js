'use strict';

/** The figures a stroke can be; `none` is ink that is meant as it was drawn. */
const FAMILIES = ['dot', 'line', 'angle', 'triangle', 'quadrangle', 'ellipse'];
const LABELLED_FAMILIES = [...FAMILIES, 'none'];

module.exports = { FAMILIES, LABELLED_FAMILIES };
