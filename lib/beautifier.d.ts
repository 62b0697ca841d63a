/**
 * The beautifier: recognises figures in freehand strokes. It fits every family of figures to a
 * stroke and answers with the ideal figure of the likeliest one, its parameters and a calibrated
 * confidence, or with the stroke as drawn. It needs no template files and is independent of the
 * sampling rate.
 *
 * ```text
 * (0, 0) ─────── x ──────▶ (1, 0)      Points of strokes and paths are fractions
 *   │                        │         of the drawing area, y downwards. Width,
 *   y     drawing area       │         height, options and figures are in drawing-
 *   │     width × height     │         area units, usually CSS pixels.
 *   ▼                        │
 * (0, 1) ─────────────── (1, 1)
 * ```
 *
 * @module scrivo/beautifier
 */

import type { FigureType } from './index.js';

/** A point of a stroke: fractions of the drawing area, y downwards. */
export interface InkPoint {
  readonly x: number;
  readonly y: number;
  /** Pen pressure. It has no effect on the answer; ink that stays as drawn keeps it. */
  readonly force?: number | undefined;
}

/** A place in drawing-area units, y downwards. */
export interface Place {
  readonly x: number;
  readonly y: number;
}

/** A family of figures. Circles are ellipses; squares, rectangles, ... are quadrangles. */
export type FigureFamily = 'dot' | 'line' | 'angle' | 'triangle' | 'quadrangle' | 'ellipse';

/** All families, the default of {@link BeautifierOptions.figures}. */
export declare const FIGURES: readonly FigureFamily[];

/**
 * What can be an anchor in another stroke: the mean of its samples, its ends when it is open, its
 * corners. Strokes smaller than 20 units have a centre only.
 */
export type AnchorSort = 'centre' | 'end' | 'corner';

/**
 * Which figures a beautifier recognises, and how readily. An option that is `undefined` has its
 * default; inherited properties count.
 */
export interface BeautifierOptions {
  /**
   * The families wanted. A stroke that resembles another one stays ink; only a short dash, which
   * is a dot by default, becomes a line when dots are not wanted. Default: all.
   */
  readonly figures?: readonly FigureFamily[] | undefined;
  /**
   * Strokes whose longer side is below this many drawing-area units stay ink, dots included. Set
   * it where people also write: small strokes are handwriting. Default: 0.
   */
  readonly minSize?: number | undefined;
  /**
   * Longer side of the largest mark that a tap leaves, in drawing-area units; larger marks are
   * not dots. The default suits units of about a 96th of an inch, such as CSS pixels; use 14 for the dense
   * pixels of a phone. Default: 4.
   */
  readonly tapSize?: number | undefined;
  /**
   * From 0 (only figures beyond doubt) to 1 (readily). Raising it never turns a figure back into
   * ink or into another figure. Default: 0.5.
   */
  readonly sensitivity?: number | undefined;
  /**
   * Figures that are nearly level or upright by an edge, a diagonal, a leg or an axis are turned as
   * a whole until they are. Default: true.
   */
  readonly horizontalVertical?: boolean | undefined;
  /** Nearly regular triangles and quadrangles become regular, nearly round ellipses circles. Default: true. */
  readonly regularFigures?: boolean | undefined;
  /** The ends of lines snap to nearby strokes. Default: true. */
  readonly nearbyStrokes?: boolean | undefined;
  /** The anchors in nearby strokes that the ends of lines snap to. Default: all. */
  readonly anchors?: readonly AnchorSort[] | undefined;
  /**
   * Figures other than lines that extend beyond the drawing area are moved back into it if they fit.
   * Default: true.
   */
  readonly insideArea?: boolean | undefined;
  /** The numbers of each point in a Float64Array: x, y, force (`'xyf'`, the default) or x, y. */
  readonly layout?: 'xy' | 'xyf' | undefined;
}

