// @ts-check
// Marks that show what a drag would do.

import { boundsOf } from '../model/figure.mjs';

/**
 * Rings around places, with a radius in CSS pixels.
 *
 * @param {Place[]} places @param {number} scale @returns {import('./renderer.mjs').Painter}
 */
export function cuePainter(places, scale) {
  return (context, palette) => {
    context.strokeStyle = palette.accent;
    context.lineWidth = 2 / scale;
    for (const { x, y } of places) {
      context.beginPath();
      context.arc(x, y, 7 / scale, 0, 2 * Math.PI);
      context.stroke();
    }
  };
}

/** The box of a figure that is being sized. @param {CanvasRenderingContext2D} context @param {import('./palette.mjs').Palette} palette @param {Figure} figure @param {number} scale */
export function paintReach(context, palette, figure, scale) {
  const { left, top, right, bottom } = boundsOf(figure);
  const margin = 10 / scale;
  context.strokeStyle = palette.accent;
  context.lineWidth = 1 / scale;
  context.setLineDash([4 / scale, 4 / scale]);
  context.strokeRect(
    left - margin,
    top - margin,
    right - left + 2 * margin,
    bottom - top + 2 * margin,
  );
  context.setLineDash([]);
}
