// @ts-check
// Why a stroke became what it is: its samples, what each family would make of it, and the scores.

import { verticesOf } from '../model/figure.mjs';
import { countOf, placesOf } from '../model/ink.mjs';
import { writeNdjson } from '../export/ink-files.mjs';
import { make } from './dom.mjs';
import { capital, figureLabel, measuresOf, percent, reasonText } from './labels.mjs';
import { thumbnail } from './thumbnail.mjs';

// More samples than this would hide the ink.
const MOST_SHOWN = 600;

/**
 * @param {HTMLDialogElement} dialog @param {Item} item
 * @param {import('../engine/recogniser.mjs').Recogniser} recogniser
 */
export async function showWhy(dialog, item, recogniser) {
  const body = make('div', { className: 'body', tabIndex: 0 }, make('p', {}, 'Asking the engine…'));
  body.setAttribute('aria-label', 'Explanation');
  body.setAttribute('role', 'region');
  dialog.replaceChildren(header(dialog, item), body);
  dialog.showModal();
  const explanation = await recogniser.explain(item.ink).catch(() => null);
  if (explanation) body.replaceChildren(...contentOf(item, explanation));
  else body.replaceChildren(make('p', {}, 'The engine does not answer.'));
}

/** @param {HTMLDialogElement} dialog @param {Item} item */
function header(dialog, { figure, answer, ink }) {
  const title = figure ? `Why a ${figureLabel(figure).toLowerCase()}?` : 'Why ink?';
  const copy = make('button', { type: 'button' }, 'Copy as NDJSON');
  copy.title = 'For the command scrivo idealise';
  copy.onclick = async () => {
    const isCopied = await navigator.clipboard.writeText(writeNdjson(ink)).then(
      () => true,
      () => false,
    );
    copy.textContent = isCopied ? 'Copied' : 'The browser forbids it';
  };
  return make(
    'header',
    {},
    make('h2', { id: 'why-title' }, title.replace(/ a ([aei])/, ' an $1')),
    copy,
    make('button', { type: 'button', onclick: () => dialog.close() }, 'Close'),
    make('p', {}, !figure && answer?.reason ? reasonText(answer.reason) : ''),
  );
}

/** @param {Item} item @param {Explanation} explanation */
function contentOf({ ink, figure }, { points, candidates, micros }) {
  const samples = placesOf(ink);
  const few = samples.filter((_, i) => i % Math.ceil(samples.length / MOST_SHOWN) === 0);
  const corners = figure ? verticesOf(figure) : [];
  const steps = [
    step(
      countOf(ink) === 1 ? 'One sample' : `${countOf(ink)} samples`,
      thumbnail(ink, null, { marks: [{ places: few, name: 'sample' }] }),
    ),
    step(
      `${points.length} evenly spaced points`,
      thumbnail(ink, null, { marks: [{ places: points, name: 'sample' }] }),
    ),
    step(
      figure ? 'The figure on the page' : 'Left as drawn',
      thumbnail(ink, figure, { marks: [{ places: corners, name: 'corner' }] }),
      figure && measuresLine(figure),
    ),
  ];
  const cards = [...candidates]
    .sort((p, q) => q.probability - p.probability)
    .map(({ family, probability, figure: best, fitted }) =>
      step(
        `${capital(family)} ${percent(probability)}`,
        thumbnail(ink, best, {
          marks: [{ places: fitted ? verticesOf(fitted) : [], name: 'corner' }],
        }),
        meterOf(family, probability),
        best && measuresLine(best),
      ),
    );
  return [
    make('div', { className: 'cards' }, ...steps),
    make(
      'h3',
      {},
      'The beautifier’s best figure of each family, and the probability that it was meant',
    ),
    make('p', {}, 'Discs mark the corners of the fit, before it is made level and regular.'),
    make('div', { className: 'cards' }, ...cards),
    make('p', { className: 'reason' }, `All of this took ${micros} µs.`),
  ];
}

/** @param {string} family @param {number} value */
function meterOf(family, value) {
  const meter = make('meter', { min: 0, max: 1, value });
  meter.setAttribute('aria-label', `Probability of ${family}`);
  return meter;
}

/** The parameters of a figure, as the engine gives them. @param {Figure} figure */
const measuresLine = (figure) =>
  make(
    'p',
    { className: 'measures' },
    measuresOf(figure)
      .map(([name, value]) => `${name} ${value}`)
      .join(', '),
  );

/** @param {string} caption @param {import('./dom.mjs').Child[]} children */
const step = (caption, ...children) =>
  make('figure', {}, ...children, make('figcaption', {}, caption));
