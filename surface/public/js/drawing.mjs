/**
 * The strokes on the page and their history.
 *
 * A stroke is a frozen {id, drawn, path, figure}: the ink as drawn and, once
 * recognised, the figure and its points, else null. Points are in fractions of the
 * canvas. Every change makes a new list of strokes; the history holds these lists.
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
    const stroke = Object.freeze({ id: ++this.#lastId, drawn, path: null, figure: null });
    this.#push([...this.strokes, stroke]);
    return stroke;
  }

  /**
   * Turns ink into a figure. This is a step of its own, so the first undo brings
   * the ink back. Returns the new stroke, or null when the ink has been undone or
   * cleared meanwhile.
   */
  idealise(id, path, figure) {
    const ink = this.get(id);
    if (!ink) return null;
    const idealised = Object.freeze({ ...ink, path, figure });
    this.#push(this.strokes.map((stroke) => (stroke === ink ? idealised : stroke)));
    return idealised;
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

/** The points of a stroke that are shown. */
export const shownPoints = ({ path, drawn }) => path ?? drawn;
