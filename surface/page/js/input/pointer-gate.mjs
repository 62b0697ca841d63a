// @ts-check

// A second finger within this time after the first makes both a gesture; a later one is a resting
// hand, and the stroke goes on.
const GESTURE_MS = 250;

// A touch wider than this many CSS pixels is a palm.
const PALM = 60;

/** @typedef {{pointerId: number, pointerType: string, button: number, timeStamp: number, width?: number}} Pointer */

/** Decides which pointer draws and which fingers move the view. Takes pointer events. */
export class PointerGate {
  /** @type {Pointer | null} */
  #drawing = null;
  /** @type {Set<number>} */
  #fingers = new Set();
  /** Fingers that are down do not draw until all are lifted. */
  #handsOff = false;
  /** Where there is a pen, fingers move the view. */
  #hasPen = false;

  /** @param {{pointerId: number}} event */
  isDrawing({ pointerId }) {
    return this.#drawing?.pointerId === pointerId;
  }

  /**
   * What a pointer that is put down does: 'start' a stroke, 'restart' (drop the stroke, start
   * another), 'gesture' (drop the stroke if there is one; the fingers move the view) or nothing.
   *
   * @param {Pointer} event @returns {'start' | 'restart' | 'gesture' | 'ignore'}
   */
  down(event) {
    const { pointerId, pointerType, button } = event;
    if (pointerType === 'touch') return this.#finger(event);
    if (pointerType === 'pen') this.#hasPen = true;
    // Button 5 is the eraser of a pen.
    if (button !== 0 && button !== 5) return 'ignore';
    if (!this.#drawing) return this.#start(event, 'start');
    if (this.#drawing.pointerType !== 'touch' || pointerType !== 'pen') return 'ignore';
    this.#handsOff = this.#fingers.size > 0; // the hand that holds the pen
    this.#fingers.delete(pointerId);
    return this.#start(event, 'restart');
  }

  /** @param {Pointer} event */
  #finger(event) {
    if ((event.width ?? 0) > PALM) return 'ignore';
    this.#fingers.add(event.pointerId);
    if (this.#drawing && this.#drawing.pointerType !== 'touch') return 'ignore';
    if (this.#drawing) {
      if (event.timeStamp - this.#drawing.timeStamp >= GESTURE_MS) return 'ignore';
      this.#handsOff = true;
      this.#drawing = null;
      return 'gesture';
    }
    if (this.#handsOff || this.#hasPen) {
      this.#handsOff = true;
      return 'gesture';
    }
    return this.#start(event, 'start');
  }

  /** The pointer was lifted or its capture lost. @param {{pointerId: number}} event */
  up(event) {
    return this.#end(event, 'finish');
  }

  /** The system has cancelled the pointer. @param {{pointerId: number}} event */
  cancel(event) {
    return this.#end(event, 'drop');
  }

  /** @template {string} T @param {Pointer} pointer @param {T} answer */
  #start({ pointerId, pointerType, timeStamp, button }, answer) {
    this.#drawing = { pointerId, pointerType, timeStamp, button };
    return answer;
  }

  /** @template {string} T @param {{pointerId: number}} event @param {T} answer */
  #end(event, answer) {
    this.#fingers.delete(event.pointerId);
    if (this.#fingers.size === 0) this.#handsOff = false;
    if (!this.isDrawing(event)) return 'ignore';
    this.#drawing = null;
    return answer;
  }
}
