'use strict';

const svgpath = require('svgpath');
const { splitCommands } = require('./path-data.js');
const { toPixels } = require('../units.js');
const { shorten } = require('./stroke-points.js');

/** Elements whose content is not drawn where it stands. */
const HIDING = new Set(['defs', 'symbol', 'clipPath', 'mask', 'pattern', 'marker']);

/** Presentation attributes that a stroke keeps, its own or those of the groups around it. */
const KEPT = [
  'stroke',
  'stroke-width',
  'stroke-linecap',
  'stroke-linejoin',
  'stroke-opacity',
  'stroke-dasharray',
];

/** Shapes that are not read as strokes. */
const OTHER_SHAPES = new Set(['rect', 'circle', 'ellipse', 'use']);

// A curve that needs more samples is far larger than any drawing area, and gets a few.
const MAX_SAMPLES = 1000;
const FEW_SAMPLES = 16;
const MAX_IN_PATH = 30000;

// Strokes that a path may be.
const MAX_PARTS = 10000;

// Characters of a path's data. Parsed, they take a hundred times their own memory.
const MAX_DATA = 1024 * 1024;

const NUMBERS = String.raw`[-+.\deE,\s]*`;
const TRANSFORMS = new RegExp(
  `^\\s*(?:(?:matrix|translate|scale|rotate|skewX|skewY)\\s*\\(${NUMBERS}\\)[\\s,]*)*$`,
);

const PATH_DATA = {
  path: ({ d = '' }) => d,
  // In path data the pairs after the first are lines.
  polyline: ({ points = '' }) => points.trim() && `M${points}`,
  polygon: ({ points = '' }) => points.trim() && `M${points}Z`,
  line: ({ x1, y1, x2, y2 }) => {
    const [ax, ay, bx, by] = [x1, y1, x2, y2].map((text = '0') => toLength(text) ?? text);
    return `M${ax} ${ay}L${bx} ${by}`;
  },
};

/**
 * Collects the lines, polylines, polygons and paths of an SVG document, in the units of its
 * drawing area. Each subpath is a stroke.
 *
 * Shapes that are filled and have no outline are not ink.
 */
class SvgReader {
  constructor({ step, scale, onStroke, onProblem, onPassedOver }) {
    Object.assign(this, { step, onStroke, onProblem, onPassedOver });
    this.levels = [];
    /** Rules of style sheets, and the text of the one that is open. */
    this.rules = [];
    this.css = undefined;
    this.area = undefined;
    /** Undefined while the size of a unit is not known. */
    this.scale = scale;
  }

  open(name, attributes, line, position) {
    if (this.levels.length === 0) this.readRoot(attributes);
    if (name === 'style') this.css = '';
    const level = this.nest(name, attributes);
    this.levels.push(level);
    if (level.hidden) return;
    if (OTHER_SHAPES.has(name)) this.onPassedOver(name);
    if (!Object.hasOwn(PATH_DATA, name)) return;
    if (isOutlined(level.style)) this.emitPath(name, attributes, level, { line, position });
    else this.onPassedOver('filled outline');
  }

  close(name) {
    if (name === 'style' && this.css !== undefined) {
      this.rules.push(...parseRules(this.css));
      this.css = undefined;
    }
    this.levels.pop();
  }

  text(text) {
    if (this.css !== undefined) this.css += text;
  }

  finish() {}

  readRoot({ viewBox, width, height }) {
    const pixels = toPixels(width);
    const box = parseViewBox(viewBox);
    if (box) {
      this.area = box;
      const scale = pixels / box.width;
      if (scale > 0 && Number.isFinite(scale)) this.scale ??= scale;
    } else if (pixels && toPixels(height)) {
      this.area = { x: 0, y: 0, width: pixels, height: toPixels(height) };
      this.scale ??= 1;
    }
  }

  nest(name, attributes) {
    const outer = this.levels.at(-1) ?? { style: {}, hidden: false, matrix: IDENTITY };
    const styled = this.rules.filter(({ matches }) => matches(name, attributes));
    const rules = styled.map(({ declarations }) => declarations);
    const own = Object.assign({ ...attributes }, ...rules, parseStyle(attributes.style));
    const style = { ...outer.style };
    for (const key of ['fill', ...KEPT]) if (own[key] !== undefined) style[key] = own[key];
    // The innermost transform is applied first.
    const transforms = this.transformsOf(name, own);
    const wrong = transforms.find((transform) => !TRANSFORMS.test(transform));
    return {
      style,
      wrong: outer.wrong ?? wrong,
      matrix: transforms.length === 0 || wrong ? outer.matrix : combine(outer.matrix, transforms),
      hidden:
        outer.hidden || HIDING.has(name) || own.display === 'none' || own.visibility === 'hidden',
      id: attributes.id,
    };
  }

