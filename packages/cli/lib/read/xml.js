'use strict';

const { SaxesParser } = require('saxes');
const { UserError } = require('../user-error.js');
const { InkmlReader } = require('./inkml.js');
const { checkSize, figuresOf, readWhole } = require('./kept.js');
const { weightOf } = require('./stroke-points.js');
const { rewriteTag } = require('./svg-rewriting.js');
const { SvgReader } = require('./svg.js');
const { XoppReader, rewriteStroke } = require('./xopp.js');

const READERS = { ink: InkmlReader, svg: SvgReader, xournal: XoppReader };

// Characters that a tag or a text may have, and all expanded entities together.
const MAX_LENGTH = 4 * 1024 * 1024;
const MAX_EXPANDED = 1024 * 1024;

const MAX_DEPTH = 1000;

// Characters that are parsed at a time, and points that are passed on at a time. A few characters
// can be a curve of many points.
const SLICE = 4 * 1024;
const MANY_POINTS = 10000;

/** Encodings by their byte order mark. */
const MARKS = [
  { mark: [0xff, 0xfe], encoding: 'utf-16le' },
  { mark: [0xfe, 0xff], encoding: 'utf-16be' },
];

/**
 * Reads the strokes of an XML document as it arrives.
 *
 * @param {Buffer} head the first bytes, as far as they have arrived
 * @param {AsyncIterable<Buffer>} chunks the document, head included
 * @param {{step: number, scale?: number}} options step: distance between samples along SVG curves,
 *   drawing units; scale: drawing units per unit of the document, whatever it states
 * @yields {{records: Array<{line: number, stroke?: import('./stroke-points.js').Stroke,
 *   problem?: string}>, passedOver: string[]}} what each chunk of the document held
 */
async function* readXml(head, chunks, options) {
  const decode = createDecoder(head);
  const document = new Document(options);
  for await (const chunk of chunks) {
    yield* document.write(() => decode(chunk, { stream: true }));
    if (document.failure) throw document.failure;
  }
  yield* document.write(decode);
  yield* document.close();
  if (document.failure) throw document.failure;
}

/** Reads an XML document that is to be rewritten, see readInk. */
async function* rewriteXml(head, chunks, { keep, ...options }) {
  const text = createDecoder(head)(await readWhole(chunks));
  const document = new Document({ ...options, withSpans: true });
  const found = [...document.write(() => text), ...document.close()];
  const records = found.flatMap((each) => each.records);
  checkSize(records);
  const rewrite = REWRITERS[keep]?.isOf(document.reader) && REWRITERS[keep].rewrite;
  yield {
    records: records.map(({ span: _, ...record }) => record),
    passedOver: rewrite ? [] : found.flatMap((each) => each.passedOver),
    ...(rewrite && !document.failure && { rewrite: (answers) => rewrite(text, records, answers) }),
  };
  if (document.failure) throw document.failure;
}

/** By the name of the format. */
const REWRITERS = {
  svg: { isOf: (reader) => reader instanceof SvgReader, rewrite: rewriteSvg },
  xopp: { isOf: (reader) => reader instanceof XoppReader, rewrite: rewriteXopp },
};

function rewriteXopp(text, records, answers) {
  const edits = figuresOf(answers).map((answer) => {
    const { from, to } = records[answer.index].span;
    const start = text.lastIndexOf('<', from - 1);
    return { start, end: to, text: rewriteStroke(text.slice(start, to), answer) };
  });
  return applyEdits(text, edits);
}

/** The strokes of a path are rewritten together, if one of them has become a figure. */
function rewriteSvg(text, records, answers) {
  const changed = new Set(figuresOf(answers).map(({ index }) => records[index].span));
  const edits = [...changed].map((span) => {
    const end = span.position;
    const start = text.lastIndexOf('<', end - 1);
    const parts = answers.filter((answer, i) => answer && records[i].span === span);
    return { start, end, text: rewriteTag(text.slice(start, end), span, parts) };
  });
  return applyEdits(text, edits);
}

/** @param {Array<{start: number, end: number, text: string}>} edits in their order */
function applyEdits(text, edits) {
  let at = 0;
  const pieces = edits.map((edit) => {
    const before = text.slice(at, edit.start);
    at = edit.end;
    return before + edit.text;
  });
  return pieces.join('') + text.slice(at);
}

