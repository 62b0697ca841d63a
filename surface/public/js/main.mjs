import { Announcer } from './announcer.mjs';
import { Drawing, shownPoints } from './drawing.mjs';
import { figureLabel, percent } from './labels.mjs';
import { Pen } from './pen.mjs';
import { RecogniserError, recognise } from './recogniser.mjs';
import { withRest } from './rest.mjs';
import { Surface } from './surface.mjs';

const element = (id) => document.getElementById(id);
const [canvas, undo, clear, keep, retry] = ['surface', 'undo', 'clear', 'keep', 'retry'].map(
  element,
);

const drawing = new Drawing();
const pen = new Pen(canvas);
const surface = new Surface(canvas);
const announcer = new Announcer({
  status: element('status'),
  label: element('label'),
  alert: element('alert'),
  alertText: element('alert-text'),
});
/** Ids of strokes that await an answer, and of those that failed to get one. */
const pending = new Set();
const unanswered = new Set();

const selectedEngine = () => document.querySelector('input[name=engine]:checked').value;

function show(id, { path, figure, confidence }) {
  if (!figure) {
    if (drawing.get(id)) announcer.status('Kept as drawn');
    return;
  }
  const stroke = drawing.idealise(id, path, figure);
  if (!stroke) return;
  const label = figureLabel(figure);
  surface.morph(stroke);
  announcer.status(confidence === null ? label : `${label}, confidence ${percent(confidence)}`);
  announcer.label(
    confidence === null ? label : `${label} · ${percent(confidence)}`,
    surface.toPixels(path),
  );
}

/** Answers may come in any order, and after their stroke has been undone. */
async function submit({ id, drawn }) {
  const others = drawing.strokes.filter((stroke) => stroke.id !== id).map(shownPoints);
  pending.add(id);
  unanswered.delete(id);
  try {
    const engine = selectedEngine();
    show(id, await recognise({ engine, stroke: drawn, ...surface.size, others }));
    if (unanswered.size === 0) announcer.hideWarning();
  } catch (error) {
    if (!(error instanceof RecogniserError)) throw error;
    unanswered.add(id);
    announcer.warn(error.message);
  } finally {
    pending.delete(id);
  }
}

const isKeeping = () => keep.getAttribute('aria-pressed') === 'true';

function retryAll() {
  announcer.hideWarning();
  const strokes = [...unanswered].map((id) => drawing.get(id));
  unanswered.clear();
  for (const stroke of strokes) if (stroke && !stroke.path) submit(stroke);
}

function showHint(shown) {
  document.body.toggleAttribute('data-empty', shown);
}

function onChange() {
  surface.strokes = drawing.strokes;
  undo.disabled = !drawing.canUndo;
  clear.disabled = drawing.strokes.length === 0;
  showHint(drawing.strokes.length === 0);
}

function stepBack() {
  if (!drawing.canUndo) return;
  drawing.undo();
  announcer.hideLabel();
  announcer.status('Undone');
}

drawing.addEventListener('change', onChange);

pen.addEventListener('ink', () => {
  const { points } = pen;
  surface.live = points;
  showHint(points.length === 0 && drawing.strokes.length === 0);
});

pen.addEventListener('stroke', ({ detail }) => {
  surface.live = [];
  announcer.status('');
  const { points, frames } = detail;
  const isTemplate = selectedEngine() === 'template';
  const stroke = drawing.add(isTemplate ? withRest(points, frames, surface.size) : points);
  if (!isKeeping()) submit(stroke);
});

undo.addEventListener('click', stepBack);
retry.addEventListener('click', retryAll);
clear.addEventListener('click', () => {
  drawing.clear();
  announcer.hideLabel();
  announcer.status('Cleared');
});
keep.addEventListener('click', () => keep.setAttribute('aria-pressed', String(!isKeeping())));

addEventListener('keydown', (event) => {
  const isUndo = (event.ctrlKey || event.metaKey) && !event.shiftKey && !event.altKey;
  if (!isUndo || event.key.toLowerCase() !== 'z') return;
  event.preventDefault();
  stepBack();
});

onChange();

/** For tests and the browser's console. */
window.scrivo = Object.freeze({
  get strokes() {
    return drawing.strokes;
  },
  get pending() {
    return pending.size;
  },
});