  /** The transforms from an element to its parent, in the order in which they are applied. */
  transformsOf(name, { transform, ...own }) {
    const viewport = name === 'svg' && this.levels.length > 0 ? viewportOf(own, this.area) : [];
    if (!transform || transform === 'none') return viewport;
    // CSS writes units where attributes have none.
    return [...viewport, transform.replace(/(?<=\d)(?:deg|px)\b/g, '')];
  }

  emitPath(name, attributes, { style, id, matrix, wrong }, { line, position }) {
    const data = PATH_DATA[name](attributes);
    if (data.length > MAX_DATA) {
      this.onProblem(line, `path data longer than ${MAX_DATA / 1024 / 1024} MB`);
      return;
    }
    const path = svgpath(splitCommands(data));
    if (path.err) {
      this.onProblem(line, `${path.err.replace(/^SvgPath: /, '')} in "${shorten(data)}"`);
      return;
    }
    if (wrong !== undefined) {
      this.onProblem(line, `the transform "${shorten(wrong)}" cannot be read`);
      return;
    }
    path.matrix(matrix);
    const fields = fieldsOf(style, id, matrix);
    const { area, scale } = this;
    const span = { name, position, matrix };
    const parts = drawnParts(path, this.step / (scale ?? 1));
    if (parts.length > MAX_PARTS) {
      this.onProblem(line, `a path of more than ${MAX_PARTS} parts, the limit`);
      return;
    }
    for (const points of parts) {
      if (points.every((point) => point.every(Number.isFinite))) {
        const stroke = { points, fields, ...(scale && { scale }), ...(area && { area }) };
        this.onStroke(line, stroke, span);
      } else this.onProblem(line, `coordinates that are not finite in "${shorten(data)}"`);
    }
  }
}

const IDENTITY = [1, 0, 0, 1, 0, 0];

/** The matrix of transforms, the first of which is applied first, and then an outer matrix. */
function combine(outer, transforms) {
  const corner = svgpath('M0 0l1 0m-1 0l0 1');
  for (const transform of transforms) corner.transform(transform);
  // svgpath applies transforms when it evaluates the segments.
  const [[, x, y], [, a, b], , [, c, d]] = corner.matrix(outer).unarc().segments;
  return [a, b, c, d, x, y];
}

