// @ts-check
// Puts the page together.

import { effect } from '@preact/signals-core';
import { Recogniser } from './engine/recogniser.mjs';
import { Pointers } from './input/pointers.mjs';
import { Drawing } from './model/drawing.mjs';
import { unite } from './model/geometry.mjs';
import { makeInk } from './model/ink.mjs';
import { anchorAt, boundsOf } from './model/item.mjs';
import { offerTakeOver, showAvailability, warn } from './panels/alert.mjs';
import { Announcer } from './panels/announcer.mjs';
import { Chip } from './panels/chip.mjs';
import { byId } from './panels/dom.mjs';
import { createFiles } from './panels/files.mjs';
import { showInspector } from './panels/inspector.mjs';
import { createHelp, listenToKeys } from './panels/keyboard.mjs';
import { createSettings } from './panels/settings.mjs';
import { bindFiles, bindToolbar } from './panels/toolbar.mjs';
import { showWhy } from './panels/why.mjs';
import { revision, selection, settings, tool } from './store/settings.mjs';
import { openStorage } from './store/storage.mjs';
import { takeOver } from './store/tab-lock.mjs';
import { createCommands } from './tools/commands.mjs';
import { DrawTool } from './tools/draw-tool.mjs';
import { EraseTool } from './tools/erase-tool.mjs';
import { SelectTool } from './tools/select-tool.mjs';
import { cuePainter } from './view/cues.mjs';
import { WIDTHS } from './view/palette.mjs';
import { Renderer } from './view/renderer.mjs';
import { View } from './view/view.mjs';

const CUE_MS = 700;

// An end this near to an anchor, in units, has snapped to it.
const SNAPPED = 0.05;

/** @param {Engine} engine */
export function start(engine) {
  const surface = /** @type {HTMLCanvasElement} */ (byId('surface'));
  const drawing = new Drawing();
  const view = new View();
  const renderer = new Renderer(
    /** @type {HTMLCanvasElement} */ (byId('settled')),
    surface,
    view,
    drawing,
  );
  const recogniser = new Recogniser(engine, drawing, () => settings.value);
  const announcer = new Announcer(byId('status'), new Chip(surface, view));
  const say = (/** @type {string} */ text) => announcer.say(text);
  const announce = (/** @type {Item} */ item) => announcer.item(item);
  const context = { drawing, view, renderer, recogniser, announce };
  const commands = createCommands(context, say);
  const files = createFiles(context, say);
  const showAll = () =>
    view.show(drawing.items.length > 0 ? unite(drawing.items.map(boundsOf)) : view.bounds);

  watchSize(surface, view);
  const pointers = createPointers(surface, context);
  showState(drawing, view, recogniser, engine);
  showAvailability(recogniser);
  showTheme(renderer);
  bindToolbar(commands, view, showAll);
  bindFiles(files);
  createHelp(/** @type {HTMLDialogElement} */ (byId('keys')));
  listenToKeys(surface, commands, view, { save: files.save, open: files.open, showAll });
  showInspector(byId('inspector'), view, commands, (item) =>
    showWhy(/** @type {HTMLDialogElement} */ (byId('why')), item, recogniser),
  );
  const openSettings = createSettings(
    /** @type {HTMLDialogElement} */ (byId('settings')),
    recogniser,
    (inks) => addInks(drawing, inks, view),
  );
  byId('open-settings').onclick = openSettings;

  recogniser.addEventListener('answer', (event) => {
    const { item, ms } = /** @type {CustomEvent} */ (event).detail;
    timings.push(ms);
    announce(item);
    showSnap(item, context);
  });
  // A page that is hidden may never be shown again.
  addEventListener('pagehide', () => pointers.finish());

  /** What took from lifting the pen to the figure on the canvas, ms. @type {number[]} */
  const timings = [];
  const page = { drawing, view, recogniser, timings, isReady: false };
  Object.assign(window, { scrivo: page }); // for tests
  return loadDrawing(drawing, pointers).finally(() => (page.isReady = true));
}

// A database that does not answer must not keep anybody from drawing.
const LONGEST_LOAD_MS = 3000;

/** Loads what is stored; nothing can be drawn meanwhile. @param {Drawing} drawing @param {Pointers} pointers */
async function loadDrawing(drawing, pointers) {
  const main = /** @type {HTMLElement} */ (document.querySelector('main'));
  const release = () => (main.inert = false);
  const timer = setTimeout(release, LONGEST_LOAD_MS);
  main.inert = true;
  try {
    const onFailure = () =>
      warn('This drawing cannot be stored in the browser: save it to a file.');
    const offer = () => {
      main.inert = true;
      offerTakeOver(takeOver);
    };
    const onYield = () => {
      pointers.finish();
      offer();
    };
    const state = await openStorage(drawing, { onFailure, onYield });
    if (state === 'elsewhere') {
      clearTimeout(timer);
      return offer();
    }
  } catch {
    warn('This browser does not store drawings: save it to a file.');
  }
  clearTimeout(timer);
  release();
}

