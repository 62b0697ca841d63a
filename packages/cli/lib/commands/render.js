'use strict';

const { whole } = require('../command.js');
const { UserError } = require('../user-error.js');
const { INK_OPTIONS, inkHelp, parseInkOptions, runInk } = require('./ink-command.js');

const help = `Draws strokes and, beside them, their ideal figures.

usage: scrivo render [options] [IN...]

IN is of any format, as for "scrivo idealise".

examples
  scrivo render page.inkml -o page.svg
  scrivo render ink.ndjson -o ink.png --pixels 2400

Picture
      --pixels N            width of a PNG (1600)

${inkHelp('svg or png; by default from the extension of OUT, else svg')}`;

const OPTIONS = { ...INK_OPTIONS, pixels: { type: 'string', default: '1600' } };

const EXTENSIONS = { '.svg': 'svg', '.png': 'png' };

// Most programs cannot open larger pictures.
const MAX_PIXELS = 20000;

function parse(argv) {
  const command = { name: 'render', options: OPTIONS, extensions: EXTENSIONS };
  const options = parseInkOptions(argv, command);
  if (options.help) return options;
  const pixels = whole('pixels', options.pixels, 1, MAX_PIXELS);
  const isPng = options.format === 'png';
  const png = isPng && { convert: createPainter(pixels), extension: '.png' };
  return { ...options, format: 'picture', ...png };
}

/** Turns an SVG picture into a PNG. Fails before any work is done if it cannot. */
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

module.exports = { OPTIONS, help, parse, run: runInk };
