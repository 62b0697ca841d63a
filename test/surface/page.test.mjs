import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { Drawing } from '../../surface/public/js/drawing.mjs';
import { FigureType, figureName } from '../../surface/public/js/figures.mjs';
import { originsOf } from '../../surface/public/js/morph.mjs';
import { isMeasured } from '../../surface/public/js/pen.mjs';
import { PointerGate } from '../../surface/public/js/pointer-gate.mjs';

describe('which pointer draws', () => {
  const plain = { timeStamp: 0, button: 0 };
  const event = (pointerType, pointerId, more) => ({ ...plain, pointerType, pointerId, ...more });
  const pointers = {
    mouse: event('mouse', 1),
    'right-button': event('mouse', 1, { button: 2 }),
    pen: event('pen', 2),
    finger: event('touch', 10),
    second: event('touch', 11),
    'second-later': event('touch', 11, { timeStamp: 2000 }),
    third: event('touch', 12),
  };
  /** What happens, to which pointer, and what the gate then says. */
  const sequences = {
    'one pointer draws from down to up': [
      'down mouse start, isDrawing mouse true, isDrawing pen false, up mouse finish',
      'up mouse ignore', // the capture is lost after the pointer is up
      'down right-button ignore',
    ],
    'a second pointer does not disturb a stroke': [
      'down pen start, down mouse ignore, up mouse ignore',
      'down finger ignore, up finger ignore, up pen finish',
    ],
    'two fingers are a gesture: nothing is drawn until both are lifted': [
      'down finger start, down second drop, up second ignore, down third ignore',
      'up third ignore, up finger ignore, down finger start',
    ],
    'a hand that comes to rest later leaves the stroke alone': [
      'down finger start, down second-later ignore, up finger finish',
    ],
    'a pen takes over from the hand that holds it': [
      'down finger start, down pen restart, isDrawing finger false, up pen finish',
      'down second ignore', // the hand still rests
    ],
    'a cancelled pointer leaves nothing': [
      'down finger start, cancel finger drop, down second start',
    ],
  };
  for (const [name, steps] of Object.entries(sequences)) {
    test(name, () => {
      const gate = new PointerGate();
      for (const step of steps.join(', ').split(', ')) {
        const [action, pointer, expected] = step.split(' ');
        assert.equal(String(gate[action](pointers[pointer])), expected, step);
      }
    });
  }
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
    const drawn = ring((t) => 0.3 - t);
    const origins = originsOf(figure, drawn, true);
    origins.forEach((origin, i) => assert.ok(distance(origin, figure[i]) < 5));
  });

  test('ink of one point, or of none but that, is no obstacle', () => {
    const twice = (point) => [point, point];
    for (const ink of [[[4, 4]], twice([4, 4])]) {
      for (const closed of [false, true]) {
        assert.deepEqual(originsOf(twice([5, 5]), ink, closed), twice([4, 4]));
      }
    }
  });
});
