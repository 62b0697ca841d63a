'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { after } = require('node:test');
const { readInk } = require('../../packages/cli/lib/read/ink.js');
const { parseBlock } = require('../../packages/cli/lib/read/ndjson.js');
const { makeFolder } = require('./cli.js');

const folder = makeFolder(after);

/** Everything that an input with this content holds. */
async function read(content, options = {}) {
  const file = path.join(folder, 'ink.dat');
  fs.writeFileSync(file, content);
  const found = { strokes: [], problems: [], damage: undefined, passedOver: [] };
  for await (const job of readInk(file, { step: 4, onBytes: () => {}, ...options })) {
    if (job.damage) found.damage = job.damage;
    else take(found, job.records ? job : { ...parseBlock(job), passedOver: [] });
  }
  return found;
}

function take(found, { records, passedOver }) {
  found.passedOver.push(...passedOver);
  for (const { line, stroke, problem } of records) {
    if (stroke) found.strokes.push(stroke);
    else found.problems.push(`${line}: ${problem}`);
  }
}

/** Compares values with their JSON text. */
function assertJson(actual, expected) {
  assert.deepEqual(actual, JSON.parse(expected));
}

function assertPoints({ strokes }, expected) {
  const points = strokes.map((stroke) => stroke.points);
  assertJson(points, expected);
}

/** Each message, in its order, matches its pattern. */
function assertMessages(messages, patterns) {
  assert.equal(messages.length, patterns.length, messages.join('\n'));
  patterns.forEach((pattern, i) => assert.match(messages[i], pattern));
}

module.exports = { assertJson, assertMessages, assertPoints, read };
