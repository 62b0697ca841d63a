// @ts-check
// Asks the engine for the figures of items, and keeps asking while it is unavailable.

import { isUnanswered } from '../model/item.mjs';
import { requestFor, toDocument } from './request.mjs';
import { Unavailable } from './server-engine.mjs';

const FIRST_PAUSE_MS = 500;
const LONGEST_PAUSE_MS = 4000;

// Items asked for at the same time when many wait.
const AT_ONCE = 4;

/**
 * The order of recognition that the user has chosen.
 * @typedef {{engine: EngineName | 'both', options: EngineOptions, snapsToOthers: boolean}} Choice
 */

/**
 * Fires 'answer' with `detail` {item, ms}, the item after the answer and the time since it was asked
 * for, and 'state' when the number of waiting items or the availability of the engine has changed.
 */
export class Recogniser extends EventTarget {
  #engine;
  #drawing;
  #choice;
  /** Ids of items without an answer. @type {Set<number>} */
  #unanswered = new Set();
  /** Ids of items that are being asked for. @type {Set<number>} */
  #asking = new Set();
  #pause = 0;
  #timer = 0;

  /**
   * @param {Engine} engine @param {import('../model/drawing.mjs').Drawing} drawing
   * @param {() => Choice} choice
   */
  constructor(engine, drawing, choice) {
    super();
    this.#engine = engine;
    this.#drawing = drawing;
    this.#choice = choice;
    drawing.addEventListener('change', (event) => {
      for (const { id, after } of /** @type {CustomEvent} */ (event).detail.changes) {
        if (after && isUnanswered(after)) this.#unanswered.add(id);
        else this.#unanswered.delete(id);
      }
      this.#askNext();
    });
  }

  get isAvailable() {
    return this.#pause === 0;
  }

  /** Items without an answer. */
  get waiting() {
    return this.#unanswered.size;
  }

  /**
   * The figure of ink that is not on the surface.
   *
   * @param {Ink} ink @param {Wish} [wish] what the ink is to become, whatever its score
   * @returns {Promise<{figure: Figure | null, answer: Answer}>}
   */
  async recognise(ink, wish) {
    const { engine, options, snapsToOthers } = this.#choice();
    const others = snapsToOthers ? this.#drawing : null;
    const ask = async (/** @type {EngineName} */ name) => {
      const task = wish
        ? { task: /** @type {const} */ ('as'), wish }
        : { task: /** @type {const} */ ('recognise') };
      const { figure, ...answer } = /** @type {Reply} */ (
        await this.#engine.ask(requestFor(ink, others, { ...task, engine: name, options }))
      );
      return { figure: figure && toDocument(figure, ink.frame), answer };
    };
    if (wish) return ask('beautifier');
    if (engine !== 'both') return ask(engine);
    const [first, second] = await Promise.all([ask('beautifier'), ask('template')]);
    return { figure: first.figure, answer: { ...first.answer, second: second.figure } };
  }

  /** What each family would make of the ink, in document units. @param {Ink} ink @returns {Promise<Explanation>} */
  async explain(ink) {
    const { options } = this.#choice();
    const { points, candidates, micros } = /** @type {Explanation} */ (
      await this.#engine.ask(requestFor(ink, null, { task: 'explain', options }))
    );
    const place = (/** @type {Figure | null} */ figure) => figure && toDocument(figure, ink.frame);
    const placed = candidates.map(({ figure, fitted, ...candidate }) => ({
      ...candidate,
      figure: place(figure),
      fitted: place(fitted),
    }));
    const { left, top, scale } = ink.frame;
    const inDocument = points.map(({ x, y }) => ({ x: left + x / scale, y: top + y / scale }));
    return { points: inDocument, candidates: placed, micros };
  }

  /** Asks for the items that wait, at once. */
  retry() {
    clearTimeout(this.#timer);
    this.#timer = 0;
    this.#askNext(true);
  }

  #askNext(force = false) {
    if (!force && this.#timer) return;
    const room = (this.isAvailable ? AT_ONCE : 1) - this.#asking.size;
    if (room <= 0) return;
    const next = [...this.#unanswered].filter((id) => !this.#asking.has(id));
    for (const id of next.slice(-room)) this.#askFor(/** @type {Item} */ (this.#drawing.get(id)));
  }

  /** @param {Item} item */
  async #askFor(item) {
    const start = performance.now();
    this.#asking.add(item.id);
    try {
      const found = await this.recognise(item.ink);
      this.#setPause(0);
      this.#take(item, found, performance.now() - start);
    } catch (error) {
      this.#fail(item, /** @type {Error} */ (error));
    } finally {
      this.#asking.delete(item.id);
    }
    this.#askNext();
  }

  /** @param {Item} item @param {{figure: Figure | null, answer: Answer}} found @param {number} ms */
  #take(item, { figure, answer }, ms) {
    // It may have been undone, erased or changed meanwhile.
    const current = this.#drawing.get(item.id);
    if (!current || current.ink !== item.ink || !isUnanswered(current)) return;
    this.#asking.delete(item.id);
    if (!figure) {
      this.#drawing.amend(Object.freeze({ ...current, answer }));
    } else {
      // The first undo brings the ink back, which then is not asked for again.
      const ink = Object.freeze({ ...current, answer: { ...answer, second: null } });
      this.#drawing.amend(ink);
      this.#drawing.insert('figure', Object.freeze({ ...current, figure, answer }));
    }
    const after = this.#drawing.get(item.id);
    this.dispatchEvent(new CustomEvent('answer', { detail: { item: after, ms } }));
  }

  /** @param {Item} item @param {Error} error */
  #fail(item, error) {
    if (!(error instanceof Unavailable)) {
      const answer = {
        engine: /** @type {const} */ ('none'),
        confidence: null,
        reason: 'refused',
        alternatives: [],
        micros: 0,
      };
      const current = this.#drawing.get(item.id);
      if (current) this.#drawing.amend(Object.freeze({ ...current, answer }));
      console.error(error);
      return;
    }
    this.#setPause(Math.min(LONGEST_PAUSE_MS, 2 * this.#pause || FIRST_PAUSE_MS));
    clearTimeout(this.#timer);
    this.#timer = window.setTimeout(() => this.retry(), this.#pause);
  }

  /** @param {number} pause */
  #setPause(pause) {
    this.#pause = pause;
    this.dispatchEvent(new Event('state'));
  }
}
