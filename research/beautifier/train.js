'use strict';

// Learns the beautifier's numbers from labelled strokes and writes them to
// subproject/scrivo/Beautifier/judge/Model.inc and figures/DotModel.inc, and the
// reliability plot to docs/images/reliability.svg. The same strokes give the same
// bytes.
//
//   node research/beautifier/train.js STROKES [--without LINE,LINE...]
//
// STROKES holds one JSON object a line (gzip is fine) with `family`, `label`,
// `source`, `writer`, `id` and `points` ([x, y, ...] in drawing-area units).
// `--without` leaves out wrongly labelled lines, counted from 0. Scores are
// calibrated, and thresholds chosen, on folds that share no writer.

const { writeFileSync } = require('node:fs');
const path = require('node:path');
const {
  FAMILIES,
  NAMES,
  calibrated,
  calibration,
  fitFamilies,
  judge,
  sigmoid,
} = require('./model.js');
const { ROOT, probe } = require('./probe.js');
const { reliabilityPlot } = require('./reliability.js');
const { hash, readStrokes, variants } = require('./strokes.js');

const IMPORTANCE = [1, 0.5, 0.5, 0.25]; // of a stroke as drawn and of its variants
const FOLDS = 5;
const SPLITS = ['a', 'b', 'c'];
const PENALTY = 0.7;
const MOST_CHANGED = 0.013; // of the strokes that are no figure, at middling sensitivity
const LEAST_RECALL = 0.96; // of every family
const HANDWRITING = 1.5; // changing it costs that much more than changing a drawing

// Dots by the longer side of the box and the path, without its tremor, over its
// diagonal: within two and a half units nothing can be read; within four a short
// path may be a slip and a very long one a press that is held, between them lie
// small letters; up to fourteen only the nearly straight slip of a finger is a dot.
const DOTS = [
  { extent: 2.5, least: 0, most: 1e6, sure: true, slip: false },
  { extent: 4, least: 0, most: 4.5, sure: false, slip: false },
  { extent: 4, least: 15, most: 1e6, sure: false, slip: false },
  { extent: 14, least: 0, most: 1.2, sure: false, slip: true },
];

function parse(args) {
  const [file, flag, lines, ...rest] = args;
  if (!file || rest.length > 0 || (flag !== undefined && (flag !== '--without' || !lines))) {
    throw new Error('usage: node research/beautifier/train.js STROKES [--without LINE,LINE...]');
  }
  return { file, without: new Set((lines ?? '').split(',').filter(Boolean).map(Number)) };
}

const writerOf = (stroke) => `${stroke.source}/${stroke.writer ?? stroke.id}`;

// Slim rectangles and ovals are rare in what people drew for collections, so
// they are made by squeezing. A line or an angle becomes another figure by it,
// and a slim triangle is a line that was drawn there and back.
const SQUEEZED = ['quadrangle', 'ellipse', 'none'];
const keepsItsFamily = (row) => row.variant < 3 || SQUEEZED.includes(row.family);

/** Rows of features, four variants a stroke; dots are told apart elsewhere. */
function rowsOf(strokes) {
  const drawn = strokes.flatMap((stroke) =>
    variants(stroke).map((points, i) => ({ stroke, points, i })),
  );
  const tables = probe(
    'features',
    drawn.map(({ points }) => points),
  );
  return drawn
    .map(({ stroke, i }, k) => ({
      stroke,
      family: stroke.family,
      variant: i,
      original: i === 0,
      importance: IMPORTANCE[i],
      closed: tables[k].closed,
      features: tables[k],
    }))
    .filter((row) => row.closed >= 0 && row.family !== 'dot' && keepsItsFamily(row));
}

