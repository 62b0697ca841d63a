// @ts-check
// The canvas of what does not move: repainted only where something has changed, and moved as a picture
// while the view moves.

import * as plane from '../model/geometry.mjs';

// Repainting this share of the surface or more is as quick as repainting all of it.
const MOST = 0.6;

/** What of the document is on a canvas. @typedef {{left: number, top: number, scale: number}} Shown */

/** The context of a canvas, in document units. @param {HTMLCanvasElement} canvas @param {Shown} shown */
export function contextOf(canvas, { left, top, scale }) {
  const context = /** @type {CanvasRenderingContext2D} */ (canvas.getContext('2d'));
  const zoom = scale * devicePixelRatio;
  context.setTransform(zoom, 0, 0, zoom, -left * zoom, -top * zoom);
  return context;
}

/** Gives a canvas the size of the view, which blanks it. @param {HTMLCanvasElement} canvas @param {import('./view.mjs').View} view */
export function fit(canvas, view) {
  canvas.width = Math.round(view.width * devicePixelRatio);
  canvas.height = Math.round(view.height * devicePixelRatio);
}

export class SettledCanvas {
  #canvas;
  #view;
  #paint;
  /** @type {Shown} the view of the picture */
  #painted = { left: 0, top: 0, scale: 1 };

  /**
   * @param {HTMLCanvasElement} canvas @param {import('./view.mjs').View} view
   * @param {(context: CanvasRenderingContext2D, box: Bounds) => void} paint paints what is within a box
   */
  constructor(canvas, view, paint) {
    this.#canvas = canvas;
    this.#view = view;
    this.#paint = paint;
  }

  get context() {
    return contextOf(this.#canvas, this.#painted);
  }

  /** Moves the picture to where the view is now. */
  follow() {
    const zoom = this.#view.scale / this.#painted.scale;
    const { x, y } = this.#view.toScreen({ x: this.#painted.left, y: this.#painted.top });
    this.#canvas.style.transform =
      zoom === 1 && x === 0 && y === 0 ? '' : `translate(${x}px, ${y}px) scale(${zoom})`;
  }

  resize() {
    fit(this.#canvas, this.#view);
    this.repaint();
  }

  /** Repaints everything, or the part that holds a box. @param {Bounds} [box] */
  repaint(box) {
    const { left, top, scale, bounds } = this.#view;
    const moved =
      left !== this.#painted.left || top !== this.#painted.top || scale !== this.#painted.scale;
    const area = (/** @type {Bounds} */ b) => (b.right - b.left) * (b.bottom - b.top);
    const whole = moved || !box || area(box) > MOST * area(bounds);
    if (moved) {
      this.#painted = { left, top, scale };
      this.#canvas.style.transform = '';
    }
    const region = whole ? bounds : this.#toPixels(box);
    if (!plane.overlap(region, bounds)) return;
    const { context } = this;
    context.save();
    if (!whole) {
      context.beginPath();
      context.rect(region.left, region.top, region.right - region.left, region.bottom - region.top);
      context.clip();
    }
    context.clearRect(
      region.left - 1,
      region.top - 1,
      region.right - region.left + 2,
      region.bottom - region.top + 2,
    );
    this.#paint(context, region);
    context.restore();
  }

  /** The box enlarged to whole pixels: a clip between pixels would leave seams. @param {Bounds} box @returns {Bounds} */
  #toPixels(box) {
    const { left, top, scale } = this.#painted;
    const zoom = scale * devicePixelRatio;
    const down = (/** @type {number} */ v, /** @type {number} */ origin) =>
      Math.floor((v - origin) * zoom) / zoom + origin;
    const up = (/** @type {number} */ v, /** @type {number} */ origin) =>
      Math.ceil((v - origin) * zoom) / zoom + origin;
    return {
      left: down(box.left, left),
      top: down(box.top, top),
      right: up(box.right, left),
      bottom: up(box.bottom, top),
    };
  }
}
