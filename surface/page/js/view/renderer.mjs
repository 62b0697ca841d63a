// @ts-check
// Two canvases on top of each other: the lower one holds settled items and is repainted only where
// something has changed; the upper one holds what moves.

import * as plane from '../model/geometry.mjs';
import { isUnanswered, paintedBounds } from '../model/item.mjs';
import { paintInk, paintItem } from './paint.mjs';
import { readPalette } from './palette.mjs';
import { SettledCanvas, contextOf, fit } from './settled-canvas.mjs';

// While the view moves, the picture of the settled items is moved; it is repainted after this pause.
const VIEW_PAUSE_MS = 90;

const FADE_MS = 260;

/** @typedef {(context: CanvasRenderingContext2D, palette: import('./palette.mjs').Palette) => void} Painter */

/** Whether nothing has to be painted again. @param {Item | null} p @param {Item | null} q */
const looksSame = (p, q) =>
  p !== null &&
  q !== null &&
  p.ink === q.ink &&
  p.figure === q.figure &&
  p.colour === q.colour &&
  p.width === q.width &&
  (p.answer?.second ?? null) === (q.answer?.second ?? null);

export class Renderer {
  /** The lower canvas. */
  #settled;
  /** The upper canvas. */
  #live;
  #view;
  #drawing;
  #palette;
  /** Items that are being changed: they are painted by a painter of the upper canvas. @type {Set<number>} */
  #lifted = new Set();
  // Id of new ink without an answer: until it has one it is on the upper canvas, so that the lower one
  // is painted once.
  #fresh = 0;
  /** @type {Map<string, Painter>} */
  #painters = new Map();
  /** @type {Map<Item, number>} ink that fades, and since when */
  #fading = new Map();
  #frame = 0;
  #viewTimer = 0;
  #calm = matchMedia('(prefers-reduced-motion: reduce)');
  /** The colour and paths of ink in progress that are on the lower canvas already. @type {{colour: number, paths: Path2D[]}} */
  #baked = { colour: 0, paths: [] };
  #overpainted = false;

