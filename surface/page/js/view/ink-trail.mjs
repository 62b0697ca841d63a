// @ts-check
// The shape of ink: a smooth curve through its samples, whose width depends on pressure and speed.

import { getStroke } from 'perfect-freehand';
import { STRIDE } from '../model/ink.mjs';

// Even distance, in CSS pixels, of the points that the outline is made of: this makes the outline
// independent of the sampling rate.
const STEP = 1.5;

// The speed is averaged over about this time, ms.
const SPEED_TIME = 30;

// A hand at this speed, in CSS pixels a second, draws at three quarters of the width.
const FAST = 1500;

// Points of one outline. Long ink is a chain of them, so that what is finished is outlined once.
const CHUNK = 1000;

/** Share of the pen's width at a pressure (0 to 1) and a speed (CSS pixels a second). */
const shareOf = (/** @type {number} */ pressure, /** @type {number} */ speed) =>
  (0.35 + 1.3 * pressure) * (1.2 - 0.45 * Math.min(1.6, speed / FAST));

/** Ink that grows sample by sample. */
export class InkTrail {
  #width;
  #scale;
  #step;
  #measured = false;
  /** x, y, width of evenly spaced points. @type {[number, number, number][]} */
  #points = [];
  /** Points up to here belong to finished outlines. */
  #finished = 0;
  #rest = 0;
  #speed = 0;
  #share = 0;
  #weight = { sum: 0, length: 0 };
  /** The last two samples. @type {Sample[]} */
  #last = [];

  /** @param {number} width of the pen, units @param {number} scale CSS pixels per unit @param {boolean} measured */
  constructor(width, scale, measured) {
    this.#width = width;
    this.#scale = scale;
    this.#step = STEP / scale;
    this.#measured = measured;
  }

  /** Mean width of the ink. */
  get weight() {
    const { sum, length } = this.#weight;
    return length > 0 ? sum / length : this.#width * shareOf(0.5, 0);
  }

  /** @param {Sample} sample */
  append(sample) {
    const [before, last] = this.#last.length > 1 ? this.#last : [this.#last[0], this.#last[0]];
    const target = this.#measure(sample, last);
    if (!last) {
      this.#share = target;
      this.#points.push([sample.x, sample.y, this.#width * target]);
    } else {
      this.#curve(middle(before, last), last, middle(last, sample), target);
    }
    this.#last = [last ?? sample, sample];
  }

  /** The share of the width that the ink has at a sample. @param {Sample} sample @param {Sample} [last] */
  #measure(sample, last) {
    const pressure = this.#measured ? sample.pressure : 0.5;
    if (!last) return shareOf(pressure, 0);
    const duration = Math.max(1, sample.time - last.time);
    const speed =
      (1000 * this.#scale * Math.hypot(sample.x - last.x, sample.y - last.y)) / duration;
    this.#speed += (speed - this.#speed) * (1 - Math.exp(-duration / SPEED_TIME));
    return shareOf(pressure, this.#speed);
  }

  /** Adds evenly spaced points along a parabola. @param {Place} from @param {Place} control @param {Place} to @param {number} target */
  #curve(from, control, to, target) {
    const length =
      Math.hypot(control.x - from.x, control.y - from.y) +
      Math.hypot(to.x - control.x, to.y - control.y);
    const pieces = Math.max(1, Math.ceil((2 * length) / this.#step));
    const start = this.#share;
    let [px, py] = [from.x, from.y];
    for (let i = 1; i <= pieces; i += 1) {
      const t = i / pieces;
      const [u, v, w] = [(1 - t) * (1 - t), 2 * t * (1 - t), t * t];
      const [x, y] = [u * from.x + v * control.x + w * to.x, u * from.y + v * control.y + w * to.y];
      const piece = Math.hypot(x - px, y - py);
      this.#share = start + (target - start) * t;
      this.#weight.sum += piece * this.#share * this.#width;
      this.#weight.length += piece;
      this.#rest += piece;
      if (this.#rest >= this.#step) {
        this.#rest = 0;
        this.#points.push([x, y, this.#width * this.#share]);
      }
      [px, py] = [x, y];
    }
  }

  /** Outlines that have become final since the last call. */
  takeFinished() {
    const outlines = [];
    while (this.#points.length - this.#finished > CHUNK) {
      const end = this.#finished + CHUNK;
      outlines.push(outline(this.#points.slice(this.#finished, end + 1)));
      this.#finished = end;
    }
    return outlines;
  }

  /** The outline of what is not final yet, with samples that the browser predicts. @param {Sample[]} [predicted] */
  tail(predicted = []) {
    const width = this.#width * this.#share;
    const last = this.#last.at(-1);
    const ahead = (last ? [last, ...predicted] : []).map(({ x, y }) => [x, y, width]);
    return outline([
      ...this.#points.slice(this.#finished),
      .../** @type {[number, number, number][]} */ (ahead),
    ]);
  }
}

/** @param {Place} p @param {Place} q */
const middle = (p, q) => ({ x: (p.x + q.x) / 2, y: (p.y + q.y) / 2 });

/** Outline of points x, y, width: the numbers of a closed curve. @param {[number, number, number][]} points */
const outline = (points) =>
  getStroke(
    points.map(([x, y, width]) => [x, y, width / 2]),
    // With this size and thinning the radius is what is given as the pressure.
    { size: 1, thinning: 1, smoothing: 1, streamline: 0, simulatePressure: false, last: true },
  );

/**
 * All outlines of finished ink and its mean width.
 *
 * @param {Ink} ink @param {number} width of the pen
 */
export function shapeOf({ samples, measured, frame }, width) {
  const trail = new InkTrail(width, frame.scale, measured);
  for (let i = 0; i < samples.length; i += STRIDE) {
    const [x, y, pressure, time] = samples.subarray(i, i + STRIDE);
    trail.append({ x, y, pressure, time });
  }
  return { outlines: [...trail.takeFinished(), trail.tail()], weight: trail.weight };
}

/** Draws an outline as curves through the middles of its edges. @param {number[][]} points @param {{moveTo: Function, quadraticCurveTo: Function, closePath(): void}} sink */
export function traceOutline(points, sink) {
  if (points.length === 0) return;
  const middleAt = (/** @type {number} */ i) => {
    const [ax, ay] = points[i % points.length];
    const [bx, by] = points[(i + 1) % points.length];
    return [(ax + bx) / 2, (ay + by) / 2];
  };
  sink.moveTo(...middleAt(0));
  for (let i = 1; i <= points.length; i += 1) {
    sink.quadraticCurveTo(...points[i % points.length], ...middleAt(i));
  }
  sink.closePath();
}

/** @param {number[][][]} outlines @returns {Path2D} */
export function pathOf(outlines) {
  const path = new Path2D();
  for (const points of outlines) traceOutline(points, path);
  return path;
}

/** @type {WeakMap<Ink, {width: number, weight: number}>} */
const weights = new WeakMap();

/** Mean width of the ink, which its figure is drawn with. @param {Ink} ink @param {number} width of the pen */
export function weightOf(ink, width) {
  const known = weights.get(ink);
  if (known?.width === width) return known.weight;
  const { weight } = shapeOf(ink, width);
  weights.set(ink, { width, weight });
  return weight;
}
