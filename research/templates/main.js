'use strict';

const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { parseArgs } = require('node:util');
const { createEngine } = require('../../packages/cli/lib/engines.js');
const { placeStroke } = require('../../packages/cli/lib/placement.js');
const { failure } = require('../../tools/support/run.js');
const { readStrokes, scaled } = require('../beautifier/strokes.js');
const { FIGURES, HANDS, drawInk } = require('../ink/index.js');
const { createUniform } = require('../ink/random.js');
const { TEMPLATE_FIGURES, templateFiles } = require('./candidates.js');
const { coversOf, selectCandidates, worth } = require('./search.js');
const { sampleParameters, templateOutline } = require('./template-outlines.js');

const USAGE = `Writes the template files from their parameters, or searches for parameters.

usage: templates                  write templates/ from research/templates/parameters.json
       templates --search TRAIN   choose the parameters by labelled strokes and write them

  --parameters FILE read, and with --search written (research/templates/parameters.json)
  --output DIR      folder of the template files (templates)
  --check DEV       with --search: also count on strokes that took no part in the choice
  --candidates N    outlines of each figure to choose from (3000)
  --seed N          of the random candidates (1)
  --harm N          cost of a wrong answer, in right answers (2.5)
  --margin N        distance, in 250ths of the figure, by which a stroke must lie within the
                    reach of a template to count as found (5)
  --price N         right answers that a template must add to be kept (2)
`;

const OPTIONS = {
  search: { type: 'string' },
  parameters: { type: 'string', default: path.join(__dirname, 'parameters.json') },
  output: { type: 'string', default: path.join(__dirname, '..', '..', 'templates') },
  check: { type: 'string' },
  candidates: { type: 'string', default: '3000' },
  seed: { type: 'string', default: '1' },
  harm: { type: 'string', default: '2.5' },
  margin: { type: 'string', default: '5' },
  price: { type: 'string', default: '2' },
  help: { type: 'boolean', default: false },
};

// Longer side of the strokes in units, but for dots: as in the evaluation.
const SIDE = 200;

// Generated strokes of each figure, beside the collected ones.
const PRACTICE_STROKES = 25;
const PRACTICE_SEED = 1000;
const PRACTICE_HAND = { ...HANDS.ordinary, rate: 60 };

/**
 * Writes one file for each figure.
 *
 * @param {string} folder
 * @param {object[]} templates their parameters, in the order in which they are to stand
 */
function writeTemplates(folder, templates) {
  fs.mkdirSync(folder, { recursive: true });
  for (const [name, text] of Object.entries(templateFiles(templates.map(toCandidate)))) {
    fs.writeFileSync(path.join(folder, name), text);
  }
}

function toCandidate(parameters) {
  return { figure: parameters.figure, outline: templateOutline(parameters) };
}

function readParameters(file = OPTIONS.parameters.default) {
  return JSON.parse(fs.readFileSync(file, 'utf8')).templates;
}

function search(options) {
  const settings = searchSettings(options);
  const parameters = sampleParameters(createUniform(settings.seed), settings.candidates);
  const candidates = parameters.map(toCandidate);
  const train = covered(readStrokes(options.search), candidates);
  const check = options.check ? covered(readStrokes(options.check), candidates) : [];
  const practice = covered(practiceStrokes(), candidates);
  answerAll([...train, ...check, ...practice], parameters);

  const chooseFor = (harm) => choose([...train, ...practice], parameters, { ...settings, harm });
  const chosen = chooseFor(settings.harm);
  const every = [...parameters.keys()];
  printTable('limit', ['every candidate'], () => every, train, check);
  printCurve(chosen, train, check);
  printTradeOff(chooseFor, train, check);
  saveParameters(
    options.parameters,
    chosen.map((i) => parameters[i]),
    settings,
  );
}

function searchSettings(options) {
  const names = ['candidates', 'seed', 'harm', 'margin', 'price'];
  return Object.fromEntries(
    names.map((name) => {
      const value = Number(options[name]);
      if (!Number.isFinite(value) || value < 0) {
        throw failure(`--${name} must be a number of 0 or more, found ${options[name]}`);
      }
      return [name, value];
    }),
  );
}

/** Labelled strokes in units, with the candidates that reach them. */
function covered(strokes, candidates) {
  const inUnits = strokes.map(({ family, points }) =>
    family === 'dot' ? points : scaled(points, SIDE),
  );
  const covers = coversOf(inUnits, candidates);
  return strokes.map(({ family }, i) => ({ family, points: inUnits[i], cover: covers[i] }));
}

