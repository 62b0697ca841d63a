'use strict';

const fs = require('node:fs');

// Warnings of the process where the template engine accepts input that is likely a mistake.

/** The names by which a path is recognised, in the order in which they are searched for. */
const NAMES = [
  'rectangle.template',
  'isosceles_triangle.template',
  'triangle.template',
  'ellipse.template',
];

/** Two numbers of one token: the least that makes an outline. */
const OUTLINE = /\d[^\s,]*,+[^\s,]*\d/;

/** Why nothing can be loaded from a file, or null. */
function complaint(file) {
  try {
    return OUTLINE.test(fs.readFileSync(file, 'utf8')) ? null : `${file} (no outlines)`;
  } catch (error) {
    return `${file} (${error.code ?? error.message})`;
  }
}

/** Warns of template files that were named and could not be loaded. */
function checkTemplates(paths) {
  const used = new Map(); // the last path of a name counts
  for (let i = 0; i < paths.length; i++) {
    const file = paths[i];
    const name = typeof file === 'string' && NAMES.find((each) => file.includes(each));
    if (name) used.set(name, file);
  }
  const complaints = [...used.values()].map(complaint).filter((each) => each !== null);
  if (complaints.length === 0) return;
  const message = `initScrivo loaded no templates from ${complaints.join(', ')}`;
  process.emitWarning(message, { code: 'SCRIVO_NO_TEMPLATES' });
}

/** Sides of the drawing area that a figure can be as long as. Longer ones come from pixels. */
const MAX_SPREAD = 50;

let hasWarned = false;

/** The longer side of a path, in sides of the drawing area. */
function spread(path) {
  let [left, right, top, bottom] = [Infinity, -Infinity, Infinity, -Infinity];
  for (const { x, y } of path) {
    left = Math.min(left, x);
    right = Math.max(right, x);
    top = Math.min(top, y);
    bottom = Math.max(bottom, y);
  }
  return Math.max(right - left, bottom - top);
}

/** Warns once of a figure that is far larger than the drawing area. */
function warnOfPixels({ path, type }) {
  if (type === 0 || hasWarned) return;
  if (!(spread(path) > MAX_SPREAD)) return;
  hasWarned = true;
  process.emitWarning(
    `optimizeAStroke drew a figure ${MAX_SPREAD} times as large as the drawing area: ` +
      'points must be fractions of its width and height, not pixels',
    { code: 'SCRIVO_PIXELS' },
  );
}

module.exports = { checkTemplates, warnOfPixels };
