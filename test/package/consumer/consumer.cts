import beautifier = require('scrivo/beautifier');
import scrivo = require('scrivo');

const count: number = scrivo.optimizeAStroke([], 1, 1, []).path.length;
// @ts-expect-error: no such export
scrivo.optimizeStroke([]);

// @ts-expect-error: the declarations are there, not `any`
new beautifier.Beautifier({ minSize: '20' });

export = count;
