// @ts-check
// Removes the items that it touches, as one step.

import { distance, mix } from '../model/geometry.mjs';
import { itemAt } from '../model/item.mjs';
import { selection } from '../store/settings.mjs';

/** Radius in CSS pixels. */
const RADIUS = 9;

/** @implements {Tool} */
export class EraseTool {
  cursor = 'none';
  #context;
  /** @type {Set<number>} */
  #erased = new Set();
  /** @type {Place | null} */
  #last = null;

  /** @param {import('./draw-tool.mjs').Context} context */
  constructor(context) {
    this.#context = context;
  }

  /** @param {Sample} sample */
  down(sample) {
    this.#erased = new Set();
    this.#last = sample;
    this.#touch(sample);
    this.hover(sample);
  }

  /** @param {Sample[]} samples */
  move(samples) {
    const step = RADIUS / this.#context.view.scale;
    for (const sample of samples) {
      const from = this.#last ?? sample;
      const count = Math.ceil(distance(from, sample) / step);
      for (let i = 1; i <= count; i += 1) this.#touch(mix(from, sample, i / count));
      this.#last = sample;
    }
    this.hover(samples[samples.length - 1]);
  }

  up() {
    const { drawing, renderer } = this.#context;
    const erased = [...this.#erased];
    this.#erased = new Set();
    drawing.commit('erase', [], erased);
    renderer.lift([]);
    selection.value = new Set([...selection.value].filter((id) => !erased.includes(id)));
  }

  cancel() {
    this.#erased = new Set();
    this.#context.renderer.lift([]);
  }

  /** @param {Place | null} place */
  hover(place) {
    const { renderer, view } = this.#context;
    if (!place) return renderer.paint('eraser', null);
    renderer.paint('eraser', (context, palette) => {
      context.strokeStyle = palette.muted;
      context.lineWidth = 1.5 / view.scale;
      context.beginPath();
      context.arc(place.x, place.y, RADIUS / view.scale, 0, 2 * Math.PI);
      context.stroke();
    });
  }

  /** @param {Place} place */
  #touch(place) {
    const { drawing, renderer, view } = this.#context;
    const item = itemAt(drawing, place, RADIUS / view.scale, this.#erased);
    if (!item) return;
    this.#erased.add(item.id);
    renderer.lift(this.#erased);
  }
}
