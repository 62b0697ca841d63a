import assert from 'node:assert/strict';
import { test } from 'node:test';
import { withRest } from '../../surface/public/js/rest.mjs';

test('a resting pointer gets a sample per frame, a moving one stays as it is', () => {
  const size = { width: 1000, height: 500 };
  const press = [
    { x: 0.5, y: 0.5 },
    { x: 0.5089, y: 0.5 },
  ];
  const rested = withRest(press, 30, size);
  assert.deepEqual([rested.length, rested[29]], [30, press[1]]);
  assert.deepEqual(withRest(press, 1, size), press);
  for (const end of [
    { x: 0.509, y: 0.5 },
    { x: 0.5, y: 0.518 },
  ]) {
    const moved = [press[0], end];
    assert.equal(withRest(moved, 30, size), moved);
  }
  assert.deepEqual(withRest([], 30, size), []);
});
