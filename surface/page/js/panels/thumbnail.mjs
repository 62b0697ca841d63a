// @ts-check
// Small pictures of ink and its figure, as SVG elements.

import { boundsOf, polylineOf } from '../model/figure.mjs';
import * as plane from '../model/geometry.mjs';
import * as inks from '../model/ink.mjs';
import { makeSvg } from './dom.mjs';

const list = (/** @type {Place[]} */ places) =>
  places.map(({ x, y }) => `${x.toFixed(1)},${y.toFixed(1)}`).join(' ');

/**
 * @param {Ink} ink @param {Figure | null} figure
 * @param {{marks?: {places: Place[], name: string}[]}} [more] discs at places, with the name of their class
 */
export function thumbnail(ink, figure, { marks = [] } = {}) {
  const box = figure ? plane.unite([inks.boundsOf(ink), boundsOf(figure)]) : inks.boundsOf(ink);
  const size = Math.max(box.right - box.left, box.bottom - box.top, 8);
  const { left, top, right, bottom } = plane.grow(box, 0.08 * size);
  const stroke = 0.02 * size;
  const discs = marks.flatMap(({ places, name }) =>
    places.map(({ x, y }) =>
      makeSvg('circle', {
        cx: x,
        cy: y,
        r: name === 'corner' ? 1.4 * stroke : 0.55 * stroke,
        class: name,
      }),
    ),
  );
  const shown = figure ? polylineOf(figure) : [];
  const isDot = figure?.kind === 'dot';
  return makeSvg(
    'svg',
    {
      viewBox: `${left} ${top} ${right - left} ${bottom - top}`,
      class: 'thumbnail',
      'aria-hidden': 'true',
    },
    makeSvg('polyline', {
      points: list(inks.placesOf(ink)),
      class: 'drawn',
      'stroke-width': stroke,
    }),
    isDot
      ? makeSvg('circle', { cx: shown[0].x, cy: shown[0].y, r: 2 * stroke, class: 'dot' })
      : makeSvg('polyline', { points: list(shown), class: 'figure', 'stroke-width': 1.4 * stroke }),
    ...discs,
  );
}
