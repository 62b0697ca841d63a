'use strict';

const { SingleBar, Presets } = require('cli-progress');

/**
 * Shows how far a run is: a bar on a terminal, one line a finished input elsewhere.
 *
 * @param {object} options
 * @param {number} [options.totalBytes] of all inputs together; without it a bar cannot be drawn
 * @param {NodeJS.WriteStream} [options.stream]
 * @returns {{advance(bytes: number): void, count(strokes: number): void,
 *   finish(name: string, strokes: number): void, stop(): void}}
 */
function createProgress({ totalBytes, stream = process.stderr }) {
  if (!stream.isTTY || totalBytes === undefined) return plainProgress(stream);
  const bar = new SingleBar(
    {
      format: '{bar} {percentage} %  {strokes} strokes  {eta_formatted} left',
      clearOnComplete: true,
      hideCursor: true,
      stream,
    },
    Presets.shades_classic,
  );
  bar.start(totalBytes, 0, { strokes: 0 });
  return {
    advance: (bytes) => bar.increment(bytes),
    count: (strokes) => bar.update({ strokes }),
    finish: () => {},
    stop: () => bar.stop(),
  };
}

function plainProgress(stream) {
  return {
    advance: () => {},
    count: () => {},
    finish: (name, strokes) => stream.write(`${name}: ${strokes} strokes\n`),
    stop: () => {},
  };
}

module.exports = { createProgress };
