// Never run, only checked: see usage.mts.
import { optimizeAStroke } from 'scrivo';
import { Beautifier, FIGURES } from 'scrivo/beautifier';
import type { Beautified, Figure, FigureFamily, Ink, InkPoint, Reason } from 'scrivo/beautifier';
import { same } from './same.mjs';

const points = [{ x: 0, y: 1, force: 0.5, time: 17 }] as const;
const packed = new Float64Array(6);

const beautifier = new Beautifier();
new Beautifier({
  figures: FIGURES,
  minSize: 20,
  sensitivity: 0.4,
  insideArea: false,
  layout: 'xy',
});
new Beautifier({ figures: ['dot', 'line'] as const });
// What is not known is left out or undefined.
const settings: { minSize?: number; sensitivity: number | undefined } = { sensitivity: undefined };
new Beautifier({ ...settings, minSize: settings.minSize, layout: undefined, figures: undefined });
same<typeof beautifier.options.minSize, number>(true);
same<typeof beautifier.options.layout, 'xy' | 'xyf'>(true);
beautifier.beautify([{ x: 0, y: 1, force: undefined }], 800, 600, undefined);

class Named extends Beautifier {
  label = 'mine';
}
const named: Beautifier = new Named({ minSize: 20 });

// The answer comes in the form of the stroke.
const asObjects = beautifier.beautify(points, 800, 600, [points, packed]);
const asNumbers = beautifier.beautify(packed, 800, 600);
same<typeof asObjects, Beautified<InkPoint[]>>(true);
same<typeof asNumbers, Beautified<Float64Array>>(true);
const inEitherForm = (ink: Ink) => beautifier.beautify(ink, 800, 600);
same<ReturnType<typeof inEitherForm>, Beautified<InkPoint[] | Float64Array>>(true);
same<typeof asObjects.reason, Reason | null>(true);

/** Narrowed by its kind, a figure has its own parameters; no kind is left over. */
function size(figure: Figure): number {
  switch (figure.kind) {
    case 'dot':
      return figure.centre.x;
    case 'line':
      return figure.to.x - figure.from.x;
    case 'angle':
      return figure.opening;
    case 'triangle':
      same<typeof figure.corners.length, 3>(true);
      return figure.corners[2].x;
    case 'quadrangle':
      same<typeof figure.corners.length, 4>(true);
      return figure.subtype === 'square' ? 1 : 2;
    case 'circle':
      // @ts-expect-error: a circle does not turn
      return figure.rotation;
    case 'ellipse':
      return figure.radii.x * figure.rotation;
    default:
      return figure satisfies never;
  }
}

// @ts-expect-error: the figure may be missing
size(asObjects.figure);
// @ts-expect-error: a circle is an ellipse here
const family: FigureFamily = 'circle';
// @ts-expect-error: unknown option
new Beautifier({ minsize: 20 });
// @ts-expect-error: a force that is undefined is an error there
optimizeAStroke([] as InkPoint[], 800, 600, []);
// @ts-expect-error: null is no option
new Beautifier({ minSize: null });
// @ts-expect-error: a Map holds no options
new Beautifier(new Map([['minSize', 20]]));
// @ts-expect-error: no such layout
new Beautifier({ layout: 'yx' });
// @ts-expect-error: no figure of this name
new Beautifier({ figures: ['star'] });
// @ts-expect-error: options are for good
beautifier.options.minSize = 3;
// @ts-expect-error: width and height are missing
beautifier.beautify(points);
// @ts-expect-error: single precision is not what points are in
beautifier.beautify(new Float32Array(6), 800, 600);
// @ts-expect-error: one stroke instead of a list of strokes
beautifier.beautify(points, 800, 600, points);
// @ts-expect-error: no y
const ink: Ink = [{ x: 1 }];
// @ts-expect-error: a class is made with new
Beautifier();

export { family, ink, named, size };
