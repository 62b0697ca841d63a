// @ts-check
// Pointer events of the surface: one pointer works the tool, fingers and the wheel move the view.

import { PointerGate } from './pointer-gate.mjs';

const WHEEL_ZOOM = 0.0022;

export class Pointers {
  #element;
  #view;
  #toolFor;
  /** @type {Tool | null} the tool of the pointer that is down */
  #tool = null;
  #gate = new PointerGate();
  /** Fingers or the mouse that move the view. @type {Map<number, Place>} */
  #hands = new Map();
  #gesture = false;
  /** While the space bar is down the mouse moves the view. */
  #hasSpace = false;

  /**
   * @param {HTMLElement} element @param {import('../view/view.mjs').View} view
   * @param {(event: PointerEvent) => Tool} toolFor
   */
  constructor(element, view, toolFor) {
    this.#element = element;
    this.#view = view;
    this.#toolFor = toolFor;
    const handlers = {
      pointerdown: this.#onDown,
      pointermove: this.#onMove,
      pointerup: this.#onUp,
      pointercancel: this.#onCancel,
      lostpointercapture: this.#onUp,
      pointerleave: this.#onLeave,
    };
    for (const [name, handler] of Object.entries(handlers)) {
      element.addEventListener(name, (event) => handler(/** @type {PointerEvent} */ (event)));
    }
    element.addEventListener('wheel', this.#onWheel, { passive: false });
    addEventListener('keydown', (event) => this.#onSpace(event, true));
    addEventListener('keyup', (event) => this.#onSpace(event, false));
    addEventListener('blur', () => (this.#hasSpace = false));
    // A long press or a drag must not open a menu or select text.
    for (const name of ['contextmenu', 'dragstart', 'selectstart']) {
      element.addEventListener(name, (event) => event.preventDefault());
    }
  }

  /** Finishes what is in progress, as before the page is hidden. */
  finish() {
    this.#tool?.up(new PointerEvent('pointerup'));
    this.#tool = null;
  }

  /** @param {PointerEvent} event @returns {Sample} */
  #sampleOf({ clientX, clientY, pressure, timeStamp }) {
    return { ...this.#view.toDocument(clientX, clientY), pressure, time: timeStamp };
  }

  /** @param {PointerEvent} event */
  #onDown = (event) => {
    event.preventDefault();
    this.#element.focus({ preventScroll: true });
    const isHand = event.button === 1 || (this.#hasSpace && event.button === 0);
    if (event.pointerType === 'touch' || isHand) {
      this.#hands.set(event.pointerId, { x: event.clientX, y: event.clientY });
    }
    if (isHand) {
      this.#gesture = true;
      return this.#capture(event.pointerId);
    }
    const action = this.#gate.down(event);
    if (action === 'ignore') return;
    this.#tool?.cancel();
    this.#tool = null;
    if (action === 'gesture') {
      this.#gesture = true;
      return;
    }
    this.#capture(event.pointerId);
    this.#tool = this.#toolFor(event);
    this.#tool.down(this.#sampleOf(event), event);
  };

  /** @param {KeyboardEvent} event @param {boolean} isDown */
  #onSpace(event, isDown) {
    if (event.key !== ' ' || (isDown ? document.activeElement !== this.#element : !this.#hasSpace))
      return;
    event.preventDefault();
    this.#hasSpace = isDown;
    this.#element.style.cursor = isDown ? 'grab' : '';
  }

  /** @param {PointerEvent} event */
  #onMove = (event) => {
    if (this.#gesture && this.#hands.has(event.pointerId)) return this.#move(event);
    if (!this.#gate.isDrawing(event) || !this.#tool) {
      if (event.pointerType !== 'touch') this.#hover(event);
      return;
    }
    const coalesced = event.getCoalescedEvents?.() ?? [];
    const events = coalesced.length > 0 ? coalesced : [event];
    const predicted = event.getPredictedEvents?.() ?? [];
    this.#tool.move(
      events.map((e) => this.#sampleOf(e)),
      predicted.slice(0, 2).map((e) => this.#sampleOf(e)),
      event,
    );
  };

  /** @param {PointerEvent} event */
  #hover(event) {
    const tool = this.#toolFor(event);
    const cursor = tool.hover?.(this.#view.toDocument(event.clientX, event.clientY)) ?? tool.cursor;
    this.#element.style.cursor = this.#hasSpace ? 'grab' : cursor;
  }

  /** @param {PointerEvent} event */
  #onUp = (event) => {
    this.#release(event);
    if (this.#gate.up(event) !== 'finish') return;
    const tool = this.#tool;
    this.#tool = null;
    tool?.up(event);
  };

  /** @param {PointerEvent} event */
  #onCancel = (event) => {
    this.#release(event);
    if (this.#gate.cancel(event) !== 'drop') return;
    this.#tool?.cancel();
    this.#tool = null;
  };

  /** @param {PointerEvent} event */
  #onLeave = (event) => this.#toolFor(event).hover?.(null);

  /** @param {PointerEvent} event */
  #release({ pointerId }) {
    this.#hands.delete(pointerId);
    if (this.#hands.size === 0) this.#gesture = false;
  }

  /** Moves the view with one finger, and zooms it with two. @param {PointerEvent} event */
  #move({ pointerId, clientX, clientY }) {
    const before = this.#spread();
    this.#hands.set(pointerId, { x: clientX, y: clientY });
    const after = this.#spread();
    if (before.reach > 0 && after.reach > 0)
      this.#view.zoom(after.reach / before.reach, before.middle);
    this.#view.pan(after.middle.x - before.middle.x, after.middle.y - before.middle.y);
  }

  /** The middle of the first two fingers and their distance from it. */
  #spread() {
    const [p, q = p] = this.#hands.values();
    const middle = { x: (p.x + q.x) / 2, y: (p.y + q.y) / 2 };
    return { middle, reach: Math.hypot(p.x - middle.x, p.y - middle.y) };
  }

  /** @param {WheelEvent} event */
  #onWheel = (event) => {
    event.preventDefault();
    const unit = event.deltaMode === WheelEvent.DOM_DELTA_LINE ? 16 : 1;
    const [dx, dy] = [event.deltaX * unit, event.deltaY * unit];
    if (event.ctrlKey || event.metaKey) {
      this.#view.zoom(Math.exp(-WHEEL_ZOOM * dy), { x: event.clientX, y: event.clientY });
    } else if (event.shiftKey && dx === 0) {
      this.#view.pan(-dy, 0);
    } else {
      this.#view.pan(-dx, -dy);
    }
  };

  /** @param {number} pointerId */
  #capture(pointerId) {
    try {
      this.#element.setPointerCapture(pointerId);
    } catch {
      // The pointer has been lifted meanwhile: its pointerup is still pending.
    }
  }
}
