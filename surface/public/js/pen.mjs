import { PointerGate } from './pointer-gate.mjs';

/**
 * Whether these pressures were measured. A mouse reports 0.5 while pressed; pens and
 * screens without a sensor report only 0, 0.5 or 1.
 */
export function isMeasured(pointerType, pressures) {
  return pointerType !== 'mouse' && pressures.some((p) => p !== 0 && p !== 0.5 && p !== 1);
}

/**
 * Turns Pointer Events of an element into strokes. Fires
 * - 'ink': the stroke in progress has started, grown or been dropped;
 * - 'stroke': a stroke is finished; `detail` is {points, frames}, the points and the
 *   number of animation frames that the pointer was down.
 * Points are {x, y, force?} in fractions of the element; they have a `force` only if
 * the device measures it.
 */
export class Pen extends EventTarget {
  #element;
  #gate = new PointerGate();
  #samples = [];
  #pointerType = '';
  #frames = 0;
  #frameRequest = 0;

  constructor(element) {
    super();
    this.#element = element;
    const handlers = {
      pointerdown: this.#onDown,
      pointermove: this.#onMove,
      pointerup: this.#onUp,
      pointercancel: this.#onCancel,
      lostpointercapture: this.#onUp,
    };
    for (const [name, handler] of Object.entries(handlers)) {
      element.addEventListener(name, handler);
    }
    // A long press or a drag must not open a menu or select text.
    for (const name of ['contextmenu', 'dragstart', 'selectstart']) {
      element.addEventListener(name, (event) => event.preventDefault());
    }
  }

  /** The points of the stroke in progress. */
  get points() {
    const measured = isMeasured(
      this.#pointerType,
      this.#samples.map(({ pressure }) => pressure),
    );
    return this.#samples.map(({ x, y, pressure }) =>
      measured ? { x, y, force: pressure } : { x, y },
    );
  }

  #onDown = (event) => {
    const action = this.#gate.down(event);
    if (action === 'ignore') return;
    this.#samples = [];
    if (action !== 'drop') {
      event.preventDefault();
      this.#element.focus({ preventScroll: true });
      this.#pointerType = event.pointerType;
      this.#capture(event.pointerId);
      this.#record([event]);
      this.#countFrames();
    }
    this.#tell('ink');
  };

  #onMove = (event) => {
    if (!this.#gate.isDrawing(event)) return;
    const coalesced = event.getCoalescedEvents?.() ?? [];
    this.#record(coalesced.length > 0 ? coalesced : [event]);
    this.#tell('ink');
  };

  #onUp = (event) => {
    if (this.#gate.up(event) !== 'finish') return;
    cancelAnimationFrame(this.#frameRequest);
    const { points } = this;
    this.#samples = [];
    this.#tell('stroke', { points, frames: this.#frames });
  };

  #onCancel = (event) => {
    if (this.#gate.cancel(event) !== 'drop') return;
    cancelAnimationFrame(this.#frameRequest);
    this.#samples = [];
    this.#tell('ink');
  };

  #countFrames() {
    cancelAnimationFrame(this.#frameRequest);
    this.#frames = 0;
    const count = () => {
      this.#frames++;
      this.#frameRequest = requestAnimationFrame(count);
    };
    this.#frameRequest = requestAnimationFrame(count);
  }

  #capture(pointerId) {
    try {
      this.#element.setPointerCapture(pointerId);
    } catch {
      // The pointer has been lifted meanwhile: its pointerup is still pending.
    }
  }

  #record(events) {
    const { left, top, width, height } = this.#element.getBoundingClientRect();
    for (const { clientX, clientY, pressure } of events) {
      const x = (clientX - left) / width;
      const y = (clientY - top) / height;
      this.#samples.push({ x, y, pressure });
    }
  }

  #tell(name, detail) {
    this.dispatchEvent(new CustomEvent(name, { detail }));
  }
}