/**
 * Figures begun at any corner and drawn in either direction. Some of these are rare in collected
 * strokes, such as a square begun at the lower right, and must be recognised as well.
 */
function practiceStrokes() {
  const figures = Object.keys(FIGURES).filter((name) => FIGURES[name].family !== 'none');
  return figures.flatMap((figure) =>
    Array.from({ length: PRACTICE_STROKES }, (_, i) =>
      drawInk({ figure, seed: PRACTICE_SEED + i, hand: PRACTICE_HAND }),
    ),
  );
}

/**
 * Adds the engine's answers without templates, and with a template that reaches the stroke. It does
 * not matter which, so a small set is loaded that reaches every stroke within reach of a candidate.
 */
function answerAll(strokes, parameters) {
  const engine = createEngine('template');
  const answer = (stroke) => engine.answer(placeStroke(stroke, 'natural'));
  engine.load({ templates: [] });
  for (const stroke of strokes) stroke.before = answer(stroke);

  const everything = strokes.map(({ cover }) => ({ cover, gain: 1 }));
  const witnesses = selectCandidates(everything, { price: 1, margin: 0 });
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'scrivo-templates-'));
  try {
    writeTemplates(
      folder,
      witnesses.map((i) => parameters[i]),
    );
    engine.load({ templates: [folder] });
  } finally {
    fs.rmSync(folder, { recursive: true });
  }
  for (const stroke of strokes) stroke.after = answer(stroke);
}

function choose(strokes, parameters, { harm, margin, price }) {
  const weighted = strokes.map(({ family, before, after, cover }) => ({
    cover,
    gain: worth(family, after, harm) - worth(family, before, harm),
  }));
  const ofFigure = (figure) =>
    [...parameters.keys()].filter((i) => parameters[i].figure === figure);
  return selectCandidates(weighted, { price, margin, groups: TEMPLATE_FIGURES.map(ofFigure) });
}

/** Right answers by family, and changed strokes that are no figure; `set` names the strokes. */
function measure(strokes, chosen, set) {
  const counts = { triangle: 0, quadrangle: 0, ellipse: 0, changed: 0 };
  for (const { family, before, after, cover } of strokes) {
    const answer = cover.candidates.some((i) => chosen.includes(i)) ? after : before;
    if (family === 'none' && answer.type !== 0) counts.changed += 1;
    if (family !== 'none' && answer.family === family) counts[family] += 1;
  }
  const shown = ['triangle', 'quadrangle', 'ellipse', 'changed'];
  return Object.fromEntries(shown.map((name) => [`${set} ${name}`, counts[name]]));
}

function printCurve(chosen, train, check) {
  const sizes = Array.from({ length: chosen.length + 1 }, (_, i) => i);
  printTable('first', sizes, (size) => chosen.slice(0, size), train, check);
}

/** The choices at other costs of a wrong answer. */
function printTradeOff(chooseFor, train, check) {
  const choices = new Map([0.5, 1, 1.75, 2.5, 3.25, 4, 8].map((harm) => [harm, chooseFor(harm)]));
  printTable('harm', [...choices.keys()], (harm) => choices.get(harm), train, check);
}

function printTable(title, keys, chosenFor, train, check) {
  const sets = [['train', train], ...(check.length > 0 ? [['check', check]] : [])];
  const rows = keys.map((key) => {
    const chosen = chosenFor(key);
    const counts = sets.map(([name, strokes]) => measure(strokes, chosen, name));
    return Object.assign({ [title]: key, size: chosen.length }, ...counts);
  });
  console.table(rows);
}

function saveParameters(file, templates, { candidates, seed, harm, margin, price }) {
  const options = `--candidates ${candidates} --seed ${seed} --harm ${harm} --margin ${margin} --price ${price}`;
  const madeBy = `npm run templates -- --search TRAIN ${options}`;
  const lines = templates.map((each) => `    ${JSON.stringify(each)}`).join(',\n');
  fs.writeFileSync(
    file,
    `{\n  "madeBy": ${JSON.stringify(madeBy)},\n  "templates": [\n${lines}\n  ]\n}\n`,
  );
}

function main() {
  const { values } = parseArgs({ options: OPTIONS });
  if (values.help) {
    process.stdout.write(USAGE);
    return;
  }
  if (values.search !== undefined) search(values);
  writeTemplates(values.output, readParameters(values.parameters));
}

if (require.main === module) {
  try {
    main();
  } catch (error) {
    const isExpected = error.expected || error.code?.startsWith('ERR_PARSE_ARGS');
    process.stderr.write(`templates: ${isExpected ? error.message : error.stack}\n`);
    process.exitCode = 2;
  }
}

module.exports = { readParameters, writeTemplates };
