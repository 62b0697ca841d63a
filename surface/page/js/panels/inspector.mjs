// @ts-check
// The panel that tells what was recognised: kind, confidence, measures, alternatives, reason. It is
// open while something is selected, or on demand for the latest stroke.

import { effect } from '@preact/signals-core';
import { grow, overlap } from '../model/geometry.mjs';
import { boundsOf } from '../model/item.mjs';
import { dropSelection, isInspecting, latest, revision, selection } from '../store/settings.mjs';
import { byId, make } from './dom.mjs';
import { figureLabel, measuresOf, percent, reasonText, wishesFor, wishLabel } from './labels.mjs';

const ENGINES = { beautifier: 'Beautifier', template: 'Template engine', none: '' };

// Room for the handles around a selected figure, CSS pixels.
const HANDLES = 44;

/**
 * Fills the panel for the selected item, or else the latest one.
 *
 * @param {HTMLElement} panel
 * @param {import('../view/view.mjs').View} view
 * @param {import('../tools/commands.mjs').Commands} commands
 * @param {(item: Item) => void} explain opens the view that tells why
 */
export function showInspector(panel, view, commands, explain) {
  /** @type {Item | undefined} */
  let shown;
  let count = 0;
  effect(() => {
    void [revision.value, latest.value];
    const items = selection.value.size;
    const item = items > 0 || isInspecting.value ? commands.current() : undefined;
    if (item === shown && items === count) return;
    [shown, count] = [item, items];
    panel.hidden = !item;
    if (!item) return;
    const focused = /** @type {HTMLElement | null} */ (
      panel.contains(document.activeElement) ? document.activeElement : null
    );
    panel.replaceChildren(...contentOf(item, commands, explain, count));
    const again =
      focused &&
      [...panel.querySelectorAll('button, select')].find(
        (each) => each.textContent === focused.textContent,
      );
    if (focused) /** @type {HTMLElement} */ (again ?? panel.querySelector('button'))?.focus();
    dock(panel, item, view);
  });
  const move = () => shown && dock(panel, shown, view);
  view.addEventListener('change', move);
  view.addEventListener('resize', move);
  panel.addEventListener('keydown', (event) => {
    if (event.key === 'Escape') close();
  });
}

function close() {
  dropSelection();
  byId('surface').focus({ preventScroll: true });
}

/** Puts the panel to the side where it does not hide the item. @param {HTMLElement} panel @param {Item} item @param {import('../view/view.mjs').View} view */
function dock(panel, item, view) {
  const { left, top, right, bottom } = boundsOf(item);
  const first = view.toScreen({ x: left, y: top });
  const last = view.toScreen({ x: right, y: bottom });
  const box = grow({ left: first.x, top: first.y, right: last.x, bottom: last.y }, HANDLES);
  const isClear = (/** @type {'end' | 'start'} */ side) => {
    panel.dataset.dock = side;
    return !overlap(box, panel.getBoundingClientRect());
  };
  // One that is hidden on either side is too large for this screen.
  if (!isClear('end') && !isClear('start')) panel.dataset.dock = 'end';
}

/** @param {Item} item @param {import('../tools/commands.mjs').Commands} commands @param {(item: Item) => void} explain @param {number} count */
function contentOf(item, commands, explain, count) {
  const { figure, answer } = item;
  if (count > 1)
    return [make('h2', {}, `${count} strokes`), actions(item, commands, null), closeButton()];
  const name = figure ? figureLabel(figure) : answer ? 'Ink' : 'Waiting for the engine';
  return [
    make('h2', {}, name),
    answer && confidenceOf(item, answer),
    figure && measuresList(measuresOf(figure)),
    !figure && answer?.reason && make('p', { className: 'reason' }, reasonText(answer.reason)),
    alternatives(item, commands),
    actions(item, commands, explain),
    closeButton(),
  ].filter((child) => child instanceof Node);
}

function closeButton() {
  const button = make('button', { type: 'button', className: 'close', onclick: close }, '×');
  button.setAttribute('aria-label', 'Close');
  return button;
}

/** @param {Item} item @param {Answer} answer */
function confidenceOf({ figure }, { engine, confidence, micros }) {
  if (engine === 'none') return null;
  const text = [
    ENGINES[engine],
    confidence !== null && figure && percent(confidence),
    `${micros} µs`,
  ];
  return make(
    'div',
    { className: 'confidence' },
    make('span', {}, text.filter(Boolean).join(' · ')),
    confidence !== null && figure && meterOf(confidence),
  );
}

/** @param {number} confidence */
function meterOf(confidence) {
  const meter = make('meter', { min: 0, max: 1, value: confidence });
  meter.setAttribute('aria-label', 'Confidence');
  return meter;
}

/** @param {string[][]} measures */
const measuresList = (measures) =>
  make(
    'dl',
    {},
    ...measures.flatMap(([name, value]) => [make('dt', {}, name), make('dd', {}, value)]),
  );

/** @param {Item} item @param {import('../tools/commands.mjs').Commands} commands */
function alternatives(item, commands) {
  const offered = wishesFor(item).map(({ wish, probability }) =>
    make(
      'button',
      { type: 'button', className: 'chip', onclick: () => commands.toFigure(wish, item) },
      wishLabel(wish),
      probability !== null && make('small', {}, percent(probability)),
    ),
  );
  const asDrawn = make(
    'button',
    { type: 'button', className: 'chip', onclick: () => commands.toInk(item) },
    'As drawn',
  );
  const others = make(
    'select',
    {
      className: 'chip',
      onchange: (/** @type {Event} */ event) =>
        commands.toFigure(
          /** @type {Wish} */ (/** @type {HTMLSelectElement} */ (event.target).value),
          item,
        ),
    },
    make('option', { value: '' }, 'Other…'),
    ...WISHES.map((wish) => make('option', { value: wish }, wishLabel(wish))),
  );
  others.setAttribute('aria-label', 'Make it another figure');
  const chips = make(
    'div',
    { className: 'chips', role: 'group' },
    item.figure && asDrawn,
    ...offered,
    others,
  );
  chips.setAttribute('aria-label', 'Alternatives');
  return chips;
}

/** @param {Item} item @param {import('../tools/commands.mjs').Commands} commands @param {((item: Item) => void) | null} explain */
function actions(item, commands, explain) {
  const button = (/** @type {string} */ text, /** @type {() => void} */ onclick) =>
    make('button', { type: 'button', onclick }, text);
  const onItem = (/** @type {() => void} */ command) => () => {
    if (selection.value.size === 0) commands.select([item]);
    command();
  };
  return make(
    'div',
    { className: 'actions' },
    explain && button('Why?', () => explain(item)),
    button('Duplicate', onItem(commands.duplicate)),
    button('Delete', onItem(commands.remove)),
  );
}
