/**
 * The template engine: turns a freehand stroke into the dot, line, angle, triangle,
 * quadrangle or ellipse that was meant. Its answers are fixed to the last bit; it
 * has four template files and no options. The beautifier, `scrivo/beautifier`, is
 * independent of the sampling rate and has options, parameters and confidence.
 *
 * ```text
 * (0, 0) ─────── x ──────▶ (1, 0)      A point is a fraction of the drawing
 *   │                        │         area: x of its width, y of its height,
 *   y     drawing area       │         y downwards. Width and height are in
 *   │     width × height     │         a unit of your choice, usually CSS
 *   ▼                        │         pixels; all limits are in that unit.
 * (0, 1) ─────────────── (1, 1)
 * ```
 *
 * Everything runs synchronously on the calling thread.
 *
 * @module scrivo
 */

/** A place within the drawing area. Other properties are ignored and are not returned. */
export interface Position {
  /** Fraction of the drawing area's width: 0 left edge, 1 right edge, any number allowed. */
  x: number;
  /** Fraction of the drawing area's height: 0 upper edge, 1 lower edge, any number allowed. */
  y: number;
}

/** A sample with pen pressure. */
export interface PointWithForce extends Position {
  /**
   * Pen pressure from 0 to 1, as `PointerEvent.pressure` gives it. It only
   * matters for dots: a small stroke of few points is a dot if the pen was pressed firmly.
   */
  force: number;
}

/** A sample whose pressure is unknown: the property must not exist. */
export interface PointWithoutForce extends Position {
  /** If it exists, own or inherited, it must be a number: `undefined` is an error. */
  force?: never;
}

/** A sample of a stroke. Returned points have a force only if it is not 0. */
export type Point = PointWithForce | PointWithoutForce;

/**
 * Refuses points whose `force` may exist and be `undefined`: `force?: number` without the compiler's
 * option `exactOptionalPropertyTypes`, `force?: number | undefined` with it.
 */
export type KnownForce<P> = P extends { readonly force: number }
  ? unknown
  : P extends { readonly force: unknown }
    ? { force: number }
    : 'force' extends keyof P
      ? P extends { readonly force?: ExactOptional extends true ? number : never }
        ? unknown
        : { force: number }
      : unknown;

/** Whether the compiler's option `exactOptionalPropertyTypes` is on. */
export type ExactOptional = { a?: undefined } extends { a?: never } ? false : true;

/** The codes of the figures. 3 and 5 are unused. */
export declare const FigureType: {
  /** Nothing recognised: `path` is the stroke as drawn. */
  readonly NONE: 0;
  /** A dot: `path` has 64 points, three rings and the centre. */
  readonly POINT: 1;
  /** A straight line: 21 points. */
  readonly LINE: 2;
  /** An angle, two straight legs: 21 points each. */
  readonly ANGLE: 4;
  /**
   * A triangle or quadrangle, rarely a polygon of more corners: a closed outline, 21 points per edge.
   * `path` is the stroke as drawn if it is closed but fewer than three corners were found.
   */
  readonly POLYGON: 6;
  /** An ellipse or circle: 85 points, the last one equal to the first. */
  readonly ELLIPSE: 7;
};

/** One of the codes in the constant of the same name. */
export type FigureType = (typeof FigureType)[keyof typeof FigureType];

/** The answer to one stroke. */
export interface StrokeResult {
  /**
   * The figure's outline in fractions of the drawing area. Edges that meet repeat
   * their corner. Figures other than lines are moved into the drawing area if they
   * fit. The points are always new objects, also those of a stroke as drawn.
   */
  path: Point[];
  /** The code of the figure. */
  type: FigureType;
}

/**
 * Loads template files, the examples by which triangles, quadrangles and
 * ellipses are recognised. Call it once, with {@link templates} or with files of
 * your own, before the first stroke; without templates only dots, lines and angles
 * are found.
 *
 * A file is identified by the name that its path contains: `rectangle.template`,
 * `triangle.template`, `isosceles_triangle.template` or `ellipse.template`. Other
 * paths are ignored; of two with the same name the later one is used. Files that
 * are missing or hold no outline are skipped, with a warning of the process that has
 * the code `SCRIVO_NO_TEMPLATES` and their paths.
 *
 * - The templates belong to the process and are shared by its worker threads: load
 *   them once, in one thread. Another call adds its templates to those loaded.
 * - Numbers in the files are read by the C library, whose decimal separator
 *   depends on the process's locale. Node.js leaves that at "C"; a host that calls
 *   `setlocale` for a language with a decimal comma must load the templates before
 *   that call, or set `LC_NUMERIC` back to "C" while it loads them.
 *
 * @param paths an array, not a proxy or typed array. Elements that are not strings
 *   are converted as by `String()`.
 * @returns `true`
 * @throws {TypeError} "Wrong number of arguments" when called without an argument
 * @throws {TypeError} "Wrong arguments" when the first argument is not an array
 * @throws whatever the conversion of an element throws: a `TypeError` for a
 *   symbol. The paths before it are loaded nevertheless.
 */
export declare function initScrivo(paths: readonly string[]): boolean;

/**
 * Recognises the figure that a stroke was meant to be and draws it.
 *
 * The answer depends on the arguments and the loaded templates only, and the
 * arguments are not changed. Any number is accepted, NaN and infinities included;
 * a stroke of fewer than 10 points is always returned as drawn. The first figure in a
 * thread that is more than 50 times as large as the drawing area, or NaN, emits a warning
 * of the process with the code `SCRIVO_PIXELS`.
 *
 * @param stroke the points in the order in which they were drawn
 * @param width width of the drawing area, rounded to single precision
 * @param height height of the drawing area, rounded to single precision
 * @param otherStrokes the strokes already on the drawing area; the ends of a line
 *   snap to the centres of nearby ones
 * @returns the figure, or the stroke as drawn with {@link FigureType.NONE}
 * @throws the runtime's error for the first value that could not be read. In
 *   Node.js it is
 *
 *   - a `TypeError` "A number was expected": a width, height, `x`, `y` or `force`
 *     that is missing or not a primitive number
 *   - an `Error` "An array was expected": a stroke or a list of strokes that is
 *     missing or not an array (a typed array, a proxy)
 *   - a `TypeError` "Cannot convert undefined or null to object": a point that is
 *     `null` or `undefined`
 *   - whatever a getter or a proxy's trap throws, unchanged
 *
 *   The call runs to its end before the error is thrown, with zeros for what could
 *   not be read: a malformed point is one of zeros, not skipped; a stroke that is
 *   not an array is empty, and so is everything after the first failure.
 */
export declare function optimizeAStroke<
  P extends Readonly<Position>,
  Q extends Readonly<Position> = Position,
>(
  stroke: readonly (P & KnownForce<P>)[],
  width: number,
  height: number,
  otherStrokes: readonly (readonly (Q & KnownForce<Q>)[])[],
): StrokeResult;

/**
 * Absolute paths of the template files shipped with the package, for
 * {@link initScrivo}: rectangle, triangle, isosceles triangle, ellipse.
 */
export declare const templates: readonly string[];
