// @ts-check
// The dialog of the settings, with their effect on example ink.

import { effect } from '@preact/signals-core';
import { change, changeOptions, resetOptions, settings } from '../store/settings.mjs';
import { make } from './dom.mjs';
import { exampleInks } from './examples.mjs';
import { capital, figureLabel, percent } from './labels.mjs';
import { thumbnail } from './thumbnail.mjs';

const SNAPS = {
  both: 'When I lift the pen or rest it',
  lift: 'When I lift the pen',
  hold: 'Only when I rest the pen',
  never: 'Never: keep ink as drawn',
};

const THEMES = { auto: 'Like the system', light: 'Light', dark: 'Dark' };

/**
 * @param {HTMLDialogElement} dialog
 * @param {import('../engine/recogniser.mjs').Recogniser} recogniser
 * @param {(inks: Ink[]) => void} load puts ink on the surface
 */
export function createSettings(dialog, recogniser, load) {
  const inks = exampleInks();
  const examples = make('div', { className: 'cards examples' });
  const button = (/** @type {string} */ text, /** @type {() => void} */ onclick) =>
    make('button', { type: 'button', onclick }, text);
  const loadAll = () => {
    load(inks);
    dialog.close();
  };
  dialog.append(
    make(
      'header',
      {},
      make('h2', { id: 'settings-title' }, 'Settings'),
      button('Close', () => dialog.close()),
    ),
    make(
      'div',
      { className: 'body' },
      make(
        'div',
        { className: 'fields' },
        ...generalFields(),
        ...optionFields(),
        button('Reset the options', resetOptions),
      ),
      make(
        'section',
        {},
        make('h3', {}, 'What the engine makes of example ink'),
        examples,
        button('Put the examples on the page', loadAll),
      ),
    ),
  );
  let turn = 0;
  effect(() => {
    void settings.value;
    if (dialog.open) update();
  });
  const update = async () => {
    const current = (turn += 1);
    const answers = await Promise.all(
      inks.map((ink) => recogniser.recognise(ink).catch(() => null)),
    );
    if (current === turn)
      examples.replaceChildren(...answers.map((answer, i) => card(inks[i], answer)));
  };
  return () => {
    dialog.showModal();
    update();
  };
}

/** @param {Ink} ink @param {{figure: Figure | null, answer: Answer} | null} answer */
function card(ink, answer) {
  const figure = answer?.figure ?? null;
  const confidence = answer?.answer.confidence ?? null;
  const name = figure ? figureLabel(figure) : answer ? 'Ink' : 'No answer';
  const caption = figure && confidence !== null ? `${name} ${percent(confidence)}` : name;
  return make(
    'figure',
    { className: figure ? 'changed' : '' },
    thumbnail(ink, figure),
    make('figcaption', {}, caption),
  );
}

function generalFields() {
  return [
    choice(
      'Ink becomes a figure',
      SNAPS,
      () => settings.value.snap,
      (snap) => change({ snap }),
    ),
    choice(
      'Theme',
      THEMES,
      () => settings.value.theme,
      (theme) => change({ theme }),
    ),
    toggle(
      'Lines snap to other strokes',
      () => settings.value.snapsToOthers,
      (snapsToOthers) => change({ snapsToOthers }),
    ),
  ];
}

function optionFields() {
  const options = () => settings.value.options;
  const figures = FAMILIES.map((family) =>
    toggle(
      capital(family),
      () => options().figures.includes(family),
      (on) =>
        changeOptions({
          figures: FAMILIES.filter((each) =>
            each === family ? on : options().figures.includes(each),
          ),
        }),
    ),
  );
  return [
    make('h3', {}, 'Options of the beautifier'),
    range('Minimum size', 'minSize', 0, 120, 1, (v) => `${v} px`),
    range('Sensitivity', 'sensitivity', 0, 1, 0.05, (v) => v.toFixed(2)),
    toggle(
      'Level figures that are nearly level',
      () => options().horizontalVertical,
      (horizontalVertical) => changeOptions({ horizontalVertical }),
    ),
    toggle(
      'Make nearly regular figures regular',
      () => options().regularFigures,
      (regularFigures) => changeOptions({ regularFigures }),
    ),
    make('fieldset', { className: 'families' }, make('legend', {}, 'Figures'), ...figures),
  ];
}

/** @param {string} text @param {'minSize' | 'sensitivity'} name @param {number} min @param {number} max @param {number} step @param {(v: number) => string} format */
function range(text, name, min, max, step, format) {
  const input = make('input', { type: 'range', min, max, step });
  const output = make('output', {});
  input.oninput = () => changeOptions({ [name]: Number(input.value) });
  effect(() => {
    const value = settings.value.options[name];
    input.value = String(value);
    output.textContent = format(value);
  });
  return make('label', { className: 'range' }, make('span', {}, text), input, output);
}

/** @param {string} text @param {() => boolean} get @param {(on: boolean) => void} set */
function toggle(text, get, set) {
  const input = make('input', { type: 'checkbox' });
  input.onchange = () => set(input.checked);
  effect(() => {
    input.checked = get();
  });
  return make('label', { className: 'toggle' }, input, make('span', {}, text));
}

/**
 * @template {string} T
 * @param {string} text @param {Record<T, string>} names @param {() => T} get @param {(value: T) => void} set
 */
function choice(text, names, get, set) {
  const options = Object.entries(names).map(([value, name]) =>
    make('option', { value }, String(name)),
  );
  const select = make('select', {}, ...options);
  select.onchange = () => set(/** @type {T} */ (select.value));
  effect(() => {
    select.value = get();
  });
  return make('label', { className: 'choice' }, make('span', {}, text), select);
}
