// @ts-check
// The chip beside the stroke that was answered last: what it became, and a tap away the panel with
// the alternatives. A stroke may begin on it: a pen that is dragged off goes on drawing.

import { overlap } from '../model/geometry.mjs';
import { boundsOf } from '../model/item.mjs';
import { isInspecting, selection } from '../store/settings.mjs';
import { byId } from './dom.mjs';
import { figureLabel, percent } from './labels.mjs';

const SHOWN_MS = 5000;
const GAP = 14;
const EDGE = 8;

// A pen that moves further than this many CSS pixels draws.
const SLACK = 5;

/** Controls that the chip must not cover. */
const CONTROLS = '.title, .corner, .bar, .zoom, .alert';

// Handwriting is left alone on purpose: no chip for every letter.
const QUIET = ['kept', 'too-small', 'invalid'];

/** @param {Item} item */
function textFor({ figure, answer }) {
  if (!figure) return answer?.reason && !QUIET.includes(answer.reason) ? 'Left as drawn' : null;
  const confidence = answer?.confidence ?? null;
  const name = figureLabel(figure);
  return confidence === null ? name : `${name} · ${percent(confidence)}`;
}

export class Chip {
  #button;
  #view;
  #timer = 0;

  /** @param {HTMLElement} surface @param {import('../view/view.mjs').View} view */
  constructor(surface, view) {
    this.#button = /** @type {HTMLButtonElement} */ (byId('chip'));
    this.#view = view;
    const open = () => {
      isInspecting.value = true;
      this.hide();
    };
    // A press of a key has no clicks to count; taps are told from strokes below.
    this.#button.onclick = ({ detail }) => detail === 0 && open();
    passStrokesOn(this.#button, surface, open, () => this.hide());
    surface.addEventListener('pointerdown', () => this.hide());
    view.addEventListener('change', () => this.hide());
    view.addEventListener('resize', () => this.hide());
  }

  /** @param {Item} item */
  show(item) {
    const text = textFor(item);
    // The panel tells the same.
    if (!text || selection.value.size > 0 || isInspecting.value) return this.hide();
    this.#button.textContent = text;
    this.#button.hidden = false;
    const { x, y } = this.#placeBeside(boundsOf(item));
    this.#button.style.translate = `${Math.round(x)}px ${Math.round(y)}px`;
    clearTimeout(this.#timer);
    this.#timer = window.setTimeout(() => this.hide(), SHOWN_MS);
  }

  hide() {
    clearTimeout(this.#timer);
    // Whoever has reached it with the keyboard keeps it.
    if (!this.#button.matches(':focus-visible')) this.#button.hidden = true;
  }

  /** Above, below or beside, where it covers no control. @param {Bounds} box @returns {Place} CSS pixels */
  #placeBeside({ left, top, right, bottom }) {
    const { offsetWidth: width, offsetHeight: height } = this.#button;
    const first = this.#view.toScreen({ x: left, y: top });
    const last = this.#view.toScreen({ x: right, y: bottom });
    const middle = { x: (first.x + last.x - width) / 2, y: (first.y + last.y - height) / 2 };
    const within = (/** @type {Place} */ { x, y }) => ({
      x: Math.max(EDGE, Math.min(innerWidth - width - EDGE, x)),
      y: Math.max(EDGE, Math.min(innerHeight - height - EDGE, y)),
    });
    const controls = [...document.querySelectorAll(CONTROLS)].map((each) =>
      each.getBoundingClientRect(),
    );
    const places = [
      { x: middle.x, y: first.y - height - GAP },
      { x: middle.x, y: last.y + GAP },
      { x: last.x + GAP, y: middle.y },
      { x: first.x - width - GAP, y: middle.y },
    ];
    const isFree = (/** @type {Place} */ place) => {
      const { x, y } = within(place);
      const box = { left: x, top: y, right: x + width, bottom: y + height };
      // One that had to be pushed back would cover the stroke.
      return Math.abs(y - place.y) < 1 && !controls.some((control) => overlap(box, control));
    };
    return within(places.find(isFree) ?? places[0]);
  }
}

/**
 * Tells taps on an element from strokes, which are handed over to the surface.
 *
 * @param {HTMLElement} element @param {HTMLElement} surface
 * @param {() => void} onTap @param {() => void} onStroke
 */
function passStrokesOn(element, surface, onTap, onStroke) {
  /** @type {PointerEvent | null} */
  let down = null;
  element.addEventListener('pointerdown', (event) => {
    down = event.button === 0 ? event : null;
    element.setPointerCapture(event.pointerId);
  });
  element.addEventListener('pointerup', () => {
    if (down) onTap();
    down = null;
  });
  element.addEventListener('pointercancel', () => (down = null));
  element.addEventListener('pointermove', (event) => {
    if (down?.pointerId !== event.pointerId) return;
    if (Math.hypot(event.clientX - down.clientX, event.clientY - down.clientY) < SLACK) return;
    const start = down;
    down = null;
    onStroke();
    for (const each of [start, event]) surface.dispatchEvent(copyOf(each));
  });
}

/** An event that can be dispatched again, at its own time. @param {PointerEvent} event */
function copyOf(event) {
  const { type, timeStamp } = event;
  const copy = new PointerEvent(type, /** @type {any} */ (event));
  return Object.defineProperty(copy, 'timeStamp', { value: timeStamp });
}
