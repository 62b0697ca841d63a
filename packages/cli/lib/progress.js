'use strict';

const readline = require('node:readline');
const { SingleBar, Presets } = require('cli-progress');
const { onExit } = require('signal-exit');

const SIZED = '{bar} {percentage} %  {strokes} strokes  {rate}/s  {eta_formatted} left';
const UNSIZED = '{strokes} strokes  {rate}/s  {duration_formatted}';

/**
 * Shows how far a run is on a terminal; elsewhere there is nothing but messages.
 *
 * @param {object} options
 * @param {number} [options.totalBytes] of all inputs together; without it the time left is unknown
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
      // Its handlers would keep an interrupt from ending the process.
      gracefulExit: false,
      stream,
    },
    Presets.shades_classic,
  );
  const start = process.hrtime.bigint();
  bar.start(totalBytes ?? 1, 0, { strokes: 0, rate: 0 });
  // It changes how the terminal breaks lines, which has to be undone when the run is interrupted.
  const forget = onExit(() => bar.stop());
  return {
    advance: (bytes) => totalBytes !== undefined && bar.increment(bytes),
    count(strokes) {
      const seconds = Number(process.hrtime.bigint() - start) / 1e9;
      bar.update({ strokes, rate: Math.round(strokes / seconds) });
    },
    log(text) {
      // The bar draws itself again below.
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

/** Messages quote the input, which must not steer the terminal. */
function printable(text) {
  // eslint-disable-next-line no-control-regex
  return text.replace(/[\u0000-\u001f\u007f-\u009f]/g, '\ufffd');
}

module.exports = { createProgress };
