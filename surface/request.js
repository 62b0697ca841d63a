'use strict';

const { FIGURES, WISHES } = require('scrivo/beautifier');

const MAX_BYTES = 12 * 2 ** 20;
const MAX_POINTS = 400_000;
const MAX_ANCHORS = 2_000;

const TASKS = ['recognise', 'as', 'explain'];
const ENGINES = ['beautifier', 'template'];

/** An error of the client, with the status of the response. */
class BadRequest extends Error {
  constructor(status, message, headers = {}) {
    super(message);
    this.status = status;
    this.headers = headers;
  }
}

async function readBody(request) {
  const tooLarge = () => new BadRequest(413, `A request has at most ${MAX_BYTES} bytes.`);
  if (Number(request.headers['content-length']) > MAX_BYTES) throw tooLarge();
  const chunks = [];
  let size = 0;
  for await (const chunk of request) {
    size += chunk.length;
    if (size > MAX_BYTES) throw tooLarge();
    chunks.push(chunk);
  }
  return Buffer.concat(chunks).toString('utf8');
}

function expect(condition, message) {
  if (!condition) throw new BadRequest(400, message);
}

const isObject = (value) => typeof value === 'object' && value !== null && !Array.isArray(value);

/** A check of one of some names. */
const oneOf = (names) => (value, where) =>
  expect(names.includes(value), `${where} must be one of ${names.join(', ')}.`);

/** A check of a number; JSON has no NaN or infinity, but 1e999 is parsed as infinity. */
const number = (min, max) => (value, where) =>
  expect(
    typeof value === 'number' && value >= min && value <= max,
    `${where} must be a number from ${min} to ${max}.`,
  );

const isBoolean = (value, where) =>
  expect(typeof value === 'boolean', `${where} must be true or false.`);

/** A check of places as x and y in turn. */
const places = (least, most) => (value, where) => {
  const isList = Array.isArray(value) && value.length % 2 === 0;
  expect(isList, `${where} must be an array of numbers, x and y in turn.`);
  const count = value.length / 2;
  expect(count >= least && count <= most, `${where} must have ${least} to ${most} places.`);
  value.forEach((v, i) => expect(Number.isFinite(v), `${where}[${i}] must be a finite number.`));
};

const families = (value, where) => {
  const isList = Array.isArray(value) && value.length <= FIGURES.length;
  expect(isList, `${where} must be an array of at most ${FIGURES.length} names.`);
  value.forEach((name, i) => oneOf(FIGURES)(name, `${where}[${i}]`));
};

const OPTIONS = {
  minSize: number(0, 1e6),
  sensitivity: number(0, 1),
  figures: families,
  horizontalVertical: isBoolean,
  regularFigures: isBoolean,
};

function options(value, where) {
  expect(isObject(value), `${where} must be an object.`);
  checkFields(value, OPTIONS, `${where}.`);
}

// Below a pixel an area has no use, and the engines divide by it.
const side = number(1, 1e6);

const REQUIRED = { task: oneOf(TASKS), points: places(1, MAX_POINTS), width: side, height: side };
const OPTIONAL = {
  engine: oneOf(ENGINES),
  wish: oneOf(WISHES),
  anchors: places(0, MAX_ANCHORS),
  options,
};

function checkFields(value, fields, prefix) {
  for (const [name, field] of Object.entries(value)) {
    const known = Object.keys(fields).join(', ');
    expect(Object.hasOwn(fields, name), `${prefix}${name} is unknown; there are ${known}.`);
    fields[name](field, `${prefix}${name}`);
  }
}

/** Throws a `BadRequest` that names the first thing that is wrong. */
function checkRequest(value) {
  expect(isObject(value), 'The body must be an object {task, points, width, height, ...}.');
  for (const name of Object.keys(REQUIRED)) expect(name in value, `${name} is missing.`);
  checkFields(value, { ...REQUIRED, ...OPTIONAL }, '');
  expect(value.task !== 'as' || value.wish !== undefined, 'wish is missing.');
}

/** The checked body of POST /recognise, see `EngineRequest` in page/js/types.d.ts. */
async function readRequest(request) {
  const [type] = (request.headers['content-type'] ?? '').split(';', 1);
  if (type.trim().toLowerCase() !== 'application/json') {
    throw new BadRequest(415, 'The body must be of type application/json.');
  }
  const text = await readBody(request);
  let value;
  try {
    value = JSON.parse(text);
  } catch (error) {
    throw new BadRequest(400, `The body is not JSON: ${error.message}`);
  }
  checkRequest(value);
  return { anchors: [], ...value };
}

module.exports = { BadRequest, MAX_BYTES, checkRequest, readRequest };
