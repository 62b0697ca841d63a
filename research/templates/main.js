'use strict';

const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { parseArgs } = require('node:util');
const { createEngine } = require('../../packages/cli/lib/engines.js');
const { TEMPLATE_FIGURES, templateFiles } = require('./candidates.js');
const { createUniform } = require('./random.js');
const {
  coverOf,
  prepareCandidates,
  selectCandidates,
  worth,
} = require('./search.js');
const { sampleParameters, templateOutline } = require('./template-outlines.js');
const { placeStroke } = require('../../packages/cli/lib/placement.js');
const { takeLabelledStrokes } = require('../../packages/cli/lib/read/labelled.js');
const { formatTable } = require('../../packages/cli/lib/report.js');
const { UserError } = require('../../packages/cli/lib/user-error.js');
const { FIGURES, HANDS, drawInk } = require('../ink/index.js');

const USAGE = `Makes the template files from their parameters, or searches for parameters.

usage: templates                  write templates/ from research/templates/parameters.json
       templates --search TRAIN   choose the parameters by labelled strokes and write them

  --parameters FILE read, and with --search written (research/templates/parameters.json)
  --output DIR      where the template files go (templates)
  --check DEV       with --search: say what the choice reaches on strokes it has not seen
  --candidates N    outlines of each figure to choose from (3000)
  --seed N          of the random candidates (1)
  --harm N          what a wrong answer costs, in right answers (2.5)
  --margin N        distance, in 250ths of the figure, by which a stroke must lie within the
                    reach of a template to count as found (5)
  --price N         right answers a template must add to be kept (2)
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

// Scale at which strokes are looked at, as in the evaluation.
const UNIT = 200;

// Generated strokes that stand beside the collected ones, of each figure.
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

async function search(options) {
  const settings = searchSettings(options);
  const parameters = sampleParameters(createUniform(settings.seed), settings.candidates);
  const prepared = prepareCandidates(parameters.map(toCandidate));
  const train = await readCovered(options.search, prepared);
  const check = options.check ? await readCovered(options.check, prepared) : [];
  const practice = practiceStrokes().map((stroke) => covered(stroke, prepared));
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
        throw new UserError(`--${name} must be a number of 0 or more, found ${options[name]}`);
      }
      return [name, value];
    }),
  );
}

/** Labelled strokes with the candidates that reach them. */
async function readCovered(file, prepared) {
  const strokes = [];
  await takeLabelledStrokes({ inputs: [file] }, process.stderr, (stroke) =>
    strokes.push(covered(stroke, prepared)),
  );
  return strokes;
}

function covered(stroke, prepared) {
  const placed = placeStroke(stroke, UNIT);
  const units = placed.points.map(({ x, y }) => ({ x: x * placed.width, y: y * placed.height }));
  return { family: stroke.family, placed, cover: coverOf(units, prepared) };
}

/**
 * Plain figures, begun at any corner and drawn either way. Collected strokes have their habits:
 * a square begun at the lower right is rare in them, and is to be recognised all the same.
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
 * Adds what the engine answers without templates, and once a template reaches the stroke. Which
 * one does is of no account, so a small set that reaches all that can be reached stands for all.
 */
function answerAll(strokes, parameters) {
  const engine = createEngine('exact');
  engine.load({ templates: [] });
  for (const stroke of strokes) stroke.before = engine.answer(stroke.placed);

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
  for (const stroke of strokes) stroke.after = engine.answer(stroke.placed);
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

function measure(strokes, chosen) {
  const counts = { triangle: 0, quadrangle: 0, ellipse: 0, changed: 0 };
  for (const { family, before, after, cover } of strokes) {
    const answer = cover.candidates.some((i) => chosen.includes(i)) ? after : before;
    if (family === 'none' && answer.type !== 0) counts.changed += 1;
    if (family !== 'none' && answer.family === family) counts[family] += 1;
  }
  return [counts.triangle, counts.quadrangle, counts.ellipse, counts.changed];
}

const COLUMNS = ['triangles', 'quadrangles', 'ellipses', 'changed'];

function printCurve(chosen, train, check) {
  const sizes = Array.from({ length: chosen.length + 1 }, (_, i) => i);
  printTable('first', sizes, (size) => chosen.slice(0, size), train, check);
}

/** What other costs of a wrong answer lead to. */
function printTradeOff(chooseFor, train, check) {
  const choices = new Map([0.5, 1, 1.75, 2.5, 3.25, 4, 8].map((harm) => [harm, chooseFor(harm)]));
  printTable('harm', [...choices.keys()], (harm) => choices.get(harm), train, check);
}

function printTable(title, keys, chosenFor, train, check) {
  const sets = [['train', train], ...(check.length > 0 ? [['check', check]] : [])];
  const header = sets.flatMap(([name]) => COLUMNS.map((column) => `${name} ${column}`));
  const rows = keys.map((key) => {
    const chosen = chosenFor(key);
    return [key, chosen.length, ...sets.flatMap(([, strokes]) => measure(strokes, chosen))];
  });
  process.stdout.write(`${formatTable([[title, 'size', ...header], ...rows])}\n\n`);
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

function parseCommandLine() {
  try {
    return parseArgs({ options: OPTIONS }).values;
  } catch (error) {
    throw new UserError(`${error.message}\n\n${USAGE}`);
  }
}

async function main() {
  const values = parseCommandLine();
  if (values.help) {
    process.stdout.write(USAGE);
    return;
  }
  if (values.search !== undefined) await search(values);
  writeTemplates(values.output, readParameters(values.parameters));
}

if (require.main === module) {
  main().catch((error) => {
    const isUserError = error instanceof UserError;
    process.stderr.write(`templates: ${isUserError ? error.message : error.stack}\n`);
    process.exitCode = 2;
  });
}

module.exports = { readParameters, writeTemplates };
