'use strict';

const { parseArgs } = require('node:util');
const { createEngine } = require('./engines.js');
const { checkInputs, displayName } = require('./input.js');
const { placeStroke } = require('./placement.js');
const { createProgress } = require('./progress.js');
const { formatReport } = require('./report.js');
const { Score } = require('./score.js');
const { strokeSheet } = require('./sheet.js');
const { readLabelledStrokes } = require('./strokes.js');
const { takeTemplates } = require('./template-files.js');
const { UserError } = require('./user-error.js');
const { Output, inspectOutput } = require('./write/output-file.js');

const USAGE = `Scores an engine on labelled strokes.

usage: evaluate [options] FILE...

FILE is NDJSON, gzip or not, - for standard input. Each line is an object with
"family" (dot, line, angle, triangle, quadrangle, ellipse or none), an optional
"label" and "points": [[x, y, force, time], ...].

  --engine NAME     exact (the default) or beautifier
  --unit N|natural  length of the longer side the strokes are scaled to, in a drawing
                    area of 1000 by 1000 (200); dots always keep the size they have
  --templates FILE...
                    template files, or a directory that holds them, instead of the
                    shipped ones
  --json            one JSON object instead of the table
  --svg OUT         write a sheet of the strokes answered wrongly
  --force           let --svg overwrite OUT
  --help            this text
`;

const OPTIONS = {
  engine: { type: 'string', default: 'exact' },
  unit: { type: 'string', default: '200' },
  templates: { type: 'string', multiple: true },
  json: { type: 'boolean', default: false },
  svg: { type: 'string' },
  force: { type: 'boolean', default: false },
  help: { type: 'boolean', default: false },
};

// More wrong lines of one file are only counted: they tell nothing new.
const WRONG_LINES_SHOWN = 20;

// A sheet beyond this opens in no viewer.
const MAX_CELLS = 4000;

/**
 * The command "evaluate".
 *
 * @param {string[]} argv arguments after the command's name
 * @param {{stdout?: NodeJS.WritableStream, stderr?: NodeJS.WritableStream}} [io]
 * @returns {Promise<number>} exit code: 0, 1 when lines or inputs were left out, 2 when nothing
 *   could be scored
 */
async function evaluateCommand(argv, { stdout = process.stdout, stderr = process.stderr } = {}) {
  try {
    const options = parseCommandLine(argv);
    if (options.help) {
      stdout.write(USAGE);
      return 0;
    }
    const run = await evaluate(options, stderr);
    stdout.write(options.json ? `${JSON.stringify(run.report)}\n` : run.text);
    return run.failed || run.report.skipped > 0 ? 1 : 0;
  } catch (error) {
    if (!(error instanceof UserError)) throw error;
    stderr.write(`evaluate: ${error.message}\n`);
    return 2;
  }
}

function parseCommandLine(argv) {
  let parsed;
  try {
    parsed = parseArgs({ args: argv, options: OPTIONS, allowPositionals: true });
  } catch (error) {
    throw new UserError(`${error.message}\n--help lists the options`);
  }
  const { values, positionals } = parsed;
  if (values.help) return values;
  const { files, templates } = takeTemplates(values.templates, positionals);
  if (files.length === 0) throw new UserError('name a file of strokes; --help tells more');
  return { ...values, unit: parseUnit(values.unit), files, templates };
}

function parseUnit(text) {
  if (text === 'natural') return text;
  const unit = Number(text);
  if (unit > 0 && Number.isFinite(unit)) return unit;
  throw new UserError(`--unit must be a positive number or natural, found ${text}`);
}

async function evaluate(options, stderr) {
  const totalBytes = checkInputs(options.files);
  const sheet = options.svg === undefined ? undefined : inspectSheet(options);
  const engine = createEngine(options.engine);
  engine.load({ templates: options.templates });

  const run = { options, engine, score: new Score(), wrong: [], wrongCount: 0, skipped: 0 };
  run.messages = [];
  run.progress = createProgress({ totalBytes, stream: stderr });
  try {
    for (const file of options.files) await scoreFile(run, file);
  } finally {
    run.progress.stop();
    for (const message of run.messages) stderr.write(`${message}\n`);
  }
  if (run.score.strokes === 0) throw new UserError('there is no stroke in the input');
  if (sheet) await writeSheet(run, sheet, stderr);
  return describeRun(run);
}

async function scoreFile(run, file) {
  const name = displayName(file);
  const before = run.score.strokes;
  let wrongLines = 0;
  const onWrongLine = (line, message) => {
    wrongLines += 1;
    if (wrongLines <= WRONG_LINES_SHOWN) run.messages.push(`${name}:${line}: ${message}`);
  };
  try {
    for await (const stroke of readLabelledStrokes(file, {
      onWrongLine,
      onBytes: (count) => run.progress.advance(count),
    })) {
      scoreStroke(run, stroke, name);
    }
  } catch (error) {
    // What was read before the input broke off is still worth its figures.
    if (!(error instanceof UserError)) throw error;
    run.failed = true;
    run.messages.push(error.message);
  }
  if (wrongLines > WRONG_LINES_SHOWN) {
    run.messages.push(`${name}: ${wrongLines - WRONG_LINES_SHOWN} more wrong lines`);
  }
  run.skipped += wrongLines;
  run.progress.finish(name, run.score.strokes - before);
}

function scoreStroke(run, stroke, name) {
  const placed = placeStroke(stroke, run.options.unit);
  const start = process.hrtime.bigint();
  const answer = run.engine.answer(placed);
  const nanoseconds = process.hrtime.bigint() - start;
  const right = run.score.add(stroke, answer, nanoseconds);
  run.progress.count(run.score.strokes);
  if (right || run.options.svg === undefined) return;
  run.wrongCount += 1;
  if (run.wrong.length < MAX_CELLS) {
    run.wrong.push({
      label: stroke.label,
      source: `${name}:${stroke.line}`,
      answer: answer.family === 'none' ? 'as drawn' : answer.family,
      drawn: placed.points,
      redrawn: answer.type === 0 ? undefined : answer.path,
    });
  }
}

function inspectSheet({ svg, force }) {
  const target = inspectOutput(svg, { force });
  if (target.kind === 'stdout') throw new UserError('--svg needs a file: the table is on stdout');
  return target;
}

async function writeSheet(run, target, stderr) {
  const cells = run.wrong.sort((a, b) => compare(a.label, b.label) || compare(a.answer, b.answer));
  const output = new Output(target);
  await output.write(strokeSheet(cells));
  await output.finish();
  const shown = cells.length < run.wrongCount ? `the first ${cells.length} of ` : '';
  stderr.write(`${target.name}: ${shown}${run.wrongCount} strokes answered wrongly\n`);
}

function compare(a, b) {
  if (a === b) return 0;
  return a < b ? -1 : 1;
}

function describeRun({ engine, options, score, skipped, failed }) {
  return {
    failed,
    report: { engine: engine.name, strokes: score.strokes, skipped, ...score.summary() },
    text: formatReport(score, { engine: engine.name, unit: options.unit, skipped }),
  };
}

module.exports = { evaluateCommand };
