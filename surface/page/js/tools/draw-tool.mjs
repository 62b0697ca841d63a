// @ts-check
// Draws ink, which becomes a figure when the pen is lifted or rests.

import { Hold } from '../input/hold.mjs';
import { centreOf, polylineOf, transform } from '../model/figure.mjs';
import { distance, drag } from '../model/geometry.mjs';
import { inkOf, isMeasured } from '../model/ink.mjs';
import { anchorAt, KEPT } from '../model/item.mjs';
import { cuePainter, paintReach } from '../view/cues.mjs';
import { paintFigure } from '../view/paint.mjs';
import { WIDTHS } from '../view/palette.mjs';
import { InkTrail, pathOf, weightOf } from '../view/ink-trail.mjs';
import { dropSelection, latest, settings, snapsOnHold, snapsOnLift } from '../store/settings.mjs';

/** Reach of an anchor in CSS pixels: the ends of lines snap within it. */
export const ANCHOR_REACH = 10;

// A pen that rests sooner than this many CSS pixels after its start waits to draw.
const SHORTEST_HELD = 24;

/**
 * @typedef {object} Context what the tools work on
 * @property {import('../model/drawing.mjs').Drawing} drawing
 * @property {import('../view/view.mjs').View} view
 * @property {import('../view/renderer.mjs').Renderer} renderer
 * @property {import('../engine/recogniser.mjs').Recogniser} recogniser
 * @property {(item: Item) => void} announce tells what was recognised
 */

