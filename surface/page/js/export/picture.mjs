// @ts-check
// The drawing as an SVG or PNG picture.

import { trace } from '../model/figure.mjs';
import * as plane from '../model/geometry.mjs';
import { paintedBounds } from '../model/item.mjs';
import { shapeOf, traceOutline, weightOf } from '../view/ink-trail.mjs';
import { paintItem } from '../view/paint.mjs';

const MARGIN = 16;

// Most programs cannot open larger pictures.
const LARGEST_SIDE = 8192;

const round = (/** @type {number} */ v) => String(Math.round(v * 100) / 100);

/** Collects the commands of an SVG path. */
class SvgPath {
  /** @type {string[]} */
  #parts = [];

  get text() {
    return this.#parts.join('');
  }

  /** @param {string} command @param {number[]} numbers */
  #add(command, ...numbers) {
    this.#parts.push(command + numbers.map(round).join(' '));
  }

  /** @param {number} x @param {number} y */
  moveTo(x, y) {
    this.#add('M', x, y);
  }

  /** @param {number} x @param {number} y */
  lineTo(x, y) {
    this.#add('L', x, y);
  }

  /** @param {number} cx @param {number} cy @param {number} x @param {number} y */
  quadraticCurveTo(cx, cy, x, y) {
    this.#add('Q', cx, cy, x, y);
  }

  /** A whole ellipse, as two halves. @param {number} x @param {number} y @param {number} rx @param {number} ry @param {number} turn */
  ellipse(x, y, rx, ry, turn) {
    const [dx, dy] = [rx * Math.cos(turn), rx * Math.sin(turn)];
    const degrees = (turn * 180) / Math.PI;
    this.#add('M', x + dx, y + dy);
    this.#add('A', rx, ry, degrees, 0, 1, x - dx, y - dy);
    this.#add('A', rx, ry, degrees, 0, 1, x + dx, y + dy);
  }

  closePath() {
    this.#parts.push('Z');
  }
}

/** The box of the picture of some items. @param {Item[]} items @returns {Bounds} */
export function pictureBounds(items) {
  if (items.length === 0) return { left: 0, top: 0, right: 2 * MARGIN, bottom: 2 * MARGIN };
  return plane.grow(plane.unite(items.map(paintedBounds)), MARGIN);
}

/** @param {Item} item @param {string[]} colours */
function svgOf({ ink, figure, colour, width }, colours) {
  const paint = colours[colour];
  if (!figure) {
    const path = new SvgPath();
    for (const points of shapeOf(ink, width).outlines) traceOutline(points, path);
    return `<path fill="${paint}" d="${path.text}"/>`;
  }
  const weight = weightOf(ink, width);
  const { text } = trace(figure, new SvgPath(), 1.6 * weight);
  const style =
    figure.kind === 'dot'
      ? `fill="${paint}"`
      : `fill="none" stroke="${paint}" stroke-width="${round(weight)}"`;
  return `<path ${style} d="${text}"/>`;
}

/** @param {Item[]} items @param {string[]} colours */
export function writeSvg(items, colours) {
  const { left, top, right, bottom } = pictureBounds(items);
  const [width, height] = [right - left, bottom - top].map(round);
  const paths = items.map((item) => svgOf(item, colours)).join('\n');
  return `<svg xmlns="http://www.w3.org/2000/svg" width="${width}" height="${height}" viewBox="${round(left)} ${round(top)} ${width} ${height}" stroke-linecap="round" stroke-linejoin="round">
${paths}
</svg>
`;
}

/**
 * @param {Item[]} items @param {import('../view/palette.mjs').Palette} palette
 * @returns {Promise<Blob>}
 */
export async function writePng(items, palette) {
  const { left, top, right, bottom } = pictureBounds(items);
  const [width, height] = [right - left, bottom - top];
  const zoom = Math.min(2, LARGEST_SIDE / Math.max(width, height));
  const canvas = document.createElement('canvas');
  canvas.width = Math.ceil(width * zoom);
  canvas.height = Math.ceil(height * zoom);
  const context = /** @type {CanvasRenderingContext2D} */ (canvas.getContext('2d'));
  context.fillStyle = palette.paper;
  context.fillRect(0, 0, canvas.width, canvas.height);
  context.setTransform(zoom, 0, 0, zoom, -left * zoom, -top * zoom);
  for (const item of items) paintItem(context, item, palette);
  return new Promise((resolve, reject) =>
    canvas.toBlob((blob) => (blob ? resolve(blob) : reject(new Error('no picture')))),
  );
}
