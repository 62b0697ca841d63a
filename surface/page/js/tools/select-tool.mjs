// @ts-check
// Selects items, moves them, and drags their handles.

import * as plane from '../model/geometry.mjs';
import { dragHandle, handlesOf } from '../model/handles.mjs';
import { anchorAt, boundsOf, itemAt, transform, withoutSecond } from '../model/item.mjs';
import { dropSelection, latest, selection } from '../store/settings.mjs';
import { cuePainter } from '../view/cues.mjs';
import { paintItem } from '../view/paint.mjs';
import { ANCHOR_REACH } from './draw-tool.mjs';

// Distances in CSS pixels.
const TAP_REACH = { mouse: 6, pen: 8, touch: 16 };
const HANDLE_REACH = { mouse: 9, pen: 11, touch: 22 };
const TURN_REACH = 32;
const DRAG_START = 4;

/** @typedef {import('../model/handles.mjs').Handle} Handle */

/**
 * The handles of a selected item. Ink has the corners of its box, which scale it, and one to turn it.
 *
 * @param {Item} item @param {number} scale CSS pixels per unit @returns {Handle[]}
 */
export function itemHandles(item, scale) {
  if (item.figure) return handlesOf(item.figure, TURN_REACH / scale);
  const { left, top, right, bottom } = boundsOf(item);
  const corners = [
    { x: left, y: top },
    { x: right, y: top },
    { x: right, y: bottom },
    { x: left, y: bottom },
  ];
  const above = { x: (left + right) / 2, y: top - TURN_REACH / scale };
  return [...corners.map((place, i) => ({ id: `box ${i}`, place })), { id: 'turn', place: above }];
}

/**
 * An item after one of its handles was dragged.
 *
 * @param {Item} item @param {Handle} handle @param {Place} to @param {boolean} free @returns {Item}
 */
export function dragItem(item, handle, to, free) {
  const { figure, answer } = item;
  const [name, number] = handle.id.split(' ');
  if (figure && name !== 'centre' && name !== 'turn') {
    return Object.freeze({
      ...item,
      figure: dragHandle(figure, handle, to, free),
      answer: withoutSecond(answer),
    });
  }
  const { left, top, right, bottom } = boundsOf(item);
  const middle = { x: (left + right) / 2, y: (top + bottom) / 2 };
  if (name === 'centre') {
    return transform(item, plane.translation(to.x - handle.place.x, to.y - handle.place.y));
  }
  const turned = plane.drag(middle, handle.place, to);
  if (name === 'turn') return transform(item, plane.about(middle, 1, plane.angleOf(turned)));
  const opposite = itemHandles(item, 1)[(Number(number) + 2) % 4].place;
  const share = plane.distance(opposite, to) / Math.max(1, plane.distance(opposite, handle.place));
  return transform(item, plane.about(opposite, Math.max(0.05, share)));
}

/** @implements {Tool} */
export class SelectTool {
  cursor = 'default';
  #context;
  /** @type {Place} */
  #from = { x: 0, y: 0 };
  /** @type {Handle | null} */
  #handle = null;
  /** Items as they are while they are dragged. @type {Item[]} */
  #dragged = [];
  #isDrag = false;
  /** @type {Place | null} the other corner of the box that selects what it holds */
  #corner = null;

