'use strict';

// Lengths in documents are converted to CSS pixels, the unit of the engines' sizes.
const PIXELS_PER_INCH = 96;
const INCHES = {
  in: 1,
  inch: 1,
  cm: 1 / 2.54,
  mm: 1 / 25.4,
  himetric: 1 / 2540,
  pt: 1 / 72,
  pc: 1 / 6,
  px: 1 / PIXELS_PER_INCH,
};

/** CSS pixels per unit of length, undefined for a unit without fixed length. */
function pixelsPer(unit) {
  return Object.hasOwn(INCHES, unit ?? '') ? PIXELS_PER_INCH * INCHES[unit] : undefined;
}

/** A length such as "12mm" in CSS pixels, undefined for one such as "100%". */
function toPixels(text) {
  const [, number, unit] = /^\s*\+?([\d.]+(?:[eE][-+]?\d+)?)\s*([a-z]*)\s*$/.exec(text ?? '') ?? [];
  const pixels = Number(number) * (unit === '' ? 1 : pixelsPer(unit));
  return pixels > 0 && Number.isFinite(pixels) ? pixels : undefined;
}

module.exports = { PIXELS_PER_INCH, pixelsPer, toPixels };
