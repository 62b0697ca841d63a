'use strict';

const { pixelsPer } = require('../units.js');
const { readArea, weightOf } = require('./stroke-points.js');

const VALUE = /([!'"]?)\s*([-+]?(?:\d+\.?\d*|\.\d+)(?:[eE][-+]?\d+)?|#[\dA-Fa-f]+|[*?TF])\s*/y;

/** Milliseconds per unit of time. */
const MILLISECONDS = new Map(Object.entries({ s: 1000, ms: 1, us: 1e-3, ns: 1e-6 }));

/**
 * @typedef {object} TraceFormat
 * @property {Array<{name: string, min: number, max: number, unit: number}>} channels in the order
 *   of a point's values; unit: milliseconds, for channels of time
 * @property {number} required the number of channels that every point has
 * @property {number} [scale] CSS pixels per unit, where the ink states the length of its unit
 * @property {number} [scaleY] the same for Y, where it is another
 * @property {number[][]} [transform] rows of the affine transform to the canvas
 */

// Characters of a trace.
const MAX_TRACE = 1024 * 1024;

// Points that are held back for the annotations of views; strokes after these are not.
const MAX_HELD = 200000;

/** The format of ink that declares no format. */
function plainFormat() {
  return { channels: [{ name: 'X' }, { name: 'Y' }], required: 2 };
}

/**
 * Collects the traces of an InkML document from its elements.
 *
 * A trace has the format that its context refers to, or else the one declared last, and the colour,
 * width and transparency of its brush. Traces that continue each other are one stroke. Affine canvas
 * transforms are applied, other mappings are not. Views give their annotations to the traces that
 * they refer to, which therefore are held back.
 */
class InkmlReader {
  constructor({ onStroke, onProblem, onPassedOver }) {
    Object.assign(this, { onStroke, onProblem, onPassedOver });
    this.formats = new Map();
    /** Stroke attributes by the identifiers of brushes, and of contexts that refer to them. */
    this.brushes = new Map();
    this.brush = undefined;
    this.current = plainFormat();
    /** The format that channels and their properties are added to. */
    this.format = this.current;
    /** Identifiers of the open elements that a format or brush is declared for. */
    this.owners = [];
    /** Open trace groups, with their annotations and references. */
    this.groups = [];
    this.intermittent = false;
    this.trace = undefined;
    this.annotation = undefined;
    /** Strokes to be continued, by the identifiers of their last traces. */
    this.begun = new Map();
    /** Depth of open `definitions` elements. */
    this.definitions = 0;
    this.isDeclared = false;
    this.transforms = new Map();
    /** The open canvas transform, and the text of its matrix. */
    this.transform = undefined;
    /** Strokes that are held back, in their order, and by the identifiers of them and of groups. */
    this.held = [];
    this.heldById = new Map();
    this.heldPoints = 0;
  }

  open(name, attributes, line) {
    if (Object.hasOwn(OPEN, name)) OPEN[name].call(this, attributes, line);
  }

  close(name) {
    if (Object.hasOwn(CLOSE, name)) CLOSE[name].call(this);
  }

  text(text) {
    if (this.annotation) this.annotation.text += text;
    else if (this.trace) this.trace.text += text;
    else if (this.transform) this.transform.text += text;
  }

  formatOf(reference) {
    return this.formats.get(targetOf(reference)) ?? this.current;
  }

  pushOwner(attributes) {
    const reference = attributes.traceFormatRef ?? attributes.inkSourceRef ?? attributes.contextRef;
    this.owners.push(identifier(attributes));
    if (reference) this.useFormat(this.formatOf(reference));
    const transform = this.transforms.get(targetOf(attributes.canvasTransformRef));
    if (transform) this.useFormat({ ...this.format, transform });
    const brush = this.brushOf(attributes.brushRef, attributes.contextRef);
    if (brush) this.useBrush(brush);
  }

  brushOf(...references) {
    return references.map((each) => this.brushes.get(targetOf(each))).find(Boolean);
  }

  useBrush(brush) {
    for (const id of this.owners) if (id !== undefined) this.brushes.set(id, brush);
  }

  /** A format applies to what follows; one in definitions only until another is declared. */
  useFormat(format) {
    this.format = format;
    if (this.definitions === 0) this.isDeclared = true;
    if (this.definitions === 0 || !this.isDeclared) this.current = format;
    for (const id of this.owners) if (id !== undefined) this.formats.set(id, format);
  }

  emitTrace() {
    const { text, line, id, format, brush, continuation, priorRef } = this.trace;
    this.trace = undefined;
    if (text.length > MAX_TRACE) {
      this.onProblem(line, `a trace longer than ${MAX_TRACE / 1024 / 1024} MB`);
      return;
    }
    const { points, problem } = decodeTrace(text, format);
    if (problem) {
      this.onProblem(line, problem);
      return;
    }
    const annotations = this.groups.map((group) => group.annotations);
    const scale = placePoints(points, format);
    const pen = penOf(brush, scale);
    const fields = Object.assign(pen, ...annotations, id !== undefined && { id });
    // Annotations state the drawing area as the fields of a JSON line do.
    const { area } = readArea({ width: Number(fields.width), height: Number(fields.height) });
    if (area) Object.assign(fields, { width: area.width, height: area.height });
    this.takePiece(
      { line, id, continuation, priorRef },
      { points, fields, ...(scale && { scale }), ...(area && { area }) },
    );
  }

  /** A trace is a stroke, or a piece of one, which is passed on after its last piece. */
  takePiece({ line, id, continuation, priorRef }, stroke) {
    let whole = { line, stroke };
    if (continuation === 'middle' || continuation === 'end') {
      const prior = targetOf(priorRef);
      whole = this.begun.get(prior);
      if (!whole) {
        this.onProblem(line, `continues the trace ${prior}, which was not begun`);
        return;
      }
      this.begun.delete(prior);
      for (const point of stroke.points) whole.stroke.points.push(point);
    }
    const isOpen = continuation === 'begin' || continuation === 'middle';
    if (isOpen && id !== undefined) this.begun.set(id, whole);
    else this.hold(whole, id);
  }

  hold(whole, id) {
    this.held.push(whole);
    for (const name of [id, ...this.groups.map((group) => group.id)]) {
      if (name === undefined) continue;
      if (!this.heldById.has(name)) this.heldById.set(name, []);
      this.heldById.get(name).push(whole);
    }
    this.heldPoints += weightOf(whole.stroke);
    if (this.heldPoints > MAX_HELD) this.release();
  }

  release() {
    for (const { line, stroke } of this.held) this.onStroke(line, stroke);
    this.held = [];
    this.heldById.clear();
    this.heldPoints = 0;
  }

  /** Gives the annotations around a view to what it refers to. */
  annotate(reference) {
    const annotations = Object.assign({}, ...this.groups.map((group) => group.annotations));
    for (const { stroke } of this.heldById.get(targetOf(reference)) ?? []) {
      // The trace's own annotations, and its identifier, stay.
      stroke.fields = { ...annotations, ...stroke.fields };
    }
  }

  /** Passes on the strokes that are held back, and those whose last piece is missing. */
  finish() {
    this.release();
    for (const { line, stroke } of this.begun.values()) this.onStroke(line, stroke);
    this.begun.clear();
  }
}

/** Puts points onto the canvas and makes their units equally long; returns the scale, if known. */
function placePoints(points, { scale, scaleY, transform }) {
  if (scale && scaleY && scale !== scaleY) for (const point of points) point[1] *= scaleY / scale;
  if (!transform) return scale;
  const [[a, b, e = 0], [c, d, f = 0]] = transform;
  for (const point of points) {
    const [x, y] = point;
    [point[0], point[1]] = [a * x + b * y + e, c * x + d * y + f];
  }
  const factor = Math.sqrt(Math.abs(a * d - b * c));
  return scale && factor > 0 ? scale / factor : scale;
}

/** The fields of a brush. A width with a unit is converted to that of the ink. */
function penOf({ pixels, ...fields } = {}, scale = 1) {
  if (pixels === undefined) return fields;
  return { ...fields, 'stroke-width': String(Number((pixels / scale).toPrecision(6))) };
}

/** What a resolution is stored as, by its channel. */
const SCALES = { X: 'scale', Y: 'scaleY' };

/** The transparency of what cannot be seen. */
const TRANSPARENT = 255;

const OPEN = {
  definitions() {
    this.definitions += 1;
  },
  context(attributes) {
    this.pushOwner(attributes);
  },
  inkSource(attributes) {
    this.pushOwner(attributes);
  },
  traceFormat(attributes) {
    this.owners.push(identifier(attributes));
    this.useFormat({ channels: [], required: 0 });
    this.intermittent = false;
  },
  intermittentChannels() {
    this.intermittent = true;
  },
  channel({ name, min, max, units }) {
    const unit = MILLISECONDS.get(units) ?? 1;
    this.format.channels.push({ name, min: Number(min ?? 0), max: Number(max), unit });
    if (!this.intermittent) this.format.required += 1;
    const key = SCALES[name];
    if (key && pixelsPer(units)) this.format[key] = pixelsPer(units);
  },
  /** The resolution is the number of units in an inch or a centimetre: "1000", "1/cm". */
  channelProperty({ channel, name, value, units }) {
    if (!SCALES[channel] || name !== 'resolution') return;
    const scale = pixelsPer(units?.replace(/^1\//, '')) / Number(value);
    if (scale > 0 && Number.isFinite(scale)) this.format[SCALES[channel]] = scale;
  },
  brush(attributes) {
    this.brush = {};
    const id = identifier(attributes);
    if (id !== undefined) this.brushes.set(id, this.brush);
    this.useBrush(this.brush);
  },
  brushProperty({ name, value, units }) {
    if (!this.brush || !value) return;
    const number = Number(value);
    if (name === 'color') this.brush.stroke = value;
    if (name === 'width' && number > 0) {
      if (pixelsPer(units)) this.brush.pixels = number * pixelsPer(units);
      else this.brush['stroke-width'] = value;
    }
    if (name === 'transparency' && number > 0 && number <= TRANSPARENT) {
      this.brush['stroke-opacity'] = String(Number((1 - number / TRANSPARENT).toFixed(3)));
    }
  },
  canvasTransform(attributes) {
    this.transform = { id: identifier(attributes), text: '' };
  },
  traceGroup({ contextRef, brushRef, ...attributes }) {
    this.groups.push({ annotations: {}, contextRef, brushRef, id: identifier(attributes) });
  },
  traceView({ traceDataRef }) {
    this.groups.push({ annotations: {}, traceDataRef });
  },
  annotation({ type }) {
    if (this.groups.length > 0 && type) this.annotation = { type, text: '' };
  },
  trace(attributes, line) {
    if (attributes.type === 'penUp' || this.definitions > 0) return;
    const inherited = (name) =>
      attributes[name] ?? this.groups.findLast((group) => group[name])?.[name];
    const [context, brush] = [inherited('contextRef'), inherited('brushRef')];
    const id = identifier(attributes);
    const format = this.formatOf(context);
    const { continuation, priorRef } = attributes;
    this.trace = {
      ...{ text: '', line, id, format, brush: this.brushOf(brush, context) },
      ...{ continuation, priorRef },
    };
  },
};

const CLOSE = {
  definitions() {
    this.definitions -= 1;
  },
  context() {
    this.owners.pop();
  },
  inkSource() {
    this.owners.pop();
  },
  traceFormat() {
    this.owners.pop();
  },
  traceGroup() {
    this.groups.pop();
  },
  traceView() {
    const { traceDataRef } = this.groups.at(-1);
    if (traceDataRef !== undefined) this.annotate(traceDataRef);
    this.groups.pop();
  },
  canvasTransform() {
    const { id, text } = this.transform;
    this.transform = undefined;
    const rows = text.split(',').map((row) => row.trim().split(/\s+/).map(Number));
    if (rows.length < 2 || !rows.flat().every(Number.isFinite)) return;
    if (id !== undefined) this.transforms.set(id, rows);
    if (this.owners.length > 0) this.useFormat({ ...this.format, transform: rows });
  },
  brush() {
    this.brush = undefined;
  },
  annotation() {
    if (!this.annotation) return;
    this.groups.at(-1).annotations[this.annotation.type] = this.annotation.text.trim();
    this.annotation = undefined;
  },
  trace() {
    if (this.trace) this.emitTrace();
  },
};

/** The identifier that a reference such as "#pen" names. */
function targetOf(reference) {
  return reference?.replace(/^.*#/, '');
}

function identifier(attributes) {
  return attributes['xml:id'] ?? attributes.id;
}

/**
 * Reads the text of a trace. A value is explicit (!), a first difference (') or a second
 * difference ("); the mark applies to its channel until the next mark.
 *
 * @param {string} text points separated by commas
 * @param {TraceFormat} format
 * @returns {{points: number[][]}|{problem: string}}
 */
function decodeTrace(text, format) {
  const decoders = format.channels.map(() => createChannelDecoder());
  const points = [];
  for (let start = 0; start <= text.length;) {
    const comma = text.indexOf(',', start);
    const end = comma < 0 ? text.length : comma;
    const part = text.slice(start, end);
    start = end + 1;
    const values = decodeValues(part.trim(), decoders);
    if (values === undefined) return { problem: `point ${points.length} cannot be read: ${part}` };
    if (values.length === 0) continue;
    const { point, problem } = toPoint(values, format);
    if (problem) return { problem: `point ${points.length} ${problem}` };
    points.push(point);
  }
  return points.length > 0 ? { points } : { problem: 'a trace without points' };
}

function decodeValues(text, decoders) {
  const values = [];
  VALUE.lastIndex = 0;
  while (VALUE.lastIndex < text.length) {
    const match = VALUE.exec(text);
    if (!match || values.length === decoders.length) return undefined;
    values.push(decoders[values.length](match[1], match[2]));
  }
  return values;
}

/** Decodes the values of one channel, which may depend on earlier ones. */
function createChannelDecoder() {
  let mode = '!';
  let [number, value, velocity] = [0, 0, 0];
  return (prefix, token) => {
    if (prefix) mode = prefix;
    if (token === '?') return undefined;
    // A star repeats the previous number, in the current mode.
    if (token !== '*') number = toNumber(token);
    const previous = value;
    if (mode === '!') value = number;
    else if (mode === "'") value += number;
    else value += velocity + number;
    velocity = value - previous;
    return value;
  };
}

function toNumber(token) {
  if (token === 'T') return 1;
  if (token === 'F') return 0;
  return token.startsWith('#') ? Number.parseInt(token.slice(1), 16) : Number(token);
}

function toPoint(values, { channels, required }) {
  if (values.length < required) {
    return { problem: `has ${values.length} values where its format has ${required}` };
  }
  const value = (name) => values[channels.findIndex((channel) => channel.name === name)];
  const [x, y, force, time] = [value('X'), value('Y'), value('F'), value('T')];
  if (!Number.isFinite(x) || !Number.isFinite(y)) return { problem: 'has no X or no Y' };
  const point = [x, y, null, null];
  if (force !== undefined) point[2] = toFraction(force, channels);
  if (time !== undefined) point[3] = time * channels.find(({ name }) => name === 'T').unit;
  if (!point.every((number) => number === null || Number.isFinite(number))) {
    return { problem: 'has a number that is too large' };
  }
  if (time === undefined) point.length = force === undefined ? 2 : 3;
  return { point };
}

/** Pressure as a fraction of its range, where the range is known. */
function toFraction(force, channels) {
  const { min, max } = channels.find(({ name }) => name === 'F');
  return max > min ? (force - min) / (max - min) : force;
}

module.exports = { InkmlReader };
