import { shownPoints } from './drawing.mjs';
import { isClosed, mix, refine } from './geometry.mjs';
import { FIGURE_WIDTH, inkOutline, polyline } from './ink.mjs';
import { ease, originsOf } from './morph.mjs';

const MORPH_MS = 360;
// The ink has more bends than the figure, so the figure needs more points to start as ink.
const PARTS_PER_SEGMENT = 4;
const GHOST_MS = 900;
const GHOST_ALPHA = 0.55;

/** Paints the strokes, the stroke in progress, and ink that turns into a figure. */
export class Surface {
  #canvas;
  #context;
  #settled = document.createElement('canvas');
  #strokes = [];
  #live = [];
  #morphs = new Map();
  #paths = new WeakMap();
  #frame = 0;
  #settledIsStale = true;
  #still = matchMedia('(prefers-reduced-motion: reduce)');

  constructor(canvas) {
    this.#canvas = canvas;
    this.#context = canvas.getContext('2d');
    new ResizeObserver(() => this.#resize()).observe(canvas);
    const dark = matchMedia('(prefers-color-scheme: dark)');
    dark.addEventListener('change', () => this.#refresh());
    this.#watchPixelRatio();
  }

  /** Size of the drawing area in CSS pixels. */
  get size() {
    return { width: this.#canvas.clientWidth, height: this.#canvas.clientHeight };
  }

  /** Points {x, y} in fractions as [x, y] in pixels. */
  toPixels(points) {
    const { width, height } = this.size;
    return points.map(({ x, y }) => [x * width, y * height]);
  }

  set strokes(strokes) {
    this.#strokes = strokes;
    for (const stroke of this.#morphs.keys()) {
      if (!strokes.includes(stroke)) this.#morphs.delete(stroke);
    }
    this.#refresh();
  }

  /** The stroke in progress. */
  set live(points) {
    this.#live = points;
    this.#schedule();
  }

  /** Animates the ink of a stroke into its figure. */
  morph(stroke) {
    if (this.#still.matches) return;
    const outline = this.toPixels(stroke.path);
    const figure = refine(outline, PARTS_PER_SEGMENT);
    const origins = originsOf(figure, this.toPixels(stroke.drawn), isClosed(outline));
    this.#morphs.set(stroke, { figure, origins, start: performance.now() });
    this.#refresh();
  }

  #watchPixelRatio() {
    const query = matchMedia(`(resolution: ${devicePixelRatio}dppx)`);
    const onChange = () => {
      this.#resize();
      this.#watchPixelRatio();
    };
    query.addEventListener('change', onChange, { once: true });
  }

  #resize() {
    const { width, height } = this.size;
    for (const canvas of [this.#canvas, this.#settled]) {
      canvas.width = Math.round(width * devicePixelRatio);
      canvas.height = Math.round(height * devicePixelRatio);
    }
    this.#paths = new WeakMap();
    this.#morphs.clear(); // they hold pixels of the old size
    this.#refresh();
    this.#paint(); // at once: resizing blanks a canvas
  }

  #refresh() {
    this.#settledIsStale = true;
    this.#schedule();
  }

  #schedule() {
    this.#frame ||= requestAnimationFrame(() => this.#paint());
  }

  #paint() {
    cancelAnimationFrame(this.#frame);
    this.#frame = 0;
    this.#endMorphs();
    if (this.#settledIsStale) this.#paintSettled();
    const context = this.#context;
    context.setTransform(1, 0, 0, 1, 0, 0);
    context.clearRect(0, 0, this.#canvas.width, this.#canvas.height);
    if (this.#settled.width > 0) context.drawImage(this.#settled, 0, 0);
    this.#prepare(context);
    for (const [stroke, morph] of this.#morphs) this.#paintMorph(context, stroke, morph);
    if (this.#live.length > 0) context.fill(this.#inkPath(this.#live));
    if (this.#morphs.size > 0) this.#schedule();
  }

  #endMorphs() {
    for (const [stroke, { start }] of this.#morphs) {
      if (performance.now() - start < GHOST_MS) continue;
      this.#morphs.delete(stroke);
      this.#settledIsStale = true;
    }
  }

  #paintSettled() {
    const context = this.#settled.getContext('2d');
    context.setTransform(1, 0, 0, 1, 0, 0);
    context.clearRect(0, 0, this.#settled.width, this.#settled.height);
    this.#prepare(context);
    for (const stroke of this.#strokes) {
      if (!this.#morphs.has(stroke)) this.#paintStroke(context, stroke);
    }
    this.#settledIsStale = false;
  }

  #prepare(context) {
    const style = getComputedStyle(this.#canvas);
    const ink = style.getPropertyValue('--ink');
    context.setTransform(devicePixelRatio, 0, 0, devicePixelRatio, 0, 0);
    context.globalAlpha = 1;
    Object.assign(context, { fillStyle: ink, strokeStyle: ink, lineWidth: FIGURE_WIDTH });
    Object.assign(context, { lineCap: 'round', lineJoin: 'round' });
  }

  #paintStroke(context, stroke) {
    let path = this.#paths.get(stroke);
    if (!path) {
      path = stroke.path
        ? polyline(this.toPixels(shownPoints(stroke)))
        : this.#inkPath(stroke.drawn);
      this.#paths.set(stroke, path);
    }
    if (stroke.path) context.stroke(path);
    else context.fill(path);
  }

  /** The figure takes shape while its ink fades beneath it. */
  #paintMorph(context, stroke, { figure, origins, start }) {
    const age = performance.now() - start;
    const t = ease(Math.min(1, age / MORPH_MS));
    context.save();
    context.fillStyle = getComputedStyle(this.#canvas).getPropertyValue('--ghost');
    context.globalAlpha = GHOST_ALPHA * Math.max(0, 1 - age / GHOST_MS);
    context.fill(this.#inkPath(stroke.drawn));
    context.restore();
    context.stroke(polyline(figure.map((point, i) => mix(origins[i], point, t))));
  }

  #inkPath(points) {
    const { width, height } = this.size;
    return inkOutline(points.map(({ x, y, force }) => ({ x: x * width, y: y * height, force })));
  }
}
