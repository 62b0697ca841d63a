import warning from '../../../lib/warnings.js';
import { OutOfMemoryError, lengthOf, writeAll } from './engine.js';
import { packFile, textOf } from './template-files.js';
import shipped from 'scrivo-wasm-templates';

/** Names of the template files that are built in, for `initScrivo`. */
export const templates = Object.freeze(Object.keys(shipped));

const MOST_IDLE_BYTES = 1 << 20;

// Errors are those of the native module.

function checkNumber(value) {
  if (typeof value !== 'number') throw new TypeError('A number was expected');
  return value;
}

function checkArray(value) {
  if (!Array.isArray(value)) throw new Error('An array was expected');
  return value;
}

/** What has the properties of a value. */
function objectOf(value) {
  if (value === undefined || value === null) {
    throw new TypeError('Cannot convert undefined or null to object');
  }
  return Object(value);
}

function grown(numbers) {
  const larger = new Float64Array(2 * numbers.length);
  larger.set(numbers);
  return larger;
}

/** Where points are read to. A call that a getter makes meanwhile gets another one. */
let idle = null;

/** x, y and force of every point, each property read once. The array may change meanwhile. */
function readStroke(stroke) {
  checkArray(stroke);
  let numbers = idle ?? new Float64Array(3 * 256);
  idle = null;
  let k = 0;
  for (let i = 0; i < stroke.length; i++) {
    if (k === numbers.length) numbers = grown(numbers);
    const element = stroke[i];
    const point = typeof element === 'object' && element !== null ? element : objectOf(element);
    numbers[k++] = checkNumber(point.x);
    numbers[k++] = checkNumber(point.y);
    numbers[k++] = 'force' in point ? checkNumber(point.force) : 0;
  }
  return numbers.subarray(0, k);
}

function readStrokes(strokes) {
  checkArray(strokes);
  const result = [];
  for (let i = 0; i < strokes.length; i++) result.push(readStroke(strokes[i]));
  return result;
}

/** Takes back the place of points that have been used, unless it is large. */
function release({ buffer }) {
  if (buffer.byteLength < MOST_IDLE_BYTES) idle = new Float64Array(buffer);
}

/** Points of `count` numbers from an index on. */
function makePath(numbers, from, count) {
  const path = [];
  for (let k = from; k < from + count; k += 3) {
    const force = numbers[k + 2];
    const [x, y] = [numbers[k], numbers[k + 1]];
    path.push(force === 0 ? { x, y } : { x, y, force });
  }
  return path;
}

const readAnswer = (heap, at) => ({ path: makePath(heap, at + 2, heap[at + 1]), type: heap[at] });

const isFile = (element) =>
  typeof element === 'object' && element !== null && 'name' in element && 'content' in element;

/** A file of `initScrivo`: one that is given, one that is built in, or one without outlines. */
function fileOf(element) {
  if (isFile(element)) return { name: `${element.name}`, content: element.content };
  const name = `${element}`;
  return { name, content: Object.hasOwn(shipped, name) ? shipped[name] : '' };
}

/** x and y of every point of strokes with forces. */
function writeOthers(heap, at, others) {
  for (const other of others) {
    for (let k = 0; k < other.length; k += 3) {
      heap[at++] = other[k];
      heap[at++] = other[k + 1];
    }
  }
}

/** The template engine of an engine's instance. */
export function bindTemplateEngine(engine) {
  const warnings = warning.createWarnings((message, code) => console.warn(`${code}: ${message}`));

  function initScrivo(...args) {
    if (args.length === 0) throw new TypeError('Wrong number of arguments');
    const [elements] = args;
    if (!Array.isArray(elements)) throw new TypeError('Wrong arguments');
    const files = [];
    const packed = [];
    try {
      for (let i = 0; i < elements.length; i++) {
        const { name, content } = fileOf(elements[i]);
        packed.push(packFile(name, textOf(content)));
        files.push({ name, read: () => textOf(content) });
      }
    } finally {
      // What precedes an element that throws is loaded, as by the native module.
      const parts = [[packed.length], ...packed];
      engine.keep('initScrivo', lengthOf(parts), (heap, at) => writeAll(heap, at, parts));
    }
    warnings.checkTemplates(files);
    return true;
  }

  function optimizeAStroke(stroke, width, height, otherStrokes) {
    const points = readStroke(stroke);
    const area = [checkNumber(width), checkNumber(height)];
    const others = readStrokes(otherStrokes);
    const lengths = others.map((other) => other.length / 3);
    const head = [...area, points.length / 3, others.length, ...lengths];
    const ofOthers = (lengthOf(others) / 3) * 2;
    const write = (heap, at) => {
      heap.set(head, at);
      writeOthers(heap, at + head.length, others);
      heap.set(points, at + head.length + ofOthers);
    };
    try {
      const count = head.length + ofOthers + points.length;
      const answer = engine.call('optimizeAStroke', count, write, readAnswer);
      release(points);
      warnings.checkProportion(answer);
      return answer;
    } catch (error) {
      if (!(error instanceof OutOfMemoryError)) throw error;
      return { path: makePath(points, 0, points.length), type: 0 };
    }
  }

  return { initScrivo, optimizeAStroke };
}
