'use strict';

const path = require('node:path');
const {
  parseCommandLine,
  parseUnit,
  positive,
  print,
  runWithOptions,
  whole,
} = require('./command.js');
const { checkInputs, inputsOf } = require('./input.js');
const { defaultJobs } = require('./ink-options.js');
const { learn } = require('./learn/learn.js');
const { createProgress } = require('./progress.js');
const { WITHOUT_HELP, parseWithout, takeLabelledStrokes } = require('./read/labelled.js');
const { formatLeftOut, formatTable } = require('./report.js');
const { slotOf } = require('./template-files.js');
const { UserError } = require('./user-error.js');
const { inspectFolder, writeFolder } = require('./write/output-folder.js');

const HELP = `Learns template files from labelled strokes, and says what they gain.

usage: scrivo templates [options] [FILE...] [-o FOLDER]

FILE is NDJSON as for "scrivo evaluate", - is standard input, the default: each line has "family",
"points" and, if known, "writer". Generated outlines are added to the shipped ones, so that no
template shows anybody's stroke. What they gain is measured on strokes that they were not chosen by:
the strokes are divided into parts, and each part is answered with templates learnt from the others.
Without -o the figures are printed and nothing is written.

examples
  scrivo templates labelled.ndjson
  scrivo templates labelled.ndjson -o my-templates
  scrivo idealise ink.ndjson --templates my-templates -o ideal.ndjson

  -o, --output FOLDER   a new folder for the four template files
      --force           replace the template files of a FOLDER that is there
      --from-scratch    choose anew, instead of adding to the shipped outlines
      --unit N|natural  length of the longer side the strokes are scaled to, in a drawing area of
                        1000 by 1000 (200); dots always keep the size they have
      --harm N          what a wrong answer costs, in right answers (2.5): more spares ink that is
                        no figure, less finds more figures
      --price N         right answers an outline must add to be taken (2)
      --candidates N    generated outlines of each of the four figures to choose from (500)
      --by writer|stroke
                        what is held out together (by writer if two or more are named)
      --folds N         parts that the strokes are divided into, at most (5)
      --seed N          of the generated outlines and the division (1)
${WITHOUT_HELP}
      --json            one JSON object instead of the table
  -j, --jobs N          strokes are compared by so many threads (${defaultJobs()}, one a core)
  -h, --help            this text

Exit code: 0 all done, 1 some lines or inputs could not be read and were left out, 2 a wrong command
line, or nothing could be learnt.
`;

const TEMPLATES_OPTIONS = {
  output: { type: 'string', short: 'o' },
  force: { type: 'boolean', default: false },
  'from-scratch': { type: 'boolean', default: false },
  unit: { type: 'string', default: '200' },
  harm: { type: 'string', default: '2.5' },
  price: { type: 'string', default: '2' },
  candidates: { type: 'string', default: '500' },
  by: { type: 'string' },
  folds: { type: 'string', default: '5' },
  seed: { type: 'string', default: '1' },
  without: { type: 'string', multiple: true },
  json: { type: 'boolean', default: false },
  jobs: { type: 'string', short: 'j' },
  help: { type: 'boolean', short: 'h', default: false },
};

// Distance, in 250ths of a figure, by which a stroke must lie within the reach of an outline to
// count as found.
const MARGIN = 5;

/** Figures that templates decide about. */
const LEARNT = ['triangle', 'quadrangle', 'ellipse'];

/**
 * The command "templates".
 *
 * @param {string[]} argv arguments after the command's name
 * @param {object} [io] see runCommand
 * @returns {Promise<number>} exit code
 */
function templatesCommand(argv, io) {
  const run = async (options, { stdout, stderr }) => {
    const totalBytes = checkInputs(options.inputs);
    const target = options.output === undefined ? undefined : inspectOutput(options);
    const { strokes, ...counts } = await readStrokes({ ...options, totalBytes }, stderr);
    const settings = { ...options, byWriter: isByWriter(options.by, strokes) };
    const learnt = await learnFrom(strokes, settings, stderr);
    if (target) await writeFolder(target, learnt.files);
    const summary = summarise(strokes, learnt, { ...settings, ...counts });
    await print(stdout, options.json ? `${JSON.stringify(summary)}\n` : formatSummary(summary));
    return counts.skipped === 0 && counts.unread.length === 0 ? 0 : 1;
  };
  return runWithOptions('templates', { parse: () => parseTemplates(argv), help: HELP, run }, io);
}

