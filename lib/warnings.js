'use strict';

// Warnings where the template engine accepts input that is likely a mistake. The same for every
// binding of the core.

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
function complaint({ name, read }) {
  try {
    return OUTLINE.test(read()) ? null : `${name} (no outlines)`;
  } catch (error) {
    return `${name} (${error.code ?? error.message})`;
  }
}

/** Sides of the drawing area that a figure can be as long as. Longer ones come from pixels. */
const MAX_SPREAD = 50;

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

/** False for NaN, to which an area of nearly no width leads. */
const isInProportion = (path) => spread(path) <= MAX_SPREAD;

/**
 * @param {(message: string, code: string) => void} warn
 */
function createWarnings(warn) {
  let hasWarned = false;
  return {
    /**
     * Warns of template files that were named and could not be loaded.
     *
     * @param {Array<{name: string, read: () => string}>} files
     */
    checkTemplates(files) {
      const used = new Map(); // the last file of a name counts
      for (const file of files) {
        const kind = NAMES.find((each) => file.name.includes(each));
        if (kind) used.set(kind, file);
      }
      const complaints = [...used.values()].map(complaint).filter((each) => each !== null);
      if (complaints.length === 0) return;
      warn(`initScrivo loaded no templates from ${complaints.join(', ')}`, 'SCRIVO_NO_TEMPLATES');
    },

    /** Warns once of a figure that is far larger than the drawing area. */
    checkProportion({ path, type }) {
      if (type === 0 || hasWarned || isInProportion(path)) return;
      hasWarned = true;
      warn(
        `optimizeAStroke drew a figure more than ${MAX_SPREAD} times as large as the drawing area: ` +
          'points must be fractions of its width and height, not pixels',
        'SCRIVO_PIXELS',
      );
    },
  };
}

module.exports = { createWarnings };
