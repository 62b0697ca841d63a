/**
 * Right about real ink: every figure is fitted to the stroke, and the one that wins is the answer,
 * or the stroke as drawn. Needs no template files, and the answer does not depend on how densely
 * the device sampled.
 *
 * @module scrivo/beautifier
 */

/** A point of a stroke: fractions of the drawing area, y downwards. */
export interface InkPoint {
  readonly x: number;
  readonly y: number;
  /** Pen pressure. It does not decide anything and comes back with ink that stays as drawn. */
  readonly force?: number | undefined;
}

/** A place in drawing-area units, y downwards. */
export interface Place {
  readonly x: number;
  readonly y: number;
}

/** What a stroke can be taken for. Circles are ellipses. */
export type FigureFamily = 'dot' | 'line' | 'angle' | 'triangle' | 'quadrangle' | 'ellipse';

/** All figures, the default of {@link BeautifierOptions.figures}. */
export declare const FIGURES: readonly FigureFamily[];

/**
 * What a beautifier is to look for, and how eagerly. An option that is `undefined` has its default;
 * one that an object inherits counts like its own.
 */
export interface BeautifierOptions {
  /**
   * The figures wanted; circles are ellipses. A stroke that is taken for another one stays ink; only
   * the short dash, a dot by default, becomes a line without dots. Default: all.
   */
  readonly figures?: readonly FigureFamily[] | undefined;
  /**
   * Strokes whose longer side is below this many drawing-area units stay ink, dots included: small
   * strokes are handwriting. Default: 0.
   */
  readonly minSize?: number | undefined;
  /**
   * From 0 (only sure figures) to 1 (eager). A higher value never turns a figure back into ink.
   * Default: 0.5.
   */
  readonly sensitivity?: number | undefined;
  /**
   * Nearly horizontal and vertical lines, legs and axes of ellipses become so, and so does the lowest
   * edge of a triangle or quadrangle: with it a regular figure stands upright, any other one keeps
   * its other edges. Default: true.
   */
  readonly horizontalVertical?: boolean | undefined;
  /** Nearly regular triangles, quadrangles and ellipses become regular. Default: true. */
  readonly regularFigures?: boolean | undefined;
  /** The ends of lines snap to nearby strokes. Default: true. */
  readonly nearbyStrokes?: boolean | undefined;
  /**
   * Figures, but not lines, that stick out of the drawing area are moved back into it as a whole,
   * where they fit. Default: true.
   */
  readonly insideArea?: boolean | undefined;
  /** What a Float64Array holds of each point: x, y and force (`'xyf'`, the default) or x, y. */
  readonly layout?: 'xy' | 'xyf' | undefined;
}

/** All options of a beautifier; none is left out. */
export type CompleteOptions = {
  readonly [Name in keyof BeautifierOptions]-?: Exclude<BeautifierOptions[Name], undefined>;
};

/** The ideal figure in drawing-area units; it agrees with the path to rounding. */
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
      /** In the order of the path. */
      corners: [Place, Place, Place];
      /** A right triangle that is isosceles too counts as right. */
      subtype: 'general' | 'equilateral' | 'isosceles' | 'right';
    }
  | {
      kind: 'quadrangle';
      corners: [Place, Place, Place, Place];
      subtype: 'general' | 'square' | 'rectangle' | 'rhombus' | 'parallelogram' | 'trapezoid' | 'kite';
    }
  | { kind: 'circle'; centre: Place; radius: number }
  | {
      kind: 'ellipse';
      centre: Place;
      /** Along the first axis (x) and the second (y). */
      radii: Place;
      /** Of the first axis, radians, clockwise on the screen, within [-pi/4, pi/4]. */
      rotation: number;
    };

/**
 * Why a stroke stays as drawn: it has no points, lies beyond 2^31 - 1 units, or the area is too small
 * to divide by; it is smaller than `minSize`; it resembles a figure that is not wanted; it resembles one, but not
 * enough for this `sensitivity`; it resembles none.
 */
export type Reason = 'invalid' | 'too-small' | 'not-wanted' | 'not-sure' | 'no-figure';

/** The answer to one stroke. */
export interface Beautified<Path> {
  /**
   * Fractions of the drawing area, in the form of the stroke that was given: a dot has 64 points, a
   * line 21, an angle 42, an ellipse 85, polygons 21 an edge. Points of figures are fresh and have no
   * force. Ink that stays as drawn comes back as a new array of the very objects that were given, with
   * all that they carry, or as a fresh Float64Array of the same numbers.
   */
  path: Path;
  /** A figure code: 0, 1, 2, 4, 6 or 7, as `FigureType` of the main entry names them. */
  type: number;
  /**
   * Probability, from 0 to 1, that the answer is right; 1 where the options or the numbers decide
   * (`'invalid'`, `'too-small'`, `'not-wanted'`).
   */
  confidence: number;
  /** Null when the stroke stays as drawn. */
  figure: Figure | null;
  /** Null when a figure was recognised. */
  reason: Reason | null;
}

/** A stroke as point objects, or packed as `layout` says. */
export type Ink = readonly InkPoint[] | Float64Array;

/**
 * Immutable: its options are for good, and so is the object. A class derived from it may add what it
 * likes. Each thread makes its own; several with different options may stand side by side.
 */
export declare class Beautifier {
  /**
   * @throws TypeError when the options are no object (a `Map` is none) or one has the wrong type
   * @throws RangeError when an option is unknown or out of range; messages name the option and
   *   what was found
   */
  constructor(options?: BeautifierOptions);

  /** All options, with the defaults of those that were not given. Frozen. */
  readonly options: CompleteOptions;

  /**
   * Answers for one stroke. Nothing is remembered, the stroke is not changed.
   *
   * @param stroke the stroke as drawn; may be empty
   * @param width of the drawing area, above 0, in the unit in which the user sees it
   * @param height the same
   * @param others the other strokes, to which the ends of lines may snap
   * @throws TypeError, RangeError naming the argument, the index and what was found
   */
  beautify(
    stroke: readonly InkPoint[],
    width: number,
    height: number,
    others?: readonly Ink[],
  ): Beautified<InkPoint[]>;
  beautify(
    stroke: Float64Array,
    width: number,
    height: number,
    others?: readonly Ink[],
  ): Beautified<Float64Array>;
  beautify(
    stroke: Ink,
    width: number,
    height: number,
    others?: readonly Ink[],
  ): Beautified<InkPoint[] | Float64Array>;
}
