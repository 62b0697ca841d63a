// The CommonJS entry: the same declarations through require().
import scrivo = require('scrivo');
import beautifier = require('scrivo/beautifier');

const path: scrivo.Point[] = scrivo.optimizeAStroke([{ x: 0, y: 1 }], 1, 1, []).path;
const code: scrivo.FigureType = scrivo.FigureType.POINT;
const loaded: boolean = scrivo.initScrivo(scrivo.templates);
// @ts-expect-error: no such export
scrivo.optimizeStroke(path);
// @ts-expect-error: typed, not `any`
new beautifier.Beautifier({ minSize: '20' });

export = { path, code, loaded };
