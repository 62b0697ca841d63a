// The CommonJS entry: the same declarations by way of require().
import scrivo = require('scrivo');

const path: scrivo.Point[] = scrivo.optimizeAStroke([{ x: 0, y: 1 }], 1, 1, []).path;
const code: scrivo.FigureType = scrivo.FigureType.POINT;
const loaded: boolean = scrivo.initScrivo(scrivo.templates);
// @ts-expect-error: no such export
scrivo.optimizeStroke(path);

export = { path, code, loaded };
