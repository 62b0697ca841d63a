'use strict';

const os = require('node:os');
const path = require('node:path');
const { parseCommandLine, positive, print, whole } = require('../command.js');
const { ENGINE_NAMES } = require('../engines.js');
const { ANSWERS } = require('../families.js');
const { isDevice, statusOf } = require('../file-status.js');
const { inputsOf } = require('../read/input.js');
const { runStrokes } = require('../run/stroke-run.js');
const { UserError } = require('../user-error.js');

/** What the commands `idealise` and `render` share. */

const INK_OPTIONS = {
  output: { type: 'string', short: 'o', default: '-' },
  format: { type: 'string' },
  force: { type: 'boolean', default: false },
  engine: { type: 'string', default: ENGINE_NAMES[0] },
  templates: { type: 'string', multiple: true },
  width: { type: 'string' },
  height: { type: 'string' },
  scale: { type: 'string' },
  step: { type: 'string', default: '4' },
  snap: { type: 'boolean', default: false },
  jobs: { type: 'string', short: 'j' },
  json: { type: 'boolean', default: false },
  help: { type: 'boolean', short: 'h', default: false },
};

/** The part of a help text on the shared options. */
const inkHelp = (formats) => `Ink
      --width N --height N  the drawing area, whose corner is at 0 0: figures are moved back into
                            it. By default the "width" and "height" of a line or of annotations,
                            or the drawing area of an SVG document; otherwise no border
      --scale N             drawing units per unit of the input; a drawing unit is about a pixel
                            on a screen. By default what an InkML or SVG document states, else 1
      --step N              distance between samples along SVG curves, in drawing units (4)

Figures
      --engine NAME         ${ENGINE_NAMES.join(' or ')} (${ENGINE_NAMES[0]} by default)
      --templates PATH      for the template engine: a template file, or a directory of them,
                            instead of those shipped; may be repeated
      --snap                let lines snap to other strokes: those earlier in the same document,
                            or the "others" of its line

Output
  -o, --output OUT          file to write, - for standard output (the default); compressed if it
                            ends in .gz
      --format NAME         ${formats}
      --force               overwrite OUT
      --json                print a summary as JSON, on standard output, or on standard error when
                            the strokes go to standard output
  -j, --jobs N              number of threads (${defaultJobs()}, one per core)
  -h, --help                this text

Exit code: 0 success, 1 some strokes or inputs could not be read and were left out, 2 wrong command
line or failure.
`;

function defaultJobs() {
  return os.availableParallelism?.() ?? os.cpus().length;
}

/**
 * Reads a command line.
 *
 * @param {string[]} argv
 * @param {object} command
 * @param {string} command.name
 * @param {object} command.options in the form of util.parseArgs
 * @param {Record<string, string>} command.extensions format by the extension of the output
 * @returns {object} `help` alone, or the options of runStrokes and what else was given
 */
function parseInkOptions(argv, { name, options, extensions }) {
  const { values, positionals } = parseCommandLine(name, argv, options);
  if (values.help) return { help: true };
  const { width, height, jobs, scale, step } = values;
  return {
    ...values,
    inputs: inputsOf(positionals, name, 'ink'),
    format: formatOf(values, extensions),
    area: areaOf(width, height),
    scale: scale === undefined ? undefined : positive('scale', scale),
    step: positive('step', step),
    jobs: jobs === undefined ? defaultJobs() : whole('jobs', jobs, 1),
  };
}

function formatOf({ format, output }, extensions) {
  const known = [...new Set(Object.values(extensions))];
  if (format !== undefined) {
    if (known.includes(format)) return format;
    throw new UserError(`--format must be one of ${known.join(', ')}, found ${format}`);
  }
  if (output === '-') return known[0];
  if (output === '') throw new UserError('-o needs a name: a file, or - for standard output');
  const extension = path.extname(output.replace(/\.gz$/i, '')).toLowerCase();
  if (Object.hasOwn(extensions, extension)) return extensions[extension];
  const status = statusOf(output);
  if (isDevice(status)) return known[0];
  if (status?.isDirectory() || /[/\\]$/.test(output)) {
    throw new UserError(`${output} is a directory: name a file`);
  }
  throw new UserError(
    `${output}: the format is not clear from the name (${Object.keys(extensions).join(', ')}): ` +
      `add --format ${known.join('|')}`,
  );
}

function areaOf(width, height) {
  if (width === undefined && height === undefined) return undefined;
  if (width === undefined || height === undefined) {
    throw new UserError('give both --width and --height');
  }
  return { x: 0, y: 0, width: positive('width', width), height: positive('height', height) };
}

/**
 * Runs a command on ink and reports on it.
 *
 * @param {import('../run/stroke-run.js').RunOptions} options
 * @param {{stdout: NodeJS.WriteStream, stderr: NodeJS.WriteStream}} io
 * @returns {Promise<number>} exit code: 0, or 1 when something was left out
 */
async function runInk(options, { stdout, stderr }) {
  const summary = await runStrokes(options, { stdout, stderr });
  const reportTo = options.output === '-' ? stderr : stdout;
  if (options.json) await print(reportTo, `${JSON.stringify(summary)}\n`);
  else if (stderr.isTTY) stderr.write(`${describeSummary(summary)}\n`);
  return summary.skipped > 0 || summary.unread.length > 0 ? 1 : 0;
}

function describeSummary({ strokes, figures, skipped, passed_over: passedOver, unread, seconds }) {
  const counts = Object.entries(ANSWERS)
    .filter(([family]) => figures[family])
    .map(([family, { label }]) => `${label} ${figures[family]}`);
  const notes = [
    skipped > 0 && `${skipped} left out, see above`,
    passedOver > 0 && `${passedOver} shapes skipped: filled, or not drawn as lines or paths`,
    unread.length > 0 && `not read to the end: ${unread.join(', ')}`,
  ];
  return [
    `${strokes} strokes in ${seconds} s: ${counts.join(', ')}`,
    ...notes.filter(Boolean),
  ].join('\n');
}

module.exports = { INK_OPTIONS, inkHelp, parseInkOptions, runInk };
