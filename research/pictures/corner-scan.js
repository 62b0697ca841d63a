'use strict';

const { HANDS, drawInk } = require('../ink/index.js');
const { findingsOf } = require('./findings.js');
const { curve, fit, label, line, paragraph, point, sheet, spots } = require('./sheet.js');

const HAND = { ...HANDS.ordinary, rate: 60 };
const SAMPLE = { figure: 'parallelogram', seed: 14, hand: HAND, at: { x: 400, y: 400 } };

// The corner scan's own settings.
const SPAN = 10;
const RATIO = 0.95;

const WIDTH = 880;
const HEIGHT = 356;
const STROKE = { x: 40, y: 56, width: 300, height: 240 };
const CHART = { left: 440, top: 40, width: 410, height: 250 };
/** The ratio at the lower end of the chart; at the upper end it is 1. */
const MIN_RATIO = 0.4;

const distance = (a, b) => Math.hypot(a.x - b.x, a.y - b.y);

/** Chord by path of every span, with the index of its last point and of its middle. */
function ratios(points) {
  return points.slice(SPAN - 1).map((end, i) => {
    const span = points.slice(i, i + SPAN);
    const path = span.slice(1).reduce((sum, p, k) => sum + distance(p, span[k]), 0);
    return { last: i + SPAN - 1, middle: i + (SPAN - 1) / 2, ratio: distance(span[0], end) / path };
  });
}

const toChart = (count, { middle, ratio }) => ({
  x: CHART.left + (CHART.width * middle) / (count - 1),
  y: CHART.top + (CHART.height * (1 - ratio)) / (1 - MIN_RATIO),
});

/** The grid: a rule and a number for every fifth. */
function drawAxes(count) {
  const ends = (ratio) => [0, count - 1].map((middle) => toChart(count, { middle, ratio }));
  const fifths = [0.4, 0.6, 0.8, 1].map((ratio) => {
    const [from, to] = ends(ratio);
    const name = label(from.x - 8, from.y + 4, ratio.toFixed(1), { anchor: 'end', kind: 'small' });
    return line(from, to, 'rule') + name;
  });
  const [from, to] = ends(RATIO);
  return [
    ...fifths,
    line(from, to, 'help dashed'),
    label(from.x - 8, from.y + 4, String(RATIO), { anchor: 'end', kind: 'small help' }),
    label(CHART.left, CHART.top - 14, 'chord / path of the span', { kind: 'small' }),
    label(
      CHART.left + CHART.width,
      CHART.top + CHART.height + 22,
      'index of the middle of the span',
      {
        anchor: 'end',
        kind: 'small',
      },
    ),
  ].join('\n');
}

function drawSpan(points, last, kind) {
  const span = points.slice(last - SPAN + 1, last + 1);
  return (
    curve(span, `${kind} thick`) +
    line(span[0], span.at(-1), `${kind} dashed`) +
    spots(span, 3.2, kind)
  );
}

/** The scan of a quadrangle: a span on an edge, one about a corner, and the ratio along the stroke. */
function drawCornerScan() {
  const stroke = drawInk(SAMPLE).points;
  const [{ corners }] = findingsOf([{ stroke }]);
  const points = stroke.map(point);
  const all = ratios(points);
  const indices = corners.map(([x, y]) => points.findIndex((p) => p.x === x && p.y === y));
  // One span about the second corner, where it bends most, and one halfway to the third.
  const near = all.filter(({ last }) => last > indices[1] && last < indices[1] + SPAN);
  const bent = near.reduce((least, span) => (span.ratio < least.ratio ? span : least));
  const straight = all.find(({ middle }) => middle >= (indices[1] + indices[2]) / 2);

  const toSheet = fit(points, STROKE);
  const placed = points.map(toSheet);
  const found = indices.map((i) => placed[i]);
  const chart = all.map((entry) => toChart(points.length, entry));
  const at = (entry) => toChart(points.length, entry);
  return sheet({
    width: WIDTH,
    height: HEIGHT,
    title:
      'A span of ten points slides along a stroke; where its chord is short, there is a corner',
    parts: [
      curve(placed, 'ink'),
      spots(placed, 1.6, 'ink'),
      drawSpan(placed, straight.last, 'shape'),
      drawSpan(placed, bent.last, 'help'),
      spots(found, 5, 'mark'),
      drawAxes(points.length),
      curve(chart, 'ink'),
      spots([at(straight)], 5, 'shape'),
      spots([at(bent)], 5, 'help'),
      ...indices.map((i) => {
        const { x } = toChart(points.length, { middle: i, ratio: 1 });
        const bottom = CHART.top + CHART.height;
        return line({ x, y: bottom - 10 }, { x, y: bottom + 4 }, 'mark thick');
      }),
      paragraph(
        40,
        HEIGHT - 18,
        ['Red: the corners found. Blue: a span on an edge. Yellow: a span about a corner.'],
        { kind: 'small' },
      ),
    ],
  });
}

module.exports = { drawCornerScan };
