'use strict';

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

  async add({ parts: [part], definitions }) {
    for (const [id, text] of Object.entries(definitions)) {
      if (!this.defined.has(id)) await this.output.write(text);
      this.defined.add(id);
    }
    await this.output.write(part);
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

  async add({ parts }) {
    for (let i = 0; i < parts.length; i += 1) await this.spools[i].write(parts[i]);
  }

  async finish(summary) {
    for (const spool of this.spools) await spool.close();
    const texts = this.texts(this.compose(summary));
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

  async *texts(pieces) {
    for (const piece of pieces) {
      if (typeof piece === 'string') yield piece;
      else yield* this.spools[piece].read().setEncoding('utf8');
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
