/**
 * Both engines in the browser: the interfaces of `scrivo` and `scrivo/beautifier`, after one
 * awaited {@link start}.
 *
 * @module scrivo-wasm
 */

export * from './beautifier.js';
export * from './scrivo.js';

/** A template file that the page has loaded. */
export interface TemplateFile {
  /** Contains the name of the file's kind, such as `rectangle.template`. */
  readonly name: string;
  readonly content: string | ArrayBuffer | ArrayBufferView;
}

/**
 * Loads templates, the examples by which triangles, quadrangles and ellipses are recognised: those
 * that are built in, {@link templates}, or files of your own. Works as that of `scrivo`, except that
 * there are no files to read: another string is a file without outlines.
 *
 * Numbers in the files have a decimal point.
 */
export declare function initScrivo(files: readonly (string | TemplateFile)[]): boolean;

/** Names of the built-in templates for {@link initScrivo}. */
export declare const templates: readonly string[];
