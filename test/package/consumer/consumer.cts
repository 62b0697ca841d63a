import scrivo = require('scrivo');

const count: number = scrivo.optimizeAStroke([], 1, 1, []).path.length;
// @ts-expect-error: no such export
scrivo.optimizeStroke([]);

export = count;
