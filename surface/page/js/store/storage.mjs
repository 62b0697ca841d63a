// @ts-check
// Keeps the history of the drawing in the browser's database, operation by operation, so that a
// reload or a crash of the tab loses nothing.

import { makeInk } from '../model/ink.mjs';

const NAME = 'scrivo-drawing';
const LOCK = 'scrivo-drawing';
const STORES = ['operations', 'inks', 'state'];

/** @typedef {import('../model/drawing.mjs').Drawing} Drawing */

/** @template T @param {IDBRequest<T>} request @returns {Promise<T>} */
function done(request) {
  return new Promise((resolve, reject) => {
    request.onsuccess = () => resolve(request.result);
    request.onerror = () => reject(request.error);
  });
}

/** @returns {Promise<IDBDatabase>} */
function openDatabase() {
  const request = indexedDB.open(NAME, 1);
  request.onupgradeneeded = () => {
    for (const name of STORES) request.result.createObjectStore(name);
  };
  return done(request);
}

/** Whether this is the only tab with the drawing. The lock is held until the tab is closed. */
async function isAlone() {
  if (!navigator.locks) return true;
  return new Promise((resolve) => {
    navigator.locks
      .request(LOCK, { ifAvailable: true }, (lock) => {
        resolve(lock !== null);
        return lock && new Promise(() => {});
      })
      .catch(() => resolve(true)); // a page from disk may have no locks
  });
}

/** An item with the id of its ink in place of the ink. @param {Item | null} item */
const pack = (item) => item && { ...item, ink: item.ink.id };

/** Writes what changes. Loading comes first: see `openStorage`. */
class Storage {
  #database;
  #drawing;
  /** @type {Set<number>} */
  #savedInks;
  /** Operations to write, by key; undefined for those to remove. @type {Map<number, Operation | undefined>} */
  #pending = new Map();
  #isScheduled = false;
  #onFailure;

  /**
   * @param {IDBDatabase} database @param {Drawing} drawing @param {Set<number>} savedInks
   * @param {(error: unknown) => void} onFailure
   */
  constructor(database, drawing, savedInks, onFailure) {
    this.#database = database;
    this.#drawing = drawing;
    this.#savedInks = savedInks;
    this.#onFailure = onFailure;
    drawing.addEventListener('change', (event) =>
      this.#onChange(/** @type {CustomEvent} */ (event).detail),
    );
  }

  /** @param {{written: Operation[], dropped: Operation[]}} detail */
  #onChange({ written, dropped }) {
    for (const operation of dropped) this.#pending.set(operation.key, undefined);
    for (const operation of written) this.#pending.set(operation.key, operation);
    if (this.#isScheduled) return;
    this.#isScheduled = true;
    // After the picture: a copy of long ink takes a while.
    setTimeout(() => this.#write());
  }

  #write() {
    this.#isScheduled = false;
    try {
      const transaction = this.#database.transaction(STORES, 'readwrite');
      const [operations, inks, state] = STORES.map((name) => transaction.objectStore(name));
      for (const [key, operation] of this.#pending) {
        if (!operation) {
          operations.delete(key);
          continue;
        }
        this.#writeInks(operation, inks);
        const changes = operation.changes.map(({ id, before, after }) => ({
          id,
          before: pack(before),
          after: pack(after),
        }));
        operations.put({ ...operation, changes }, key);
      }
      state.put(this.#drawing.position, 'position');
      this.#pending.clear();
      transaction.onabort = () => this.#onFailure(transaction.error);
    } catch (error) {
      this.#onFailure(error);
    }
  }

  /** @param {Operation} operation @param {IDBObjectStore} store */
  #writeInks({ changes }, store) {
    for (const item of changes.flatMap(({ before, after }) => [before, after])) {
      if (!item || this.#savedInks.has(item.ink.id)) continue;
      this.#savedInks.add(item.ink.id);
      store.put(item.ink, item.ink.id);
    }
  }
}

/**
 * Deletes inks of operations that are gone.
 *
 * @param {IDBDatabase} database @param {Operation[]} operations @param {Map<number, Ink>} inks
 */
function dropUnused(database, operations, inks) {
  const items = operations.flatMap(({ changes }) =>
    changes.flatMap(({ before, after }) => [before, after]),
  );
  const used = new Set(items.map((item) => item?.ink));
  const store = database.transaction('inks', 'readwrite').objectStore('inks');
  for (const [id, ink] of inks) {
    if (used.has(ink)) continue;
    store.delete(id);
    inks.delete(id);
  }
}

/**
 * Loads the stored drawing and keeps it stored from now on.
 *
 * @param {Drawing} drawing
 * @param {(error: unknown) => void} onFailure called when changes cannot be stored
 * @returns {Promise<boolean>} false when another tab stores its drawing, or this one has begun
 */
export async function openStorage(drawing, onFailure) {
  if (!(await isAlone())) return false;
  const database = await openDatabase();
  const transaction = database.transaction(STORES);
  const [operations, inks, state] = STORES.map((name) => transaction.objectStore(name));
  const [stored, storedInks, position] = await Promise.all([
    done(operations.getAll()),
    done(inks.getAll()),
    done(state.get('position')),
  ]);
  // Ids of what was drawn before the database answered would clash with the stored ones.
  if (drawing.operations.length > 0) return false;
  const inkOf = new Map(storedInks.map((ink) => [ink.id, makeInk(ink)]));
  const unpack = (/** @type {any} */ item) =>
    item && Object.freeze({ ...item, ink: inkOf.get(item.ink) });
  for (const operation of stored) {
    for (const change of operation.changes) {
      change.before = unpack(change.before);
      change.after = unpack(change.after);
    }
  }
  dropUnused(database, stored, inkOf);
  new Storage(database, drawing, new Set(inkOf.keys()), onFailure);
  if (stored.length > 0) drawing.load(stored, position ?? stored.length);
  return true;
}