/** The options of a beautifier, with defaults filled in. */
export type CompleteOptions = {
  readonly [Name in keyof BeautifierOptions]-?: Exclude<BeautifierOptions[Name], undefined>;
};

/** The ideal figure in drawing-area units. Agrees with the path up to rounding. */
export type Figure =
  | { kind: 'dot'; centre: Place }
  | {
      kind: 'line';
      /** Where the pen was put down; `to` is where it was lifted. */
      from: Place;
      to: Place;
    }
  | {
      kind: 'angle';
      from: Place;
      vertex: Place;
      to: Place;
      /** Radians, from 0 to pi. */
      opening: number;
    }
  | {
      kind: 'triangle';
      /** In drawing order, like the path. */
      corners: [Place, Place, Place];
      /** A right triangle that is also isosceles is `'right'`. */
      subtype: 'general' | 'equilateral' | 'isosceles' | 'right';
    }
  | {
      kind: 'quadrangle';
      corners: [Place, Place, Place, Place];
      /** The most special kind that applies: a square is not called a rectangle. */
      subtype:
        'general' | 'square' | 'rectangle' | 'rhombus' | 'parallelogram' | 'trapezoid' | 'kite';
    }
  | { kind: 'circle'; centre: Place; radius: number }
  | {
      kind: 'ellipse';
      centre: Place;
      /** `x` is the radius along the first axis, `y` along the second. */
      radii: Place;
      /** Of the first axis, radians, clockwise on the screen, within [-pi/4, pi/4]. */
      rotation: number;
    };

/** What a stroke can be turned into: a family, or one of its kinds. */
export type Wish =
  | FigureFamily
  | 'circle'
  | 'equilateral'
  | 'isosceles'
  | 'right'
  | 'square'
  | 'rectangle'
  | 'rhombus'
  | 'parallelogram'
  | 'trapezoid'
  | 'kite';

/** All wishes, for menus: the families, then the kinds. */
export declare const WISHES: readonly Wish[];

/** Another family that a stroke may have been meant as. */
export interface Alternative {
  family: FigureFamily;
  /** From 0 to 1. */
  probability: number;
}

/**
 * Why a stroke stays as drawn:
 *
 * - `'invalid'`: it has no points, lies beyond 2^31 - 1 units or sides of the area, or it or its figure is
 *   more than 50 times as wide or high as the area, as with pixels instead of fractions or an area of nearly
 *   no width
 * - `'too-small'`: its longer side is below `minSize`
 * - `'not-wanted'`: it resembles a figure that is not among `figures`
 * - `'not-sure'`: it resembles a figure, but not enough for this `sensitivity`
 * - `'no-figure'`: it resembles none
 */
export type Reason = 'invalid' | 'too-small' | 'not-wanted' | 'not-sure' | 'no-figure';

/** A stroke as point objects, or as numbers in the order that `layout` names. */
export type Ink = readonly InkPoint[] | Float64Array;

/** Ink that stays as drawn: a new array of the same points, or a copy of the numbers. */
export type Drawn<Stroke extends Ink> = Stroke extends Float64Array
  ? Float64Array
  : Stroke extends readonly (infer P)[]
    ? P[]
    : never;

/** The outline of a figure: new points without force, or numbers, like the stroke. */
export type Outline<Stroke extends Ink> = Stroke extends Float64Array
  ? Float64Array
  : { x: number; y: number }[];

/** What every answer has. */
export interface Answer {
  /**
   * Calibrated probability, from 0 to 1, that the answer is right; 1 where the options or the
   * numbers decide (`'invalid'`, `'too-small'`, `'not-wanted'`).
   */
  confidence: number;
  /**
   * Families worth offering besides the answer, likeliest first: those with a probability of 1 % and
   * more, also for a stroke that stays ink.
   */
  alternatives: Alternative[];
}

