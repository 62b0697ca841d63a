import { bounds } from './geometry.mjs';

/** A pointer rests while it stays within this many CSS pixels, the size of the template engine's largest dot. */
const REST = 9;

/**
 * What a device with a steady sampling rate would have sent while the pointer rested.
 *
 * The template engine takes a press for a dot when it has many samples, but a pointer that rests
 * sends no events: a press without movement is one sample, however long it lasts. This repeats the
 * last point of such a stroke, once per frame that the press lasted. Other strokes are returned
 * unchanged. The beautifier needs none of this.
 */
export function withRest(points, frames, { width, height }) {
  if (points.length === 0) return points;
  const { left, right, top, bottom } = bounds(points.map(({ x, y }) => [x * width, y * height]));
  if (right - left >= REST || bottom - top >= REST) return points;
  const missing = Math.max(0, frames - points.length);
  return points.concat(Array(missing).fill(points.at(-1)));
}
