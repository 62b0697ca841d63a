import assert from 'node:assert/strict';
import { test } from 'node:test';
import { isClosed, resample } from '../../surface/public/js/geometry.mjs';

test('an outline is closed when it ends where it starts', () => {
  const corner = [[0, 0], [10, 0], [10, 10]]; // prettier-ignore
  assert.equal(isClosed(corner), false);
  assert.equal(isClosed([...corner, [1e-9, 0]]), true);
});

test('resampled points are evenly spaced, whatever the spacing of the ink', () => {
  const ink = [[0, 0], [1, 0], [1, 0], [4, 0], [4, 4]]; // prettier-ignore
  const expected = [[0, 0], [2, 0], [4, 0], [4, 2], [4, 4]]; // prettier-ignore
  resample(ink, 5).forEach((point, i) => {
    assert.ok(Math.hypot(point[0] - expected[i][0], point[1] - expected[i][1]) < 1e-12, `${point}`);
  });
});
