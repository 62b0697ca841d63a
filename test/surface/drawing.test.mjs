import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { Drawing } from '../../surface/page/js/model/drawing.mjs';

const ink = (id) => Object.freeze({ id, figure: null });
const figure = (item) => Object.freeze({ ...item, figure: 'square' });

describe('the drawing and its history', () => {
  const made = () => {
    const drawing = new Drawing();
    const put = (n) =>
      Array.from({ length: n }, () => ink(drawing.newId())).map(
        (item) => (drawing.commit('ink', [item]), item),
      );
    const shown = () => drawing.items.map(({ id, figure: f }) => (f ? `${id} ${f}` : `${id}`));
    return { drawing, put, shown };
  };

  test('items come back in their order', () => {
    const { drawing, put, shown } = made();
    put(3);
    drawing.commit('erase', [], [1, 3]);
    assert.deepEqual(shown(), ['2']);
    drawing.undo();
    assert.deepEqual(shown(), ['1', '2', '3']);
    drawing.redo();
    assert.deepEqual(shown(), ['2']);
  });

  test('many answers find room before what can be redone', () => {
    const { drawing, put } = made();
    const items = put(200);
    drawing.undo();
    for (const item of items.slice(0, -1)) drawing.insert('figure', figure(item));
    const keys = drawing.operations.map(({ key }) => key);
    assert.deepEqual(
      keys,
      [...new Set(keys)].sort((p, q) => p - q),
    );
  });

  test('an answer that arrives after an undo keeps what can be redone', () => {
    const { drawing, put, shown } = made();
    const [first] = put(2);
    drawing.commit('clear', [], [1, 2]);
    drawing.undo();
    drawing.undo();
    drawing.insert('figure', figure(first));
    assert.deepEqual(shown(), ['1 square']);
    drawing.redo();
    assert.deepEqual(shown(), ['1 square', '2']);
    drawing.redo();
    drawing.undo();
    assert.deepEqual(shown(), ['1 square', '2'], 'clearing knows the figure');
    [1, 2, 3].forEach(() => drawing.undo());
    assert.deepEqual(shown(), []);
  });

  test('keys of operations stay in order, also of those in between', () => {
    const { drawing, put } = made();
    const [first] = put(2);
    drawing.undo();
    drawing.insert('figure', figure(first));
    const keys = drawing.operations.map(({ key }) => key);
    assert.deepEqual(
      keys,
      [...keys].sort((p, q) => p - q),
    );
    assert.equal(new Set(keys).size, 3);
  });

  test('steps of one kind on the same items become one', () => {
    const { drawing, put } = made();
    const [item] = put(1);
    for (const x of [1, 2, 3]) drawing.continue('move', [Object.freeze({ ...item, x })]);
    assert.equal(drawing.operations.length, 2);
    assert.equal(drawing.items[0].x, 3);
    drawing.undo();
    assert.equal(drawing.items[0].x, undefined);
  });
});
