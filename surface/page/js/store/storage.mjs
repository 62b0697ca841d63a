// @ts-check
// Keeps the history of the drawing in the browser's database, operation by operation, and every now
// and then the stroke in progress, so that a reload or a crash of the tab loses nothing.

import { inkOf, makeInk } from '../model/ink.mjs';
import { KEPT } from '../model/item.mjs';
import { lockDrawing } from './tab-lock.mjs';

const NAME = 'scrivo-drawing';
const STORES = ['operations', 'inks', 'state', 'sketch'];

// The stroke in progress is stored at this interval.
const SKETCH_MS = 250;

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
  const request = indexedDB.open(NAME, 2);
  request.onupgradeneeded = () => {
    const { result: database } = request;
    const missing = STORES.filter((name) => !database.objectStoreNames.contains(name));
    for (const name of missing) database.createObjectStore(name);
  };
  return done(request);
}

/** An item with the id of its ink in place of the ink. @param {Item | null} item */
const pack = (item) => item && { ...item, ink: item.ink.id };

/** @param {Operation} operation @returns {Item[]} */
const itemsOf = ({ changes }) =>
  changes.flatMap(({ before, after }) => [before, after]).filter((item) => item !== null);

/** Writes what changes. Loading comes first: see `openStorage`. */
class Storage {
  #database;
  #drawing;
  /** @type {Set<number>} */
  #savedInks;
  /** Operations to write, by key; undefined for those to remove. @type {Map<number, Operation | undefined>} */
  #pending = new Map();
  #isScheduled = false;
  #isClosed = false;
  #onFailure;
  #sketchTimer = 0;
  /** Samples of the stroke in progress that are stored. */
  #sketched = 0;
  /** Whether the stored stroke in progress has ended. */
  #hasEnded = false;

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
    drawing.addEventListener('sketch', () => this.#onSketch());
    // Timers of a page that is left do not fire.
    addEventListener('pagehide', () => this.#write());
  }

  /** Writes what is pending, and nothing from then on. @returns {Promise<void>} */
  close() {
    const written = this.#write();
    this.#isClosed = true;
    clearInterval(this.#sketchTimer);
    return written;
  }

  #onSketch() {
    clearInterval(this.#sketchTimer);
    if (this.#drawing.sketch) {
      this.#sketchTimer = window.setInterval(() => this.#writeSketch(), SKETCH_MS);
    } else {
      this.#sketched = 0;
      this.#hasEnded = true;
      this.#schedule(); // it is removed when the stroke is written
    }
  }

  /** Adds the samples that are new. */
  #writeSketch() {
    const { sketch } = this.#drawing;
    if (!sketch || this.#isClosed || sketch.samples.length === this.#sketched) return;
    const samples = sketch.samples.slice(this.#sketched);
    try {
      const transaction = this.#database.transaction('sketch', 'readwrite');
      transaction.objectStore('sketch').put({ ...sketch, samples }, this.#sketched);
      transaction.commit();
      this.#sketched = sketch.samples.length;
    } catch (error) {
      this.#onFailure(error);
    }
  }

  /** @param {{written: Operation[], dropped: Operation[]}} detail */
  #onChange({ written, dropped }) {
    for (const operation of dropped) this.#pending.set(operation.key, undefined);
    for (const operation of written) this.#pending.set(operation.key, operation);
    this.#schedule();
  }

  #schedule() {
    if (this.#isScheduled || this.#isClosed) return;
    this.#isScheduled = true;
    // After the picture: a copy of long ink takes a while.
    setTimeout(() => this.#write());
  }

  async #write() {
    this.#isScheduled = false;
    if (this.#isClosed) return;
    const batch = this.#pending;
    this.#pending = new Map();
    /** @type {Set<number>} */
    const newInks = new Set();
    const hasEnded = this.#hasEnded;
    try {
      const transaction = this.#database.transaction(STORES, 'readwrite');
      const stored = new Promise((resolve, reject) => {
        transaction.oncomplete = resolve;
        transaction.onabort = () => reject(transaction.error);
      });
      this.#put(batch, newInks, transaction);
      // A stroke that has begun since is not stored yet.
      if (hasEnded) transaction.objectStore('sketch').clear();
      this.#hasEnded = false;
      // At once: a page that is left would not live to see its requests succeed.
      transaction.commit();
      await stored;
    } catch (error) {
      // The next change tries again.
      this.#pending = new Map([...batch, ...this.#pending]);
      for (const id of newInks) this.#savedInks.delete(id);
      this.#hasEnded ||= hasEnded;
      this.#onFailure(error);
    }
  }

  /** @param {Map<number, Operation | undefined>} batch @param {Set<number>} newInks ids of the inks that this stores @param {IDBTransaction} transaction */
  #put(batch, newInks, transaction) {
    const operations = transaction.objectStore('operations');
    const inks = transaction.objectStore('inks');
    for (const [key, operation] of batch) {
      if (!operation) {
        operations.delete(key);
        continue;
      }
      for (const { ink } of itemsOf(operation)) {
        if (this.#savedInks.has(ink.id)) continue;
        this.#savedInks.add(ink.id);
        newInks.add(ink.id);
        inks.put(ink, ink.id);
      }
      const changes = operation.changes.map(({ id, before, after }) => ({
        id,
        before: pack(before),
        after: pack(after),
      }));
      operations.put({ ...operation, changes }, key);
    }
    transaction.objectStore('state').put(this.#drawing.position, 'position');
  }
}

/**
 * Deletes inks of operations that are gone.
 *
 * @param {IDBDatabase} database @param {Operation[]} operations @param {Map<number, Ink>} inks
 */
function dropUnused(database, operations, inks) {
  const used = new Set(operations.flatMap(itemsOf).map(({ ink }) => ink));
  const store = database.transaction('inks', 'readwrite').objectStore('inks');
  for (const [id, ink] of inks) {
    if (used.has(ink)) continue;
    store.delete(id);
    inks.delete(id);
  }
}

/** The stroke that was in progress when the tab crashed. @param {Sketch[]} parts @param {Drawing} drawing */
function restoreSketch(parts, drawing) {
  if (parts.length === 0) return;
  const [{ pointerType, frame, colour, width }] = parts;
  const samples = parts.flatMap((part) => part.samples);
  const ink = inkOf(samples, pointerType, frame);
  const answer = Object.freeze({ ...KEPT, reason: 'restored' });
  const item = { id: drawing.newId(), ink, figure: null, answer, colour, width };
  drawing.commit('ink', [Object.freeze(item)]);
}

/** What was drawn before the database has answered, with ids beside the stored ones. @param {Item[]} items @param {Drawing} drawing */
function addEarly(items, drawing) {
  const added = items.map((item) => {
    const { samples, measured, frame } = item.ink;
    return Object.freeze({
      ...item,
      id: drawing.newId(),
      ink: makeInk({ samples, measured, frame }),
    });
  });
  drawing.commit('ink', added);
}

/**
 * Loads the stored drawing and keeps it stored from now on.
 *
 * @param {Drawing} drawing
 * @param {{onFailure(error: unknown): void, onYield(): void}} handlers for changes that cannot be
 *   stored, and for the moment when another tab takes the drawing over
 * @returns {Promise<'stored' | 'elsewhere'>} whether another tab has the drawing
 */
export async function openStorage(drawing, { onFailure, onYield }) {
  /** @type {Storage | null} */
  let storage = null;
  const isOurs = await lockDrawing(async () => {
    onYield();
    await storage?.close();
  });
  if (!isOurs) return 'elsewhere';
  const database = await openDatabase();
  const transaction = database.transaction(STORES);
  const [operations, inks, state, sketch] = STORES.map((name) => transaction.objectStore(name));
  const [stored, storedInks, position, parts] = await Promise.all([
    done(operations.getAll()),
    done(inks.getAll()),
    done(state.get('position')),
    done(sketch.getAll()),
  ]);
  const inkById = new Map(storedInks.map((ink) => [ink.id, makeInk(ink)]));
  const unpack = (/** @type {any} */ item) =>
    item && Object.freeze({ ...item, ink: inkById.get(item.ink) });
  for (const operation of stored) {
    for (const change of operation.changes) {
      change.before = unpack(change.before);
      change.after = unpack(change.after);
    }
  }
  dropUnused(database, stored, inkById);
  const early = drawing.items;
  storage = new Storage(database, drawing, new Set(inkById.keys()), onFailure);
  drawing.load(stored, position ?? stored.length);
  restoreSketch(parts, drawing);
  addEarly(early, drawing);
  return 'stored';
}
