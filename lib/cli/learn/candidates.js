'use strict';

const path = require('node:path');
const { TEMPLATE_FILES, readShipped } = require('../template-files.js');
const { createUniform } = require('./random.js');
const { sampleParameters, templateOutline } = require('./template-outlines.js');

/** The figures that template files are for, in the order of the files. */
const TEMPLATE_FIGURES = TEMPLATE_FILES.map((file) => path.basename(file, '.template'));

/**
 * The outlines that templates are chosen from: the shipped ones, then generated ones.
 *
 * @param {{candidates: number, seed: number}} settings candidates: generated ones of each figure
 * @returns {import('./search.js').Candidate[]} the same in every thread
 */
function createCandidates({ candidates, seed }) {
  const generated = sampleParameters(createUniform(seed), candidates).map((parameters) => ({
    figure: parameters.figure,
    outline: templateOutline(parameters),
  }));
  return [...readShipped(), ...generated];
}

/**
 * The texts of the template files.
 *
 * @param {import('./search.js').Candidate[]} templates in the order in which they are to stand
 * @returns {Record<string, string>} by the names of the files; an outline a line
 */
function templateFiles(templates) {
  const toLine = ({ outline }) => `${outline.flatMap(({ x, y }) => [x, y]).join(',')}\n`;
  const textOf = (figure) => templates.filter((each) => each.figure === figure).map(toLine);
  return Object.fromEntries(
    TEMPLATE_FIGURES.map((figure) => [`${figure}.template`, textOf(figure).join('')]),
  );
}

module.exports = { TEMPLATE_FIGURES, createCandidates, templateFiles };
