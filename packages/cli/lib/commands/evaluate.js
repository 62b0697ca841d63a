'use strict';

const { parseCommandLine, print } = require('../command.js');
const { ENGINE_NAMES, createEngine } = require('../engines.js');
const { ANSWERS } = require('../families.js');
const { placeStroke } = require('../placement.js');
const { checkInputs, inputsOf } = require('../read/input.js');
const { takeLabelledStrokes } = require('../read/labelled.js');
const { formatReport } = require('../report.js');
const { Score } = require('../score.js');
const { strokeSheet } = require('../sheet.js');
const { UserError } = require('../user-error.js');
const { Output, inspectOutput } = require('../write/output-file.js');

const help = `Scores an engine on labelled strokes.

usage: scrivo evaluate [options] [FILE...]

FILE is NDJSON (or InkML with annotations), optionally compressed with gzip; - is standard input, the
default. Each line is an object with "family" (dot, line, angle, triangle, quadrangle, ellipse or
none), an optional "label" and "points": [[x, y, force, time], ...].

examples
  scrivo evaluate labelled.ndjson
  scrivo evaluate labelled.ndjson --engine template --svg wrong.svg

      --engine NAME     ${ENGINE_NAMES.join(' or ')} (${ENGINE_NAMES[0]} by default)
      --unit N|natural  scale the longer side of each stroke to N units, in a drawing area of 1000
                        by 1000 (200); dots always keep their size
      --templates PATH  for the template engine: a template file, or a directory of them, instead
                        of those shipped; may be repeated
      --json            print one JSON object instead of the table
      --svg OUT         write a sheet of the strokes that were answered wrongly
      --force           let --svg overwrite OUT
  -h, --help            this text

Exit code: 0 success, 1 some lines or inputs could not be read and were left out, 2 wrong command
line, or no stroke to score.
`;

const OPTIONS = {
  engine: { type: 'string', default: ENGINE_NAMES[0] },
  unit: { type: 'string', default: '200' },
  templates: { type: 'string', multiple: true },
  json: { type: 'boolean', default: false },
  svg: { type: 'string' },
  force: { type: 'boolean', default: false },
  help: { type: 'boolean', short: 'h', default: false },
};

// Viewers do not open larger sheets.
const MAX_CELLS = 4000;

function parse(argv) {
  const { values, positionals } = parseCommandLine('evaluate', argv, OPTIONS);
  if (values.help) return values;
  const inputs = inputsOf(positionals, 'evaluate', 'labelled strokes');
  return { ...values, unit: parseUnit(values.unit), inputs };
}

/** What strokes are scaled to, see placeStroke. */
function parseUnit(text) {
  if (text === 'natural') return text;
  if (Number(text) > 0 && Number.isFinite(Number(text))) return Number(text);
  throw new UserError(`--unit must be a positive number or natural, found ${text}`);
}

/**
 * @returns {Promise<number>} exit code: 0, or 1 when lines or inputs were left out
 */
async function run(options, { stdout, stderr }) {
  const totalBytes = checkInputs(options.inputs);
  const sheet = options.svg === undefined ? undefined : inspectSheet(options);
  const engine = createEngine(options.engine);
  engine.load({ templates: options.templates });

  const score = new Score();
  const wrong = [];
  let wrongCount = 0;
  const { skipped, unread } = await takeLabelledStrokes(
    { inputs: options.inputs, totalBytes },
    stderr,
    (stroke) => {
      const placed = placeStroke(stroke, options.unit);
      const start = process.hrtime.bigint();
      const answer = engine.answer(placed);
      if (score.add(stroke, answer, process.hrtime.bigint() - start)) return;
      wrongCount += 1;
      if (sheet && wrong.length < MAX_CELLS) wrong.push(cellOf(stroke, placed, answer));
    },
  );
  if (score.strokes === 0) throw new UserError('there is no stroke in the input');
  if (sheet) {
    await writeSheet(wrong, sheet);
    const shown = wrong.length < wrongCount ? `the first ${wrong.length} of ` : '';
    stderr.write(`${sheet.name}: ${shown}${wrongCount} strokes answered wrongly\n`);
  }
  const facts = { engine: engine.name, strokes: score.strokes, skipped };
  const text = options.json
    ? `${JSON.stringify({ ...facts, ...score.summary() })}\n`
    : formatReport(score, { ...facts, unit: options.unit });
  await print(stdout, text);
  return skipped === 0 && unread.length === 0 ? 0 : 1;
}

function cellOf({ label, file, line }, { points }, { family, type, path }) {
  return {
    label,
    source: `${file}:${line}`,
    answer: ANSWERS[family].label,
    drawn: points,
    redrawn: type === 0 ? undefined : path,
  };
}

function inspectSheet({ svg, force }) {
  const target = inspectOutput(svg, { force });
  if (target.medium !== 'stdout') return target;
  throw new UserError('--svg needs a file: the table goes to standard output');
}

async function writeSheet(cells, target) {
  const sorted = cells.sort((a, b) => compare(a.label, b.label) || compare(a.answer, b.answer));
  const output = new Output(target);
  await output.write(strokeSheet(sorted));
  await output.finish();
}

function compare(a, b) {
  if (a === b) return 0;
  return a < b ? -1 : 1;
}

module.exports = { OPTIONS, help, parse, run };
