// @ts-check
// Between the document and the engines: requests are in CSS pixels of the area that was visible when
// the ink was drawn, whatever is visible now.

import * as figures from '../model/figure.mjs';
import * as inks from '../model/ink.mjs';
import { anchorsNear } from '../model/item.mjs';

// Only anchors that the end of a line can reach are sent. Lines snap within 10 pixels, and their ends
// may lie somewhat off those of the ink.
const REACH = 50;

// What JSON needs to hold of a coordinate, parts of a pixel.
const PARTS = 1000;

/** @param {Place[]} places @param {Frame} frame */
function toArea(places, { left, top, scale }) {
  const round = (/** @type {number} */ v) => Math.round(v * scale * PARTS) / PARTS;
  return places.flatMap(({ x, y }) => [round(x - left), round(y - top)]);
}

/**
 * @param {Ink} ink @param {import('../model/item.mjs').Items | null} others items that lines may snap to
 * @param {Pick<EngineRequest, 'task' | 'engine' | 'wish' | 'options'>} task
 * @returns {EngineRequest}
 */
export function requestFor(ink, others, task) {
  const { frame } = ink;
  const places = inks.placesOf(ink);
  const ends = [places[0], places[places.length - 1]];
  const near = others ? anchorsNear(others, ends, REACH / frame.scale, ink) : [];
  return {
    ...task,
    points: toArea(places, frame),
    width: frame.width,
    height: frame.height,
    anchors: toArea(near, frame),
  };
}

/** A figure of an answer in document units. @param {Figure} figure @param {Frame} frame */
export const toDocument = (figure, { left, top, scale }) =>
  figures.transform(figure, { a: 1 / scale, b: 0, e: left, f: top });
