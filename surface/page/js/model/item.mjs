// @ts-check
// An item is one stroke on the surface: its ink, and the figure that is shown instead, if any.

import * as figures from './figure.mjs';
import * as plane from './geometry.mjs';
import * as inks from './ink.mjs';

/** @template T @param {(item: Item) => T} compute @returns {(item: Item) => T} */
function cached(compute) {
  /** @type {WeakMap<Item, T>} */
  const values = new WeakMap();
  return (item) => {
    let value = values.get(item);
    if (value === undefined) values.set(item, (value = compute(item)));
    return value;
  };
}

/** Ink on the surface that no engine is asked for. @type {Answer} */
export const KEPT = Object.freeze({
  engine: 'none',
  confidence: null,
  reason: 'kept',
  alternatives: [],
  micros: 0,
});

/** Box of what is shown, without the width of the pen. */
export const boundsOf = cached(({ ink, figure }) =>
  figure ? figures.boundsOf(figure) : inks.boundsOf(ink),
);

/** Box of what is painted. */
export const paintedBounds = cached((item) => {
  const second = item.answer?.second;
  const box = second ? plane.unite([boundsOf(item), figures.boundsOf(second)]) : boundsOf(item);
  return plane.grow(box, 2 * item.width + 2);
});

export const anchorsOf = cached(({ ink, figure }) =>
  figure ? figures.anchorsOf(figure) : inks.anchorsOf(ink),
);

/** @param {Item} item @param {Place} place */
export const distanceTo = ({ ink, figure }, place) =>
  figure ? figures.distanceTo(figure, place) : inks.distanceTo(ink, place);

/** Whether no engine has been asked yet. @param {Item} item */
export const isUnanswered = ({ figure, answer }) => figure === null && answer === null;

/** The same item elsewhere, larger or turned, with the ink beneath it. @param {Item} item @param {Similarity} m */
export function transform(item, m) {
  const figure = item.figure && figures.transform(item.figure, m);
  return Object.freeze({
    ...item,
    ink: inks.transform(item.ink, m),
    figure,
    answer: withoutSecond(item.answer),
  });
}

/** The answer of the other engine does not move with the figure. @param {Answer | null} answer */
export function withoutSecond(answer) {
  if (!answer?.second) return answer;
  return { ...answer, second: null };
}

/** Something that finds items, as a drawing does. @typedef {{within(box: Bounds): Item[]}} Items */

/** The topmost item within `reach` of a place. @param {Items} items @param {Place} place @param {number} reach @param {ReadonlySet<number>} [except] ids */
export function itemAt(items, place, reach, except) {
  let best;
  let nearest = reach;
  for (const item of items.within(plane.around(place, reach))) {
    if (except?.has(item.id)) continue;
    const distance = Math.max(0, distanceTo(item, place) - item.width / 2);
    if (distance <= nearest) [best, nearest] = [item, distance];
  }
  return best;
}

/** The nearest anchor within `reach` of a place. @param {Items} items @param {Place} place @param {number} reach @param {number} [except] id of an item */
export function anchorAt(items, place, reach, except) {
  let best = null;
  let nearest = reach;
  for (const item of items.within(plane.around(place, reach))) {
    if (item.id === except) continue;
    for (const anchor of anchorsOf(item)) {
      const distance = plane.distance(anchor, place);
      if (distance < nearest) [best, nearest] = [anchor, distance];
    }
  }
  return best;
}

/** Anchors within `reach` of any of the places. @param {Items} items @param {Place[]} places @param {number} reach @param {Ink} except ink of an item */
export function anchorsNear(items, places, reach, except) {
  const near = new Set(places.flatMap((place) => items.within(plane.around(place, reach))));
  return [...near]
    .filter(({ ink }) => ink !== except)
    .flatMap((item) => [...anchorsOf(item)])
    .filter((anchor) => places.some((place) => plane.distance(anchor, place) < reach));
}
