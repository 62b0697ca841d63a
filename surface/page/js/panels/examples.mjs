// @ts-check
// Generated ink, to show the effect of the settings.

import generator from '../../../../research/ink/index.js';
import { makeInk, STRIDE } from '../model/ink.mjs';

/** @type {Frame} */
const FRAME = Object.freeze({ left: 0, top: 0, width: 1200, height: 800, scale: 1 });

// Sizes of the last ones are those of handwriting.
const EXAMPLES = [
  { figure: 'line', seed: 4, size: 170 },
  { figure: 'angle', seed: 2, size: 150 },
  { figure: 'equilateral', seed: 3, size: 140 },
  { figure: 'square', seed: 6, size: 130 },
  { figure: 'rectangle', seed: 2, size: 170 },
  { figure: 'rhombus', seed: 5, size: 150 },
  { figure: 'circle', seed: 1, size: 140 },
  { figure: 'ellipse', seed: 7, size: 170 },
  { figure: 'zigzag', seed: 1, size: 150 },
  { figure: 'pentagon', seed: 2, size: 130 },
  { figure: 'circle', seed: 9, size: 16 },
  { figure: 'line', seed: 8, size: 24 },
];

const COLUMNS = 4;
const CELL = { x: 270, y: 230 };

/** @returns {Ink[]} ink in rows of four */
export function exampleInks() {
  return EXAMPLES.map(({ figure, seed, size }, i) => {
    const hand = generator.HANDS.ordinary;
    const { points } = generator.drawInk({ figure, seed, size, hand });
    const [xs, ys] = [0, 1].map((k) => points.map((point) => point[k]));
    const middle = (/** @type {number[]} */ v) => (Math.min(...v) + Math.max(...v)) / 2;
    const dx = CELL.x * ((i % COLUMNS) + 0.7) - middle(xs);
    const dy = CELL.y * (Math.floor(i / COLUMNS) + 0.7) - middle(ys);
    const samples = new Float32Array(STRIDE * points.length);
    points.forEach(([x, y, force, time], k) => {
      samples.set([x + dx, y + dy, force, time - points[0][3]], STRIDE * k);
    });
    return makeInk({ samples, measured: true, frame: FRAME });
  });
}
