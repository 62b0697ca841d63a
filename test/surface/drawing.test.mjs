import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { Drawing } from '../../surface/public/js/drawing.mjs';

describe('the drawing and its history', () => {
  const ink = [{ x: 0, y: 0 }];
  const line = [{ x: 1, y: 1 }];
  const figure = { kind: 'line' };
  const paths = (drawing) => drawing.strokes.map(({ path }) => path);

  test('undo takes back the figure first, then the ink', () => {
    const drawing = new Drawing();
    const { id } = drawing.add(ink);
    drawing.idealise(id, line, figure);
    assert.deepEqual(paths(drawing), [line]);
    drawing.undo();
    assert.deepEqual(paths(drawing), [null]);
    drawing.undo();
    drawing.undo();
    assert.deepEqual([paths(drawing), drawing.canUndo], [[], false]);
  });

  test('answers reach their strokes in any order, unless undone', () => {
    const drawing = new Drawing();
    const [first, second, third] = [ink, ink, ink].map((points) => drawing.add(points).id);
    drawing.undo();
    assert.equal(drawing.idealise(third, line, figure), null);
    drawing.idealise(second, line, figure);
    assert.deepEqual(paths(drawing), [null, line]);
    drawing.idealise(first, line, figure);
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
