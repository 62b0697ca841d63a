// Types of the page that several modules share. Lengths are in document units, which are CSS pixels
// at a zoom of 1, unless said otherwise.

type Place = { x: number; y: number };
type Figure = import('scrivo/beautifier').Figure;
type Wish = import('scrivo/beautifier').Wish;
type Family = import('scrivo/beautifier').FigureFamily;
type Alternative = import('scrivo/beautifier').Alternative;

/** All families and wishes of the package; the build fills them in. */
declare const FAMILIES: Family[];
declare const WISHES: Wish[];

type Bounds = { left: number; top: number; right: number; bottom: number };

/** A similarity: x' = a x - b y + e, y' = b x + a y + f. */
type Similarity = { a: number; b: number; e: number; f: number };

/** The part of the document that was visible, `width` by `height` CSS pixels, while ink was drawn. */
interface Frame {
  readonly left: number;
  readonly top: number;
  readonly width: number;
  readonly height: number;
  /** CSS pixels per unit. */
  readonly scale: number;
}

interface Ink {
  /** Distinguishes inks in storage. */
  readonly id: number;
  /** x, y, pressure (0 to 1) and time (ms since the first sample) of each sample. */
  readonly samples: Float32Array;
  /** Whether the device measured the pressure. */
  readonly measured: boolean;
  readonly frame: Frame;
}

type EngineName = 'beautifier' | 'template';

interface Answer {
  readonly engine: EngineName | 'none';
  readonly confidence: number | null;
  /** Why the ink was left as drawn: a reason of the beautifier, 'template', 'kept' or 'refused'. */
  readonly reason: string | null;
  readonly alternatives: readonly Alternative[];
  /** Time that the engine took. */
  readonly micros: number;
  /** The figure of the other engine when both were asked. */
  readonly second?: Figure | null;
}

/** One stroke on the surface. Immutable: a change replaces it. */
interface Item {
  readonly id: number;
  readonly ink: Ink;
  readonly figure: Figure | null;
  /** Null until an engine has answered. */
  readonly answer: Answer | null;
  readonly colour: number;
  /** Width of the pen. */
  readonly width: number;
}

interface Change {
  readonly id: number;
  before: Item | null;
  after: Item | null;
}

/** One step of the history. */
interface Operation {
  /** Sorts the operations. */
  readonly key: number;
  readonly label: string;
  readonly changes: Change[];
}

interface EngineOptions {
  minSize: number;
  sensitivity: number;
  figures: Family[];
  horizontalVertical: boolean;
  regularFigures: boolean;
}

/** Points are x and y in turn, in CSS pixels of a drawing area of `width` by `height`. */
interface EngineRequest {
  task: 'recognise' | 'as' | 'explain';
  engine?: EngineName;
  wish?: Wish;
  points: number[];
  width: number;
  height: number;
  /** Places that the ends of lines snap to, as x and y in turn. */
  anchors: number[];
  options?: Partial<EngineOptions>;
}

/** The answer to `recognise` and `as`; the figure is in the units of the request. */
interface Reply extends Omit<Answer, 'second'> {
  figure: Figure | null;
}

/** What `explain` tells of one family. */
interface Candidate {
  family: Family;
  probability: number;
  figure: Figure | null;
  /** The best fit, before it is made level and regular. */
  fitted: Figure | null;
}

interface Explanation {
  /** The points that figures are fitted to. */
  points: Place[];
  candidates: Candidate[];
  micros: number;
}

interface Engine {
  /** Shown to the user. */
  readonly name: string;
  ask(request: EngineRequest): Promise<any>;
}

/** Where lines of a figure are drawn: a path of a canvas, or of an SVG picture. */
interface PathSink {
  moveTo(x: number, y: number): void;
  lineTo(x: number, y: number): void;
  ellipse(
    x: number,
    y: number,
    rx: number,
    ry: number,
    turn: number,
    from: number,
    to: number,
  ): void;
  closePath(): void;
}

interface Sample extends Place {
  pressure: number;
  /** ms since the page was opened. */
  time: number;
}

/** A stroke in progress; its samples grow. */
interface Sketch {
  readonly samples: Sample[];
  readonly pointerType: string;
  readonly frame: Frame;
  readonly colour: number;
  readonly width: number;
}

/** Handles the pointer while it is down. Places are in document units. */
interface Tool {
  readonly cursor: string;
  down(sample: Sample, event: PointerEvent): void;
  move(samples: Sample[], predicted: Sample[], event: PointerEvent): void;
  up(event: PointerEvent): void;
  cancel(): void;
  /** May tell the cursor for a place; null when the pointer has left. */
  hover?(place: Place | null): string | void;
}

/** The bytes of a file, which the build puts into the script. */
declare module '*.wasm' {
  const bytes: Uint8Array<ArrayBuffer>;
  export default bytes;
}

/** What the page uses of the package, whose own declarations exist only after it has been built. */
declare module 'scrivo-wasm' {
  export const Beautifier: typeof import('scrivo/beautifier').Beautifier;
  export const FIGURES: readonly Family[];
  export const resample: typeof import('scrivo/beautifier').resample;
  export const optimizeAStroke: typeof import('scrivo').optimizeAStroke;
  export const templates: readonly string[];
  export function initScrivo(files: readonly string[]): boolean;
  export function start(source: Uint8Array): Promise<void>;
}
