/**
 * What is on the page, with its history.
 *
 * A stroke is a frozen {id, drawn, path, type}: the ink as drawn and, once
 * recognised, the figure's points; both in fractions of the canvas. Every
 * change makes a new list of strokes, so a step of the history is a reference.
 */
export class Drawing extends EventTarget {
  #history = [[]];
  #lastId = 0;

  get strokes() {
    return this.#history.at(-1);
  }

  get canUndo() {
    return this.#history.length > 1;
  }

  get(id) {
    return this.strokes.find((stroke) => stroke.id === id);
  }

  /** Adds ink; returns its stroke. */
  add(drawn) {
    const stroke = Object.freeze({ id: ++this.#lastId, drawn, path: null, type: 0 });
    this.#push([...this.strokes, stroke]);
    return stroke;
  }

  /**
   * Turns ink into a figure: a step of its own, so the first undo brings the
   * ink back. Returns the new stroke, or null when an undo or a clear has
   * taken the ink away meanwhile.
   */
  idealise(id, path, type) {
    const ink = this.get(id);
    if (!ink) return null;
    const figure = Object.freeze({ ...ink, path, type });
    this.#push(this.strokes.map((stroke) => (stroke === ink ? figure : stroke)));
    return figure;
  }

  clear() {
    if (this.strokes.length > 0) this.#push([]);
  }

  undo() {
    if (!this.canUndo) return;
    this.#history.pop();
    this.dispatchEvent(new Event('change'));
  }

  #push(strokes) {
    this.#history.push(Object.freeze(strokes));
    this.dispatchEvent(new Event('change'));
  }
}

/** The points of a stroke that are to be seen. */
export const shownPoints = ({ path, drawn }) => path ?? drawn;
