'use strict';

// Names of the probe's answers, whose `figure` and `subtype` are indices of the
// native tables.

const { native } = require('../../lib/figures.js');

const kindName = (figure) => native.figures[figure]?.kind;

/** The family of an answer, `none` for the stroke as drawn. */
function familyOf({ figure }) {
  const kind = kindName(figure);
  const [family = 'none'] =
    native.families.find(([name, , kinds]) => name === kind || kinds.includes(kind)) ?? [];
  return family;
}

/** What the figure of an answer is within its family. */
const kindOf = ({ figure, subtype }) =>
  native.figures[figure].subtypes[subtype] ?? kindName(figure);

module.exports = { familyOf, kindOf };
