'use strict';

const { SaxesParser } = require('saxes');
const { UserError } = require('../user-error.js');
const { InkmlReader } = require('./inkml.js');
const { SvgReader } = require('./svg.js');

const READERS = { ink: InkmlReader, svg: SvgReader };

/** Encodings by their byte order mark. */
const MARKS = [
  { mark: [0xff, 0xfe], encoding: 'utf-16le' },
  { mark: [0xfe, 0xff], encoding: 'utf-16be' },
];

/**
 * Reads the strokes of an InkML or SVG document as it arrives.
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
    document.write(() => decode(chunk, { stream: true }));
    yield* document.take();
    if (document.failure) throw document.failure;
  }
  document.close(decode);
  yield* document.take();
  if (document.failure) throw document.failure;
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
    this.parser.on('closetag', ({ name }) => this.reader.close(localName(name)));
    this.parser.on('text', (text) => this.reader?.text(text));
    this.parser.on('cdata', (text) => this.reader?.text(text));
  }

  /** @param {() => string} decode returns the text that comes next */
  write(decode) {
    this.attempt(() => this.parser.write(decode()));
  }

  close(decode) {
    this.attempt(() => this.parser.write(decode()).close());
    this.reader?.finish();
  }

  attempt(parse) {
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
    [this.records, this.passedOver] = [[], []];
    yield { records, passedOver };
  }

  /** Some drawing programs declare their namespaces as entities. Entities in them are not expanded. */
  declareEntities(doctype) {
    for (const [, name, value] of doctype.matchAll(/<!ENTITY\s+([\w.-]+)\s+["']([^"'&]*)["']/g)) {
      this.parser.ENTITIES[name] = value;
    }
  }

  open({ name, attributes }) {
    this.reader ??= this.createReader(localName(name));
    this.reader.open(localName(name), attributes, this.parser.line);
  }

  createReader(root) {
    if (!Object.hasOwn(READERS, root)) {
      throw new UserError(`XML, but neither InkML nor SVG: its root element is <${root}>`);
    }
    return new READERS[root]({
      ...this.options,
      onStroke: (line, stroke) => this.records.push({ line, stroke }),
      onProblem: (line, problem) => this.records.push({ line, problem }),
      onPassedOver: (what) => this.passedOver.push(what),
    });
  }
}

function localName(name) {
  return name.slice(name.indexOf(':') + 1);
}

module.exports = { readXml };
