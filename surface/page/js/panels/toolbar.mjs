// @ts-check
// The toolbar, the colours and widths, the choice of engine and the menu of files.

import { effect } from '@preact/signals-core';
import { change, settings, tool } from '../store/settings.mjs';
import { COLOURS, WIDTHS } from '../view/palette.mjs';
import { byId, make } from './dom.mjs';
import { capital } from './labels.mjs';

const WIDTH_NAMES = ['Fine', 'Medium', 'Broad'];

/** Radio buttons that look like discs. @param {string} name @param {string[]} labels @param {number} chosen @param {(i: number) => void} choose */
function swatches(name, labels, chosen, choose) {
  return labels.map((text, i) => {
    const input = make('input', {
      type: 'radio',
      name,
      checked: i === chosen,
      onchange: () => choose(i),
    });
    input.setAttribute('aria-label', text);
    return make(
      'label',
      { title: text, className: `${name} ${name}-${i}` },
      input,
      make('span', {}),
    );
  });
}

/**
 * @param {import('../tools/commands.mjs').Commands} commands
 * @param {import('../view/view.mjs').View} view @param {() => void} showAll
 */
export function bindToolbar(commands, view, showAll) {
  byId('undo').onclick = commands.undo;
  byId('redo').onclick = commands.redo;
  byId('clear').onclick = commands.clear;
  byId('zoom-in').onclick = () => view.zoomCentre(1.25);
  byId('zoom-out').onclick = () => view.zoomCentre(0.8);
  byId('zoom-reset').onclick = showAll;
  const tools = /** @type {NodeListOf<HTMLButtonElement>} */ (
    document.querySelectorAll('[data-tool]')
  );
  for (const button of tools) {
    button.onclick = () => (tool.value = /** @type {typeof tool.value} */ (button.dataset.tool));
  }
  effect(() => {
    for (const button of tools)
      button.setAttribute('aria-pressed', String(button.dataset.tool === tool.value));
  });
  const engines = /** @type {NodeListOf<HTMLInputElement>} */ (
    document.querySelectorAll('input[name=engine]')
  );
  for (const input of engines) {
    input.checked = input.value === settings.value.engine;
    input.onchange = () => change({ engine: /** @type {EngineName | 'both'} */ (input.value) });
  }
  const style = (/** @type {{colour?: number, width?: number}} */ choice) => {
    change(choice);
    commands.restyle(choice.width === undefined ? choice : { width: WIDTHS[choice.width] });
  };
  const colourNames = COLOURS.map(capital);
  byId('colours').append(
    ...swatches('colour', colourNames, settings.value.colour, (colour) => style({ colour })),
  );
  byId('widths').append(
    ...swatches('width', WIDTH_NAMES, settings.value.width, (width) => style({ width })),
  );
}

/** @param {ReturnType<typeof import('./files.mjs').createFiles>} files */
export function bindFiles(files) {
  const actions = {
    ...files,
    keys: () => /** @type {HTMLDialogElement} */ (byId('keys')).showModal(),
  };
  const menu = byId('menu');
  for (const button of /** @type {NodeListOf<HTMLButtonElement>} */ (
    menu.querySelectorAll('[data-file]')
  )) {
    button.onclick = () => {
      menu.hidePopover();
      actions[/** @type {keyof typeof actions} */ (button.dataset.file)]();
    };
  }
}
