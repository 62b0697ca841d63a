// Type-checked, never run: calls that must compile and calls that must not. An
// expected error that does not occur is an error.
import { FigureType, initScrivo, optimizeAStroke, templates } from 'scrivo';
import type { Point, StrokeResult } from 'scrivo';
import { same } from './same.mjs';

const points: Point[] = [
  { x: 0, y: 1 },
  { x: 0, y: 1, force: 0.5 },
];
const frozen = Object.freeze([Object.freeze({ x: 0, y: 1 })]);
const sample = { x: 1, y: 2, force: 0.5, time: 17 };

initScrivo(templates);
initScrivo([]);
const loaded: boolean = initScrivo(['a.template'] as const);

const result: StrokeResult = optimizeAStroke(points, 800, 600, []);
optimizeAStroke(frozen, 800, 600, [frozen, points]);
optimizeAStroke([sample], 800, 600, [[sample]]);
optimizeAStroke(result.path, 800, 600, [result.path]);
optimizeAStroke(
  [
    { x: 0, y: 1 },
    { x: 0, y: 1, force: 0.5 },
  ],
  800,
  600,
  [[{ x: 1, y: 0 }]],
);

same<typeof result.type, 0 | 1 | 2 | 4 | 6 | 7>(true);
same<typeof FigureType.ELLIPSE, 7>(true);
same<FigureType, StrokeResult['type']>(true);
same<Point['force'], number | undefined>(true);

switch (result.type) {
  case FigureType.NONE:
  case FigureType.POINT:
  case FigureType.LINE:
  case FigureType.ANGLE:
  case FigureType.POLYGON:
  case FigureType.ELLIPSE:
    break;
  default:
    same<typeof result.type, never>(true);
}

// @ts-expect-error: not an array
initScrivo('rectangle.template');
// @ts-expect-error: one stroke instead of a list of strokes
optimizeAStroke(points, 800, 600, points);
// @ts-expect-error: an undefined force is not accepted
optimizeAStroke([{ x: 0, y: 1, force: undefined }], 800, 600, []);
// @ts-expect-error: no typed arrays
optimizeAStroke(new Float64Array(4), 800, 600, []);

// @ts-expect-error: 3 is not a code
const unknown: FigureType = 3;
// @ts-expect-error: the list is read-only
templates.push('mine.template');
// @ts-expect-error: named exports only
import scrivo from 'scrivo';

export { loaded, unknown, scrivo };