/** Judgements of every row by scores that were fitted without its writer. */
function crossValidate(rows) {
  const judgements = [];
  for (const split of SPLITS) {
    const foldOf = (row) => hash(`${split}/${writerOf(row.stroke)}`) % FOLDS;
    for (let fold = 0; fold < FOLDS; fold++) {
      const model = fitFamilies(
        rows.filter((row) => foldOf(row) !== fold),
        PENALTY,
      );
      for (const row of rows) {
        if (foldOf(row) === fold) judgements.push({ row, ...judge(model, row) });
      }
    }
  }
  return judgements;
}

/** Share of the original strokes of one kind that `accepts` holds for. */
function rate(judgements, kind, accepts) {
  const all = judgements.filter((j) => j.row.original && kind(j.row));
  return all.filter(accepts).length / all.length;
}

const changedShare = (judgements, threshold) =>
  rate(
    judgements,
    (row) => row.family === 'none',
    (j) => j.score > threshold[j.family],
  );
const recall = (judgements, family, threshold) =>
  rate(
    judgements,
    (row) => row.family === family,
    (j) => j.family === family && j.score > threshold[family],
  );

/** The thresholds tried: log odds from 3 down to -3. */
const STEPS = Array.from({ length: 121 }, (_, i) => (60 - i) / 20);

/** The threshold of `family` with the most right answers less `price` for each change of no figure. */
function bestThreshold(judgements, family, price) {
  const value = ({ row }) => {
    if (row.family === family) return 1;
    if (row.family !== 'none') return -1;
    return row.stroke.label === 'handwriting' ? -HANDWRITING * price : -price;
  };
  const won = judgements.filter((j) => j.row.original && j.family === family);
  const worth = (t) => won.reduce((sum, j) => sum + (j.score > t ? value(j) : 0), 0);
  const worths = STEPS.map(worth);
  const most = Math.max(...worths);
  const best = STEPS.filter((_, i) => worths[i] === most);
  return (best[0] + best[best.length - 1]) / 2;
}

/** The highest threshold with a recall of `LEAST_RECALL`. */
const recallThreshold = (judgements, family) =>
  STEPS.find((t) => recall(judgements, family, { [family]: t }) >= LEAST_RECALL);

/**
 * One threshold a family, in log odds: the lowest common price at which no more
 * than `MOST_CHANGED` of what is no figure is changed.
 */
function chooseThresholds(judgements) {
  const floors = Object.fromEntries(NAMES.map((name) => [name, recallThreshold(judgements, name)]));
  for (let price = 0.5; ; price += 0.1) {
    // Few strokes lie near a threshold, so the best one for these is drawn half
    // way to what calibrated odds alone would ask for.
    const threshold = (name) => (bestThreshold(judgements, name, price) + Math.log(price)) / 2;
    const thresholds = Object.fromEntries(
      NAMES.map((name) => [name, Math.min(floors[name], threshold(name))]),
    );
    if (changedShare(judgements, thresholds) <= MOST_CHANGED) return thresholds;
    if (price > 20) throw new Error('no thresholds keep what is no figure as it is');
  }
}

/** Log odds that a stroke within the limits of `DOTS` is a dot. */
function dotModels(strokes) {
  const tables = probe(
    'features',
    strokes.map((stroke) => stroke.points),
  );
  let rest = strokes.map((stroke, i) => ({ stroke, ...tables[i] }));
  return DOTS.map((limits) => {
    const fits = ({ extent, diagonal, travel }) =>
      extent <= limits.extent &&
      (diagonal === 0 || (limits.least * diagonal <= travel && travel <= limits.most * diagonal));
    const inside = rest.filter(fits);
    rest = rest.filter((row) => !fits(row));
    const right = inside.filter(({ stroke }) => stroke.family === 'dot').length;
    return { ...limits, logit: Math.log((right + 1) / (inside.length - right + 1)) };
  });
}

const number = (value) => String(Number(value.toPrecision(7)));

const head = (command) => [`// Written by \`${command}\`; do not edit.`, ''];

