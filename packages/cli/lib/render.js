'use strict';

const { whole } = require('./command.js');
const { runInkCommand } = require('./ink-command.js');
const { INK_OPTIONS, inkHelp, parseInkOptions } = require('./ink-options.js');
const { UserError } = require('./user-error.js');

const HELP = `Draws strokes and, beside them, the figures that were meant.

usage: scrivo render [options] [IN...]

IN is NDJSON, InkML or SVG, as for "scrivo idealise".

examples
  scrivo render page.inkml -o page.svg
  scrivo render ink.ndjson -o ink.png --pixels 2400

Picture
      --pixels N            width of a PNG (1600)

${inkHelp('svg or png, by default by the ending of OUT, else svg')}`;

const RENDER_OPTIONS = { ...INK_OPTIONS, pixels: { type: 'string', default: '1600' } };

const EXTENSIONS = { '.svg': 'svg', '.png': 'png' };

// A picture of more is more than most programs open.
const MOST_PIXELS = 20000;

/**
 * The command "render".
 *
 * @param {string[]} argv arguments after the command's name
 * @param {object} [io] see runInkCommand
 * @returns {Promise<number>} exit code
 */
function renderCommand(argv, io) {
  return runInkCommand('render', () => parseRender(argv), HELP, io);
}

function parseRender(argv) {
  const options = parseInkOptions(argv, {
    name: 'render',
    options: RENDER_OPTIONS,
    extensions: EXTENSIONS,
  });
  if (options.help) return options;
  const pixels = whole('pixels', options.pixels, 1, MOST_PIXELS);
  const isPng = options.format === 'png';
  return { ...options, format: 'picture', convert: isPng ? createPainter(pixels) : undefined };
}

/** Turns an SVG picture into a PNG; says so before the work if it cannot. */
function createPainter(pixels) {
  let resvg;
  try {
    resvg = require('@resvg/resvg-js');
  } catch (error) {
    throw new UserError(
      `PNG needs the package @resvg/resvg-js, which cannot be loaded (${error.code}): ` +
        'npm install @resvg/resvg-js, or write SVG (-o OUT.svg)',
    );
  }
  return (svg) =>
    new resvg.Resvg(svg, { fitTo: { mode: 'width', value: pixels } }).render().asPng();
}

module.exports = { RENDER_OPTIONS, renderCommand };