/** @returns {(chunk?: Buffer, options?: object) => string} throws for invalid bytes */
function createDecoder(head) {
  const marked = MARKS.find(({ mark }) => mark.every((byte, i) => head[i] === byte));
  const declared = /^<\?xml[^>]*?encoding\s*=\s*["']([\w.-]+)["']/.exec(head.toString('latin1'));
  const encoding = marked?.encoding ?? declared?.[1] ?? 'utf-8';
  let decoder;
  try {
    decoder = new TextDecoder(encoding, { fatal: true });
  } catch {
    throw new UserError(`the encoding ${encoding} is unknown: convert the file to UTF-8`);
  }
  return (...args) => {
    try {
      return decoder.decode(...args);
    } catch {
      throw new UserError(
        `not valid ${encoding}: declare its encoding in the first line, or convert it`,
      );
    }
  };
}

/** A document being parsed. Keeps what its reader found until it is taken. */
class Document {
  constructor(options) {
    this.options = options;
    this.records = [];
    this.passedOver = [];
    this.reader = undefined;
    this.parser = new SaxesParser({ position: true });
    this.parser.on('error', (error) => {
      throw error;
    });
    this.parser.on('doctype', (text) => this.declareEntities(text));
    this.parser.on('opentag', (tag) => this.open(tag));
    this.parser.on('closetag', (tag) => this.closeTag(tag));
    for (const event of ['text', 'cdata']) this.parser.on(event, (text) => this.takeText(text));
    for (const event of ['comment', 'processinginstruction']) {
      this.parser.on(event, () => this.touch());
    }
    /** Positions and sums that are held against limits. */
    Object.assign(this, { last: 0, depth: 0, expanded: 0, points: 0 });
  }

  /**
   * @param {() => string} decode returns the text that comes next
   * @yields {object} what it held, see readXml
   */
  *write(decode) {
    let text = '';
    this.attempt(() => (text = decode()));
    for (let at = 0; at < text.length && !this.failure; at += SLICE) {
      this.attempt(() => {
        this.parser.write(text.slice(at, at + SLICE));
        if (this.parser.position - this.last > MAX_LENGTH) {
          throw new UserError(
            `a tag or text longer than ${MAX_LENGTH / 1024 / 1024} MB, the limit`,
          );
        }
      });
      if (this.points > MANY_POINTS) yield* this.take();
    }
    yield* this.take();
  }

  *close() {
    this.attempt(() => this.parser.close());
    this.reader?.finish();
    yield* this.take();
  }

  attempt(parse) {
    if (this.failure) return;
    try {
      parse();
    } catch (error) {
      this.failure =
        error instanceof UserError ? error : new UserError(`not well-formed XML: ${error.message}`);
      this.reader?.finish();
    }
  }

  *take() {
    const { records, passedOver } = this;
    if (records.length === 0 && passedOver.length === 0) return;
    [this.records, this.passedOver, this.points] = [[], [], 0];
    yield { records, passedOver };
  }

  /** Some drawing programs declare their namespaces as entities. Entities in them are not expanded. */
  declareEntities(doctype) {
    for (const [, name, value] of doctype.matchAll(/<!ENTITY\s+([\w.-]+)\s+["']([^"'&]*)["']/g)) {
      const get = () => {
        this.expanded += value.length;
        if (this.expanded <= MAX_EXPANDED) return value;
        throw new UserError(`entities that expand to more than ${MAX_EXPANDED / 1024 / 1024} MB`);
      };
      Object.defineProperty(this.parser.ENTITIES, name, { get, configurable: true });
    }
  }

  open({ name, attributes }) {
    this.touch();
    this.depth += 1;
    if (this.depth > MAX_DEPTH)
      throw new UserError(`nested more than ${MAX_DEPTH} deep, the limit`);
    this.reader ??= this.createReader(localName(name));
    this.reader.open(localName(name), attributes, this.parser.line, this.parser.position);
  }

  closeTag({ name }) {
    this.touch();
    this.depth -= 1;
    this.reader.close(localName(name), this.parser.position);
  }

  takeText(text) {
    this.touch();
    this.reader?.text(text);
  }

  /** Notes how far tags and texts have been taken. */
  touch() {
    this.last = this.parser.position;
  }

  takeStroke(line, stroke, span) {
    this.points += weightOf(stroke);
    this.records.push({ line, stroke, ...(this.options.withSpans && { span }) });
  }

  createReader(root) {
    if (!Object.hasOwn(READERS, root)) {
      throw new UserError(
        `XML, but neither InkML, SVG nor Xournal++: its root element is <${root}>`,
      );
    }
    return new READERS[root]({
      ...this.options,
      onStroke: (line, stroke, span) => this.takeStroke(line, stroke, span),
      onProblem: (line, problem) => this.records.push({ line, problem }),
      onPassedOver: (what) => this.passedOver.push(what),
    });
  }
}

function localName(name) {
  return name.slice(name.indexOf(':') + 1);
}

module.exports = { readXml, rewriteXml };
