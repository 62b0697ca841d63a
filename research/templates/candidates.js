'use strict';

/** The figures that template files are for, in the order of the files. */
const TEMPLATE_FIGURES = ['rectangle', 'triangle', 'isosceles_triangle', 'ellipse'];

/**
 * The texts of the template files.
 *
 * @param {import('./search.js').Candidate[]} templates in the order of the files
 * @returns {Record<string, string>} by the names of the files; one outline per line
 */
function templateFiles(templates) {
  const toLine = ({ outline }) => `${outline.flatMap(({ x, y }) => [x, y]).join(',')}\n`;
  const textOf = (figure) => templates.filter((each) => each.figure === figure).map(toLine);
  return Object.fromEntries(
    TEMPLATE_FIGURES.map((figure) => [`${figure}.template`, textOf(figure).join('')]),
  );
}

module.exports = { TEMPLATE_FIGURES, templateFiles };
