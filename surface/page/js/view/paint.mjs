// @ts-check
// Paints single items. The context is in document units.

import { trace } from '../model/figure.mjs';
import { pathOf, shapeOf, weightOf } from './ink-trail.mjs';

// Outlines of ink are costly to compute; paths of figures are not.
/** @type {WeakMap<Ink, {width: number, path: Path2D}>} */
const paths = new WeakMap();

/** @param {Ink} ink @param {number} width of the pen */
export function inkPath(ink, width) {
  const known = paths.get(ink);
  if (known?.width === width) return known.path;
  const path = pathOf(shapeOf(ink, width).outlines);
  paths.set(ink, { width, path });
  return path;
}

/** @param {CanvasRenderingContext2D} context @param {Figure} figure @param {string} colour @param {number} width */
export function paintFigure(context, figure, colour, width) {
  context.fillStyle = colour;
  context.strokeStyle = colour;
  context.lineWidth = width;
  context.lineCap = 'round';
  context.lineJoin = 'round';
  context.beginPath();
  trace(figure, context, 1.6 * width);
  if (figure.kind === 'dot') context.fill();
  else context.stroke();
}

/** @param {CanvasRenderingContext2D} context @param {Item} item @param {string} colour */
export function paintInk(context, item, colour) {
  context.fillStyle = colour;
  context.fill(inkPath(item.ink, item.width));
}

/** @param {CanvasRenderingContext2D} context @param {Item} item @param {import('./palette.mjs').Palette} palette */
export function paintItem(context, item, palette) {
  const { figure, answer, ink, width } = item;
  const colour = palette.inks[item.colour];
  if (figure) paintFigure(context, figure, colour, weightOf(ink, width));
  else paintInk(context, item, colour);
  if (!answer?.second) return;
  context.setLineDash([7, 6]);
  paintFigure(context, answer.second, palette.second, Math.max(1.5, width / 2));
  context.setLineDash([]);
}
