// @ts-check
// Says what has happened: in the status line, which screen readers read out, and in a label beside
// the figure.

import { boundsOf } from '../model/item.mjs';
import { figureLabel, percent } from './labels.mjs';

const LABEL_MS = 1600;
const GAP = 14;

export class Announcer {
  #status;
  #label;
  #view;
  #timer = 0;

  /** @param {HTMLElement} status @param {HTMLElement} label @param {import('../view/view.mjs').View} view */
  constructor(status, label, view) {
    this.#status = status;
    this.#label = label;
    this.#view = view;
    view.addEventListener('change', () => this.#hide());
  }

  /** @param {string} text */
  say(text) {
    this.#status.textContent = text;
  }

  /** Tells what an item is. @param {Item} item */
  item(item) {
    const { figure, answer } = item;
    if (!figure) return this.say(answer?.reason === 'kept' ? 'Ink' : 'Ink, left as drawn');
    const confidence = answer?.confidence ?? null;
    const name = figureLabel(figure);
    this.say(confidence === null ? name : `${name}, confidence ${percent(confidence)}`);
    this.#show(confidence === null ? name : `${name} · ${percent(confidence)}`, item);
  }

  /** @param {string} text @param {Item} item */
  #show(text, item) {
    const label = this.#label;
    label.textContent = text;
    const { left, right, top, bottom } = boundsOf(item);
    const upper = this.#view.toScreen({ x: (left + right) / 2, y: top });
    const lower = this.#view.toScreen({ x: 0, y: bottom });
    const { offsetWidth, offsetHeight } = label;
    const above = upper.y - offsetHeight - GAP;
    const x = Math.max(8, Math.min(innerWidth - offsetWidth - 8, upper.x - offsetWidth / 2));
    const y = above > 8 ? above : lower.y + GAP;
    label.style.transform = `translate(${Math.round(x)}px, ${Math.round(y)}px)`;
    label.dataset.shown = '';
    clearTimeout(this.#timer);
    this.#timer = window.setTimeout(() => this.#hide(), LABEL_MS);
  }

  #hide() {
    delete this.#label.dataset.shown;
  }
}
