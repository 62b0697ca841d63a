'use strict';

const { formatInkml, INKML_HEAD, INKML_TAIL } = require('./inkml.js');
const { formatLine } = require('./ndjson.js');
const { composePicture, formatPictureParts } = require('./picture.js');
const { composeSvg, formatPolyline } = require('./svg.js');

/**
 * @typedef {object} Format
 * @property {number} parts texts that a stroke is written as
 * @property {(stroke, answer, round, scale) => {texts: string[], definitions?:
 *   Record<string, string>}} format scale: drawing units a unit of the stroke, undefined when
 *   nobody said; definitions: what the texts refer to, by its identifier, to be written once
 * @property {string} [head] of a format that is written as the strokes come
 * @property {string} [tail]
 * @property {(summary: object) => Array<string|number>} [compose] of a format whose head needs to
 *   know all strokes: texts, and numbers of the parts that go between them
 * @property {number} [decimals] the coordinates are rounded to unless others are asked for, at a
 *   scale of 1
 * @property {boolean} [inDrawingUnits] coordinates are drawing units rather than the input's
 */

/** @type {Record<string, Format>} */
const FORMATS = {
  ndjson: { parts: 1, format: formatLine, head: '', tail: '' },
  inkml: {
    parts: 1,
    format: formatInkml,
    head: INKML_HEAD,
    tail: INKML_TAIL,
    decimals: 3,
  },
  svg: { parts: 1, format: formatPolyline, compose: composeSvg, decimals: 3 },
  picture: { parts: 2, format: formatPictureParts, compose: composePicture, inDrawingUnits: true },
};

/** Formats that strokes are exchanged in, by the extensions of their files. */
const EXTENSIONS = {
  '.ndjson': 'ndjson',
  '.jsonl': 'ndjson',
  '.json': 'ndjson',
  '.svg': 'svg',
  '.inkml': 'inkml',
  '.ink': 'inkml',
  '.xml': 'inkml',
};

/**
 * @param {object} options
 * @param {string} options.format name of it
 * @param {number} [options.decimals] instead of the format's own
 * @param {{x: number, y: number, width: number, height: number}} [options.area] instead of the
 *   stroke's own
 * @param {number} [options.scale] drawing units a unit of the input, instead of the stroke's own
 * @returns {{parts: number, needsView: boolean, write: Function, placeOf: Function}} needsView:
 *   what all strokes lie in has to be known; write gives what Format.format does; placeOf the
 *   units of the output that a unit of the stroke becomes, and in these its area and scale, as far
 *   as they are known
 */
function createWriter({ format: name, decimals, area, scale }) {
  const format = FORMATS[name];
  const scaleOf = (stroke) => scale ?? stroke.scale;
  const placesAt = (size = 1) => format.decimals && format.decimals + finerPlaces(size);
  return {
    parts: format.parts,
    needsView: format.compose !== undefined,
    placeOf(stroke) {
      const size = scaleOf(stroke);
      const own = area ?? stroke.area;
      if (!format.inDrawingUnits) return { unit: 1, area: own, scale: size };
      const unit = size ?? 1;
      return { unit, area: own && scaledArea(own, unit), scale: 1 };
    },
    write(stroke, answer) {
      const size = scaleOf(stroke);
      const round = createRounding(decimals ?? placesAt(size));
      return format.format(stroke, answer, round, size);
    },
  };
}

function scaledArea({ x, y, width, height }, unit) {
  return { x: x * unit, y: y * unit, width: width * unit, height: height * unit };
}

/** Decimals that a coordinate needs beyond the usual ones where its unit is a large one. */
function finerPlaces(scale) {
  return Math.max(0, Math.ceil(Math.log10(scale)));
}

function createRounding(places) {
  if (places === undefined) return (value) => value;
  const factor = 10 ** places;
  return (value) => {
    const rounded = Math.round(value * factor);
    // Beyond these a number has no such decimals, and might not bear the factor.
    return Number.isSafeInteger(rounded) ? rounded / factor : value;
  };
}

module.exports = { EXTENSIONS, FORMATS, createWriter };
