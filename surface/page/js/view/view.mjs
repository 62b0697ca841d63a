// @ts-check
// Which part of the document is visible.

const [SMALLEST, LARGEST] = [0.1, 16];

/** A view fires 'change' when it has moved, and 'resize' when its size on the screen has changed. */
export class View extends EventTarget {
  /** Place of the document at the upper left. */
  left = 0;
  top = 0;
  /** CSS pixels per unit. */
  scale = 1;
  /** Size in CSS pixels. */
  width = 0;
  height = 0;

  /** @returns {Frame} */
  get frame() {
    const { left, top, width, height, scale } = this;
    return Object.freeze({ left, top, width, height, scale });
  }

  /** @returns {Bounds} */
  get bounds() {
    const { left, top, width, height, scale } = this;
    return { left, top, right: left + width / scale, bottom: top + height / scale };
  }

  /** @param {number} x CSS pixels @param {number} y @returns {Place} */
  toDocument(x, y) {
    return { x: this.left + x / this.scale, y: this.top + y / this.scale };
  }

  /** @param {Place} place @returns {Place} CSS pixels */
  toScreen({ x, y }) {
    return { x: (x - this.left) * this.scale, y: (y - this.top) * this.scale };
  }

  /** @param {number} width @param {number} height */
  resize(width, height) {
    Object.assign(this, { width, height });
    this.dispatchEvent(new Event('resize'));
  }

  /** Moves the drawing by CSS pixels. @param {number} dx @param {number} dy */
  pan(dx, dy) {
    this.left -= dx / this.scale;
    this.top -= dy / this.scale;
    this.dispatchEvent(new Event('change'));
  }

  /** Zooms about a place of the screen, which stays where it is. @param {number} factor @param {Place} at CSS pixels */
  zoom(factor, at) {
    const { x, y } = this.toDocument(at.x, at.y);
    this.scale = Math.min(LARGEST, Math.max(SMALLEST, this.scale * factor));
    this.left = x - at.x / this.scale;
    this.top = y - at.y / this.scale;
    this.dispatchEvent(new Event('change'));
  }

  /** Zooms about the middle of the screen. @param {number} factor */
  zoomCentre(factor) {
    this.zoom(factor, { x: this.width / 2, y: this.height / 2 });
  }

  /** Shows a box as large as it fits, but not enlarged. @param {Bounds} box */
  show({ left, top, right, bottom }) {
    const margin = 80;
    const [width, height] = [right - left + 2 * margin, bottom - top + 2 * margin];
    this.scale = Math.max(SMALLEST, Math.min(1, this.width / width, this.height / height));
    this.left = (left + right - this.width / this.scale) / 2;
    this.top = (top + bottom - this.height / this.scale) / 2;
    this.dispatchEvent(new Event('change'));
  }

  /** @param {{left: number, top: number, scale: number}} place */
  moveTo({ left, top, scale }) {
    Object.assign(this, { left, top, scale });
    this.dispatchEvent(new Event('change'));
  }
}
