// @ts-check
// What buttons and keys do to the drawing.

import * as plane from '../model/geometry.mjs';
import { boundsOf, transform } from '../model/item.mjs';
import { latest, selection } from '../store/settings.mjs';

// A copy is put this many units beside its original.
const COPY_OFFSET = 24;

/** @typedef {ReturnType<typeof createCommands>} Commands */

/**
 * @param {import('./draw-tool.mjs').Context} context
 * @param {(text: string) => void} say tells the user what has happened
 */
export function createCommands({ drawing, recogniser, announce }, say) {
  const selected = () => [...selection.value].flatMap((id) => drawing.get(id) ?? []);

  /** The item that commands without a selection work on: the latest one. */
  function current() {
    const [item = drawing.get(latest.value ?? -1)] = selected();
    return item;
  }

  /** @param {Item[]} items */
  function select(items) {
    selection.value = new Set(items.map(({ id }) => id));
    if (items.length > 0) latest.value = items[0].id;
  }

  function dropMissing() {
    selection.value = new Set([...selection.value].filter((id) => drawing.get(id)));
  }

  const HISTORY = {
    ink: 'ink',
    figure: 'figure',
    clear: 'clearing',
    erase: 'erasing',
    change: 'change',
  };

  /** @param {string} done @param {Operation | null} operation */
  function sayHistory(done, operation) {
    dropMissing();
    if (operation) latest.value = operation.changes[0]?.id ?? null;
    const what =
      HISTORY[/** @type {keyof typeof HISTORY} */ (operation?.label)] ?? operation?.label;
    say(operation ? `${done}: ${what}` : `Nothing to ${done === 'Undone' ? 'undo' : 'redo'}`);
  }

  return {
    selected,
    current,
    select,
    undo: () => sayHistory('Undone', drawing.undo()),
    redo: () => sayHistory('Redone', drawing.redo()),

    clear() {
      const count = drawing.items.length;
      drawing.commit(
        'clear',
        [],
        drawing.items.map(({ id }) => id),
      );
      dropMissing();
      if (count > 0) say('The page is empty. Undo brings everything back.');
    },

    remove() {
      const items = selected();
      drawing.commit(
        'erase',
        [],
        items.map(({ id }) => id),
      );
      dropMissing();
      if (items.length > 0) say(items.length === 1 ? 'Deleted' : `${items.length} deleted`);
    },

    duplicate() {
      const move = plane.translation(COPY_OFFSET, COPY_OFFSET);
      const copies = selected().map((item) =>
        Object.freeze({ ...transform(item, move), id: drawing.newId() }),
      );
      if (copies.length === 0) return;
      drawing.commit('duplicate', copies);
      select(copies);
      say('Duplicated');
    },

    /** @param {number} dx @param {number} dy units */
    nudge(dx, dy) {
      const items = selected();
      if (items.length === 0) return;
      drawing.continue(
        'move',
        items.map((item) => transform(item, plane.translation(dx, dy))),
      );
      say('Moved');
    },

    /** @param {number} factor @param {number} [angle] radians */
    resize(factor, angle = 0) {
      const items = selected();
      if (items.length === 0) return;
      const { left, top, right, bottom } = plane.unite(items.map(boundsOf));
      const change = plane.about({ x: (left + right) / 2, y: (top + bottom) / 2 }, factor, angle);
      drawing.continue(
        angle ? 'turn' : 'resize',
        items.map((item) => transform(item, change)),
      );
      say(angle ? 'Turned' : factor > 1 ? 'Larger' : 'Smaller');
    },

    /** @param {{colour?: number, width?: number}} style */
    restyle(style) {
      const items = selected();
      if (items.length > 0)
        drawing.commit(
          'change',
          items.map((item) => Object.freeze({ ...item, ...style })),
        );
    },

    /** Turns a figure back into its ink. @param {Item | undefined} [item] */
    toInk(item = current()) {
      if (!item?.figure) return;
      const answer = item.answer && { ...item.answer, second: null };
      drawing.commit('as drawn', [Object.freeze({ ...item, figure: null, answer })]);
      say('As drawn');
    },

    /**
     * Turns an item into the best figure of a family or kind for its ink, or into what the engine
     * makes of it.
     *
     * @param {Wish} [wish] @param {Item | undefined} [item]
     */
    async toFigure(wish, item = current()) {
      if (!item) return;
      try {
        const { figure, answer } = await recogniser.recognise(item.ink, wish);
        const now = drawing.get(item.id);
        if (!now) return;
        if (!figure) {
          drawing.amend(Object.freeze({ ...now, answer }));
          return say('No such figure fits this ink');
        }
        const alternatives = wish ? (now.answer?.alternatives ?? []) : answer.alternatives;
        const next = Object.freeze({ ...now, figure, answer: { ...answer, alternatives } });
        drawing.commit('figure', [next]);
        announce(next);
      } catch {
        say('The engine does not answer. Try again later.');
      }
    },

    /** Selects the next item, or none at the end. @param {1 | -1} step @returns {boolean} whether one is selected */
    walk(step) {
      const { items } = drawing;
      const at = items.findIndex(({ id }) => selection.value.has(id));
      const next = at < 0 ? (step > 0 ? 0 : items.length - 1) : at + step;
      const item = items[next];
      select(item ? [item] : []);
      if (item) announce(item);
      return Boolean(item);
    },

    selectAll: () => select([...drawing.items]),
  };
}
