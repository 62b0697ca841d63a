'use strict';

const MAX_BYTES = 32 * 2 ** 20;

/** What a request may name as its `engine`; the first one is the default. */
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

/** JSON has no NaN or infinity, but 1e999 is parsed as infinity. */
function checkPoint(point, where) {
  expect(isObject(point), `${where} must be an object {x, y, force?}.`);
  for (const key of ['x', 'y']) {
    expect(Number.isFinite(point[key]), `${where}.${key} must be a finite number.`);
  }
  const { force } = point;
  expect(force === undefined || Number.isFinite(force), `${where}.force must be a finite number.`);
}

function checkStroke(stroke, where) {
  expect(Array.isArray(stroke), `${where} must be an array of points.`);
  stroke.forEach((point, i) => checkPoint(point, `${where}[${i}]`));
}

/** Throws a `BadRequest` that names the first thing that is wrong. */
function checkStrokeRequest(value) {
  expect(isObject(value), 'The body must be an object {stroke, width, height, others, engine?}.');
  const { engine = ENGINES[0] } = value;
  expect(ENGINES.includes(engine), `engine must be one of ${ENGINES.join(', ')}.`);
  checkStroke(value.stroke, 'stroke');
  for (const key of ['width', 'height']) {
    expect(Number.isFinite(value[key]) && value[key] > 0, `${key} must be a positive number.`);
  }
  expect(Array.isArray(value.others), 'others must be an array of strokes.');
  value.others.forEach((stroke, i) => checkStroke(stroke, `others[${i}]`));
}

/** The checked body of POST /stroke: {engine, stroke, width, height, others}. */
async function readStrokeRequest(request) {
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
  checkStrokeRequest(value);
  return { engine: ENGINES[0], ...value };
}

module.exports = { BadRequest, ENGINES, MAX_BYTES, checkStrokeRequest, readStrokeRequest };