const SELECTOR = /^([\w-]*)(?:([.#])([\w-]+))?$/;

/** The rules of a style sheet for elements, classes and identifiers, in the order of their weight. */
function parseRules(css) {
  const rules = blocksOf(withoutComments(css)).flatMap(([selectors, body]) => {
    const declarations = parseStyle(body);
    return selectors.split(',').flatMap((selector) => {
      const [found, tag, sign, value] = SELECTOR.exec(selector.trim()) ?? [];
      if (!found) return [];
      const isNamed = ({ id, class: classes = '' }) =>
        sign === '#' ? id === value : !sign || classes.split(/\s+/).includes(value);
      const matches = (name, attributes) => (tag === '' || tag === name) && isNamed(attributes);
      return [{ weight: { '#': 2, '.': 1 }[sign] ?? 0, declarations, matches }];
    });
  });
  return rules.sort((a, b) => a.weight - b.weight);
}

function withoutComments(css) {
  const [first, ...others] = css.split('/*');
  const after = others.map((text) => text.split('*/').slice(1).join('*/'));
  return first + after.join('');
}

/** What is before and between each pair of braces with no other brace between them. */
function blocksOf(css) {
  const texts = css.split(/([{}])/);
  const blocks = [];
  for (let i = 1; i + 2 < texts.length; i += 2) {
    if (texts[i] === '{' && texts[i + 2] === '}') blocks.push([texts[i - 1], texts[i + 1]]);
  }
  return blocks;
}

/** The fields of a stroke, from its element. */
function fieldsOf(style, id, matrix) {
  const fields = { ...(id !== undefined && { id }) };
  for (const key of KEPT) if (style[key] !== undefined) fields[key] = style[key];
  const width = fields['stroke-width'];
  if (width !== undefined) fields['stroke-width'] = widthAfter(matrix, width);
  return fields;
}

/** The width of a pen after a transform: it is scaled by the square root of the area factor. */
function widthAfter([a, b, c, d], width) {
  const factor = Math.sqrt(Math.abs(a * d - b * c));
  const pixels = toPixels(width);
  if (!pixels || !Number.isFinite(factor) || Math.abs(factor - 1) < 1e-9) return width;
  return String(Number((pixels * factor).toPrecision(6)));
}

/** @returns {{x: number, y: number, width: number, height: number}|undefined} */
function parseViewBox(text = '') {
  const [x, y, width, height] = text
    .trim()
    .split(/[\s,]+/)
    .map(Number);
  const isBox = [x, y, width, height].every(Number.isFinite) && width > 0 && height > 0;
  return isBox ? { x, y, width, height } : undefined;
}

const ALIGNMENT = { Min: 0, Mid: 0.5, Max: 1 };

/** The transforms that an inner drawing area applies to its content. */
function viewportOf({ x, y, width, height, viewBox, preserveAspectRatio = '' }, outer) {
  const place = `translate(${toLength(x) ?? 0} ${toLength(y) ?? 0})`;
  const box = parseViewBox(viewBox);
  const [w, h] = [toPixels(width) ?? outer?.width, toPixels(height) ?? outer?.height];
  if (!box || !w || !h) return [place];
  let [sx, sy] = [w / box.width, h / box.height];
  const [, alignX = 'Mid', alignY = 'Mid'] =
    /x(Min|Mid|Max)Y(Min|Mid|Max)/.exec(preserveAspectRatio) ?? [];
  if (!/\bnone\b/.test(preserveAspectRatio)) {
    sx = sy = /\bslice\b/.test(preserveAspectRatio) ? Math.max(sx, sy) : Math.min(sx, sy);
  }
  const left = (w - box.width * sx) * ALIGNMENT[alignX];
  const top = (h - box.height * sy) * ALIGNMENT[alignY];
  const inner = `translate(${left} ${top}) scale(${sx} ${sy}) translate(${-box.x} ${-box.y})`;
  return [inner, place];
}

/** A length in user units, which may be negative. */
function toLength(text = '') {
  const isNegative = text.trim().startsWith('-');
  const size = toPixels(text.replace('-', ''));
  return size && (isNegative ? -size : size);
}

/** Whether a shape is taken for ink: it has an outline, or names neither outline nor fill. */
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

/** Subpaths without lone points, which beside others draw nothing. */
function drawnParts(path, step) {
  const parts = [...samplePath(path, step)];
  const drawn = parts.filter((points) => points.length > 1);
  return drawn.length > 0 ? drawn : parts;
}

/**
 * The points of each subpath: the ends of straight segments, and samples of curves.
 *
 * @param {object} path of svgpath
 * @param {number} step maximum distance between samples along a curve
 * @yields {number[][]}
 */
function* samplePath(path, step) {
  let points = [];
  let [x, y] = [0, 0];
  let isClosed = false;
  let sampled = 0;
  for (const [command, ...values] of path.unshort().unarc().abs().segments) {
    if (isClosed && command !== 'M' && command !== 'Z') {
      yield points;
      points = [[x, y]];
    }
    isClosed = command === 'Z';
    if (command === 'M') {
      if (points.length > 0) yield points;
      points = [values];
    } else if (command === 'Z') {
      if (points.length > 0) points.push(points[0]);
    } else if (command === 'H') points.push([values[0], y]);
    else if (command === 'V') points.push([x, values[0]]);
    else if (command === 'L') points.push(values);
    else {
      // After too many samples only the ends of curves are taken.
      const samples = sampleCurve([x, y], values, sampled < MAX_IN_PATH ? step : Infinity);
      sampled += samples.length;
      points.push(...samples);
    }
    [x, y] = points.at(-1) ?? [x, y];
  }
  if (points.length > 0) yield points;
}

/** Points of a Bezier curve at even steps of its parameter, the start excluded. */
function sampleCurve(start, values, step) {
  const controls = [start];
  for (let i = 0; i < values.length; i += 2) controls.push([values[i], values[i + 1]]);
  let length = 0;
  for (let i = 1; i < controls.length; i += 1) {
    length += Math.hypot(controls[i][0] - controls[i - 1][0], controls[i][1] - controls[i - 1][1]);
  }
  const needed = Math.max(1, Math.ceil(length / step)) || 1;
  const n = needed > MAX_SAMPLES ? FEW_SAMPLES : needed;
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

module.exports = { SvgReader };