/** A stroke that was recognised. */
export interface Recognised<Stroke extends Ink> extends Answer {
  /**
   * The outline in fractions of the drawing area. A dot has 64 points, a line 21, an angle 42, an
   * ellipse 85, polygons 21 per edge.
   */
  path: Outline<Stroke>;
  /** The code of the figure. */
  type: Exclude<FigureType, 0>;
  /** Its parameters. */
  figure: Figure;
  /** There is none. */
  reason: null;
}

/** A stroke that stays as drawn. */
export interface AsDrawn<Stroke extends Ink> extends Answer {
  /** The ink, in fractions of the drawing area. */
  path: Drawn<Stroke>;
  /** `FigureType.NONE` */
  type: 0;
  /** There is none. */
  figure: null;
  /** Why there is none. */
  reason: Reason;
}

/** The answer to a stroke of a type: `if (answer.figure)` tells the two forms apart. */
export type Beautified<Stroke extends Ink = InkPoint[]> = Recognised<Stroke> | AsDrawn<Stroke>;

/**
 * Cannot change after construction; a derived class may add properties of its own. Beautifiers with
 * different options can be used side by side. Worker threads create their own.
 */
export declare class Beautifier {
  /**
   * @throws TypeError when `options` is not an object (nor an array or a `Map`) or an
   *   option has the wrong type
   * @throws RangeError when an option is unknown or out of range; messages name the option and
   *   what was found
   */
  constructor(options?: BeautifierOptions);

  /** The options, with defaults filled in. Frozen. */
  readonly options: CompleteOptions;

  /**
   * Recognises one stroke. Keeps no state between calls and does not change its arguments.
   *
   * @param stroke the stroke as drawn; may be empty
   * @param width width of the drawing area as the user sees it, above 0
   * @param height height of the drawing area, in the same unit
   * @param others the other strokes on the page, to which the ends of lines may snap
   * @throws TypeError or RangeError that names the argument, the index and what was found
   */
  beautify<Stroke extends Ink>(
    stroke: Stroke,
    width: number,
    height: number,
    others?: readonly Ink[],
  ): Beautified<Stroke>;

  /**
   * The best figure of a family or kind for this stroke, whatever its score: `figures`, `minSize` and
   * `sensitivity` do not count, the other options do. `confidence` is the probability that the family
   * is right. `reason` is `'no-figure'` when there is no such figure, as for samples that all coincide.
   *
   * @param wish a family or kind; of a family the kind is chosen as `beautify` chooses it
   * @throws as {@link beautify}, and RangeError for an unknown wish
   */
  beautifyAs<Stroke extends Ink>(
    stroke: Stroke,
    wish: Wish,
    width: number,
    height: number,
    others?: readonly Ink[],
  ): Beautified<Stroke>;
}

/**
 * The points that figures are fitted to, for views that explain an answer: 97 at even distances
 * along the stroke. Hooks and repeated parts at its ends are left out, tremor is smoothed.
 *
 * @param stroke as `beautify` takes it, as point objects
 * @param width of the drawing area, above 0
 * @param height the same
 * @returns points in fractions of the drawing area; none for a stroke that is `'invalid'` itself,
 *   not because of its figure, or whose samples all coincide
 * @throws TypeError or RangeError that names the argument, the index and what was found
 */
export declare function resample(
  stroke: readonly InkPoint[],
  width: number,
  height: number,
): Outline<InkPoint[]>;

/**
 * Outline of a figure whose parameters the host may have changed, as
 * {@link Recognised.path} has it: from the parameters alone.
 *
 * @param figure in drawing-area units
 * @param width of the drawing area, above 0
 * @param height the same
 * @returns points in fractions of the drawing area
 * @throws TypeError, RangeError naming the parameter and what was found
 * @throws RangeError when a point would not lie within 2^31 - 1 sides of the area, as in one of nearly no
 *   width
 */
export declare function outlineOf(
  figure: Figure,
  width: number,
  height: number,
): Outline<InkPoint[]>;
