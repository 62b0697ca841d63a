'use strict';

const { whole } = require('./command.js');
const { runInkCommand } = require('./ink-command.js');
const { INK_OPTIONS, inkHelp, parseInkOptions } = require('./ink-options.js');
const { EXTENSIONS } = require('./write/formats.js');

const HELP = `Turns strokes into the figures that were meant.

usage: scrivo idealise [options] [IN...]

IN is NDJSON (one stroke a line: {"points": [[x, y, force, time], ...]}), InkML or SVG (polylines,
polygons, paths), packed with gzip or not; - is standard input, the default. What a file is shows
in its content, not in its name. Strokes come out in the order they came in.

examples
  scrivo idealise ink.ndjson -o ideal.ndjson
  scrivo idealise page.inkml -o page.svg
  zcat ink-*.gz | scrivo idealise | jq -r .figure | sort | uniq -c

Coordinates
      --decimals N          round them (all digits in NDJSON, 3 decimals in SVG and InkML)

${inkHelp('ndjson, svg or inkml, by default by the ending of OUT, else ndjson')}`;

const IDEALISE_OPTIONS = { ...INK_OPTIONS, decimals: { type: 'string' } };

/**
 * The command "idealise".
 *
 * @param {string[]} argv arguments after the command's name
 * @param {object} [io] see runInkCommand
 * @returns {Promise<number>} exit code
 */
function idealiseCommand(argv, io) {
  return runInkCommand('idealise', () => parseIdealise(argv), HELP, io);
}

function parseIdealise(argv) {
  const command = { name: 'idealise', options: IDEALISE_OPTIONS, extensions: EXTENSIONS };
  const options = parseInkOptions(argv, command);
  if (options.decimals === undefined) return options;
  return { ...options, decimals: whole('decimals', options.decimals, 0, 15) };
}

module.exports = { IDEALISE_OPTIONS, idealiseCommand };