  /**
   * @param {HTMLCanvasElement} settled @param {HTMLCanvasElement} live
   * @param {import('./view.mjs').View} view @param {import('../model/drawing.mjs').Drawing} drawing
   */
  constructor(settled, live, view, drawing) {
    this.#settled = new SettledCanvas(settled, view, (context, box) =>
      this.#paintSettled(context, box),
    );
    this.#live = live;
    this.#view = view;
    this.#drawing = drawing;
    this.#palette = readPalette(live);
    drawing.addEventListener('change', (event) =>
      this.#onChange(/** @type {CustomEvent} */ (event).detail),
    );
    view.addEventListener('change', () => this.#onView());
    view.addEventListener('resize', () => this.#onResize());
  }

  get palette() {
    return this.#palette;
  }

  /** Reads the colours again, after a change of the theme. */
  refresh() {
    this.#palette = readPalette(this.#live);
    this.#settled.repaint();
    this.schedule();
  }

  /** Adds a painter of the upper canvas, or removes it. @param {string} name @param {Painter | null} painter */
  paint(name, painter) {
    if (painter) this.#painters.set(name, painter);
    else if (!this.#painters.delete(name)) return;
    this.schedule();
  }

  /** Takes items off the lower canvas; an empty set puts them back. @param {Iterable<number>} ids */
  lift(ids) {
    const next = new Set(ids);
    const changed = [...next, ...this.#lifted].filter(
      (id) => next.has(id) !== this.#lifted.has(id),
    );
    this.#lifted = next;
    const boxes = changed.flatMap((id) => this.#drawing.get(id) ?? []).map(paintedBounds);
    if (boxes.length > 0) this.#settled.repaint(plane.unite(boxes));
  }

  /** Adds finished parts of the ink in progress to the lower canvas. @param {number} colour @param {Path2D[]} paths */
  bake(colour, paths) {
    if (paths.length === 0) return;
    this.#baked.colour = colour;
    this.#baked.paths.push(...paths);
    const context = this.#settled.context;
    context.fillStyle = this.#palette.inks[colour];
    for (const path of paths) context.fill(path);
  }

  /** Removes the parts that were added by `bake`. */
  unbake() {
    if (this.#baked.paths.length === 0) return;
    this.#baked.paths = [];
    this.#settled.repaint();
  }

  /** The item that is added next shows the parts that were added by `bake`. */
  replaceBaked() {
    this.#overpainted = this.#baked.paths.length > 0;
    this.#baked.paths = [];
  }

  schedule() {
    this.#frame ||= requestAnimationFrame(() => this.#paintLive());
  }

  /** @param {{changes: Change[]}} detail */
  #onChange({ changes: all }) {
    if (this.#fresh && all.every(({ id }) => id === this.#fresh)) {
      for (const { before, after } of all) this.#fade(before, after);
      queueMicrotask(() => this.#settleFresh());
      return this.schedule();
    }
    const changes = all.filter(({ before, after }) => !looksSame(before, after));
    if (changes.length === 0) return;
    for (const { before, after } of changes) this.#fade(before, after);
    const items = changes
      .flatMap(({ before, after }) => [before, after])
      .filter((item) => item !== null);
    const added = changes.length === 1 && !changes[0].before ? changes[0].after : null;
    const isOnTop = added && added === this.#drawing.items.at(-1) && !this.#lifted.has(added.id);
    this.#settleFresh(true);
    if (isOnTop && !this.#overpainted && isUnanswered(added)) {
      this.#fresh = added.id;
    } else if (isOnTop && !this.#overpainted) {
      paintItem(this.#settled.context, added, this.#palette);
    } else {
      this.#settled.repaint(plane.unite(items.map(paintedBounds)));
      this.#overpainted = false;
    }
    this.schedule();
  }

  /** Moves the new ink, or what it has become, to the lower canvas. @param {boolean} [force] even if it has no answer yet */
  #settleFresh(force = false) {
    const item = this.#drawing.get(this.#fresh);
    if (item && isUnanswered(item) && !force) return;
    this.#fresh = 0;
    if (!item || this.#lifted.has(item.id)) return;
    // It is still the topmost one on this canvas.
    paintItem(this.#settled.context, item, this.#palette);
  }

  /** Ink that becomes a figure fades away. @param {Item | null} before @param {Item | null} after */
  #fade(before, after) {
    if (!before || !after || before.figure || !after.figure || this.#calm.matches) return;
    this.#fading.set(before, performance.now());
  }

  #onView() {
    const { left, top, scale } = this.#view;
    this.#settled.follow();
    clearTimeout(this.#viewTimer);
    this.#viewTimer = window.setTimeout(() => this.#settled.repaint(), VIEW_PAUSE_MS);
    document.body.style.setProperty('--grid-at', `${-left * scale}px ${-top * scale}px`);
    this.schedule();
  }

  #onResize() {
    fit(this.#live, this.#view);
    this.#settled.resize();
    this.#paintLive(); // at once: resizing blanks a canvas
  }

  /** Paints what belongs on the lower canvas within a box. @param {CanvasRenderingContext2D} context @param {Bounds} box */
  #paintSettled(context, box) {
    for (const item of this.#drawing.within(box)) {
      if (this.#lifted.has(item.id) || item.id === this.#fresh) continue;
      paintItem(context, item, this.#palette);
    }
    context.fillStyle = this.#palette.inks[this.#baked.colour];
    for (const path of this.#baked.paths) context.fill(path);
  }

  #paintLive() {
    cancelAnimationFrame(this.#frame);
    this.#frame = 0;
    const context = contextOf(this.#live, this.#view);
    const { left, top, right, bottom } = this.#view.bounds;
    context.clearRect(left, top, right - left, bottom - top);
    this.#paintFading(context);
    const fresh = this.#drawing.get(this.#fresh);
    if (fresh && !this.#lifted.has(fresh.id)) paintItem(context, fresh, this.#palette);
    for (const painter of this.#painters.values()) painter(context, this.#palette);
    if (this.#fading.size > 0) this.schedule();
  }

  /** @param {CanvasRenderingContext2D} context */
  #paintFading(context) {
    const now = performance.now();
    for (const [item, start] of this.#fading) {
      const left = 1 - (now - start) / FADE_MS;
      if (left <= 0) {
        this.#fading.delete(item);
        continue;
      }
      context.globalAlpha = 0.5 * left;
      paintInk(context, item, this.#palette.inks[item.colour]);
      context.globalAlpha = 1;
    }
  }
}
