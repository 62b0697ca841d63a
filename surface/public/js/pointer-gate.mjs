// A second finger within this time after the first makes both a gesture; a later one
// is a resting hand, and the stroke goes on.
const GESTURE_MS = 250;

/**
 * Decides which pointer draws. Takes pointer events, of which it reads `pointerId`,
 * `pointerType`, `button` and `timeStamp`, and returns what to do with the stroke.
 */
export class PointerGate {
  #drawing = null;
  #fingers = new Set();
  #handsOff = false;

  isDrawing({ pointerId }) {
    return this.#drawing?.pointerId === pointerId;
  }

  /** 'start', 'restart' (drop the stroke, start another), 'drop' or 'ignore'. */
  down(event) {
    const { pointerId, pointerType, button } = event;
    if (pointerType === 'touch') this.#fingers.add(pointerId);
    if (button !== 0 || (pointerType === 'touch' && this.#handsOff)) return 'ignore';
    if (!this.#drawing) return this.#start(event, 'start');
    if (this.#drawing.pointerType !== 'touch') return 'ignore';
    if (pointerType === 'pen') {
      this.#handsOff = this.#fingers.size > 0; // the hand that holds the pen
      return this.#start(event, 'restart');
    }
    const isGesture = event.timeStamp - this.#drawing.timeStamp < GESTURE_MS;
    if (pointerType !== 'touch' || !isGesture) return 'ignore';
    this.#handsOff = true;
    this.#drawing = null;
    return 'drop';
  }

  /** The pointer was lifted or its capture lost: 'finish' or 'ignore'. */
  up(event) {
    return this.#end(event, 'finish');
  }

  /** The system has cancelled the pointer: 'drop' or 'ignore'. */
  cancel(event) {
    return this.#end(event, 'drop');
  }

  #start({ pointerId, pointerType, timeStamp }, answer) {
    this.#drawing = { pointerId, pointerType, timeStamp };
    return answer;
  }

  #end(event, answer) {
    this.#fingers.delete(event.pointerId);
    if (this.#fingers.size === 0) this.#handsOff = false;
    if (!this.isDrawing(event)) return 'ignore';
    this.#drawing = null;
    return answer;
  }
}
