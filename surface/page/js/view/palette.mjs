// @ts-check
// The colours of the surface, read from the style sheet, so that themes and forced colours apply.

export const COLOURS = ['ink', 'red', 'orange', 'green', 'blue', 'violet'];
export const WIDTHS = [2.2, 3.6, 7];

/** @typedef {{inks: string[], accent: string, second: string, paper: string, muted: string}} Palette */

/** @param {Element} element @returns {Palette} */
export function readPalette(element) {
  const style = getComputedStyle(element);
  const read = (/** @type {string} */ name) => style.getPropertyValue(`--${name}`).trim();
  return {
    inks: COLOURS.map((name) => read(`ink-${name}`)),
    accent: read('accent'),
    second: read('second'),
    paper: read('paper'),
    muted: read('muted'),
  };
}
