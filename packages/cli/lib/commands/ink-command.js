'use strict';

const os = require('node:os');
const path = require('node:path');
const { parseCommandLine, positive, print, whole } = require('../command.js');
const { ENGINE_NAMES } = require('../engines.js');
const { ANSWERS, FAMILIES } = require('../families.js');
const { isDevice, statusOf } = require('../file-status.js');
const { inputsOf } = require('../read/input.js');
const { runStrokes } = require('../run/stroke-run.js');
const { UserError } = require('../user-error.js');

/** What the commands `idealise` and `render` share. */

const INK_OPTIONS = {
  output: { type: 'string', short: 'o', default: '-' },
  format: { type: 'string' },
  force: { type: 'boolean', default: false },
  errors: { type: 'string' },
  engine: { type: 'string', default: ENGINE_NAMES[0] },
  figures: { type: 'string' },
  'min-size': { type: 'string' },
  'tap-size': { type: 'string' },
  sensitivity: { type: 'string' },
  anchors: { type: 'string' },
  'no-level': { type: 'boolean' },
  'no-regular': { type: 'boolean' },
  'no-inside': { type: 'boolean' },
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
      --figures LIST        the families that are wanted, separated by commas, of
                            ${FAMILIES.join(', ')}
      --min-size N          leave strokes below N drawing units as drawn: they are writing (0)
      --tap-size N          the largest dot, in drawing units (4)
      --sensitivity N       from 0, only figures beyond doubt, to 1, readily (0.5)
      --no-level            do not make figures level or upright
      --no-regular          do not make figures regular, such as squares and circles
      --no-inside           do not move figures into the drawing area
      --anchors LIST        with --snap: what lines snap to: centre, end, corner
      --snap                let lines snap to other strokes: those earlier in the same document,
                            or the "others" of its line

Output
  -o, --output OUT          file to write, - for standard output (the default); compressed if it
                            ends in .gz; or a folder (OUT/), for a file for each input
      --format NAME         ${formats}
      --force               overwrite OUT
      --errors FILE         write all messages to FILE; strokes that cannot be read are then no
                            failure (exit code 0)
      --json                print a summary as JSON, on standard output, or on standard error when
                            the strokes go to standard output
  -j, --jobs N              number of threads (${defaultJobs()}, one per core)
  -h, --help                this text

Exit code: 0 success; 1 some strokes, shapes or inputs were left out, or there were none; 2 wrong
command line or failure.
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
  const { width, height, jobs, scale, step, errors } = values;
  if (errors === '-') throw new UserError('--errors needs a file');
  return {
    ...values,
    inputs: inputsOf(positionals, name, 'ink'),
    format: formatOf(values, extensions),
    isFolder: isFolder(values.output),
    beautifier: beautifierOptions(values),
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
  if (output === '-' || isFolder(output)) return known[0];
  if (output === '') throw new UserError('-o needs a name: a file, or - for standard output');
  const extension = path.extname(output.replace(/\.gz$/i, '')).toLowerCase();
  if (Object.hasOwn(extensions, extension)) return extensions[extension];
  if (isDevice(statusOf(output))) return known[0];
  throw new UserError(
    `${output}: the format is not clear from the name (${Object.keys(extensions).join(', ')}): ` +
      `add --format ${known.join('|')}`,
  );
}

/** Whether an output is a folder, or is to become one. */
function isFolder(output) {
  if (output === '-' || output === '') return false;
  return /[/\\]$/.test(output) || statusOf(output)?.isDirectory() === true;
}

/** The options of the beautifier that are given. */
function beautifierOptions(values) {
  const list = (name) => values[name]?.split(',').map((each) => each.trim());
  const number = (name) => {
    if (values[name] === undefined) return undefined;
    const value = Number(values[name]);
    if (values[name].trim() !== '' && value >= 0 && Number.isFinite(value)) return value;
    throw new UserError(`--${name} must be a number from 0 on, found ${values[name]}`);
  };
  const off = (name) => (values[name] ? false : undefined);
  const given = {
    figures: list('figures'),
    minSize: number('min-size'),
    tapSize: number('tap-size'),
    sensitivity: number('sensitivity'),
    anchors: list('anchors'),
    horizontalVertical: off('no-level'),
    regularFigures: off('no-regular'),
    insideArea: off('no-inside'),
  };
  return Object.fromEntries(Object.entries(given).filter(([, value]) => value !== undefined));
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
  const { strokes, skipped, passed_over: passedOver, unread } = summary;
  if (unread.length > 0) return 1;
  const isComplete = strokes > 0 && skipped === 0 && passedOver === 0;
  return isComplete || options.errors !== undefined ? 0 : 1;
}

function describeSummary({ strokes, figures, skipped, passed_over: passedOver, unread, seconds }) {
  const counts = Object.entries(ANSWERS)
    .filter(([family]) => figures[family])
    .map(([family, { label }]) => `${label} ${figures[family]}`);
  const notes = [
    skipped > 0 && `${skipped} left out, see above`,
    passedOver > 0 && `${passedOver} shapes or other objects left out, see above`,
    unread.length > 0 && `not read to the end: ${unread.join(', ')}`,
  ];
  return [
    `${strokes} strokes in ${seconds} s: ${counts.join(', ')}`,
    ...notes.filter(Boolean),
  ].join('\n');
}

module.exports = { INK_OPTIONS, inkHelp, parseInkOptions, runInk };
