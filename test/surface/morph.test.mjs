import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { originsOf } from '../../surface/public/js/morph.mjs';

describe('where the points of a figure come from', () => {
  const distance = ([ax, ay], [bx, by]) => Math.hypot(ax - bx, ay - by);

  test('a line drawn from right to left does not cross itself on the way', () => {
    const origins = originsOf([[0, 0], [50, 0], [100, 0]], [[100, 8], [50, 8], [0, 8]], false); // prettier-ignore
    origins.forEach((origin, i) => assert.ok(distance(origin, [i * 50, 8]) < 1e-9));
  });

  test('a ring stays in place though it was drawn backwards from another start', () => {
    const ring = (turns) =>
      Array.from({ length: 64 }, (_, i) => {
        const angle = 2 * Math.PI * turns(i / 63);
        return [100 * Math.cos(angle), 100 * Math.sin(angle)];
      });
    const figure = ring((t) => t);
    const drawn = ring((t) => 0.3 - t);
    const origins = originsOf(figure, drawn, true);
    origins.forEach((origin, i) => assert.ok(distance(origin, figure[i]) < 5));
  });

  test('ink of one point, once or twice, is enough', () => {
    const twice = (point) => [point, point];
    for (const ink of [[[4, 4]], twice([4, 4])]) {
      for (const closed of [false, true]) {
        assert.deepEqual(originsOf(twice([5, 5]), ink, closed), twice([4, 4]));
      }
    }
  });
});
