// Type-checked, never run: calls that must compile and calls that must not. An
// expected error that does not occur is an error.
import * as scrivo from 'scrivo-wasm';
import { FigureType, initScrivo, optimizeAStroke, templates } from 'scrivo-wasm';
import type { Point, StrokeResult, TemplateFile } from 'scrivo-wasm';
import * as alone from 'scrivo-wasm/beautifier';
import { Beautifier, outlineOf, start, startSync } from 'scrivo-wasm/beautifier';
import type { Beautified, Figure, InkPoint, ModuleSource } from 'scrivo-wasm/beautifier';
import { same } from '../../lib/types/same.mjs';

// Whatever a page has of the module.
const bytes = new Uint8Array(8);
await start();
await start('beautifier.wasm');
await start(new URL('beautifier.wasm', import.meta.url));
await start(fetch('beautifier.wasm'));
await start(bytes);
await start(bytes.buffer);
startSync(await WebAssembly.compile(bytes));
startSync(bytes);
same<ReturnType<typeof start>, Promise<void>>(true);
same<Parameters<typeof start>[0], ModuleSource | undefined>(true);
// @ts-expect-error: no address
startSync('beautifier.wasm');
// @ts-expect-error: no answer of fetch()
startSync(await fetch('beautifier.wasm'));
// @ts-expect-error: numbers are no module
await start([0, 97, 115, 109]);

// Built-in templates, and files that the page has loaded.
const file: TemplateFile = { name: 'ellipse.template', content: '0,0,1,1' };
initScrivo(templates);
initScrivo([...templates, file, { name: 'triangle.template', content: bytes }]);
same<ReturnType<typeof initScrivo>, boolean>(true);
// @ts-expect-error: not an array
initScrivo(file);
// @ts-expect-error: a file has a content
initScrivo([{ name: 'ellipse.template' }]);
// @ts-expect-error: the list is read-only
templates.push('mine.template');

// The rest is that of the native package.
const points: Point[] = [{ x: 0, y: 1 }];
same<typeof optimizeAStroke, typeof import('scrivo').optimizeAStroke>(true);
same<typeof FigureType, typeof import('scrivo').FigureType>(true);
same<typeof Beautifier, typeof scrivo.Beautifier>(true);
const result: StrokeResult = optimizeAStroke(points, 800, 600, []);
const answer: Beautified<InkPoint[]> = new Beautifier({ layout: 'xy' }).beautify(points, 800, 600);
const redrawn = (figure: Figure) => outlineOf(figure, 800, 600)[0].x;
// @ts-expect-error: an undefined force is not accepted
optimizeAStroke([{ x: 0, y: 1, force: undefined }], 800, 600, []);
// @ts-expect-error: unknown option
new Beautifier({ minsize: 20 });
// @ts-expect-error: the template engine is in the other entry
alone.optimizeAStroke(points, 800, 600, []);

export { answer, redrawn, result };
