'use strict';

const assert = require('node:assert/strict');
const { test } = require('node:test');
const { checkStrokeRequest } = require('../../surface/stroke-request.js');

const REQUEST = { stroke: [{ x: 0.1, y: 0.2, force: 0.5 }], width: 800, height: 600, others: [[]] };

test('accepts a correct request', () => {
  checkStrokeRequest(REQUEST);
  checkStrokeRequest({ ...REQUEST, engine: 'template' });
});

const WRONG = [
  [[], /^The body must be an object \{stroke/],
  [null, /^The body must be an object/],
  [{}, /^stroke must be an array/],
  [{ stroke: [{ x: 0, y: 0 }, null] }, /^stroke\[1\] must be an object/],
  [{ stroke: [{ x: 0, y: '1' }] }, /^stroke\[0\]\.y must be a finite number/],
  [{ stroke: [{ x: Infinity, y: 0 }] }, /^stroke\[0\]\.x must be a finite number/],
  [{ stroke: [{ x: 0, y: 0, force: null }] }, /^stroke\[0\]\.force must be/],
  [{ ...REQUEST, width: 0 }, /^width must be a positive number/],
  [{ ...REQUEST, height: null }, /^height must be a positive number/],
  [{ ...REQUEST, others: {} }, /^others must be an array/],
  [{ ...REQUEST, others: [[], [{ x: 1 }]] }, /^others\[1\]\[0\]\.y must be/],
  [{ ...REQUEST, engine: 'both' }, /^engine must be one of beautifier, template/],
];
for (const [request, message] of WRONG) {
  test(`a wrong request is refused: ${message.source}`, () => {
    assert.throws(() => checkStrokeRequest(request), { status: 400, message });
  });
}
