// @ts-check
// The settings and the state of the tools, as signals. Settings are kept by the browser.

import { computed, effect, signal } from '@preact/signals-core';

const NAME = 'scrivo-settings';

/**
 * `snap` is when ink becomes a figure: on lifting the pen, when the pen rests, both or never.
 *
 * @typedef {object} Settings
 * @property {EngineName | 'both'} engine
 * @property {'lift' | 'hold' | 'both' | 'never'} snap
 * @property {boolean} snapsToOthers
 * @property {EngineOptions} options
 * @property {number} colour
 * @property {number} width
 * @property {'auto' | 'light' | 'dark'} theme
 */

/** @type {Settings} */
const DEFAULTS = {
  engine: 'beautifier',
  snap: 'both',
  snapsToOthers: true,
  options: {
    minSize: 0,
    sensitivity: 0.5,
    figures: FAMILIES,
    horizontalVertical: true,
    regularFigures: true,
  },
  colour: 0,
  width: 1,
  theme: 'auto',
};

/** @returns {Settings} */
function load() {
  try {
    const stored = JSON.parse(localStorage.getItem(NAME) ?? '{}');
    return { ...DEFAULTS, ...stored, options: { ...DEFAULTS.options, ...stored.options } };
  } catch {
    return DEFAULTS;
  }
}

export const settings = signal(load());

/** @param {Partial<Settings>} changes */
export function change(changes) {
  settings.value = { ...settings.value, ...changes };
}

/** @param {Partial<EngineOptions>} changes */
export const changeOptions = (changes) =>
  change({ options: { ...settings.value.options, ...changes } });

export const resetOptions = () => change({ options: DEFAULTS.options });

effect(() => {
  try {
    localStorage.setItem(NAME, JSON.stringify(settings.value));
  } catch {
    // Without storage they last as long as the page.
  }
});

/** The tool that the pointer works. */
export const tool = signal(/** @type {'draw' | 'select' | 'erase'} */ ('draw'));

/** Ids of the selected items. @type {import('@preact/signals-core').Signal<ReadonlySet<number>>} */
export const selection = signal(new Set());

/** Whether the panel is open for the latest item; for selected ones it always is. */
export const isInspecting = signal(false);

/** Selects nothing and closes the panel. */
export function dropSelection() {
  if (selection.value.size > 0) selection.value = new Set();
  isInspecting.value = false;
}

/** Id of the item that was drawn or changed last. */
export const latest = signal(/** @type {number | null} */ (null));

/** Counts the changes of the drawing. */
export const revision = signal(0);

/** Whether new ink becomes a figure when the pen is lifted. */
export const snapsOnLift = computed(() => ['lift', 'both'].includes(settings.value.snap));

/** Whether ink becomes a figure when the pen rests. */
export const snapsOnHold = computed(() => ['hold', 'both'].includes(settings.value.snap));
