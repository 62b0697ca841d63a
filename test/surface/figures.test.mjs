import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import * as figures from '../../surface/page/js/model/figure.mjs';
import { about, apply } from '../../surface/page/js/model/geometry.mjs';
import { dragHandle, handlesOf } from '../../surface/page/js/model/handles.mjs';
import { quadrangleKind, triangleKind } from '../../surface/page/js/model/kinds.mjs';
import { makeInk } from '../../surface/page/js/model/ink.mjs';
import { figureLabel, measuresOf } from '../../surface/page/js/panels/labels.mjs';
import { shapeOf } from '../../surface/page/js/view/ink-trail.mjs';

const places = (...pairs) => pairs.map(([x, y]) => ({ x, y }));
const SQUARE = figures.polygonFigure(places([0, 0], [100, 0], [100, 100], [0, 100]));
const RECTANGLE = figures.polygonFigure(places([0, 0], [200, 0], [200, 100], [0, 100]));
const ELLIPSE = {
  kind: 'ellipse',
  centre: { x: 10, y: 20 },
  radii: { x: 80, y: 30 },
  rotation: 0.3,
};
const near = (p, q) => assert.ok(Math.hypot(p.x - q.x, p.y - q.y) < 1e-9, JSON.stringify([p, q]));

describe('figures as objects', () => {
  test('kinds follow the corners', () => {
    const kinds = {
      square: [
        [0, 0],
        [3, 4],
        [-1, 7],
        [-4, 3],
      ],
      rectangle: [
        [0, 0],
        [200, 0],
        [200, 90],
        [0, 90],
      ],
      rhombus: [
        [0, 0],
        [50, 80],
        [0, 160],
        [-50, 80],
      ],
      parallelogram: [
        [0, 0],
        [100, 0],
        [130, 50],
        [30, 50],
      ],
      trapezoid: [
        [0, 0],
        [100, 0],
        [80, 50],
        [30, 50],
      ],
      kite: [
        [0, 0],
        [50, 50],
        [0, 160],
        [-50, 50],
      ],
      general: [
        [0, 0],
        [100, 10],
        [80, 70],
        [-20, 50],
      ],
    };
    for (const [kind, corners] of Object.entries(kinds)) {
      assert.equal(quadrangleKind(places(...corners)), kind);
    }
    const triangles = {
      equilateral: [
        [0, 0],
        [100, 0],
        [50, 86.6],
      ],
      right: [
        [0, 0],
        [100, 0],
        [0, 50],
      ],
      isosceles: [
        [0, 0],
        [100, 0],
        [50, 140],
      ],
      general: [
        [0, 0],
        [100, 0],
        [20, 90],
      ],
    };
    for (const [kind, corners] of Object.entries(triangles)) {
      assert.equal(triangleKind(places(...corners)), kind);
    }
  });

  test('a similarity moves the outline as it moves its points', () => {
    const change = about({ x: 5, y: -3 }, 1.7, 1.2);
    for (const figure of [SQUARE, ELLIPSE, { kind: 'circle', centre: { x: 1, y: 2 }, radius: 9 }]) {
      const moved = figures.transform(figure, change);
      for (const place of figures.polylineOf(figure)) {
        assert.ok(figures.distanceTo(moved, apply(change, place)) < 0.2);
      }
    }
  });

  test('corners keep the kind of squares and rectangles unless they are free', () => {
    const corner = (figure) => handlesOf(figure, 30).find(({ id }) => id === 'corner 2');
    const to = { x: 150, y: 130 };
    const square = dragHandle(SQUARE, corner(SQUARE), to);
    near(square.corners[2], { x: 140, y: 140 });
    near(square.corners[0], { x: 0, y: 0 });
    const rectangle = dragHandle(RECTANGLE, corner(RECTANGLE), to);
    near(rectangle.corners[2], to);
    assert.equal(rectangle.subtype, 'rectangle');
    const free = dragHandle(SQUARE, corner(SQUARE), to, true);
    near(free.corners[2], to);
    assert.notEqual(free.subtype, 'square');
  });

  test('axes, turning and names', () => {
    const [axis] = handlesOf(ELLIPSE, 30);
    const longer = dragHandle(ELLIPSE, axis, {
      x: 10 + 2 * (axis.place.x - 10),
      y: 20 + 2 * (axis.place.y - 20),
    });
    assert.deepEqual([Math.round(longer.radii.x), longer.radii.y], [160, 30]);
    const turn = handlesOf(SQUARE, 30).find(({ id }) => id === 'turn');
    const turned = dragHandle(SQUARE, turn, { x: 500, y: 50 });
    near(turned.corners[0], { x: 100, y: 0 });
    assert.deepEqual([figureLabel(turned), measuresOf(turned)[0]], ['Square', ['Sides', '100']]);
    assert.equal(figureLabel({ kind: 'triangle', subtype: 'right' }), 'Right triangle');
  });
});

describe('the weight of ink', () => {
  const frame = { left: 0, top: 0, width: 800, height: 600, scale: 1 };
  /** A wave drawn in one second. */
  const wave = (rate, { pressure = 0.5, measured = false, seconds = 1 } = {}) => {
    const count = rate * seconds + 1;
    const samples = Float32Array.from({ length: 4 * count }, (_, k) => {
      const t = Math.floor(k / 4) / (rate * seconds);
      return [600 * t, 80 * Math.sin(6 * t), pressure, 1000 * seconds * t][k % 4];
    });
    return shapeOf(makeInk({ samples, measured, frame }), 4).weight;
  };

  test('does not depend on the sampling rate', () => {
    const [slow, fast] = [wave(60), wave(240)];
    assert.ok(Math.abs(slow - fast) < 0.05 * slow, `${slow} and ${fast}`);
  });

  test('depends on speed and on measured pressure', () => {
    assert.ok(wave(60, { seconds: 4 }) > 1.1 * wave(60));
    assert.ok(
      wave(60, { measured: true, pressure: 0.9 }) >
        1.3 * wave(60, { measured: true, pressure: 0.4 }),
    );
    assert.equal(wave(60, { pressure: 0.9 }), wave(60, { pressure: 0.4 }));
  });
});
