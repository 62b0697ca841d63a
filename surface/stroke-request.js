'use strict';

const MAX_BYTES = 32 * 2 ** 20;

/** A request that the client can put right. */
class BadRequest extends Error {
  constructor(status, message, headers = {}) {
    super(message);
    this.status = status;
    this.headers = headers;
  }
}

async function readBody(request) {
  const tooLarge = () => new BadRequest(413, `A request has ${MAX_BYTES} bytes at most.`);
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

/** JSON has no NaN or infinity, but 1e999 reads as one. */
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
  expect(isObject(value), 'The body must be an object {stroke, width, height, others}.');
  checkStroke(value.stroke, 'stroke');
  for (const key of ['width', 'height']) {
    expect(Number.isFinite(value[key]) && value[key] > 0, `${key} must be a positive number.`);
  }
  expect(Array.isArray(value.others), 'others must be an array of strokes.');
  value.others.forEach((stroke, i) => checkStroke(stroke, `others[${i}]`));
}

/** The checked body of POST /stroke: {stroke, width, height, others}. */
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
    throw new BadRequest(400, `The body is no JSON: ${error.message}`);
  }
  checkStrokeRequest(value);
  return value;
}

module.exports = { BadRequest, MAX_BYTES, checkStrokeRequest, readStrokeRequest };
