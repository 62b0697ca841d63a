'use strict';

const { HANDS, drawInk } = require('../ink/index.js');
const { findingsOf } = require('./findings.js');
const { arrow, curve, fit, paragraph, point, sheet } = require('./sheet.js');

// Pages get pointer events at the rate of the screen.
const HAND = { ...HANDS.ordinary, rate: 60 };
const sampleOf = (figure, seed = 12) => ({ figure, seed, hand: HAND });
const AWAY_FROM_THE_EDGE = { x: 400, y: 400 };

/** The questions in their order, each with a stroke that it accepts. */
const STEPS = [
  {
    question: ['Below 9 units both ways, and either', 'many points or pressed firmly?'],
    sample: { figure: 'dot', seed: 3, hand: { ...HAND, rate: 240, force: 0.9 } },
    type: 1,
    answer: ['1: a dot', 'three rings and the centre'],
  },
  {
    question: ['Longer than 75 units, and straight?'],
    sample: sampleOf('line'),
    type: 2,
    answer: ['2: a line', 'snapped to other strokes,', 'else level or upright'],
  },
  {
    question: ['40 units or more, closed, and like a', 'rectangle or triangle of the templates?'],
    sample: sampleOf('rectangle'),
    type: 6,
    answer: ['6: a polygon', 'corners found by the corner', 'scan, then made regular'],
  },
  {
    question: ['The same, but like an ellipse?'],
    sample: sampleOf('ellipse', 14),
    type: 7,
    answer: ['7: an ellipse', 'a conic fitted to all points'],
  },
  {
    question: ['Exactly one corner, between two', 'straight legs?'],
    sample: sampleOf('angle'),
    type: 4,
    answer: ['4: an angle', 'a level leg where one', 'nearly is'],
  },
  {
    question: ['Nothing fits.'],
    sample: sampleOf('loops'),
    type: 0,
    answer: ['0: as drawn', 'the points of the', 'stroke'],
  },
];

// Dots are shown enlarged, others smaller than they are.
const LARGEST_SCALE = 12;

const WIDTH = 880;
const ROW = 104;
const TOP = 84;
const BOX = { left: 24, width: 304, height: 62 };
const SAMPLE = { left: 388, width: 108, height: 74 };
/** From a stroke to the figure that comes of it. */
const STEP = 148;
const ANSWER = 668;
const MIDDLE = BOX.left + BOX.width / 2;

function drawBox(top, lines) {
  const { left, width, height } = BOX;
  const first = top + height / 2 + 5 - 9.5 * (lines.length - 1);
  return (
    `<rect class="box" x="${left}" y="${top}" width="${width}" height="${height}" rx="8"/>` +
    paragraph(MIDDLE, first, lines, { anchor: 'middle' })
  );
}

function drawStep({ question, answer, type }, { drawn, finding }, i) {
  const top = TOP + i * ROW;
  const middle = top + BOX.height / 2;
  const isLast = i === STEPS.length - 1;
  const figure = finding.path.map(point);
  const { left, ...size } = SAMPLE;
  const place = { x: left, y: middle - SAMPLE.height / 2, ...size, scale: LARGEST_SCALE };
  const toLeft = fit([...drawn, ...figure], place);
  const toRight = fit([...drawn, ...figure], { ...place, x: left + STEP });
  return [
    drawBox(top, question),
    isLast ? '' : paragraph(MIDDLE + 10, top + BOX.height + 26, ['no'], { kind: 'small' }),
    isLast ? '' : arrow({ x: MIDDLE, y: top + BOX.height }, { x: MIDDLE, y: top + ROW - 1 }),
    isLast ? '' : paragraph(BOX.left + BOX.width + 10, middle - 8, ['yes'], { kind: 'small' }),
    arrow({ x: BOX.left + BOX.width, y: middle }, { x: SAMPLE.left - 14, y: middle }),
    curve(drawn.map(toLeft), 'ink'),
    arrow({ x: SAMPLE.left + 118, y: middle }, { x: SAMPLE.left + 138, y: middle }),
    curve(figure.map(toRight), type === 0 ? 'ink' : 'shape'),
    paragraph(ANSWER, middle - 13, answer.slice(0, 1)),
    paragraph(ANSWER, middle + 6, answer.slice(1), { kind: 'small' }),
  ].join('\n');
}

/** From the stroke to the figure: the questions that are asked, and what each leads to. */
function drawPipeline() {
  const strokes = STEPS.map(({ sample }) => drawInk({ ...sample, at: AWAY_FROM_THE_EDGE }).points);
  const findings = findingsOf(strokes.map((stroke) => ({ stroke })));
  const rows = STEPS.map((step, i) => {
    if (findings[i].type !== step.type) {
      throw new Error(`pipeline: the ${step.sample.figure} came out as ${findings[i].type}`);
    }
    return drawStep(step, { drawn: strokes[i].map(point), finding: findings[i] }, i);
  });
  const head = paragraph(BOX.left, 38, ['Points times width and height: drawing-area units']);
  const tail = paragraph(BOX.left, TOP + STEPS.length * ROW + 2, [
    'Then the figure, unless it is a line, is moved into the area, and its points are divided by width and height.',
  ]);
  return sheet({
    width: WIDTH,
    height: TOP + STEPS.length * ROW + 26,
    title: 'The questions asked of a stroke, in order, and what each answer leads to',
    parts: [head, arrow({ x: MIDDLE, y: 50 }, { x: MIDDLE, y: TOP - 1 }), ...rows, tail],
  });
}

module.exports = { drawPipeline };
