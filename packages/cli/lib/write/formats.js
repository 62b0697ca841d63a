'use strict';

const { createRounding } = require('../svg.js');
const { formatInkml, INKML_HEAD, INKML_TAIL } = require('./inkml.js');
const { formatLine } = require('./ndjson.js');
const { composePicture, formatPictureParts } = require('./picture.js');
const { composeSvg, formatPolyline } = require('./svg.js');

/**
 * @typedef {object} Format
 * @property {string} extension of its files
 * @property {boolean} [isRewritten] a document of this format is kept, with figures as its strokes
 * @property {boolean} [isKept] it is written in no other way
 * @property {number} parts the number of texts that a stroke is written as
 * @property {(stroke, answer, round, scale) => {texts: string[], definitions?:
 *   Record<string, string>}} format scale: drawing units per unit of the stroke, undefined where
 *   not known; definitions: what the texts refer to, by identifier, to be written once
 * @property {string} [head] of a format that is written as the strokes come
 * @property {string} [tail]
 * @property {(summary: object) => Array<string|number>} [compose] of a format whose head depends on
 *   all strokes: texts, and the numbers of the parts between them
 * @property {number} [decimals] of coordinates, instead of those of the answer
 * @property {boolean} [inDrawingUnits] coordinates are drawing units rather than the input's
 */

/** @type {Record<string, Format>} */
const FORMATS = {
  ndjson: { extension: '.ndjson', parts: 1, format: formatLine, head: '', tail: '' },
  inkml: {
    extension: '.inkml',
    parts: 1,
    format: formatInkml,
    head: INKML_HEAD,
    tail: INKML_TAIL,
  },
  svg: {
    extension: '.svg',
    isRewritten: true,
    parts: 1,
    format: formatPolyline,
    compose: composeSvg,
  },
  ...keptFormats({ xopp: '.xopp', rnote: '.rnote', excalidraw: '.excalidraw' }),
  picture: {
    extension: '.svg',
    parts: 2,
    format: formatPictureParts,
    compose: composePicture,
    decimals: 2,
    inDrawingUnits: true,
  },
};

/** Formats that are written only by rewriting a document, by their extensions. */
function keptFormats(extensions) {
  const nothing = { parts: 0, format: () => ({ texts: [] }), compose: () => [] };
  return Object.fromEntries(
    Object.entries(extensions).map(([name, extension]) => [
      name,
      { ...nothing, extension, isRewritten: true, isKept: true },
    ]),
  );
}

/** Formats for the exchange of strokes, by the extensions of their files. */
const EXTENSIONS = {
  '.ndjson': 'ndjson',
  '.jsonl': 'ndjson',
  '.json': 'ndjson',
  '.svg': 'svg',
  '.inkml': 'inkml',
  '.ink': 'inkml',
  '.xml': 'inkml',
  '.xopp': 'xopp',
  '.rnote': 'rnote',
  '.excalidraw': 'excalidraw',
};

/**
 * @param {object} options
 * @param {string} options.format its name
 * @param {number} [options.decimals] instead of the format's own
 * @param {{x: number, y: number, width: number, height: number}} [options.area] instead of the
 *   stroke's own
 * @param {number} [options.scale] drawing units per unit of the input, instead of the stroke's own
 * @returns {{parts: number, needsView: boolean, write: Function, placeOf: Function}} needsView:
 *   the extent of all strokes has to be known; write returns what Format.format does; placeOf
 *   returns output units per unit of the stroke, and the area and scale in output units, as far as
 *   they are known
 */
function createWriter({ format: name, decimals, area, scale }) {
  const format = FORMATS[name];
  const scaleOf = (stroke) => scale ?? stroke.scale;
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
      const round = createRounding(decimals ?? format.decimals ?? answer.decimals);
      return format.format(stroke, answer, round, scaleOf(stroke));
    },
  };
}

function scaledArea({ x, y, width, height }, unit) {
  return { x: x * unit, y: y * unit, width: width * unit, height: height * unit };
}

module.exports = { EXTENSIONS, FORMATS, createWriter };