function parseTemplates(argv) {
  const { values, positionals } = parseCommandLine('templates', argv, TEMPLATES_OPTIONS);
  if (values.help) return values;
  const inputs = inputsOf(positionals, 'templates', 'labelled strokes');
  if (![undefined, 'writer', 'stroke'].includes(values.by)) {
    throw new UserError(`--by must be writer or stroke, found ${values.by}`);
  }
  return {
    ...values,
    inputs,
    without: parseWithout(values.without, inputs),
    keepShipped: !values['from-scratch'],
    unit: parseUnit(values.unit),
    harm: positive('harm', values.harm),
    price: positive('price', values.price),
    candidates: whole('candidates', values.candidates, 1, 1e4),
    folds: whole('folds', values.folds, 2),
    seed: whole('seed', values.seed, 0, 2 ** 31 - 1),
    margin: MARGIN,
    jobs: values.jobs === undefined ? defaultJobs() : whole('jobs', values.jobs, 1),
  };
}

function inspectOutput({ output, force }) {
  if (output === '') throw new UserError('-o needs the name of a folder');
  const slot = slotOf(path.resolve(output));
  if (slot) {
    throw new UserError(
      `${output}: the engine would take every file in it for ${slot}; name the folder otherwise`,
    );
  }
  return inspectFolder(output, { force });
}

/** All strokes: what is learnt is chosen by all of them together. */
async function readStrokes(options, stderr) {
  const strokes = [];
  const counts = await takeLabelledStrokes(options, stderr, (stroke) => strokes.push(stroke));
  if (!strokes.some(({ family }) => LEARNT.includes(family))) {
    throw new UserError(`there is no ${LEARNT.join(', ')} among the strokes to learn from`);
  }
  if (strokes.length < 2) throw new UserError('one stroke is too few: none can be held out');
  return { strokes, ...counts };
}

function isByWriter(by, strokes) {
  const writers = new Set(strokes.map(({ writer }) => writer));
  writers.delete(undefined);
  if (by === 'writer' && writers.size < 2) {
    throw new UserError('--by writer needs strokes of two "writer" or more');
  }
  return by === undefined ? writers.size >= 2 : by === 'writer';
}

async function learnFrom(strokes, settings, stderr) {
  const total = strokes.length;
  const progress = createProgress({ totalBytes: total, stream: stderr });
  let compared = 0;
  try {
    return await learn(strokes, settings, (count) => {
      compared += count;
      progress.advance(count);
      progress.count(compared);
    });
  } finally {
    progress.stop();
  }
}

function summarise(strokes, learnt, { byWriter, output, harm, skipped, without, unread }) {
  const sets = Object.entries(learnt.sets).map(([name, { outlines, score }]) => {
    const { families, recall, negatives } = score.summary();
    return [name, { outlines, families, recall, negatives }];
  });
  return {
    strokes: strokes.length,
    harm,
    skipped,
    without,
    unread,
    held_out: { by: byWriter ? 'writer' : 'stroke', folds: learnt.folds },
    templates: Object.fromEntries(sets),
    better: learnt.better,
    worse: learnt.worse,
    gain: learnt.gain,
    output: output ?? null,
    outlines: learnt.outlines,
  };
}

const SET_NAMES = {
  none: 'no templates',
  shipped: 'the shipped ones',
  learnt: 'learnt',
  every: 'every candidate',
};

function formatSummary({ strokes, skipped, without, held_out: held, templates, ...rest }) {
  const parts = `${held.folds} parts, by ${held.by}`;
  return [
    `${strokes} strokes; each of ${parts}, answered with templates learnt from the others`,
    '',
    formatTable(tableOf(templates)),
    '',
    describeGain(rest),
    describeOutput(rest),
    ...formatLeftOut({ skipped, without }),
    '',
  ].join('\n');
}

/** Right answers by figure; and of the strokes that are no figure, those that were changed. */
function tableOf(templates) {
  const { families } = templates.none;
  const seen = Object.keys(families).filter((family) => families[family].n > 0);
  const nameOf = (family) => (family === 'none' ? 'none, changed' : family);
  const rows = Object.entries(templates).map(([set, { outlines, families: counts }]) => [
    SET_NAMES[set],
    rangeOf(outlines),
    ...seen.map((family) => {
      const { n, right } = counts[family];
      return family === 'none' ? n - right : right;
    }),
  ]);
  const all = ['strokes', '', ...seen.map((family) => families[family].n)];
  return [['templates', 'outlines', ...seen.map(nameOf)], all, ...rows];
}

function rangeOf(numbers) {
  const [least, most] = [Math.min(...numbers), Math.max(...numbers)];
  return least === most ? String(least) : `${least}-${most}`;
}

function describeGain({ better, worse, gain, harm }) {
  const verdict =
    gain > 0
      ? `${gain} right answers gained`
      : `${-gain} right answers lost: the shipped templates do as well or better`;
  return (
    `Against the shipped templates: ${better} strokes answered better, ${worse} worse; ` +
    `at --harm ${harm} ${verdict}`
  );
}

function describeOutput({ output, outlines }) {
  const counts = Object.entries(outlines).map(([figure, n]) => `${figure} ${n}`);
  const where = output === null ? 'From all strokes, not written (-o FOLDER)' : output;
  return `${where}: ${counts.join(', ')} outlines`;
}

module.exports = { TEMPLATES_OPTIONS, templatesCommand };
