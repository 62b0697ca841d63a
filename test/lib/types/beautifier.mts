// Type-checked, never run: see usage.mts.
import { optimizeAStroke } from 'scrivo';
import type { FigureType } from 'scrivo';
import { Beautifier, FIGURES, outlineOf, resample, WISHES } from 'scrivo/beautifier';
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
// Unknown settings may be left out or undefined.
const settings: { minSize?: number; sensitivity: number | undefined } = { sensitivity: undefined };
new Beautifier({ ...settings, minSize: settings.minSize, layout: undefined, figures: undefined });
same<typeof beautifier.options.minSize, number>(true);
same<typeof beautifier.options.layout, 'xy' | 'xyf'>(true);
beautifier.beautify([{ x: 0, y: 1, force: undefined }], 800, 600, undefined);

class Named extends Beautifier {
  label = 'mine';
}
const named: Beautifier = new Named({ minSize: 20 });

// The path has the form of the stroke.
const asObjects = beautifier.beautify(points, 800, 600, [points, packed]);
const asNumbers = beautifier.beautify(packed, 800, 600);
asNumbers.path satisfies Float64Array;
const inEitherForm = (ink: Ink) => beautifier.beautify(ink, 800, 600).path;
const either = (ink: Ink): InkPoint[] | Float64Array => inEitherForm(ink);
same<typeof asObjects.reason, Reason | null>(true);
same<typeof asObjects.type, FigureType>(true);

// Ink that stays as drawn keeps the properties of its points; those of figures are new.
if (asObjects.figure === null) {
  same<typeof asObjects.path, (typeof points)[number][]>(true);
  same<(typeof asObjects.path)[0]['time'], 17>(true);
  same<typeof asObjects.type, 0>(true);
  same<typeof asObjects.reason, Reason>(true);
} else {
  same<typeof asObjects.figure, Figure>(true);
  asObjects.path[0].x = 1;
  // @ts-expect-error: a new point has only coordinates
  asObjects.path[0].time;
}

// A wish keeps the form of the stroke; its figure can be drawn anew.
beautifier.beautifyAs(packed, 'square', 800, 600).path satisfies Float64Array;
for (const wish of WISHES) beautifier.beautifyAs(points, wish, 800, 600);
const redrawn = (answer: Beautified<InkPoint[]>) =>
  answer.figure && outlineOf(answer.figure, 800, 600)[0].x;
resample(points, 800, 600).map(({ x, y }) => x + y);
const likeliest = (answer: Beautified<InkPoint[]>): FigureFamily => answer.alternatives[0].family;

/** Narrowed by its kind, a figure has its own parameters; the cases are exhaustive. */
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
      // @ts-expect-error: a circle has no rotation
      return figure.rotation;
    case 'ellipse':
      return figure.radii.x * figure.rotation;
    default:
      return figure satisfies never;
  }
}

// @ts-expect-error: the figure may be null
size(asObjects.figure);
// @ts-expect-error: a circle is an ellipse here
const family: FigureFamily = 'circle';
// @ts-expect-error: unknown option
new Beautifier({ minsize: 20 });
// @ts-expect-error: the template engine accepts no undefined force
optimizeAStroke([] as InkPoint[], 800, 600, []);
// @ts-expect-error: nor in other strokes
optimizeAStroke([{ x: 0, y: 1 }], 800, 600, [[] as InkPoint[]]);
// @ts-expect-error: no figure of this name
new Beautifier({ figures: ['star'] });
// @ts-expect-error: options cannot change
beautifier.options.minSize = 3;
// @ts-expect-error: points are in double precision
beautifier.beautify(new Float32Array(6), 800, 600);
// @ts-expect-error: one stroke instead of a list of strokes
beautifier.beautify(points, 800, 600, points);
// @ts-expect-error: no kind of a figure
beautifier.beautifyAs(points, 'blob', 800, 600);
// @ts-expect-error: a circle has a radius
outlineOf({ kind: 'circle', centre: { x: 1, y: 2 } }, 800, 600);

export { either, family, likeliest, named, redrawn, size };
