'use strict';

const { createHistogram } = require('node:perf_hooks');
const { FAMILIES, LABELLED_FAMILIES } = require('./families.js');

/** Counts the answers of an engine on labelled strokes. */
class Score {
  #confusion = new Map(LABELLED_FAMILIES.map((family) => [family, new Map()]));
  #negatives = new Map();
  // Takes fixed memory for any number of strokes; precise to three digits.
  #nanoseconds = createHistogram();
  strokes = 0;

  /**
   * @param {import('./read/labelled.js').LabelledStroke} stroke
   * @param {import('./engines.js').Answer} answer
   * @param {bigint} nanoseconds that the engine took
   * @returns {boolean} whether the answer is right
   */
  add({ family, label }, answer, nanoseconds) {
    this.strokes += 1;
    this.#nanoseconds.record(nanoseconds > 0n ? nanoseconds : 1n);
    increment(this.#confusion.get(family), answer.family);
    const right = isRight(family, answer);
    if (family === 'none') {
      const { n, changed } = this.#negatives.get(label) ?? { n: 0, changed: 0 };
      this.#negatives.set(label, { n: n + 1, changed: changed + (right ? 0 : 1) });
    }
    return right;
  }

  /** How often a stroke of `family` was answered with `answer`. */
  count(family, answer) {
    return this.#confusion.get(family).get(answer) ?? 0;
  }

  /**
   * @returns {object} plain data: `families` with n and right of each family, `recall` over all
   *   figures (null without any), `negatives` with n, changed and the same by label, and
   *   `microseconds` per stroke
   */
  summary() {
    const families = Object.fromEntries(
      LABELLED_FAMILIES.map((family) => [family, this.#rightOf(family)]),
    );
    const figures = FAMILIES.map((family) => families[family]);
    const total = sum(figures.map(({ n }) => n));
    const labels = [...this.#negatives].sort(([a], [b]) => (a < b ? -1 : 1));
    return {
      families,
      recall: total > 0 ? sum(figures.map(({ right }) => right)) / total : null,
      negatives: {
        n: families.none.n,
        changed: families.none.n - families.none.right,
        by_label: Object.fromEntries(labels),
      },
      microseconds: {
        median: this.#nanoseconds.percentile(50) / 1000,
        p99: this.#nanoseconds.percentile(99) / 1000,
      },
    };
  }

  #rightOf(family) {
    const n = sum([...this.#confusion.get(family).values()]);
    return { n, right: this.count(family, family) };
  }
}

/** Whether an answer is right: the same family, or no change to ink that is no figure. */
function isRight(family, { family: answered, type }) {
  return family === 'none' ? type === 0 : answered === family;
}

function increment(counts, key) {
  counts.set(key, (counts.get(key) ?? 0) + 1);
}

function sum(values) {
  return values.reduce((total, value) => total + value, 0);
}

module.exports = { Score };
