'use strict';

const { NO_EDGES, uniteEdges } = require('../boxes.js');
const { commonArea, commonScale } = require('./area.js');

/** Room around the ink where there is no drawing area, and between pages, in drawing units. */
const MARGIN = 10;

/** The pages of an output: those of its documents, below each other. Lines are on one page. */
class Pages {
  #pages = [];
  #scale;
  #families = {};

  /** @param {{x: number, y: number, width: number, height: number}} [givenArea] of an empty page */
  constructor(givenArea) {
    this.givenArea = givenArea;
  }

  /**
   * @param {object} result of a job; page: its number in the document, undefined for lines
   * @returns {boolean} whether it begins a further page
   */
  add({ input, page, edges, area, scale, families }) {
    for (const [name, n] of Object.entries(families)) {
      this.#families[name] = (this.#families[name] ?? 0) + n;
    }
    const key = page === undefined ? undefined : input;
    const last = this.#pages.at(-1);
    const isNew = !last || last.input !== key || last.page !== page;
    if (isNew) this.#pages.push({ input: key, page, edges: NO_EDGES });
    const current = this.#pages.at(-1);
    current.edges = uniteEdges(current.edges, edges);
    current.area = commonArea(current.area, area);
    this.#scale = commonScale(this.#scale, scale);
    return isNew && last !== undefined;
  }

  /**
   * @returns {{view: {x: number, y: number, width: number, height: number}, scale?: number,
   *   offsets: number[], families: Record<string, number>}} view: the drawing areas, or where there are none the ink and a margin;
   *   scale: drawing units per unit of it, where all strokes have the same; offsets: of each page,
   *   downwards; families: number of strokes answered with each
   */
  layOut() {
    const scale = this.#scale ?? undefined;
    const margin = MARGIN / (scale ?? 1);
    const offsets = [];
    let view;
    for (const page of this.#pages) {
      const box = boxOf(page, margin);
      const bottom = view && view.y + view.height + margin;
      offsets.push(view && box ? bottom - box.y : 0);
      if (box) view = view ? below(view, { ...box, y: bottom }) : box;
    }
    view ??= this.givenArea ?? { x: 0, y: 0, width: 100, height: 100 };
    return { view, scale, offsets, families: this.#families };
  }
}

function boxOf({ area, edges: [left, top, right, bottom] }, margin) {
  if (area) return area;
  if (!(left <= right)) return undefined;
  return {
    x: left - margin,
    y: top - margin,
    width: right - left + 2 * margin,
    height: bottom - top + 2 * margin,
  };
}

/** The box around two, the second below the first. */
function below(upper, lower) {
  const x = Math.min(upper.x, lower.x);
  const right = Math.max(upper.x + upper.width, lower.x + lower.width);
  return { x, y: upper.y, width: right - x, height: lower.y + lower.height - upper.y };
}

module.exports = { Pages };
