// @ts-check
// Ink as it was drawn.

import * as plane from './geometry.mjs';

export const STRIDE = 4;

// Ends nearer to each other than this share of the diagonal belong to a closed stroke, which has none.
const CLOSED_GAP = 0.2;

let lastId = 0;

/**
 * @param {Omit<Ink, 'id'> & {id?: number}} ink without an id it gets a new one
 * @returns {Ink}
 */
export function makeInk({ id = lastId + 1, samples, measured, frame }) {
  lastId = Math.max(lastId, id);
  return Object.freeze({ id, samples, measured, frame });
}

/**
 * Whether these pressures were measured. A mouse reports 0.5 while pressed; pens and screens without
 * a sensor report only 0, 0.5 or 1.
 *
 * @param {string} pointerType @param {number[]} pressures
 */
export const isMeasured = (pointerType, pressures) =>
  pointerType !== 'mouse' && pressures.some((p) => p !== 0 && p !== 0.5 && p !== 1);

/** @param {Sample[]} samples @param {string} pointerType @param {Frame} frame @returns {Ink} */
export function inkOf(samples, pointerType, frame) {
  const flat = new Float32Array(STRIDE * samples.length);
  samples.forEach(({ x, y, pressure, time }, i) => {
    flat.set([x, y, pressure, time - samples[0].time], STRIDE * i);
  });
  const measured = isMeasured(
    pointerType,
    samples.map(({ pressure }) => pressure),
  );
  return makeInk({ samples: flat, measured, frame });
}

/** @param {Ink} ink */
export const countOf = ({ samples }) => samples.length / STRIDE;

/** @param {Ink} ink @param {number} i @returns {Place} */
export const placeAt = ({ samples }, i) => ({ x: samples[STRIDE * i], y: samples[STRIDE * i + 1] });

/** @param {Ink} ink @returns {Place[]} */
export const placesOf = (ink) => Array.from({ length: countOf(ink) }, (_, i) => placeAt(ink, i));

/** @param {Ink} ink @returns {Bounds} */
export function boundsOf({ samples }) {
  const box = plane.noBounds();
  for (let i = 0; i < samples.length; i += STRIDE) plane.extend(box, samples[i], samples[i + 1]);
  return box;
}

/** @param {Ink} ink @param {Similarity} m @returns {Ink} */
export function transform({ samples, measured, frame }, m) {
  const moved = Float32Array.from(samples);
  for (let i = 0; i < moved.length; i += STRIDE) {
    const { x, y } = plane.apply(m, { x: samples[i], y: samples[i + 1] });
    moved[i] = x;
    moved[i + 1] = y;
  }
  return makeInk({ samples: moved, measured, frame });
}

/** @param {Ink} ink @param {Place} place */
export function distanceTo(ink, place) {
  const count = countOf(ink);
  let nearest = plane.distance(place, placeAt(ink, 0));
  for (let i = 1; i < count; i += 1) {
    nearest = Math.min(
      nearest,
      plane.distanceToSegment(place, placeAt(ink, i - 1), placeAt(ink, i)),
    );
  }
  return nearest;
}

/** Where the ends of lines snap to: the ends of open ink and its centre. @param {Ink} ink @returns {Place[]} */
export function anchorsOf(ink) {
  const { left, top, right, bottom } = boundsOf(ink);
  const [first, last] = [placeAt(ink, 0), placeAt(ink, countOf(ink) - 1)];
  const open = plane.distance(first, last) > CLOSED_GAP * Math.hypot(right - left, bottom - top);
  const centre = { x: (left + right) / 2, y: (top + bottom) / 2 };
  return open ? [first, last, centre] : [centre];
}
