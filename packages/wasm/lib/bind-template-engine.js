import { OutOfMemoryError } from './engine.js';
import { packFile } from './template-files.js';
import shipped from 'scrivo-wasm-templates';

/** Names of the template files that are built in, for `initScrivo`. */
export const templates = Object.freeze(Object.keys(shipped));

// Errors are those of the native module.

function checkNumber(value) {
  if (typeof value !== 'number') throw new TypeError('A number was expected');
  return value;
}

function checkArray(value) {
  if (!Array.isArray(value)) throw new Error('An array was expected');
  return value;
}

/** Appends x, y and force of a point, each property read once. */
function readPoint(point, numbers) {
  if (point === undefined || point === null) {
    throw new TypeError('Cannot convert undefined or null to object');
  }
  const object = Object(point);
  numbers.push(checkNumber(object.x), checkNumber(object.y));
  numbers.push('force' in object ? checkNumber(object.force) : 0);
}

/** x, y and force of every point. The array may change while it is read. */
function readStroke(stroke) {
  const numbers = [];
  for (let i = 0; i < checkArray(stroke).length; i++) readPoint(stroke[i], numbers);
  return numbers;
}

function readStrokes(strokes) {
  const result = [];
  for (let i = 0; i < checkArray(strokes).length; i++) result.push(readStroke(strokes[i]));
  return result;
}

function makePath(numbers) {
  const path = [];
  for (let k = 0; k < numbers.length; k += 3) {
    const point = { x: numbers[k], y: numbers[k + 1] };
    if (numbers[k + 2] !== 0) point.force = numbers[k + 2];
    path.push(point);
  }
  return path;
}

const isFile = (element) =>
  typeof element === 'object' && element !== null && 'name' in element && 'content' in element;

/** A file of `initScrivo`: one that is given, one that is built in, or one without outlines. */
function fileOf(element) {
  if (isFile(element)) return { name: `${element.name}`, content: element.content };
  const name = `${element}`;
  return { name, content: Object.hasOwn(shipped, name) ? shipped[name] : '' };
}

function packArguments(width, height, stroke, others) {
  const lengths = others.map((other) => other.length / 3);
  const head = [width, height, stroke.length / 3, others.length, ...lengths];
  const count = lengths.reduce((sum, length) => sum + 2 * length, head.length + stroke.length);
  const numbers = new Float64Array(count);
  numbers.set(head);
  let at = head.length;
  for (const other of others) {
    for (let k = 0; k < other.length; k += 3) {
      numbers[at++] = other[k];
      numbers[at++] = other[k + 1];
    }
  }
  numbers.set(stroke, at);
  return numbers;
}

/** The template engine of an engine's instance. */
export function bindTemplateEngine(engine) {
  function initScrivo(...args) {
    if (args.length === 0) throw new TypeError('Wrong number of arguments');
    const [elements] = args;
    if (!Array.isArray(elements)) throw new TypeError('Wrong arguments');
    const files = [];
    try {
      for (let i = 0; i < elements.length; i++) files.push(packFile(fileOf(elements[i])));
    } finally {
      // What precedes an element that throws is loaded, as by the native module.
      engine.keep('initScrivo', [files.length, ...files.flat()]);
    }
    return true;
  }

  function optimizeAStroke(stroke, width, height, otherStrokes) {
    const points = readStroke(stroke);
    checkNumber(width);
    checkNumber(height);
    const numbers = packArguments(width, height, points, readStrokes(otherStrokes));
    try {
      return engine.call('optimizeAStroke', numbers, (answer) => ({
        path: makePath(answer.subarray(2, 2 + answer[1])),
        type: answer[0],
      }));
    } catch (error) {
      if (!(error instanceof OutOfMemoryError)) throw error;
      return { path: makePath(points), type: 0 };
    }
  }

  return { initScrivo, optimizeAStroke };
}
