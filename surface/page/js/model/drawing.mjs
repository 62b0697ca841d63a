// @ts-check
// The items on the surface and their history, a list of operations.

import { Grid } from './grid.mjs';

/**
 * A drawing fires 'change' with `detail`:
 * - `changes`: what has changed on the surface, each {id, before, after}
 * - `written` and `dropped`: operations that are new or have changed, and those that are gone
 * and 'sketch' when a stroke has begun or ended.
 */
export class Drawing extends EventTarget {
  /** @type {Map<number, Item>} */
  #items = new Map();
  /** @type {Item[] | null} */
  #sorted = null;
  /** @type {Operation[]} */
  #operations = [];
  /** Number of operations that are in force. */
  #position = 0;
  #lastId = 0;
  /** @type {Sketch | null} */
  #sketch = null;
  #grid = new Grid();
  /** Copies of the changes that the grid does not have yet. @type {Change[]} */
  #moved = [];

  /** Items in the order in which they are painted. */
  get items() {
    this.#sorted ??= [...this.#items.values()].sort((p, q) => p.id - q.id);
    return this.#sorted;
  }

  get operations() {
    return this.#operations;
  }

  get position() {
    return this.#position;
  }

  get undoLabel() {
    return this.#operations[this.#position - 1]?.label ?? null;
  }

  get redoLabel() {
    return this.#operations[this.#position]?.label ?? null;
  }

  newId() {
    return (this.#lastId += 1);
  }

  /** The stroke in progress. */
  get sketch() {
    return this.#sketch;
  }

  set sketch(sketch) {
    this.#sketch = sketch;
    this.dispatchEvent(new Event('sketch'));
  }

  /** The items that are painted within a box, in the order in which they are painted. @param {Bounds} box */
  within(box) {
    for (const { before, after } of this.#moved) {
      if (before) this.#grid.delete(before);
      if (after) this.#grid.add(after);
    }
    this.#moved = [];
    return this.#grid.within(box);
  }

  /** @param {number} id */
  get(id) {
    return this.#items.get(id);
  }

  /**
   * Adds, replaces (same id) and removes items as one step.
   *
   * @param {string} label
   * @param {Item[]} put
   * @param {Iterable<number>} [removed] ids
   */
  commit(label, put, removed = []) {
    const changes = this.#changesFor(put, removed);
    if (changes.length === 0) return;
    const dropped = this.#operations.splice(this.#position);
    const key = (this.#operations.at(-1)?.key ?? 0) + 1;
    const operation = { key, label, changes };
    this.#operations.push(operation);
    this.#position += 1;
    this.#show(changes, [operation], dropped);
  }

  /**
   * Replaces one item as a step of its own. Unlike `commit` this keeps what can be redone: it is for
   * answers that arrive later.
   *
   * @param {string} label @param {Item} item
   */
  insert(label, item) {
    const before = this.#items.get(item.id);
    if (!before) return;
    const [previous, next] = [
      this.#operations[this.#position - 1],
      this.#operations[this.#position],
    ];
    const least = previous?.key ?? 0;
    // Near the previous one: room for thousands of answers in between.
    const key = next ? least + (next.key - least) / 1024 : least + 1;
    const operation = { key, label, changes: [{ id: item.id, before, after: item }] };
    const rewritten = this.#rewrite(before, item, this.#position);
    this.#operations.splice(this.#position, 0, operation);
    this.#position += 1;
    this.#show(operation.changes, [operation, ...rewritten], []);
  }

  /** Replaces one item in place, in the history too. @param {Item} item */
  amend(item) {
    const before = this.#items.get(item.id);
    if (!before) return;
    const written = this.#rewrite(before, item, 0);
    this.#show([{ id: item.id, before, after: item }], written, []);
  }

  /**
   * Replaces the last step when it has this label and touched the same items, as when an arrow key
   * repeats; otherwise adds a step.
   *
   * @param {string} label @param {Item[]} put
   */
  continue(label, put) {
    const last = this.#operations[this.#position - 1];
    const same =
      last?.label === label &&
      this.#position === this.#operations.length &&
      last.changes.length === put.length &&
      last.changes.every(({ id }, i) => id === put[i].id);
    if (!same) return this.commit(label, put);
    const changes = this.#changesFor(put, []);
    last.changes.forEach((change, i) => (change.after = put[i]));
    return this.#show(changes, [last], []);
  }

  undo() {
    const operation = this.#operations[this.#position - 1];
    if (!operation) return null;
    this.#position -= 1;
    const changes = operation.changes.map(({ id, before, after }) => ({
      id,
      before: after,
      after: before,
    }));
    this.#show(changes, [], []);
    return operation;
  }

  redo() {
    const operation = this.#operations[this.#position];
    if (!operation) return null;
    this.#position += 1;
    this.#show(operation.changes, [], []);
    return operation;
  }

  /** Takes over a stored history in place of its own. @param {Operation[]} operations @param {number} position */
  load(operations, position) {
    const gone = this.items.map((before) => ({ id: before.id, before, after: null }));
    this.#operations = operations;
    this.#position = position;
    for (const { changes } of operations) {
      for (const { id } of changes) this.#lastId = Math.max(this.#lastId, id);
    }
    const loaded = operations.slice(0, position).flatMap(({ changes }) => changes);
    this.#show([...gone, ...loaded], [], []);
  }

  /** @param {Item[]} put @param {Iterable<number>} removed @returns {Change[]} */
  #changesFor(put, removed) {
    const changed = put.map((after) => ({
      id: after.id,
      before: this.get(after.id) ?? null,
      after,
    }));
    const gone = [...removed].flatMap((id) => {
      const before = this.get(id);
      return before ? [{ id, before, after: null }] : [];
    });
    return [...changed, ...gone];
  }

  /**
   * Puts `after` in the place of `before` in all operations from a position on.
   *
   * @param {Item} before @param {Item} after @param {number} from
   */
  #rewrite(before, after, from) {
    const rewritten = [];
    for (let i = this.#operations.length - 1; i >= from; i -= 1) {
      const operation = this.#operations[i];
      let touched = false;
      for (const change of operation.changes) {
        if (change.before === before) [change.before, touched] = [after, true];
        if (change.after === before) [change.after, touched] = [after, true];
      }
      if (touched) rewritten.push(operation);
      // No operation before the one that added the item knows it.
      const [first] = operation.changes;
      if (operation.changes.length === 1 && first.id === after.id && !first.before) break;
    }
    return rewritten;
  }

  /** @param {Change[]} changes @param {Operation[]} written @param {Operation[]} dropped */
  #show(changes, written, dropped) {
    for (const { id, before, after } of changes) {
      this.#moved.push({ id, before, after });
      if (after) this.#items.set(id, after);
      else this.#items.delete(id);
    }
    if (changes.length === 1) this.#sortIn(changes[0]);
    else this.#sorted = null;
    this.dispatchEvent(new CustomEvent('change', { detail: { changes, written, dropped } }));
  }

  /** Keeps the sorted list up to date where that is simple. @param {Change} change */
  #sortIn({ id, after }) {
    const sorted = this.#sorted;
    const last = sorted?.[sorted.length - 1];
    if (!sorted || !after) this.#sorted = null;
    else if (!last || last.id < id) sorted.push(after);
    else if (sorted.length < this.#items.size) this.#sorted = null;
    else sorted[sorted.findLastIndex((item) => item.id === id)] = after;
  }
}
