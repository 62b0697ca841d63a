'use strict';

const os = require('node:os');
const path = require('node:path');
const { parseCommandLine, positive, whole } = require('./command.js');
const { ENGINE_NAMES } = require('./engines.js');
const { isDevice, statusOf } = require('./file-status.js');
const { inputsOf } = require('./input.js');
const { takeTemplates } = require('./template-files.js');
const { UserError } = require('./user-error.js');

/** Options that every command on ink takes. */
const INK_OPTIONS = {
  output: { type: 'string', short: 'o', default: '-' },
  format: { type: 'string' },
  force: { type: 'boolean', default: false },
  engine: { type: 'string', default: 'exact' },
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

const INK_HELP = `Ink
      --width N --height N  the drawing area, from 0 0: figures are moved back into it. Without
                            it, the "width" and "height" of a line or of annotations, the drawing
                            area of an SVG document, or no border
      --scale N             drawing units a unit of the input: sizes are judged in units about
                            as large as a pixel on a screen. Without it, what an InkML or SVG
                            document says of its units, else 1
      --step N              distance of samples along SVG curves, in drawing units (4)

Figures
      --engine NAME         ENGINES (exact by default)
      --templates FILE...   template files, or a directory that holds them, instead of the
                            shipped ones
      --snap                let lines snap to the centres of other strokes: those before it in the
                            same document, or the "others" of its line

Output
  -o, --output OUT          file to write, - for standard output (the default); packed if it ends
                            in .gz
      --format NAME         FORMATS
      --force               overwrite OUT
      --json                a summary as JSON, on standard output, or on standard error when the
                            strokes go there
  -j, --jobs N              strokes are worked on by so many threads (JOBS, one a core)
  -h, --help                this text

Exit code: 0 all done, 1 some strokes or inputs could not be read and were left out, 2 a wrong
command line, or nothing could be done.
`;

/** The help text of a command, its output formats filled in. */
function inkHelp(formats) {
  return INK_HELP.replace('FORMATS', formats)
    .replace('ENGINES', ENGINE_NAMES.join(' or '))
    .replace('JOBS', String(defaultJobs()));
}

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
  const { files, templates } = takeTemplates(values.templates, positionals);
  return {
    ...values,
    templates,
    inputs: inputsOf(files, name, 'ink'),
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
  const endings = Object.keys(extensions).join(', ');
  throw new UserError(
    `${output}: the name tells no format (${endings}); say --format ${known.join('|')}`,
  );
}

function areaOf(width, height) {
  if (width === undefined && height === undefined) return undefined;
  if (width === undefined || height === undefined) {
    throw new UserError('give both --width and --height');
  }
  return { x: 0, y: 0, width: positive('width', width), height: positive('height', height) };
}

module.exports = { INK_OPTIONS, defaultJobs, inkHelp, parseInkOptions };