  /** @param {import('./draw-tool.mjs').Context} context */
  constructor(context) {
    this.#context = context;
    context.renderer.paint('selection', (canvas, palette) => this.#paint(canvas, palette));
  }

  get #selected() {
    return [...selection.value].flatMap((id) => this.#context.drawing.get(id) ?? []);
  }

  /** @param {Sample} sample @param {PointerEvent} event */
  down(sample, event) {
    const { drawing, view, announce } = this.#context;
    const kind = /** @type {keyof typeof TAP_REACH} */ (
      event.pointerType in TAP_REACH ? event.pointerType : 'mouse'
    );
    this.#from = { x: sample.x, y: sample.y };
    this.#isDrag = false;
    this.#corner = null;
    this.#handle = this.#handleAt(sample, HANDLE_REACH[kind] / view.scale);
    if (this.#handle) return;
    const item = itemAt(drawing, sample, TAP_REACH[kind] / view.scale);
    if (!item) {
      if (!event.shiftKey) dropSelection();
      this.#corner = sample;
    } else if (event.shiftKey) {
      const next = new Set(selection.value);
      if (!next.delete(item.id)) next.add(item.id);
      selection.value = next;
    } else if (!selection.value.has(item.id)) {
      selection.value = new Set([item.id]);
    }
    if (!item) return;
    latest.value = item.id;
    if (selection.value.has(item.id)) announce(item);
  }

  /** @param {Sample[]} samples @param {Sample[]} _predicted @param {PointerEvent} event */
  move(samples, _predicted, event) {
    const { view, renderer } = this.#context;
    const to = samples[samples.length - 1];
    if (!this.#isDrag && plane.distance(this.#from, to) * view.scale < DRAG_START) return;
    this.#isDrag = true;
    if (this.#corner) this.#corner = to;
    else this.#drag(to, event.altKey);
    renderer.schedule();
  }

  /** The cursor tells what a drag would do. @param {Place | null} place */
  hover(place) {
    const { drawing, view } = this.#context;
    const handle = place && this.#handleAt(place, HANDLE_REACH.mouse / view.scale);
    const item = place && itemAt(drawing, place, TAP_REACH.mouse / view.scale);
    if (handle && handle.id !== 'centre') return 'pointer';
    return handle || item ? 'move' : this.cursor;
  }

  up() {
    const { drawing } = this.#context;
    const [dragged, corner] = [this.#dragged, this.#corner];
    this.#end();
    if (dragged.length > 0) drawing.commit('change', dragged);
    if (!corner || !this.#isDrag) return;
    const box = plane.unite(
      [this.#from, corner].map(({ x, y }) => ({ left: x, top: y, right: x, bottom: y })),
    );
    const inside = drawing.within(box).filter((item) => {
      const { left, top, right, bottom } = boundsOf(item);
      return (
        plane.contains(box, { x: left, y: top }) && plane.contains(box, { x: right, y: bottom })
      );
    });
    selection.value = new Set([...selection.value, ...inside.map(({ id }) => id)]);
  }

  cancel() {
    this.#end();
  }

  #end() {
    const { renderer } = this.#context;
    this.#dragged = [];
    this.#corner = null;
    renderer.lift([]);
    renderer.paint('cue', null);
    renderer.schedule();
  }

  /** @param {Place} to @param {boolean} free */
  #drag(to, free) {
    const { renderer } = this.#context;
    const selected = this.#selected;
    const [item] = selected;
    if (!item) return;
    if (this.#handle) {
      this.#dragged = [dragItem(item, this.#handle, this.#snapped(item, to), free)];
    } else {
      const move = plane.translation(to.x - this.#from.x, to.y - this.#from.y);
      this.#dragged = selected.map((each) => transform(each, move));
    }
    renderer.lift(this.#dragged.map(({ id }) => id));
  }

  /** Corners and ends snap to other items. @param {Item} item @param {Place} to */
  #snapped(item, to) {
    const { drawing, view, renderer } = this.#context;
    const isCorner = item.figure && this.#handle?.id.startsWith('corner');
    const anchor = isCorner ? anchorAt(drawing, to, ANCHOR_REACH / view.scale, item.id) : null;
    renderer.paint('cue', anchor ? cuePainter([anchor], view.scale) : null);
    return anchor ?? to;
  }

  /** @param {Place} place @param {number} reach @returns {Handle | null} */
  #handleAt(place, reach) {
    const [item, ...others] = this.#selected;
    if (!item || others.length > 0) return null;
    const near = itemHandles(item, this.#context.view.scale)
      .map((handle) => ({ handle, distance: plane.distance(handle.place, place) }))
      .filter(({ distance }) => distance <= reach)
      .sort((p, q) => p.distance - q.distance);
    return near[0]?.handle ?? null;
  }

  /** @type {import('../view/renderer.mjs').Painter} */
  #paint(context, palette) {
    const { scale } = this.#context.view;
    for (const item of this.#dragged) paintItem(context, item, palette);
    const shown = this.#dragged.length > 0 ? this.#dragged : this.#selected;
    context.strokeStyle = palette.accent;
    context.lineWidth = 1.25 / scale;
    for (const item of shown) {
      const { left, top, right, bottom } = plane.grow(boundsOf(item), 9 / scale);
      context.setLineDash([5 / scale, 4 / scale]);
      context.strokeRect(left, top, right - left, bottom - top);
      context.setLineDash([]);
    }
    if (shown.length === 1) this.#paintHandles(context, palette, shown[0]);
    if (!this.#corner || !this.#isDrag) return;
    const { x, y } = this.#from;
    context.strokeRect(x, y, this.#corner.x - x, this.#corner.y - y);
  }

  /** @param {CanvasRenderingContext2D} context @param {import('../view/palette.mjs').Palette} palette @param {Item} item */
  #paintHandles(context, palette, item) {
    const { scale } = this.#context.view;
    context.fillStyle = palette.paper;
    context.lineWidth = 2 / scale;
    for (const { id, place } of itemHandles(item, scale)) {
      context.beginPath();
      if (id.startsWith('corner') || id.startsWith('box')) {
        const half = 5 / scale;
        context.roundRect(place.x - half, place.y - half, 2 * half, 2 * half, 2 / scale);
      } else {
        context.arc(place.x, place.y, 5 / scale, 0, 2 * Math.PI);
      }
      context.fill();
      context.stroke();
    }
  }
}
