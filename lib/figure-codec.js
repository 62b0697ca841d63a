'use strict';

const { found } = require('./packing.js');

// Converts figures between objects and the core's numbers. The same for every binding of
// the core, which passes in its tables of families and figures.

/** The field of a figure at index `at`: a number (0 places), one place (-1) or an array of them. */
function readField(numbers, at, places) {
  if (places === 0) return numbers[at];
  const place = (k) => ({ x: numbers[at + 2 * k], y: numbers[at + 2 * k + 1] });
  return places < 0 ? place(0) : Array.from({ length: places }, (_, k) => place(k));
}

function checkedNumber(name, value) {
  if (typeof value !== 'number') {
    throw new TypeError(`${name} must be a number, found ${found(value)}`);
  }
  if (!Number.isFinite(value)) throw new RangeError(`${name} must be finite, found ${value}`);
  return value;
}

function checkedPlace(name, value) {
  if (typeof value !== 'object' || value === null) {
    throw new TypeError(`${name} must be an object with x and y, found ${found(value)}`);
  }
  return [checkedNumber(`${name}.x`, value.x), checkedNumber(`${name}.y`, value.y)];
}

/** The numbers of a field, or an error that names the wrong one. */
function checkedField(name, value, places) {
  if (places === 0) return [checkedNumber(name, value)];
  if (places < 0) return checkedPlace(name, value);
  if (!Array.isArray(value) || value.length !== places) {
    throw new TypeError(`${name} must be an array of ${places} places, found ${found(value)}`);
  }
  return value.flatMap((place, k) => checkedPlace(`${name}[${k}]`, place));
}

/**
 * @param {{families: Array, figures: Array}} tables of the core: [name, type, kinds] of each
 *   family, and {kind, subtypes, fields} of each figure, null for none
 */
function figureCodec({ families, figures }) {
  /** The names of the families, in the order of the core's enumeration. */
  const FAMILIES = Object.freeze(families.map(([name]) => name));

  /** What `beautifyAs` can be asked for: [family, kind] by name; kind -1 stands for any. */
  const WISHES = new Map(FAMILIES.map((name, family) => [name, [family, -1]]));
  families.forEach(([, , kinds], family) =>
    kinds.forEach((name, kind) => {
      // `general` is a kind of two families, and `ellipse` is both a family and a kind.
      if (name !== 'general' && !WISHES.has(name)) WISHES.set(name, [family, kind]);
    }),
  );

  /** The figure as an object, from its index in the table; null for no figure. */
  function makeFigure(index, subtype, numbers) {
    if (figures[index] === null) return null;
    const { kind, subtypes, fields } = figures[index];
    const figure = { kind };
    let at = 0;
    for (const [name, places] of fields) {
      figure[name] = readField(numbers, at, places);
      at += places === 0 ? 1 : 2 * Math.abs(places);
    }
    if (subtypes.length > 0) figure.subtype = subtypes[subtype];
    return figure;
  }

  /** Index in the table and numbers of a figure, its parameters checked. */
  function flattenFigure(figure) {
    if (typeof figure !== 'object' || figure === null) {
      throw new TypeError(`figure must be a figure, found ${found(figure)}`);
    }
    const index = figures.findIndex((entry) => entry !== null && entry.kind === figure.kind);
    if (index < 0) {
      const known = figures.flatMap((entry) => entry?.kind ?? []).join(', ');
      throw new RangeError(`figure.kind must be one of ${known}, found ${found(figure.kind)}`);
    }
    const numbers = figures[index].fields.flatMap(([name, places]) =>
      checkedField(`figure.${name}`, figure[name], places),
    );
    return { index, numbers: Float64Array.from(numbers) };
  }

  return { FAMILIES, WISHES, flattenFigure, makeFigure };
}

module.exports = { figureCodec };
