'use strict';

const { parseCommandLine, parseUnit, print, runWithOptions } = require('./command.js');
const { ENGINE_NAMES, createEngine } = require('./engines.js');
const { checkInputs, inputsOf } = require('./input.js');
const { placeStroke } = require('./placement.js');
const { WITHOUT_HELP, parseWithout, takeLabelledStrokes } = require('./read/labelled.js');
const { formatReport } = require('./report.js');
const { Score } = require('./score.js');
const { strokeSheet } = require('./sheet.js');
const { takeTemplates } = require('./template-files.js');
const { UserError } = require('./user-error.js');
const { Output, inspectOutput } = require('./write/output-file.js');

const HELP = `Scores an engine on labelled strokes.

usage: scrivo evaluate [options] [FILE...]

FILE is NDJSON (or InkML with annotations), packed with gzip or not; - is standard input, the
default. Each line is an object with "family" (dot, line, angle, triangle, quadrangle, ellipse or
none), an optional "label" and "points": [[x, y, force, time], ...].

examples
  scrivo evaluate labelled.ndjson
  scrivo evaluate labelled.ndjson --templates my-templates --svg wrong.svg
  scrivo evaluate labelled.ndjson --without 3,17

      --engine NAME     ${ENGINE_NAMES.join(' or ')} (exact by default)
      --unit N|natural  length of the longer side the strokes are scaled to, in a drawing area of
                        1000 by 1000 (200); dots always keep the size they have
      --templates FILE...
                        template files, or a directory that holds them, instead of the shipped ones
${WITHOUT_HELP}
      --json            one JSON object instead of the table
      --svg OUT         write a sheet of the strokes answered wrongly
      --force           let --svg overwrite OUT
  -h, --help            this text

Exit code: 0 all done, 1 some lines or inputs could not be read and were left out, 2 a wrong command
line, or nothing could be scored.
`;

const EVALUATE_OPTIONS = {
  engine: { type: 'string', default: 'exact' },
  unit: { type: 'string', default: '200' },
  templates: { type: 'string', multiple: true },
  without: { type: 'string', multiple: true },
  json: { type: 'boolean', default: false },
  svg: { type: 'string' },
  force: { type: 'boolean', default: false },
  help: { type: 'boolean', short: 'h', default: false },
};

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
function evaluateCommand(argv, io) {
  const run = async (options, { stdout, stderr }) => {
    const { report, text, isWhole } = await evaluate(options, stderr);
    await print(stdout, options.json ? `${JSON.stringify(report)}\n` : text);
    return isWhole ? 0 : 1;
  };
  return runWithOptions('evaluate', { parse: () => parseEvaluate(argv), help: HELP, run }, io);
}

function parseEvaluate(argv) {
  const { values, positionals } = parseCommandLine('evaluate', argv, EVALUATE_OPTIONS);
  if (values.help) return values;
  const { files, templates } = takeTemplates(values.templates, positionals);
  const inputs = inputsOf(files, 'evaluate', 'labelled strokes');
  const without = parseWithout(values.without, inputs);
  return { ...values, unit: parseUnit(values.unit), inputs, without, templates };
}

async function evaluate(options, stderr) {
  const totalBytes = checkInputs(options.inputs);
  const sheet = options.svg === undefined ? undefined : inspectSheet(options);
  const engine = createEngine(options.engine);
  engine.load({ templates: options.templates });

  const run = { options, engine, score: new Score(), wrong: [], wrongCount: 0 };
  const counts = await takeLabelledStrokes({ ...options, totalBytes }, stderr, (stroke) =>
    scoreStroke(run, stroke),
  );
  if (run.score.strokes === 0) throw new UserError('there is no stroke in the input');
  if (sheet) await writeSheet(run, sheet, stderr);
  return describeRun(run, counts);
}

function scoreStroke(run, stroke) {
  const placed = placeStroke(stroke, run.options.unit);
  const start = process.hrtime.bigint();
  const answer = run.engine.answer(placed);
  const nanoseconds = process.hrtime.bigint() - start;
  const right = run.score.add(stroke, answer, nanoseconds);
  if (right || run.options.svg === undefined) return;
  run.wrongCount += 1;
  if (run.wrong.length < MAX_CELLS) {
    run.wrong.push({
      label: stroke.label,
      source: `${stroke.file}:${stroke.line}`,
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

function describeRun({ engine, options, score }, { skipped, without, unread }) {
  const counts = { skipped, without };
  return {
    isWhole: skipped === 0 && unread.length === 0,
    report: { engine: engine.name, strokes: score.strokes, ...counts, ...score.summary() },
    text: formatReport(score, { engine: engine.name, unit: options.unit, ...counts }),
  };
}

module.exports = { EVALUATE_OPTIONS, evaluateCommand };
