'use strict';

// Learns the beautifier's parameters from labelled strokes and writes them to
// judge/Model.inc and figures/DotModel.inc, and the reliability plot to
// docs/images/reliability.svg. The same strokes give the same bytes.
//
//   node research/beautifier/train.js STROKES... [--without LINE,LINE...] [--dry] [--distorted]
//
// STROKES hold one JSON object a line (gzip is fine) with `family`, `label`,
// `source`, `writer`, `id` and `points` ([x, y, ...] in drawing-area units).
// `--without` leaves out wrongly labelled lines, counted from 0 through all
// files. Scores are calibrated, and thresholds chosen, on folds that share no
// writer; the results there are printed. `--dry` writes nothing,
// `--distorted` also tests each fold on distorted copies of its strokes.

const { writeFileSync } = require('node:fs');
const path = require('node:path');
const { WITHOUT, readArguments } = require('./arguments.js');
const { TABLE } = require('./distortions.js');
const { dotModels, isDot } = require('./dots.js');
const { FOLDS, crossValidate, tableFrom } = require('./folds.js');
const { FAMILIES, NAMES, calibrated, calibration, fitFamilies, sigmoid } = require('./model.js');
const { ROOT } = require('./probe.js');
const { reliabilityPlot } = require('./reliability.js');
const { HEAD, calibrationError, confidences, percentCell, tableLine } = require('./report.js');
const { readStrokes } = require('./strokes.js');
const { chooseThresholds } = require('./thresholds.js');

const SPLITS = ['a', 'b', 'c'];
const PENALTY = 0.7;

const USAGE =
  'node research/beautifier/train.js STROKES... [--without LINE,LINE...] [--dry] [--distorted]';
const OPTIONS = { ...WITHOUT, dry: { type: 'boolean' }, distorted: { type: 'boolean' } };

function readAll({ files, without }) {
  return files
    .flatMap((file) =>
      readStrokes(file).map((stroke) => ({ ...stroke, file: path.basename(file) })),
    )
    .filter((_, line) => !without.has(line));
}

const number = (value) => String(Number(value.toPrecision(5)));
/** Leaves are summed, so that their absolute error counts: four digits, as in ShortDecimal. */
const leaf = (value) => String(Number(value.toFixed(4)));

const head = (command) => [`// Written by \`${command}\`; do not edit.`, ''];

function dotText(command, dots) {
  return [
    ...head(command),
    'constexpr std::array DOT_MODELS{',
    ...dots.map(({ extent, min, max, sure, logit }) => {
      const numbers = [extent, min, max].map(number).join(', ');
      return `    DotModel{${numbers}, ${sure}, ${number(logit)}},`;
    }),
    '};',
    '',
  ].join('\n');
}

function modelText(command, names, model, thresholds) {
  // Each name is looked up once: compilers are slow at it.
  const lookUp = (name) => `constexpr std::uint8_t ${name} = "${name}"_f;`;
  const lines = [...head(command), ...names.map(lookUp), ''];
  const writeTrees = (title, trees) => {
    if (trees.length === 0) return;
    lines.push(`constexpr std::array ${title}{`);
    trees.forEach(({ cuts, leaves }) => {
      const asked = cuts.map(({ feature, at }) => `{${names[feature]}, ${number(at)}}`).join(', ');
      lines.push(`    Tree{{{${asked}}}, {${leaves.map(leaf).join(', ')}}},`);
    });
    lines.push('};', '');
  };
  for (const name of NAMES) {
    const { weights, trees, sparse } = model[name];
    lines.push(`constexpr std::array ${name.toUpperCase()}_TERMS{`);
    FAMILIES[name].terms.forEach(({ feature, form }, i) =>
      lines.push(`    Term{${feature}, Form::${form}, ${number(weights[i])}},`),
    );
    lines.push('};', '');
    writeTrees(`${name.toUpperCase()}_TREES`, trees);
    writeTrees(`${name.toUpperCase()}_SPARSE_TREES`, sparse);
  }
  lines.push('constexpr std::array FAMILY_MODELS{');
  for (const name of NAMES) {
    const upper = name.toUpperCase();
    const sparse = model[name].sparse.length > 0 ? `${upper}_SPARSE_TREES` : '{}';
    lines.push(
      `    FamilyModel{FigureFamily::${upper}, ` +
        `${number(model[name].bias)}, ${number(thresholds[name])}, ${upper}_TERMS, ${upper}_TREES, ${sparse}},`,
    );
  }
  lines.push('};', '');
  return lines.join('\n');
}

