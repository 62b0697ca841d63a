import { PointerGate } from './pointer-gate.mjs';

/**
 * Whether these pressures were measured. A mouse reports 0.5 while pressed;
 * pens and screens without a sensor report 0, 0.5 or 1 throughout.
 */
export function isMeasured(pointerType, pressures) {
  return pointerType !== 'mouse' && pressures.some((p) => p !== 0 && p !== 0.5 && p !== 1);
}

/** Within this many CSS pixels a pointer rests: the size of a dot. */
const REST = 9;

/**
 * A pointer that rests sends no events, so a press without movement is one
 * sample however long it lasts. A device that samples at a steady rate would
 * repeat the place; so does this, once per frame that the press lasted. Strokes
 * that went anywhere stay as they are.
 */
export function withRest(samples, frames, width, height) {
  const extent = (values) => Math.max(...values) - Math.min(...values);
  const rests =
    samples.length > 0 &&
    extent(samples.map(({ x }) => x)) * width < REST &&
    extent(samples.map(({ y }) => y)) * height < REST;
  if (!rests) return samples;
  const missing = Math.max(0, frames - samples.length);
  return samples.concat(Array(missing).fill(samples.at(-1)));
}

/**
 * Turns Pointer Events of an element into strokes. Fires
 * - 'ink': the stroke in progress has grown, started or been dropped;
 * - 'stroke': a stroke is finished, `detail` holds its points.
 * Points are {x, y, force?} in fractions of the element; `force` is there only
 * when the device measures it.
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
    const { width, height } = this.#element.getBoundingClientRect();
    this.#samples = withRest(this.#samples, this.#frames, width, height);
    const points = this.points;
    this.#samples = [];
    this.#tell('stroke', points);
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
      // The pointer was lifted in the meantime: its pointerup is on the way.
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
