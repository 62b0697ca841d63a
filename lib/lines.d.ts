/**
 * Files of strokes, one JSON object per line, from bytes to bytes: what the command `scrivo
 * idealise` does with NDJSON, at a few times the speed of parsing the lines in JavaScript.
 *
 * @module scrivo/lines
 */

import type { BeautifierOptions } from './beautifier.js';

/** How the lines of a file are processed. */
export interface LineOptions {
  /** Default: `'beautifier'`. The template engine needs {@link loadTemplates}. */
  readonly engine?: 'beautifier' | 'template' | undefined;
  /** Options of the beautifier. */
  readonly beautifier?: BeautifierOptions | undefined;
  /** Drawing units per unit of the coordinates. Default: 1. */
  readonly scale?: number | undefined;
  /** Coordinates are rounded to this many decimals, from 0 to 15. Default: 3. */
  readonly decimals?: number | undefined;
  /**
   * The drawing area in units of the coordinates. Default: `width` and `height` of each line, or an
   * area that no figure leaves.
   */
  readonly area?:
    | { readonly x: number; readonly y: number; readonly width: number; readonly height: number }
    | undefined;
}

/** A line that has no answer, because it is wrong or not in the usual form. */
export interface OtherLine {
  /** Its number in the block, from 1. */
  readonly line: number;
  /** Its first byte. */
  readonly start: number;
  /** Its line feed, or the end of the block. */
  readonly end: number;
  /** The place in the output at which its answer belongs. */
  readonly at: number;
}

/** The answers to a block of lines. */
export interface LineAnswers {
  /** A line for each line in the usual form: its members, points and the answer. */
  readonly bytes: Uint8Array<ArrayBuffer>;
  /** In their order. Empty lines are left out. */
  readonly others: readonly OtherLine[];
  /** Answers by the name of their family; `none` for strokes that stay as drawn. */
  readonly families: Readonly<Record<string, number>>;
  /** Lines of the block, empty ones included. */
  readonly lines: number;
}

/** Turns lines with strokes into lines with figures. */
export declare class LineIdealiser {
  /** @throws {RangeError | TypeError} when an option is wrong; the message names it */
  constructor(options?: LineOptions);

  /**
   * Answers a block of lines. The usual form is an object with `points`, an array of
   * `[x, y, force, ...]` or of `{x, y, force, time}`, and any other members but those that the answer
   * has. The points of a figure come in the same form. A line that does not end with a line feed is
   * left to the caller, too.
   *
   * @param lines UTF-8, in memory that is neither shared nor detached
   * @param source becomes a member of the answers
   */
  idealise(lines: Uint8Array, source?: string): LineAnswers;
}

/**
 * Loads template files for the template engine of this module, in all threads. A further call adds
 * to what is loaded.
 */
export declare function loadTemplates(paths: readonly string[]): void;
