import { bounds } from './geometry.mjs';

const LABEL_MS = 1600;
const LABEL_GAP = 14;

/** Shows what happened: a label beside the figure, a status line, a warning. */
export class Announcer {
  #status;
  #label;
  #alert;
  #alertText;
  #timer = 0;

  constructor({ status, label, alert, alertText }) {
    this.#status = status;
    this.#label = label;
    this.#alert = alert;
    this.#alertText = alertText;
  }

  status(text) {
    this.#status.textContent = text;
  }

  /** Shows a text for a moment above a figure's points, [x, y] in pixels. */
  label(text, points) {
    const label = this.#label;
    label.textContent = text;
    const { left, right, top, bottom } = bounds(points);
    const { offsetWidth, offsetHeight } = label;
    const above = top - offsetHeight - LABEL_GAP;
    const x = Math.max(8, Math.min(innerWidth - offsetWidth - 8, (left + right - offsetWidth) / 2));
    const y = above > 8 ? above : bottom + LABEL_GAP;
    label.style.transform = `translate(${Math.round(x)}px, ${Math.round(y)}px)`;
    label.dataset.shown = '';
    clearTimeout(this.#timer);
    this.#timer = setTimeout(() => this.hideLabel(), LABEL_MS);
  }

  hideLabel() {
    delete this.#label.dataset.shown;
  }

  warn(text) {
    this.#alertText.textContent = text;
    this.#alert.hidden = false;
  }

  hideWarning() {
    this.#alert.hidden = true;
  }
}
