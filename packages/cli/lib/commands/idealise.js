'use strict';

const { whole } = require('../command.js');
const { EXTENSIONS } = require('../write/formats.js');
const { INK_OPTIONS, inkHelp, parseInkOptions, runInk } = require('./ink-command.js');

const help = `Replaces freehand strokes by ideal figures.

usage: scrivo idealise [options] [IN...]

IN is NDJSON (one stroke per line: {"points": [[x, y, force, time], ...]}), JSON, Quick, Draw! NDJSON,
InkML, SVG (polylines, polygons, paths), Xournal++, Rnote or Excalidraw, optionally compressed with
gzip; - is standard input, the default. The format is detected from the content, not from the name.
Strokes keep their order.

examples
  scrivo idealise ink.ndjson -o ideal.ndjson
  scrivo idealise page.inkml -o page.svg
  scrivo idealise notes.xopp -o ideal.xopp
  zcat ink-*.gz | scrivo idealise | jq -r .figure | sort | uniq -c

Coordinates
      --decimals N          round to N decimals (3, and more where the unit is large)

${inkHelp('ndjson, svg, inkml, xopp, rnote or excalidraw, by default as OUT, else ndjson')}`;

const OPTIONS = { ...INK_OPTIONS, decimals: { type: 'string' } };

function parse(argv) {
  const command = { name: 'idealise', options: OPTIONS, extensions: EXTENSIONS };
  const options = parseInkOptions(argv, command);
  if (options.decimals === undefined) return options;
  return { ...options, decimals: whole('decimals', options.decimals, 0, 15) };
}

module.exports = { OPTIONS, help, parse, run: runInk };
