// @ts-check
// Keys. Those that act on the drawing count only while the drawing area has the focus.

import { dropSelection, isInspecting, selection, tool } from '../store/settings.mjs';
import { byId, make } from './dom.mjs';

const STEP = 1;
const LONG_STEP = 10;
const GROWTH = 1.05;
const TURN = Math.PI / 36;

/** @type {Record<string, [number, number]>} */
const ARROWS = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };

const HELP = [
  ['P, V, E', 'draw, select, erase'],
  ['Tab, Shift Tab', 'select the next or previous stroke'],
  ['Arrow keys', 'move by 1, with Shift by 10; without a selection move the view'],
  ['[ and ]', 'smaller, larger'],
  [', and .', 'turn by 5°'],
  ['Delete', 'delete'],
  ['Ctrl D', 'duplicate'],
  ['Ctrl A', 'select everything'],
  ['I, F', 'as drawn, recognise again'],
  ['Enter', 'go to the alternatives of the selected or the latest stroke'],
  ['Escape', 'select nothing'],
  ['Ctrl Z, Ctrl Shift Z', 'undo, redo'],
  ['Ctrl S, Ctrl O', 'save, open'],
  ['+, −, 0', 'zoom in, out, show everything'],
  ['Space while dragging', 'move the view'],
  ['Alt while dragging', 'move one corner of a square or rectangle alone'],
];

/** @param {HTMLDialogElement} dialog */
export function createHelp(dialog) {
  const rows = HELP.flatMap(([keys, text]) => [
    make('dt', {}, make('kbd', {}, keys)),
    make('dd', {}, text),
  ]);
  const close = make('button', { type: 'button', onclick: () => dialog.close() }, 'Close');
  const body = make(
    'div',
    { className: 'body', tabIndex: 0, role: 'region' },
    make('dl', {}, ...rows),
  );
  body.setAttribute('aria-label', 'List of keys');
  dialog.append(make('header', {}, make('h2', { id: 'keys-title' }, 'Keys'), close), body);
}

/**
 * @param {HTMLElement} surface
 * @param {import('../tools/commands.mjs').Commands} commands
 * @param {import('../view/view.mjs').View} view
 * @param {{save(): void, open(): void, showAll(): void}} actions
 */
export function listenToKeys(surface, commands, view, actions) {
  /** With Ctrl or Meta, anywhere. @type {Record<string, () => void>} */
  const everywhere = {
    z: commands.undo,
    'shift+z': commands.redo,
    y: commands.redo,
    s: actions.save,
    o: actions.open,
  };
  /** @type {Record<string, () => void>} */
  const onSurface = {
    p: () => (tool.value = 'draw'),
    v: () => (tool.value = 'select'),
    e: () => (tool.value = 'erase'),
    '[': () => commands.resize(1 / GROWTH),
    ']': () => commands.resize(GROWTH),
    ',': () => commands.resize(1, -TURN),
    '.': () => commands.resize(1, TURN),
    Delete: commands.remove,
    Backspace: commands.remove,
    i: () => commands.toInk(),
    f: () => void commands.toFigure(),
    '+': () => view.zoomCentre(1.25),
    '=': () => view.zoomCentre(1.25),
    '-': () => view.zoomCentre(0.8),
    0: actions.showAll,
    '?': () =>
      byId('keys') instanceof HTMLDialogElement &&
      /** @type {HTMLDialogElement} */ (byId('keys')).showModal(),
    Escape: dropSelection,
    Enter: () => {
      isInspecting.value = true;
      /** @type {HTMLElement | null} */ (document.querySelector('#inspector button'))?.focus();
    },
  };
  const withControl = /** @type {Record<string, () => void>} */ ({
    d: commands.duplicate,
    a: commands.selectAll,
  });

  /** @param {KeyboardEvent} event */
  function arrow(event) {
    const [dx, dy] = ARROWS[event.key];
    const step = event.shiftKey ? LONG_STEP : STEP;
    if (selection.value.size > 0) commands.nudge(dx * step, dy * step);
    else view.pan(-dx * 40, -dy * 40);
  }

  /** The command of a key, if it has one. @param {KeyboardEvent} event @returns {(() => void) | undefined} */
  function commandOf(event) {
    const hasFocus = document.activeElement === surface;
    const key = event.key.length === 1 ? event.key.toLowerCase() : event.key;
    if (event.ctrlKey || event.metaKey) {
      const name = event.shiftKey ? `shift+${key}` : key;
      return everywhere[name] ?? (hasFocus ? withControl[name] : undefined);
    }
    if (!hasFocus || event.altKey) return undefined;
    return key in ARROWS ? () => arrow(event) : onSurface[key];
  }

  // The drawing area shows its focus to those who work with keys.
  addEventListener('pointerdown', () => document.body.removeAttribute('data-keys'));
  // After a click on a control the keys work on the drawing again.
  addEventListener('click', ({ detail, target }) => {
    const control = target instanceof Element && target.closest('main button, main label');
    const goesOn = document.querySelector('dialog[open], :popover-open');
    if (detail > 0 && control && !goesOn) surface.focus({ preventScroll: true });
  });
  addEventListener('keydown', (event) => {
    if (event.key === 'Tab' || event.key in ARROWS)
      document.body.toggleAttribute('data-keys', true);
    if (document.querySelector('dialog[open]')) return;
    if (event.key === 'Tab' && document.activeElement === surface) {
      // At the last stroke Tab goes on to the next control.
      if (commands.walk(event.shiftKey ? -1 : 1)) event.preventDefault();
      return;
    }
    const command = commandOf(event);
    if (!command) return;
    event.preventDefault();
    command();
  });
}
