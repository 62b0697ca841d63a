'use strict';

const readline = require('node:readline');
const { SingleBar, Presets } = require('cli-progress');
const { onExit } = require('signal-exit');

const SIZED = '{bar} {percentage} %  {strokes} strokes  {rate}/s  {eta_formatted} left';
const UNSIZED = '{strokes} strokes  {rate}/s  {duration_formatted}';

/**
 * Shows the progress of a run on a terminal; elsewhere only messages.
 *
 * @param {object} options
 * @param {number} [options.totalBytes] of all inputs together, if known
 * @param {NodeJS.WriteStream} [options.stream]
 * @returns {{advance(bytes: number): void, count(strokes: number): void, log(text: string): void,
 *   stop(): void}}
 */
function createProgress({ totalBytes, stream = process.stderr }) {
  if (!stream.isTTY) return plainProgress(stream);
  const bar = new SingleBar(
    {
      format: totalBytes === undefined ? UNSIZED : SIZED,
      clearOnComplete: true,
      etaBuffer: 100,
      // The bar's own signal handlers keep the process alive.
      gracefulExit: false,
      stream,
    },
    Presets.shades_classic,
  );
  const start = process.hrtime.bigint();
  bar.start(totalBytes ?? 1, 0, { strokes: 0, rate: 0 });
  // The bar turns off line wrapping; stopping it, also when interrupted, turns it on again.
  const forget = onExit(() => bar.stop());
  return {
    advance: (bytes) => totalBytes !== undefined && bar.increment(bytes),
    count(strokes) {
      const seconds = Number(process.hrtime.bigint() - start) / 1e9;
      bar.update({ strokes, rate: Math.round(strokes / seconds) });
    },
    log(text) {
      // The bar redraws itself below.
      readline.cursorTo(stream, 0);
      readline.clearLine(stream, 0);
      stream.write(`${printable(text)}\n`);
    },
    stop() {
      forget();
      bar.stop();
    },
  };
}

function plainProgress(stream) {
  return {
    advance: () => {},
    count: () => {},
    log: (text) => stream.write(`${printable(text)}\n`),
    stop: () => {},
  };
}

/** Messages quote the input, whose control characters must not reach the terminal. */
function printable(text) {
  // eslint-disable-next-line no-control-regex
  return text.replace(/[\u0000-\u001f\u007f-\u009f]/g, '\ufffd');
}

module.exports = { createProgress };
