'use strict';

const { print, runWithOptions } = require('./command.js');
const { runStrokes } = require('./run/stroke-run.js');

/**
 * Runs a command on ink and reports on it.
 *
 * @param {string} name of the command
 * @param {() => import('./run/stroke-run.js').RunOptions|{help: true}} parse
 * @param {string} help
 * @param {{stdout?: NodeJS.WriteStream, stderr?: NodeJS.WriteStream}} [io]
 * @returns {Promise<number>} exit code: 0, 1 when something was left out, 2 when nothing was done
 */
function runInkCommand(name, parse, help, io) {
  const run = async (options, { stdout, stderr }) => {
    const summary = await runStrokes(options, { stderr });
    const isDataOnStdout = options.output === '-';
    if (options.json) await print(isDataOnStdout ? stderr : stdout, `${JSON.stringify(summary)}\n`);
    else if (stderr.isTTY) stderr.write(`${describeSummary(summary)}\n`);
    return summary.skipped > 0 || summary.unread.length > 0 ? 1 : 0;
  };
  return runWithOptions(name, { parse, help, run }, io);
}

function describeSummary({ strokes, figures, skipped, passed_over: passedOver, unread, seconds }) {
  const seen = Object.entries(figures)
    .filter(([figure]) => figure !== 'none')
    .map(([figure, n]) => `${figure} ${n}`);
  const asDrawn = figures.none ? [`as drawn ${figures.none}`] : [];
  const notes = [
    skipped > 0 && `${skipped} left out, see above`,
    passedOver > 0 && `${passedOver} shapes passed over: filled ones, and others than paths`,
    unread.length > 0 && `not read to the end: ${unread.join(', ')}`,
  ];
  return [
    `${strokes} strokes in ${seconds} s: ${[...seen, ...asDrawn].join(', ')}`,
    ...notes.filter(Boolean),
  ].join('\n');
}

module.exports = { runInkCommand };