function dotText(command, dots) {
  return [
    ...head(command),
    'constexpr std::array DOT_MODELS{',
    ...dots.map(({ extent, least, most, sure, slip, logit }) => {
      const numbers = [extent, least, most].map(number).join(', ');
      return `    DotModel{${numbers}, ${sure}, ${slip}, ${number(logit)}},`;
    }),
    '};',
    '',
  ].join('\n');
}

function modelText(command, model, thresholds) {
  const lines = head(command);
  for (const name of NAMES) {
    const { weights, trees } = model[name];
    lines.push(`constexpr std::array ${name.toUpperCase()}_TERMS{`);
    FAMILIES[name].terms.forEach(({ feature, form }, i) =>
      lines.push(`    Term{"${feature}"_f, Form::${form}, ${number(weights[i])}},`),
    );
    lines.push('};', '', `constexpr std::array ${name.toUpperCase()}_TREES{`);
    trees.forEach(({ cuts, leaves }) => {
      const asked = cuts.map(({ feature, at }) => `{"${feature}"_f, ${number(at)}}`).join(', ');
      lines.push(`    Tree{{{${asked}}}, {${leaves.map(number).join(', ')}}},`);
    });
    lines.push('};', '');
  }
  lines.push('constexpr std::array FAMILY_MODELS{');
  for (const name of NAMES) {
    const upper = name.toUpperCase();
    lines.push(
      `    FamilyModel{FigureFamily::${upper}, ` +
        `${number(model[name].bias)}, ${number(thresholds[name])}, ${upper}_TERMS, ${upper}_TREES},`,
    );
  }
  lines.push('};', '');
  return lines.join('\n');
}

function report(judgements, thresholds) {
  const percent = (value) => `${(100 * value).toFixed(1)} %`;
  for (const name of NAMES) {
    const share = recall(judgements, name, thresholds);
    console.log(
      `${name.padEnd(12)} recall ${percent(share)}  threshold ${thresholds[name].toFixed(2)}`,
    );
  }
  console.log(`no figure    changed ${percent(changedShare(judgements, thresholds))}`);
  const handwriting = (row) => row.stroke.label === 'handwriting';
  const changed = rate(judgements, handwriting, (j) => j.score > thresholds[j.family]);
  console.log(`handwriting  changed ${percent(changed)}`);
  const all = rate(
    judgements,
    (row) => row.family !== 'none',
    (j) => j.family === j.row.family && j.score > thresholds[j.family],
  );
  console.log(`all figures  recall ${percent(all)}`);
}

function main() {
  const { file, without } = parse(process.argv.slice(2));
  const strokes = readStrokes(file).filter((_, line) => !without.has(line));
  const rows = rowsOf(strokes);
  const raw = crossValidate(rows);
  const scale = calibration(raw.filter(({ row }) => row.original));
  const judgements = raw.map((j) => ({
    ...j,
    score: scale[j.family].slope * j.score + scale[j.family].offset,
  }));
  const thresholds = chooseThresholds(judgements);
  report(judgements, thresholds);
  const model = calibrated(fitFamilies(rows, PENALTY), scale);
  const excluded = without.size > 0 ? ` --without ${[...without].join(',')}` : '';
  const command = `node research/beautifier/train.js ${path.basename(file)}${excluded}`;
  const write = (file, text) =>
    writeFileSync(path.join(ROOT, 'subproject/scrivo/Beautifier', file), text);
  write('judge/Model.inc', modelText(command, model, thresholds));
  write('figures/DotModel.inc', dotText(command, dotModels(strokes)));
  const answers = judgements
    .filter(({ row }) => row.original)
    .map((j) => ({ confidence: sigmoid(j.score), right: j.family === j.row.family }));
  writeFileSync(path.join(ROOT, 'docs/images/reliability.svg'), reliabilityPlot(answers));
}

try {
  main();
} catch (error) {
  console.error(`train: ${error.message}`);
  process.exitCode = 1;
}
