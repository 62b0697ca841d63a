'use strict';

// Further messages of a run are only counted.
const SHOWN = 20;

/** The messages of a run: the first on standard error, all of them in a file if there is one. */
class Messages {
  #count = 0;

  /**
   * @param {{log(text: string): void}} progress
   * @param {import('../write/output-file.js').Output} [file]
   */
  constructor(progress, file) {
    this.progress = progress;
    this.file = file;
  }

  async add(text) {
    this.#count += 1;
    if (this.#count <= SHOWN) this.progress.log(text);
    await this.file?.write(`${text}\n`);
  }

  async finish() {
    const hidden = this.#count - SHOWN;
    const place = this.file
      ? `, all in ${this.file.target.name}`
      : '; --errors FILE keeps them all';
    if (hidden > 0) this.progress.log(`${hidden} more messages${place}`);
    await this.file?.finish();
  }

  abandon() {
    this.file?.abandon();
  }
}

module.exports = { Messages };
