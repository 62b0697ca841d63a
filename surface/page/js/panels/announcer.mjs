// @ts-check
// Says what has happened: in the status line, which screen readers read out, and in the chip.

import { figureLabel, percent } from './labels.mjs';

export class Announcer {
  #status;
  #chip;

  /** @param {HTMLElement} status @param {import('./chip.mjs').Chip} chip */
  constructor(status, chip) {
    this.#status = status;
    this.#chip = chip;
  }

  /** @param {string} text */
  say(text) {
    this.#status.textContent = text;
    this.#chip.hide();
  }

  /** Tells what an item is. @param {Item} item */
  item(item) {
    this.say(textFor(item));
    this.#chip.show(item);
  }
}

/** @param {Item} item */
function textFor({ figure, answer }) {
  if (!figure) return answer?.reason === 'kept' ? 'Ink' : 'Ink, left as drawn';
  const confidence = answer?.confidence ?? null;
  const name = figureLabel(figure);
  return confidence === null ? name : `${name}, confidence ${percent(confidence)}`;
}
