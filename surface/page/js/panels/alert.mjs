// @ts-check
// The alert: one message at a time, with the button that it calls for.

import { byId } from './dom.mjs';

/** Shows a text and one button. @param {string} text @param {'retry' | 'take-over' | 'dismiss'} button */
function show(text, button) {
  byId('alert-text').textContent = text;
  for (const id of ['retry', 'take-over', 'dismiss']) byId(id).hidden = id !== button;
  byId('dismiss').onclick = hide;
  byId('alert').hidden = false;
}

function hide() {
  byId('alert').hidden = true;
}

/** @param {string} text */
export const warn = (text) => show(text, 'dismiss');

/** Hides a warning, unless another message has taken its place. @param {string} text */
export function settle(text) {
  if (byId('alert-text').textContent === text) hide();
}

/** @param {() => void} takeOver */
export function offerTakeOver(takeOver) {
  byId('take-over').onclick = takeOver;
  show('This drawing is open in another tab.', 'take-over');
}

/** Tells while the engine does not answer. @param {import('../engine/recogniser.mjs').Recogniser} recogniser */
export function showAvailability(recogniser) {
  const retry = byId('retry');
  retry.onclick = () => recogniser.retry();
  recogniser.addEventListener('state', () => {
    const { waiting, isAvailable } = recogniser;
    if (isAvailable) {
      if (!retry.hidden) hide();
      return;
    }
    const strokes = waiting === 1 ? 'One stroke waits' : `${waiting} strokes wait`;
    show(`The server does not answer. ${strokes} for it; your ink is kept.`, 'retry');
  });
}
