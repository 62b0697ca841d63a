'use strict';

const { pixelsPer } = require('../units.js');

/** Whiteout is no ink. */
const ERASER = 'eraser';

/**
 * Collects the pen strokes of a Xournal++ document, page by page. Its unit is the point, and all
 * pages begin at 0 0.
 */
class XoppReader {
  constructor({ scale, onStroke, onProblem }) {
    Object.assign(this, { onStroke, onProblem });
    this.scale = scale ?? pixelsPer('pt');
    this.page = 0;
    this.area = undefined;
    this.stroke = undefined;
  }

  open(name, attributes, line, position) {
    if (name === 'page') this.openPage(attributes);
    else if (name === 'stroke' && attributes.tool !== ERASER) {
      this.stroke = { attributes, line, text: '', from: position };
    }
  }

  openPage({ width, height }) {
    this.page += 1;
    const [w, h] = [Number(width), Number(height)];
    this.area = w > 0 && h > 0 ? { x: 0, y: 0, width: w, height: h } : undefined;
  }

  text(text) {
    if (this.stroke) this.stroke.text += text;
  }

  close(name, position) {
    if (name !== 'stroke' || !this.stroke) return;
    const { attributes, line, text, from } = this.stroke;
    this.stroke = undefined;
    const values = text.trim().split(/\s+/).map(Number);
    const isWrong = values.length < 2 || values.length % 2 > 0 || !values.every(Number.isFinite);
    if (isWrong) {
      this.onProblem(line, 'a stroke must hold pairs of numbers');
      return;
    }
    const points = [];
    for (let i = 0; i < values.length; i += 2) points.push([values[i], values[i + 1]]);
    const { page, area, scale } = this;
    const fields = { page, ...penOf(attributes) };
    const stroke = { points, fields, page, scale, ...(area && { area }) };
    this.onStroke(line, stroke, { from, to: position });
  }

  finish() {}
}

/** Colour and width of a pen. With pressure its width is a list: the pen's own, then each point's. */
function penOf({ color, width = '' }) {
  const [, rgb, alpha] = /^(#[\da-f]{6})([\da-f]{2})?$/i.exec(color) ?? [undefined, color];
  const opacity = alpha === undefined ? 1 : Number.parseInt(alpha, 16) / 255;
  return {
    ...(rgb !== undefined && { stroke: rgb }),
    ...(Number.parseFloat(width) > 0 && { 'stroke-width': Number.parseFloat(width) }),
    ...(opacity < 1 && { 'stroke-opacity': Number(opacity.toFixed(3)) }),
  };
}

/**
 * The stroke of a figure.
 *
 * @param {string} element the text of a stroke element
 */
function rewriteStroke(element, { points }) {
  const pairs = points.map(([x, y]) => `${x} ${y}`).join(' ');
  return element
    .replace(/(\swidth\s*=\s*["'])\s*([^\s"']+)[^"']*/, '$1$2')
    .replace(/>[^<]*</, `>${pairs}<`);
}

module.exports = { XoppReader, rewriteStroke };
