// @ts-check
// Finds items by where they are: a grid whose cells list the items that reach into them.

import { overlap } from './geometry.mjs';
import { paintedBounds } from './item.mjs';

// Side of a cell, units: about the size of a figure.
const CELL = 128;

// Items that reach into more cells than this are listed apart.
const MOST_CELLS = 64;

/** @param {Bounds} box */
function cellsOf({ left, top, right, bottom }) {
  const [x0, y0, x1, y1] = [left, top, right, bottom].map((v) => Math.floor(v / CELL));
  return { x0, y0, x1, y1, count: (x1 - x0 + 1) * (y1 - y0 + 1) };
}

export class Grid {
  /** Items by cell. @type {Map<string, Set<Item>>} */
  #cells = new Map();
  /** @type {Set<Item>} */
  #large = new Set();
  /** @type {Set<Item>} */
  #all = new Set();

  /** @param {Item} item */
  add(item) {
    this.#all.add(item);
    this.#listsOf(item, (list) => list.add(item));
  }

  /** @param {Item} item */
  delete(item) {
    if (this.#all.delete(item)) this.#listsOf(item, (list) => list.delete(item));
  }

  /** The items that are painted within a box, in the order in which they are painted. @param {Bounds} box @returns {Item[]} */
  within(box) {
    const found = new Set(this.#large);
    const cells = cellsOf(box);
    if (!(cells.count < this.#all.size)) return this.#select(this.#all, box);
    for (let x = cells.x0; x <= cells.x1; x += 1) {
      for (let y = cells.y0; y <= cells.y1; y += 1) {
        for (const item of this.#cells.get(`${x} ${y}`) ?? []) found.add(item);
      }
    }
    return this.#select(found, box);
  }

  /** @param {Set<Item>} items @param {Bounds} box */
  #select(items, box) {
    return [...items]
      .filter((item) => overlap(paintedBounds(item), box))
      .sort((p, q) => p.id - q.id);
  }

  /** @param {Item} item @param {(list: Set<Item>) => void} act */
  #listsOf(item, act) {
    const { x0, y0, x1, y1, count } = cellsOf(paintedBounds(item));
    if (!(count <= MOST_CELLS)) return act(this.#large);
    for (let x = x0; x <= x1; x += 1) {
      for (let y = y0; y <= y1; y += 1) {
        const name = `${x} ${y}`;
        let list = this.#cells.get(name);
        if (!list) this.#cells.set(name, (list = new Set()));
        act(list);
        if (list.size === 0) this.#cells.delete(name);
      }
    }
  }
}