/** @param {HTMLElement} surface @param {View} view */
function watchSize(surface, view) {
  const resize = () => view.resize(surface.clientWidth, surface.clientHeight);
  new ResizeObserver(resize).observe(surface);
  const watchPixelRatio = () => {
    const query = matchMedia(`(resolution: ${devicePixelRatio}dppx)`);
    const onChange = () => {
      resize();
      watchPixelRatio();
    };
    query.addEventListener('change', onChange, { once: true });
  };
  watchPixelRatio();
  resize();
}

/** @param {HTMLElement} surface @param {import('./tools/draw-tool.mjs').Context} context */
function createPointers(surface, context) {
  const tools = {
    draw: new DrawTool(context),
    select: new SelectTool(context),
    erase: new EraseTool(context),
  };
  effect(() => {
    surface.style.cursor = tools[tool.value].cursor;
    context.renderer.paint('eraser', null);
  });
  effect(() => {
    void selection.value;
    context.renderer.schedule();
  });
  /** @param {PointerEvent} event */
  const toolFor = (event) => {
    const isEraser = event.button === 5 || (event.buttons & 32) !== 0;
    if (isEraser) return tools.erase;
    // With Ctrl the drawing tool selects.
    return tool.value === 'draw' && (event.ctrlKey || event.metaKey)
      ? tools.select
      : tools[tool.value];
  };
  return new Pointers(surface, context.view, toolFor);
}

/** Rings at the places where a line has snapped to other strokes. @param {Item} item @param {import('./tools/draw-tool.mjs').Context} context */
function showSnap({ id, figure }, { drawing, view, renderer }) {
  if (figure?.kind !== 'line') return;
  const places = [figure.from, figure.to].filter((end) => anchorAt(drawing, end, SNAPPED, id));
  if (places.length === 0) return;
  renderer.paint('snap', cuePainter(places, view.scale));
  setTimeout(() => renderer.paint('snap', null), CUE_MS);
}

/** Adds ink, for the engine to answer. @param {Drawing} drawing @param {Ink[]} inks @param {View} view */
function addInks(drawing, inks, view) {
  const items = inks.map(({ samples, measured, frame }) => {
    const ink = makeInk({ samples, measured, frame });
    return Object.freeze({
      id: drawing.newId(),
      ink,
      figure: null,
      answer: null,
      colour: 0,
      width: WIDTHS[1],
    });
  });
  drawing.commit('examples', items);
  view.show(unite(items.map(boundsOf)));
}

/** @param {Drawing} drawing @param {View} view @param {Recogniser} recogniser @param {Engine} engine */
function showState(drawing, view, recogniser, engine) {
  const [undo, redo, clear] = ['undo', 'redo', 'clear'].map(
    (id) => /** @type {HTMLButtonElement} */ (byId(id)),
  );
  const info = byId('engine-info');
  drawing.addEventListener('change', () => {
    revision.value += 1;
    undo.disabled = drawing.undoLabel === null;
    redo.disabled = drawing.redoLabel === null;
    clear.disabled = drawing.items.length === 0;
    document.body.toggleAttribute('data-empty', drawing.items.length === 0);
  });
  [undo, redo, clear].forEach((button) => (button.disabled = true));
  view.addEventListener('change', () => {
    byId('zoom-reset').textContent = `${Math.round(100 * view.scale)} %`;
  });
  const names = { beautifier: 'Beautifier', template: 'Template engine', both: 'Both engines' };
  let micros = /** @type {number | null} */ (null);
  effect(() => {
    info.textContent = `${names[settings.value.engine]}, ${engine.name}`;
  });
  recogniser.addEventListener('answer', (event) => {
    micros = /** @type {CustomEvent} */ (event).detail.item.answer?.micros ?? micros;
    info.textContent = `${names[settings.value.engine]}, ${engine.name} · ${micros} µs`;
  });
}

/** @param {Renderer} renderer */
function showTheme(renderer) {
  for (const query of ['(prefers-color-scheme: dark)', '(forced-colors: active)']) {
    matchMedia(query).addEventListener('change', () => renderer.refresh());
  }
  effect(() => {
    document.documentElement.dataset.theme = settings.value.theme;
    renderer.refresh();
  });
}
