'use strict';

const { free } = require('../memory.js');
const { FORMATS } = require('./formats.js');
const { Output, Spool } = require('./output-file.js');

/**
 * A document that is written stroke by stroke.
 *
 * @param {ReturnType<import('./output-file.js').inspectOutput>} target
 * @param {string} format its name
 * @param {NodeJS.WritableStream} stdout
 * @param {(text: string) => string|Uint8Array} [convert] converts the finished text, which
 *   must then fit into memory
 */
function createDocument(target, format, stdout, convert) {
  const { compose } = FORMATS[format];
  return compose
    ? new ComposedDocument(target, FORMATS[format], stdout, convert)
    : new StreamedDocument(target, FORMATS[format], stdout);
}

/** Written as the strokes come. */
class StreamedDocument {
  constructor(target, { head, tail }, stdout) {
    this.output = new Output(target, stdout);
    this.head = head;
    this.tail = tail;
    this.defined = new Set();
  }

  async start() {
    await this.output.write(this.head);
  }

  startPage() {}

  async add({ parts: [part], definitions }) {
    for (const [id, text] of Object.entries(definitions)) {
      if (!this.defined.has(id)) await this.output.write(text);
      this.defined.add(id);
    }
    await this.output.write(part);
    free(part);
  }

  async finish() {
    await this.output.write(this.tail);
    await this.output.finish();
  }

  abandon() {
    this.output.abandon();
  }
}

/** The head depends on all strokes, which are stored until then. */
class ComposedDocument {
  constructor(target, { parts, compose }, stdout, convert) {
    this.spools = Array.from({ length: parts }, () => new Spool(target));
    this.output = new Output(target, stdout);
    this.compose = compose;
    this.convert = convert;
  }

  async start() {}

  startPage() {
    for (const spool of this.spools) spool.startPage();
  }

  async add({ parts, text }) {
    this.text ??= text;
    for (let i = 0; i < parts.length; i += 1) {
      await this.spools[i].write(parts[i]);
      free(parts[i]);
    }
  }

  async finish(summary) {
    for (const spool of this.spools) await spool.close();
    const composed = () => this.texts(this.compose(summary), summary.offsets);
    const texts = this.text === undefined ? composed() : [this.text];
    if (this.convert) {
      const whole = [];
      for await (const text of texts) whole.push(text);
      await this.output.write(this.convert(whole.join('')));
    } else {
      for await (const text of texts) await this.output.write(text);
    }
    await this.output.finish();
    this.dropSpools();
  }

  async *texts(pieces, offsets) {
    for (const piece of pieces) {
      if (typeof piece === 'string') yield piece;
      else yield* this.pages(this.spools[piece], offsets);
    }
  }

  async *pages(spool, offsets) {
    for (let i = 0; i < Math.max(1, offsets.length); i += 1) {
      const isMoved = offsets[i] > 0 || offsets[i] < 0;
      if (isMoved) yield `<g transform="translate(0 ${offsets[i]})">\n`;
      yield* spool.readPage(i);
      if (isMoved) yield '</g>\n';
    }
  }

  dropSpools() {
    for (const spool of this.spools) spool.abandon();
  }

  abandon() {
    this.dropSpools();
    this.output.abandon();
  }
}

module.exports = { createDocument };
