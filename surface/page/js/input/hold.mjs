// @ts-check

// A pen rests while it stays within this many CSS pixels.
const SLACK = 4;

/**
 * Notices that the pen rests: calls `onRest` once it has rested for `PREVIEW_MS`, `onStay` after
 * `SNAP_MS`, and `onLeave` when it moves on in between.
 */
export class Hold {
  static PREVIEW_MS = 400;
  static SNAP_MS = 900;

  #handlers;
  /** @type {Place | null} CSS pixels */
  #place = null;
  #timer = 0;
  #resting = false;

  /** @param {{onRest(): void, onStay(): void, onLeave(): void}} handlers */
  constructor(handlers) {
    this.#handlers = handlers;
  }

  /** @param {Place} place CSS pixels */
  moved(place) {
    if (this.#place && Math.hypot(place.x - this.#place.x, place.y - this.#place.y) < SLACK) return;
    this.#place = place;
    this.stop();
    this.#timer = window.setTimeout(this.#rest, Hold.PREVIEW_MS);
  }

  stop() {
    clearTimeout(this.#timer);
    if (this.#resting) this.#handlers.onLeave();
    this.#resting = false;
  }

  #rest = () => {
    this.#resting = true;
    this.#handlers.onRest();
    this.#timer = window.setTimeout(this.#stay, Hold.SNAP_MS - Hold.PREVIEW_MS);
  };

  #stay = () => {
    this.#resting = false;
    this.#handlers.onStay();
  };
}
