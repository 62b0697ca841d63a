// @ts-check
// The file format of drawings, described in docs/drawing-page.md.

import { makeInk, STRIDE } from '../model/ink.mjs';
import { COLOURS } from '../view/palette.mjs';

const FORMAT = 'scrivo-drawing';
const VERSION = 1;

const PARTS = 1000;
const round = (/** @type {number} */ v) => Math.round(v * PARTS) / PARTS;

/** @param {Ink} ink */
function writeInk({ samples, measured, frame }) {
  const points = Array.from({ length: samples.length / STRIDE }, (_, i) =>
    Array.from(samples.subarray(STRIDE * i, STRIDE * (i + 1)), round),
  );
  return { measured, frame, points };
}

/** @param {Item[]} items */
export function writeDocument(items) {
  const written = items.map(({ ink, figure, answer, colour, width }) => ({
    colour: COLOURS[colour],
    width,
    figure,
    answer,
    ink: writeInk(ink),
  }));
  // One item a line.
  const lines = written.map((item) => `    ${JSON.stringify(item)}`).join(',\n');
  return `{\n  "format": "${FORMAT}",\n  "version": ${VERSION},\n  "items": [\n${lines}\n  ]\n}\n`;
}

/** A problem with a file, told to the user. */
export class FileProblem extends Error {}

/** @param {unknown} condition @param {string} message @returns {asserts condition} */
function expect(condition, message) {
  if (!condition) throw new FileProblem(message);
}

const isObject = (/** @type {any} */ value) => typeof value === 'object' && value !== null;
// A pen cannot be wider, units.
const WIDEST = 100;

// Drawings reach no further, in units: beyond, samples would lose their decimals.
const FARTHEST = 1e6;

const isCoordinate = (/** @type {any} */ v) => Number.isFinite(v) && Math.abs(v) <= FARTHEST;
const isPlace = (/** @type {any} */ place) =>
  isObject(place) && isCoordinate(place.x) && isCoordinate(place.y);
const isSize = (/** @type {any} */ v) => isCoordinate(v) && v >= 0;
const isKind = (/** @type {any} */ name) => name === 'general' || WISHES.includes(name);
const areSizes = (/** @type {any} */ radii) => isPlace(radii) && isSize(radii.x) && isSize(radii.y);
const arePlaces = (/** @type {number} */ count) => (/** @type {any} */ value) =>
  Array.isArray(value) && value.length === count && value.every(isPlace);

/** What the figures of each kind hold. @type {Record<string, Record<string, (value: any) => boolean>>} */
const FIGURES = {
  dot: { centre: isPlace },
  line: { from: isPlace, to: isPlace },
  angle: { from: isPlace, vertex: isPlace, to: isPlace, opening: isCoordinate },
  triangle: { corners: arePlaces(3), subtype: isKind },
  quadrangle: { corners: arePlaces(4), subtype: isKind },
  circle: { centre: isPlace, radius: isSize },
  ellipse: { centre: isPlace, radii: areSizes, rotation: isCoordinate },
};

/** @param {any} figure @param {string} where */
function checkFigure(figure, where) {
  if (figure === null || figure === undefined) return;
  const fields =
    isObject(figure) && Object.hasOwn(FIGURES, figure.kind) ? FIGURES[figure.kind] : null;
  expect(fields, `${where} has an unknown kind`);
  for (const [name, check] of Object.entries(fields)) {
    expect(check(figure[name]), `${where}.${name} is missing or wrong`);
  }
}

/** @param {any} ink @param {string} where @returns {Ink} */
function readInk(ink, where) {
  expect(
    isObject(ink) && Array.isArray(ink.points) && ink.points.length > 0,
    `${where}.points is missing`,
  );
  const { frame } = ink;
  const sides = ['left', 'top', 'width', 'height', 'scale'];
  expect(
    isObject(frame) && sides.every((side) => isCoordinate(frame[side])),
    `${where}.frame is wrong`,
  );
  expect(frame.width > 0 && frame.height > 0 && frame.scale > 0, `${where}.frame has no size`);
  const samples = new Float32Array(STRIDE * ink.points.length);
  ink.points.forEach((/** @type {any} */ point, /** @type {number} */ i) => {
    const isPoint = Array.isArray(point) && point.length >= 2 && point.every(Number.isFinite);
    expect(isPoint, `${where}.points[${i}] must be numbers: x, y, pressure, time`);
    const [x, y, pressure = 0.5, time = i] = point;
    expect(isCoordinate(x) && isCoordinate(y), `${where}.points[${i}] is too far away`);
    samples.set([x, y, Math.min(1, Math.max(0, pressure)), time], STRIDE * i);
  });
  return makeInk({ samples, measured: ink.measured === true, frame: Object.freeze({ ...frame }) });
}

const isShare = (/** @type {any} */ v) => typeof v === 'number' && v >= 0 && v <= 1;

/** What is wrong in an answer is left out: the figure counts. @param {any} answer @returns {Answer | null} */
function readAnswer(answer) {
  if (!isObject(answer)) return null;
  const { engine, confidence, reason, alternatives, micros } = answer;
  const isAlternative = (/** @type {any} */ one) =>
    isObject(one) && FAMILIES.includes(one.family) && isShare(one.probability);
  return {
    engine: ['beautifier', 'template'].includes(engine) ? engine : 'none',
    confidence: isShare(confidence) ? confidence : null,
    reason: typeof reason === 'string' ? reason : null,
    alternatives: Array.isArray(alternatives) ? alternatives.filter(isAlternative) : [],
    micros: Number.isFinite(micros) ? micros : 0,
  };
}

/**
 * @param {string} text
 * @param {() => number} newId
 * @returns {Item[]}
 * @throws FileProblem that names the first thing that is wrong
 */
export function readDocument(text, newId) {
  let value;
  try {
    value = JSON.parse(text);
  } catch (error) {
    throw new FileProblem(`this is not JSON: ${/** @type {Error} */ (error).message}`);
  }
  expect(
    isObject(value) && value.format === FORMAT,
    `this is no drawing: "format" is not "${FORMAT}"`,
  );
  expect(value.version === VERSION, `version ${value.version} is not known to this page`);
  expect(Array.isArray(value.items), '"items" must be an array');
  return value.items.map((/** @type {any} */ item, /** @type {number} */ i) => {
    expect(isObject(item), `items[${i}] must be an object`);
    checkFigure(item.figure, `items[${i}].figure`);
    const width = isSize(item.width) && item.width > 0 ? Math.min(WIDEST, item.width) : 3.6;
    const colour = Math.max(0, COLOURS.indexOf(item.colour));
    const ink = readInk(item.ink, `items[${i}].ink`);
    return Object.freeze({
      id: newId(),
      ink,
      figure: item.figure ?? null,
      answer: readAnswer(item.answer),
      colour,
      width,
    });
  });
}
