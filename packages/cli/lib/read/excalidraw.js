'use strict';

const { boundingBox } = require('../boxes.js');
const { readPoints } = require('./stroke-points.js');

/** What is neither ink nor a shape. */
const NOT_SHAPES = new Set(['text', 'image', 'frame', 'magicframe', 'embeddable', 'iframe']);

/**
 * The freehand strokes of an Excalidraw scene.
 *
 * @param {object} scene
 * @yields {{records: object[], passedOver: string[]}} see readInk; each record has its element
 */
function* readExcalidraw(scene) {
  const records = [];
  const passedOver = [];
  const elements = Array.isArray(scene.elements) ? scene.elements : [];
  elements.forEach((element, i) => {
    if (!element || element.isDeleted) return;
    if (element.type === 'freedraw') records.push(readElement(element, i + 1));
    else if (!NOT_SHAPES.has(element.type)) passedOver.push(String(element.type));
  });
  yield { records, passedOver };
}

/** Points are relative to the place of their element. */
function readElement(element, line) {
  const { id, x = 0, y = 0, pressures = [], strokeColor, strokeWidth } = element;
  const { points, problem } = readPoints(element.points);
  if (problem) return { line, problem };
  const place = ([px, py], i) => [x + px, y + py, ...(pressures[i] ? [pressures[i]] : [])];
  const given = Object.entries({ id, stroke: strokeColor, 'stroke-width': strokeWidth });
  const fields = Object.fromEntries(given.filter(([, value]) => value !== undefined));
  return { line, stroke: { points: points.map(place), fields, scale: 1 }, element };
}

/** Makes a freehand element the shape that its figure is. */
function rewriteElement(element, { family, kind, parameters, points }) {
  const shape = shapeOf(family, kind, parameters ?? { corners: points });
  for (const name of ['pressures', 'simulatePressure', 'points']) delete element[name];
  Object.assign(element, { angle: 0, roundness: null, ...shape });
}

function shapeOf(family, kind, parameters) {
  const { centre, radius = 1, radii = [radius, radius], rotation = 0, corners } = parameters;
  if (centre) return { type: 'ellipse', ...around(centre, 2 * radii[0], 2 * radii[1], rotation) };
  if (['square', 'rectangle'].includes(kind)) {
    const [a, b, c] = corners;
    const [width, height] = [distance(a, b), distance(b, c)];
    return { type: 'rectangle', ...around(middle(a, c), width, height, direction(a, b)) };
  }
  if (kind === 'rhombus') {
    const [a, b, c, d] = corners;
    const [width, height] = [distance(a, c), distance(b, d)];
    return { type: 'diamond', ...around(middle(a, c), width, height, direction(a, c)) };
  }
  return lineThrough(polylineOf(family, parameters));
}

function polylineOf(family, { from, vertex, to, corners }) {
  if (from) return vertex ? [from, vertex, to] : [from, to];
  return ['triangle', 'quadrangle'].includes(family) ? [...corners, corners[0]] : corners;
}

function lineThrough(places) {
  const [[x, y]] = places;
  const { width, height } = boundingBox(places);
  const points = places.map(([px, py]) => [px - x, py - y]);
  const ends = { startBinding: null, endBinding: null, startArrowhead: null, endArrowhead: null };
  return { type: 'line', x, y, width, height, points, lastCommittedPoint: null, ...ends };
}

/** The box of a shape, which is turned around its centre. */
function around([x, y], width, height, angle) {
  return { x: x - width / 2, y: y - height / 2, width, height, angle };
}

const distance = (a, b) => Math.hypot(b[0] - a[0], b[1] - a[1]);
const middle = (a, b) => [(a[0] + b[0]) / 2, (a[1] + b[1]) / 2];
/** Of an undirected edge, radians within [0, pi). */
const direction = (a, b) => (Math.atan2(b[1] - a[1], b[0] - a[0]) + Math.PI) % Math.PI;

module.exports = { readExcalidraw, rewriteElement };
