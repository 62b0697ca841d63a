'use strict';

const { whole } = require('../command.js');
const { EXTENSIONS } = require('../write/formats.js');
const { INK_OPTIONS, inkHelp, parseInkOptions, runInk } = require('./ink-command.js');

const help = `Replaces freehand strokes by ideal figures.

usage: scrivo idealise [options] [IN...]

IN is NDJSON (one stroke per line: {"points": [[x, y, force, time], ...]}), InkML or SVG (polylines,
polygons, paths), optionally compressed with gzip; - is standard input, the default. The format is
detected from the content, not from the name. Strokes keep their order.

examples
  scrivo idealise ink.ndjson -o ideal.ndjson
  scrivo idealise page.inkml -o page.svg
  zcat ink-*.gz | scrivo idealise | jq -r .figure | sort | uniq -c

Coordinates
      --decimals N          round to N decimals (by default 3 in SVG and InkML, none in NDJSON)

${inkHelp('ndjson, svg or inkml; by default from the extension of OUT, else ndjson')}`;

const OPTIONS = { ...INK_OPTIONS, decimals: { type: 'string' } };

function parse(argv) {
  const command = { name: 'idealise', options: OPTIONS, extensions: EXTENSIONS };
  const options = parseInkOptions(argv, command);
  if (options.decimals === undefined) return options;
  return { ...options, decimals: whole('decimals', options.decimals, 0, 15) };
}

module.exports = { OPTIONS, help, parse, run: runInk };
