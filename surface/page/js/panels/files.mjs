// @ts-check
// Saving, opening and exporting.

import { readDocument, writeDocument } from '../export/document.mjs';
import { writeInkml } from '../export/ink-files.mjs';
import { writePng, writeSvg } from '../export/picture.mjs';
import { unite } from '../model/geometry.mjs';
import { boundsOf } from '../model/item.mjs';
import { selection } from '../store/settings.mjs';
import { settle, warn } from './alert.mjs';
import { byId } from './dom.mjs';

/** @param {Blob} blob @param {string} name */
function download(blob, name) {
  const link = document.createElement('a');
  link.href = URL.createObjectURL(blob);
  link.download = name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 10_000);
}

/**
 * @param {import('../tools/draw-tool.mjs').Context} context
 * @param {(text: string) => void} say
 */
export function createFiles({ drawing, renderer, view }, say) {
  const input = /** @type {HTMLInputElement} */ (byId('file'));
  const save = (
    /** @type {string} */ text,
    /** @type {string} */ type,
    /** @type {string} */ name,
  ) => download(new Blob([text], { type }), name);

  const writers = {
    save: () => save(writeDocument(drawing.items), 'application/json', 'drawing.json'),
    open: () => input.click(),
    svg: () => save(writeSvg(drawing.items, renderer.palette.inks), 'image/svg+xml', 'drawing.svg'),
    png: async () => download(await writePng(drawing.items, renderer.palette), 'drawing.png'),
    inkml: () =>
      save(
        writeInkml(drawing.items, renderer.palette.inks),
        'application/inkml+xml',
        'drawing.inkml',
      ),
  };

  let problem = '';

  /** @param {File} file */
  async function open(file) {
    // Another tab has the drawing, or it is being loaded.
    if (document.querySelector('main')?.inert) return;
    try {
      const items = readDocument(await file.text(), () => drawing.newId());
      // The drawing that was there can be brought back by undo.
      drawing.commit(
        'opening',
        items,
        drawing.items.map(({ id }) => id),
      );
      selection.value = new Set();
      if (items.length > 0) view.show(unite(items.map(boundsOf)));
      say(`${file.name}: ${items.length === 1 ? 'one stroke' : `${items.length} strokes`}`);
      settle(problem);
    } catch (error) {
      problem = `${file.name} cannot be opened: ${/** @type {Error} */ (error).message}`;
      warn(problem);
    }
  }

  input.onchange = () => {
    if (input.files?.[0]) open(input.files[0]);
    input.value = '';
  };
  addEventListener('dragover', (event) => event.preventDefault());
  addEventListener('drop', (event) => {
    event.preventDefault();
    const file = event.dataTransfer?.files[0];
    if (file) open(file);
  });
  return writers;
}
