'use strict';

const svgpath = require('svgpath');
const { toPixels } = require('./units.js');

/** Elements whose content is drawn elsewhere or not at all. */
const HIDING = new Set(['defs', 'symbol', 'clipPath', 'mask', 'pattern', 'marker']);

/** Presentation attributes that a stroke keeps; most come from the groups around it. */
const KEPT = [
  'stroke',
  'stroke-width',
  'stroke-linecap',
  'stroke-linejoin',
  'stroke-opacity',
  'stroke-dasharray',
];

const PATH_DATA = {
  path: ({ d = '' }) => d,
  // The grammar of path data reads the numbers after the first two as lines.
  polyline: ({ points = '' }) => `M${points}`,
  polygon: ({ points = '' }) => `M${points}Z`,
};

/**
 * Collects the polylines, polygons and paths of an SVG document, each part of a path as a stroke
 * of its own, in the units of the document's own drawing area.
 *
 * Style sheets are not read. What is filled and has no outline is no ink and is passed over.
 */
class SvgReader {
  constructor({ step, scale, onStroke, onProblem, onPassedOver }) {
    Object.assign(this, { step, onStroke, onProblem, onPassedOver });
    this.levels = [];
    this.area = undefined;
    this.hasGivenScale = scale !== undefined;
    this.scale = scale ?? 1;
  }

  open(name, attributes, line) {
    if (this.levels.length === 0) this.readRoot(attributes);
    const level = this.nest(name, attributes);
    this.levels.push(level);
    if (!Object.hasOwn(PATH_DATA, name) || level.hidden) return;
    if (isOutlined(level.style)) this.emitPath(PATH_DATA[name](attributes), level, line);
    else this.onPassedOver('filled shape without an outline');
  }

  close() {
    this.levels.pop();
  }

  text() {}

  readRoot({ viewBox, width, height }) {
    const [x, y, w, h] = (viewBox ?? '')
      .trim()
      .split(/[\s,]+/)
      .map(Number);
    const pixels = toPixels(width);
    if (w > 0 && h > 0) {
      this.area = { x, y, width: w, height: h };
      if (pixels && !this.hasGivenScale) this.scale = pixels / w;
    } else if (pixels && toPixels(height)) {
      this.area = { x: 0, y: 0, width: pixels, height: toPixels(height) };
    }
  }

  nest(name, attributes) {
    const outer = this.levels.at(-1) ?? { style: {}, transforms: [], hidden: false };
    const own = { ...attributes, ...parseStyle(attributes.style) };
    const style = { ...outer.style };
    for (const key of ['fill', ...KEPT]) if (own[key] !== undefined) style[key] = own[key];
    return {
      style,
      // The innermost transform is applied first.
      transforms: own.transform ? [own.transform, ...outer.transforms] : outer.transforms,
      hidden: outer.hidden || HIDING.has(name) || own.display === 'none',
      id: attributes.id,
    };
  }

  emitPath(data, { transforms, style, id }, line) {
    const path = svgpath(data);
    if (path.err) {
      this.onProblem(line, `${path.err.replace(/^SvgPath: /, '')} in "${shorten(data)}"`);
      return;
    }
    for (const transform of transforms) path.transform(transform);
    const fields = { ...(id !== undefined && { id }) };
    for (const key of KEPT) if (style[key] !== undefined) fields[key] = style[key];
    for (const points of samplePath(path, this.step / this.scale)) {
      const { area, scale } = this;
      this.onStroke(line, { points, fields, scale, ...(area && { area }) });
    }
  }
}

/** A shape with a fill and no word of an outline is not drawn by a pen; one with neither may be. */
function isOutlined({ stroke, fill }) {
  if (stroke !== undefined) return stroke !== 'none' && stroke !== 'transparent';
  return fill === undefined || fill === 'none' || fill === 'transparent';
}

function parseStyle(text = '') {
  const declarations = text.split(';').map((declaration) => declaration.split(':'));
  return Object.fromEntries(
    declarations
      .filter(([name, value]) => name.trim() && value)
      .map(([name, value]) => [name.trim(), value.trim()]),
  );
}

/**
 * The points of each part of a path: the ends of straight pieces as they are, curves sampled.
 *
 * @param {object} path of svgpath
 * @param {number} step greatest distance of samples along a curve
 * @yields {number[][]}
 */
function* samplePath(path, step) {
  let points = [];
  let [x, y] = [0, 0];
  for (const [command, ...values] of path.unshort().unarc().abs().segments) {
    if (command === 'M') {
      if (points.length > 0) yield points;
      points = [values];
    } else if (command === 'Z') {
      if (points.length > 0) points.push(points[0]);
    } else if (command === 'H') points.push([values[0], y]);
    else if (command === 'V') points.push([x, values[0]]);
    else if (command === 'L') points.push(values);
    else points.push(...sampleCurve([x, y], values, step));
    [x, y] = points.at(-1) ?? [x, y];
  }
  if (points.length > 0) yield points;
}

/** Points of a Bezier curve after its start, its end included, at even steps of its parameter. */
function sampleCurve(start, values, step) {
  const controls = [start];
  for (let i = 0; i < values.length; i += 2) controls.push([values[i], values[i + 1]]);
  let length = 0;
  for (let i = 1; i < controls.length; i += 1) {
    length += Math.hypot(controls[i][0] - controls[i - 1][0], controls[i][1] - controls[i - 1][1]);
  }
  const n = Math.max(1, Math.ceil(length / step));
  return Array.from({ length: n }, (_, i) => pointOnCurve(controls, (i + 1) / n));
}

/** De Casteljau's algorithm. */
function pointOnCurve(controls, t) {
  if (controls.length === 1) return controls[0];
  const between = controls
    .slice(1)
    .map(([x, y], i) => [
      controls[i][0] + t * (x - controls[i][0]),
      controls[i][1] + t * (y - controls[i][1]),
    ]);
  return pointOnCurve(between, t);
}

function shorten(text) {
  return text.length > 40 ? `${text.slice(0, 40)}...` : text;
}

module.exports = { SvgReader };
