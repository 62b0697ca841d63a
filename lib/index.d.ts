/**
 * Ink to shape: turns a freehand stroke into the dot, line, angle, triangle,
 * quadrangle or ellipse that was meant.
 *
 * ```
 * (0, 0) ─────── x ──────▶ (1, 0)      A point is a fraction of the drawing
 *   │                        │         area: x of its width, y of its height,
 *   y     drawing area       │         y downwards. Width and height are in
 *   │     width × height     │         the unit of your choice, as a rule CSS
 *   ▼                        │         pixels; all limits count in that unit.
 * (0, 1) ─────────────── (1, 1)
 * ```
 *
 * Everything runs synchronously on the calling thread.
 *
 * @module scrivo
 */

/** A sample of a stroke. Properties other than these three are ignored and do not come back. */
export interface Point {
  /** Fraction of the drawing area's width: 0 left edge, 1 right edge, any number allowed. */
  x: number;
  /** Fraction of the drawing area's height: 0 upper edge, 1 lower edge, any number allowed. */
  y: number;
  /**
   * Pen pressure from 0 to 1, as `PointerEvent.pressure` gives it. It counts for
   * dots only: a small stroke of few points is one if the pen was pressed firmly.
   *
   * Leave the property out where the pressure is unknown. A property that is
   * there, own or inherited, must hold a number: `force: undefined` is an error.
   * Points that come back have it only if it is not 0.
   */
  force?: number;
}

/** The codes of the figures. 3 and 5 are not in use. */
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
   * A triangle or quadrangle, now and then a polygon of more corners: a closed outline, 21 points an
   * edge. `path` is the stroke as drawn where the outline is closed, yet has no three corners.
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
   * their corner. Figures are moved into the drawing area where they fit, lines are
   * not. The points are fresh ones, those of a stroke as drawn too: never the
   * objects that were given.
   */
  path: Point[];
  /** What the stroke was taken for. */
  type: FigureType;
}

/**
 * Loads template files, the examples by which triangles, quadrangles and
 * ellipses are recognised. Call it once, with {@link templates} or with files of
 * your own, before the first stroke; without templates dots, lines and angles
 * are all that is found.
 *
 * A file is told by the name that its path contains: `rectangle.template`,
 * `triangle.template`, `isosceles_triangle.template` or `ellipse.template`. Other
 * paths are ignored, of two for the same name the later one counts. A file that
 * is missing or cannot be read contributes nothing and is not reported.
 *
 * - The templates belong to the process, and worker threads share them: load them
 *   once, in one thread. A further call adds its templates to those there are.
 * - Numbers in the files are read by the C library, whose decimal separator
 *   depends on the process's locale. Node.js leaves that at "C"; a host that has
 *   called `setlocale` for a language with a decimal comma must load the
 *   templates before that call or set `LC_NUMERIC` back to "C" for it.
 *
 * @param paths an array proper: a proxy or a typed array is refused. Elements
 *   that are no strings are converted as by `String()`.
 * @returns `true`
 * @throws {TypeError} "Wrong number of arguments", when called without one
 * @throws {TypeError} "Wrong arguments", when the first one is not an array
 * @throws whatever the conversion of an element throws: a `TypeError` for a
 *   symbol. The paths before it are loaded all the same.
 */
export declare function initScrivo(paths: readonly string[]): boolean;

/**
 * Recognises the figure that a stroke was meant to be and draws it.
 *
 * The answer depends on the arguments and the loaded templates only, and the
 * arguments are left as they are. Any number is accepted, NaN and infinities
 * included; a stroke of fewer than 10 points always comes back as drawn.
 *
 * @param stroke the points in the order in which they were drawn
 * @param width of the drawing area, rounded to single precision
 * @param height of the drawing area, rounded to single precision
 * @param otherStrokes the strokes that are on the drawing area already; the ends
 *   of a line snap to their centres when these are near
 * @returns the figure, or the stroke as drawn with {@link FigureType.NONE}
 * @throws an error worded by the runtime, for the first thing that could not be
 *   read. In Node.js it is
 *
 *   - a `TypeError` "A number was expected": a width, height, `x`, `y` or `force`
 *     that is missing or no primitive number
 *   - an `Error` "An array was expected": a stroke or a list of strokes that is
 *     missing or no array proper (a typed array, a proxy)
 *   - a `TypeError` "Cannot convert undefined or null to object": a point that is
 *     `null` or `undefined`
 *   - unchanged, whatever a getter or a proxy's trap throws
 *
 *   There is no result then. The call still runs to its end before the error
 *   arrives, with zeros for what could not be read: a malformed point is one of
 *   zeros, it is not skipped; a stroke that is no array is empty; and so is
 *   everything behind the first failure.
 */
export declare function optimizeAStroke(
  stroke: readonly Point[],
  width: number,
  height: number,
  otherStrokes: readonly (readonly Point[])[],
): StrokeResult;

/**
 * Absolute paths of the template files that come with the package, for
 * {@link initScrivo}: rectangle, triangle, isosceles triangle, ellipse.
 */
export declare const templates: readonly string[];
