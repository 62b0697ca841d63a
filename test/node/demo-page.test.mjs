import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { Drawing } from '../../demo/public/js/drawing.mjs';
import { FigureType, figureName } from '../../demo/public/js/figures.mjs';
import { originsOf } from '../../demo/public/js/morph.mjs';
import { isMeasured } from '../../demo/public/js/pen.mjs';
import { PointerGate } from '../../demo/public/js/pointer-gate.mjs';

describe('which pointer draws', () => {
  const event = (pointerType, pointerId, timeStamp = 0, button = 0) => ({
    pointerType,
    pointerId,
    timeStamp,
    button,
  });
  const mouse = event('mouse', 1);
  const pen = event('pen', 2);
  const [finger, secondFinger, thirdFinger] = [10, 11, 12].map((id) => event('touch', id));

  test('one pointer draws from down to up', () => {
    const gate = new PointerGate();
    assert.equal(gate.down(mouse), 'start');
    assert.equal(gate.isDrawing(mouse), true);
    assert.equal(gate.isDrawing(pen), false);
    assert.equal(gate.up(mouse), 'finish');
    assert.equal(gate.up(mouse), 'ignore', 'the capture is lost after the pointer is up');
    assert.equal(gate.down(event('mouse', 1, 0, 2)), 'ignore', 'the right button');
  });

  test('a second pointer does not disturb a stroke', () => {
    const gate = new PointerGate();
    gate.down(pen);
    for (const other of [mouse, finger]) {
      assert.equal(gate.down(other), 'ignore');
      assert.equal(gate.up(other), 'ignore');
    }
    assert.equal(gate.up(pen), 'finish');
  });

  test('two fingers are a gesture: nothing is drawn until both are lifted', () => {
    const gate = new PointerGate();
    gate.down(finger);
    assert.equal(gate.down(secondFinger), 'drop');
    assert.equal(gate.up(secondFinger), 'ignore');
    assert.equal(gate.down(thirdFinger), 'ignore');
    gate.up(thirdFinger);
    assert.equal(gate.up(finger), 'ignore');
    assert.equal(gate.down(finger), 'start');
  });

  test('a hand that comes to rest later leaves the stroke alone', () => {
    const gate = new PointerGate();
    gate.down(finger);
    assert.equal(gate.down(event('touch', 11, 2000)), 'ignore');
    assert.equal(gate.up(finger), 'finish');
  });

  test('a pen takes over from the hand that holds it', () => {
    const gate = new PointerGate();
    gate.down(finger);
    assert.equal(gate.down(pen), 'restart');
    assert.equal(gate.isDrawing(finger), false);
    assert.equal(gate.up(pen), 'finish');
    assert.equal(gate.down(secondFinger), 'ignore', 'the hand still rests');
  });

  test('a cancelled pointer leaves nothing', () => {
    const gate = new PointerGate();
    gate.down(finger);
    assert.equal(gate.cancel(finger), 'drop');
    assert.equal(gate.down(secondFinger), 'start');
  });
});

test('only measured pressure counts', () => {
  assert.equal(isMeasured('pen', [0.5, 0.31, 0.7]), true);
  assert.equal(isMeasured('touch', [0.5, 0.2]), true);
  assert.equal(isMeasured('pen', [0.5, 0.5]), false);
  assert.equal(isMeasured('touch', [1, 1, 0]), false);
  assert.equal(isMeasured('mouse', [0.31]), false);
});

describe('the drawing and its history', () => {
  const ink = [{ x: 0, y: 0 }];
  const line = [{ x: 1, y: 1 }];
  const paths = (drawing) => drawing.strokes.map(({ path }) => path);

  test('undo takes back the figure first, then the ink', () => {
    const drawing = new Drawing();
    const { id } = drawing.add(ink);
    drawing.idealise(id, line, FigureType.LINE);
    assert.deepEqual(paths(drawing), [line]);
    drawing.undo();
    assert.deepEqual(paths(drawing), [null]);
    drawing.undo();
    drawing.undo();
    assert.deepEqual([paths(drawing), drawing.canUndo], [[], false]);
  });

  test('answers find their strokes in any order, and not those undone', () => {
    const drawing = new Drawing();
    const [first, second, third] = [ink, ink, ink].map((points) => drawing.add(points).id);
    drawing.undo();
    assert.equal(drawing.idealise(third, line, FigureType.LINE), null);
    drawing.idealise(second, line, FigureType.LINE);
    assert.deepEqual(paths(drawing), [null, line]);
    drawing.idealise(first, line, FigureType.LINE);
    assert.deepEqual(paths(drawing), [line, line]);
  });

  test('a cleared page comes back', () => {
    const drawing = new Drawing();
    drawing.clear();
    assert.equal(drawing.canUndo, false, 'clearing an empty page is no step');
    drawing.add(ink);
    drawing.clear();
    assert.deepEqual(drawing.strokes, []);
    drawing.undo();
    assert.equal(drawing.strokes.length, 1);
  });
});

describe('names of figures', () => {
  const ring = (rx, ry) =>
    Array.from({ length: 85 }, (_, i) => {
      const angle = ((i % 84) * 2 * Math.PI) / 84;
      return [100 + rx * Math.cos(angle), 100 + ry * Math.sin(angle)];
    });
  const points = (count) => Array.from({ length: count }, () => [0, 0]);
  const cases = [
    ['Triangle', FigureType.POLYGON, points(63)],
    ['Quadrangle', FigureType.POLYGON, points(84)],
    ['Polygon', FigureType.POLYGON, points(105)],
    ['Circle', FigureType.ELLIPSE, ring(50, 50)],
    ['Ellipse', FigureType.ELLIPSE, ring(50, 49)],
    ['Kept as drawn', 3, points(3)],
  ];
  for (const [name, type, outline] of cases) {
    test(name, () => assert.equal(figureName(type, outline), name));
  }
});

describe('where the points of a figure come from', () => {
  const distance = ([ax, ay], [bx, by]) => Math.hypot(ax - bx, ay - by);

  test('a line drawn from right to left does not cross itself on the way', () => {
    const origins = originsOf([[0, 0], [50, 0], [100, 0]], [[100, 8], [50, 8], [0, 8]], false); // prettier-ignore
    origins.forEach((origin, i) => assert.ok(distance(origin, [i * 50, 8]) < 1e-9));
  });

  test('a ring keeps its place though it was drawn the other way from elsewhere', () => {
    const ring = (turns) =>
      Array.from({ length: 64 }, (_, i) => {
        const angle = 2 * Math.PI * turns(i / 63);
        return [100 * Math.cos(angle), 100 * Math.sin(angle)];
      });
    const figure = ring((t) => t);
    const origins = originsOf(
      figure,
      ring((t) => 0.3 - t),
      true,
    );
    origins.forEach((origin, i) => assert.ok(distance(origin, figure[i]) < 5));
  });

  test('ink of one point, or of none but that, is no obstacle', () => {
    const dot = [[5, 5], [5, 5]]; // prettier-ignore
    for (const ink of [
      [[4, 4]],
      [
        [4, 4],
        [4, 4],
      ],
    ]) {
      // prettier-ignore
      assert.deepEqual(originsOf(dot, ink, false), [[4, 4], [4, 4]]); // prettier-ignore
      assert.deepEqual(originsOf(dot, ink, true), [[4, 4], [4, 4]]); // prettier-ignore
    }
  });
});