/** Answers of all splits, for the strokes scaled to one size and as drawn. */
function answersOf(table, verdicts, thresholds, natural) {
  const answers = verdicts.map(({ row, family, score }) => {
    const fitted = score > thresholds[family] ? family : 'none';
    const answer = natural && isDot(row) ? 'dot' : fitted;
    return { family: row.family, label: row.stroke.label, file: row.stroke.file, answer };
  });
  // Dots are tested as drawn, with the same result in every split.
  const dots = table.dots.flatMap((row) =>
    SPLITS.map(() => ({
      family: 'dot',
      label: 'dot',
      file: row.stroke.file,
      answer: isDot(row) ? 'dot' : 'none',
    })),
  );
  return [...answers, ...dots];
}

function reportFiles(table, original, thresholds) {
  console.log(`\nright, by family, and changed, in folds\n${HEAD}`);
  for (const natural of [false, true]) {
    const answers = answersOf(table, original, thresholds, natural);
    for (const file of new Set(answers.map((answer) => answer.file))) {
      const title = `${file.split('.')[0]} ${natural ? 'as drawn' : 'at 200 units'}`;
      console.log(
        tableLine(
          title,
          answers.filter((answer) => answer.file === file),
        ),
      );
    }
  }
}

function reportThresholds(original, thresholds) {
  const parts = SPLITS.flatMap((split) =>
    Array.from({ length: FOLDS }, (_, fold) =>
      chooseThresholds(
        original.filter((j) => j.split === split && j.fold !== fold),
        1,
      ),
    ),
  );
  console.log('\nthresholds, and their range when a fold is left out');
  for (const name of NAMES) {
    const values = parts.map((part) => part[name]);
    const [low, high] = [Math.min(...values), Math.max(...values)];
    console.log(
      `${name.padEnd(12)} ${thresholds[name].toFixed(2)}  ${low.toFixed(2)} to ${high.toFixed(2)}`,
    );
  }
}

function reportCalibration(original, thresholds) {
  const { changed, all } = confidences(original, thresholds);
  console.log('\nexpected calibration error');
  console.log(`answers that change ink ${percentCell(calibrationError(changed), 1)}`);
  console.log(`all answers             ${percentCell(calibrationError(all), 1)}`);
}

function reportDistorted(verdicts, thresholds) {
  const right = ({ row, family, score }) => row.family === family && score > thresholds[family];
  const share = (list) => percentCell(list.filter(right).length, list.length);
  for (const file of new Set(verdicts.map(({ row }) => row.stroke.file))) {
    console.log(`\ndistorted, in folds, ${file}: figures but dots, and those that differ`);
    const here = verdicts.filter(({ row }) => row.stroke.file === file && row.family !== 'none');
    for (const [name, families] of TABLE) {
      const drawn = here.filter(({ row }) =>
        families.includes(row.family) && name !== TABLE[0][0] ? row.test === name : row.original,
      );
      const touched = drawn.filter(({ row }) => families.includes(row.family));
      const each = families.map((f) => `${f} ${share(touched.filter((j) => j.row.family === f))}`);
      console.log(`${name.padEnd(30)} ${share(drawn)} ${share(touched)}  ${each.join(', ')}`);
    }
  }
}

function main() {
  const options = readArguments(USAGE, OPTIONS, Infinity);
  const strokes = readAll(options);
  const table = tableFrom(strokes, { distorted: options.distorted });
  table.prepare();
  const raw = crossValidate(table, SPLITS, PENALTY);
  const scale = calibration(raw.filter(({ row }) => row.original));
  const verdicts = raw.map((j) => ({
    ...j,
    score: scale[j.family].slope * j.score + scale[j.family].offset,
  }));
  const original = verdicts.filter(({ row }) => row.original);
  const thresholds = chooseThresholds(original, SPLITS.length);
  reportFiles(table, original, thresholds);
  reportThresholds(original, thresholds);
  reportCalibration(original, thresholds);
  if (options.distorted) reportDistorted(verdicts, thresholds);
  if (options.dry) return;
  const model = calibrated(
    fitFamilies(table, () => true, PENALTY),
    scale,
  );
  const files = options.files.map((file) => path.basename(file)).join(' ');
  const without = options.without.size > 0 ? ` --without ${[...options.without].join(',')}` : '';
  const command = `node research/beautifier/train.js ${files}${without}`;
  const write = (file, text) =>
    writeFileSync(path.join(ROOT, 'subproject/scrivo/Beautifier', file), text);
  write('judge/Model.inc', modelText(command, table.names, model, thresholds));
  write('figures/DotModel.inc', dotText(command, dotModels(table.drawn)));
  const answers = original.map((j) => ({
    confidence: sigmoid(j.score),
    right: j.family === j.row.family,
  }));
  writeFileSync(path.join(ROOT, 'docs/images/reliability.svg'), reliabilityPlot(answers));
}

try {
  main();
} catch (error) {
  console.error(`train: ${error.message}`);
  process.exitCode = 1;
}