/** @implements {Tool} */
export class DrawTool {
  cursor = 'crosshair';
  #context;
  /** @type {Sample[]} */
  #samples = [];
  /** @type {Sample[]} */
  #predicted = [];
  /** @type {Place} where the pen is */
  #pen = { x: 0, y: 0 };
  #pointerType = '';
  /** @type {InkTrail | null} */
  #trail = null;
  #measured = false;
  /** The figure that is shown while the pen rests. @type {{ink: Ink, figure: Figure, answer: Answer} | null} */
  #preview = null;
  /** Since the pen has rested long enough: where it was, and the figure then. @type {{from: Place, figure: Figure} | null} */
  #snapped = null;
  #hold = new Hold({
    onRest: () => this.#showPreview(),
    onStay: () => this.#snap(),
    onLeave: () => this.#hidePreview(),
  });

  /** @param {Context} context */
  constructor(context) {
    this.#context = context;
  }

  /** @param {Sample} sample @param {PointerEvent} event */
  down(sample, event) {
    dropSelection();
    this.#samples = [];
    this.#pointerType = event.pointerType;
    this.#measured = false;
    this.#restartTrail();
    this.#context.renderer.paint('live', (context, palette) => this.#paint(context, palette));
    const { colour, width } = settings.value;
    const { drawing, view } = this.#context;
    drawing.sketch = {
      samples: this.#samples,
      pointerType: event.pointerType,
      frame: view.frame,
      colour,
      width: WIDTHS[width],
    };
    this.move([sample], [], event);
  }

  /** @param {Sample[]} samples @param {Sample[]} predicted @param {PointerEvent} event */
  move(samples, predicted, event) {
    const { renderer } = this.#context;
    this.#pen = samples[samples.length - 1];
    if (this.#snapped) this.#size(this.#pen);
    else this.#extend(samples, predicted);
    if (snapsOnHold.value && !this.#snapped)
      this.#hold.moved({ x: event.clientX, y: event.clientY });
    renderer.schedule();
  }

  up() {
    const { preview, snapped } = { preview: this.#preview, snapped: this.#snapped };
    const samples = this.#samples;
    this.#end();
    if (samples.length === 0) return;
    const ink =
      snapped && preview
        ? preview.ink
        : inkOf(samples, this.#pointerType, this.#context.view.frame);
    this.#context.renderer.replaceBaked();
    const item = this.#add(ink, preview || !snapsOnLift.value ? (preview?.answer ?? KEPT) : null);
    if (!preview) return;
    const after = Object.freeze({ ...item, figure: preview.figure });
    this.#context.drawing.insert('figure', after);
    this.#context.announce(after);
  }

  cancel() {
    this.#end();
    this.#context.renderer.unbake();
  }

  #end() {
    this.#preview = null; // before the hold ends, which would hide it
    this.#snapped = null;
    this.#hold.stop();
    this.#samples = [];
    this.#context.drawing.sketch = null;
    this.#trail = null;
    this.#context.renderer.paint('live', null);
  }

  /** @param {Ink} ink @param {Answer | null} answer @returns {Item} */
  #add(ink, answer) {
    const { drawing } = this.#context;
    const { colour, width } = settings.value;
    const item = Object.freeze({
      id: drawing.newId(),
      ink,
      figure: null,
      answer,
      colour,
      width: WIDTHS[width],
    });
    drawing.commit('ink', [item]);
    latest.value = item.id;
    return item;
  }

  #restartTrail() {
    this.#trail = new InkTrail(
      WIDTHS[settings.value.width],
      this.#context.view.scale,
      this.#measured,
    );
    for (const sample of this.#samples) this.#trail.append(sample);
  }

  /** @param {Sample[]} samples @param {Sample[]} predicted */
  #extend(samples, predicted) {
    for (const sample of samples) this.#samples.push(sample);
    this.#predicted = predicted;
    if (
      !this.#measured &&
      isMeasured(
        this.#pointerType,
        samples.map(({ pressure }) => pressure),
      )
    ) {
      // The first samples of a pen may have no pressure yet.
      this.#measured = true;
      return this.#restartTrail();
    }
    for (const sample of samples) this.#trail?.append(sample);
    const finished = this.#trail?.takeFinished() ?? [];
    this.#context.renderer.bake(
      settings.value.colour,
      finished.map((outline) => pathOf([outline])),
    );
  }

  async #showPreview() {
    const [first] = this.#samples;
    const { view, recogniser, renderer } = this.#context;
    const reach = Math.max(...this.#samples.map((sample) => distance(sample, first)));
    if (reach * view.scale < SHORTEST_HELD) return;
    const ink = inkOf(this.#samples, this.#pointerType, view.frame);
    const count = this.#samples.length;
    const found = await recogniser.recognise(ink).catch(() => null);
    // The pen may have moved on meanwhile.
    if (!found?.figure || this.#samples.length !== count) return;
    this.#preview = { ink, figure: found.figure, answer: { ...found.answer, second: null } };
    renderer.schedule();
  }

  #hidePreview() {
    this.#preview = null;
    this.#context.renderer.schedule();
  }

  #snap() {
    if (!this.#preview) return;
    const from = this.#samples[this.#samples.length - 1];
    this.#snapped = { from, figure: this.#preview.figure };
    this.#context.renderer.unbake();
    this.#context.renderer.schedule();
    navigator.vibrate?.(8);
  }

  /** Sizes and turns the figure that has snapped. @param {Place} place */
  #size(place) {
    const { drawing, view } = this.#context;
    if (!this.#snapped || !this.#preview) return;
    const { from, figure } = this.#snapped;
    const line = polylineOf(figure);
    const isOpen = figure.kind === 'line' || figure.kind === 'angle';
    const target = (isOpen && anchorAt(drawing, place, ANCHOR_REACH / view.scale)) || place;
    // Open figures turn about the end that the pen is not at.
    const pivot = isOpen ? line[0] : centreOf(figure);
    this.#preview.figure = transform(
      figure,
      drag(pivot, isOpen ? line[line.length - 1] : from, target),
    );
  }

  /** A ring around the place of another stroke that the end of a line would snap to. @type {import('../view/renderer.mjs').Painter} */
  #paintCue(context, palette) {
    const { drawing, view } = this.#context;
    const anchor =
      settings.value.snapsToOthers && anchorAt(drawing, this.#pen, ANCHOR_REACH / view.scale);
    if (anchor) cuePainter([anchor], view.scale)(context, palette);
  }
  /** @type {import('../view/renderer.mjs').Painter} */
  #paint(context, palette) {
    this.#paintStroke(context, palette);
    this.#paintCue(context, palette);
  }

  /** @type {import('../view/renderer.mjs').Painter} */
  #paintStroke(context, palette) {
    const { colour, width } = settings.value;
    if (this.#preview) {
      const { ink, figure } = this.#preview;
      context.globalAlpha = this.#snapped ? 1 : 0.75;
      paintFigure(
        context,
        figure,
        this.#snapped ? palette.inks[colour] : palette.accent,
        weightOf(ink, WIDTHS[width]),
      );
      context.globalAlpha = 1;
      if (this.#snapped) return paintReach(context, palette, figure, this.#context.view.scale);
      context.globalAlpha = 0.3;
    }
    context.fillStyle = palette.inks[colour];
    if (this.#trail) context.fill(pathOf([this.#trail.tail(this.#predicted)]));
    context.globalAlpha = 1;
  }
}
