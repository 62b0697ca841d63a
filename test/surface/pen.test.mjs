import assert from 'node:assert/strict';
import { test } from 'node:test';
import { isMeasured } from '../../surface/public/js/pen.mjs';

test('only measured pressure counts', () => {
  assert.equal(isMeasured('pen', [0.5, 0.31, 0.7]), true);
  assert.equal(isMeasured('touch', [0.5, 0.2]), true);
  assert.equal(isMeasured('pen', [0.5, 0.5]), false);
  assert.equal(isMeasured('touch', [1, 1, 0]), false);
  assert.equal(isMeasured('mouse', [0.31]), false);
});
