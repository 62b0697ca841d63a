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

/** The topmost item within `reach` of a place. @param {Item[]} items @param {Place} place @param {number} reach */
export function itemAt(items, place, reach) {
  let best;
  let nearest = reach;
  for (const item of items) {
    if (!plane.contains(boundsOf(item), place, reach + item.width)) continue;
    const distance = Math.max(0, distanceTo(item, place) - item.width / 2);
    if (distance <= nearest) [best, nearest] = [item, distance];
  }
  return best;
}

/** The nearest anchor of the items within `reach`. @param {Item[]} items @param {Place} place @param {number} reach */
export function anchorAt(items, place, reach) {
  let best = null;
  let nearest = reach;
  for (const item of items) {
    if (!plane.contains(boundsOf(item), place, reach)) continue;
    for (const anchor of anchorsOf(item)) {
      const distance = plane.distance(anchor, place);
      if (distance < nearest) [best, nearest] = [anchor, distance];
    }
  }
  return best;
}

/** Anchors of the items within `reach` of any of the places. @param {Item[]} items @param {Place[]} places @param {number} reach */
export function anchorsNear(items, places, reach) {
  const near = [];
  for (const item of items) {
    const box = boundsOf(item);
    if (!places.some((place) => plane.contains(box, place, reach))) continue;
    for (const anchor of anchorsOf(item)) {
      if (places.some((place) => plane.distance(anchor, place) < reach)) near.push(anchor);
    }
  }
  return near;
}
