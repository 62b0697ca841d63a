'use strict';

const { curve, label, line, sheet, spots } = require('../pictures/sheet.js');

const SIDE = 360;
const MARGIN = 56;
const BINS = 10;

/** Mean confidence, share of right answers and count of each tenth of the scale. */
function bins(answers) {
  const table = Array.from({ length: BINS }, () => ({ count: 0, confidence: 0, right: 0 }));
  for (const { confidence, right } of answers) {
    const bin = table[Math.min(BINS - 1, Math.floor(confidence * BINS))];
    bin.count += 1;
    bin.confidence += confidence;
    bin.right += right ? 1 : 0;
  }
  return table
    .filter(({ count }) => count > 0)
    .map((bin) => ({
      count: bin.count,
      confidence: bin.confidence / bin.count,
      right: bin.right / bin.count,
    }));
}

const place = ([confidence, right]) => ({
  x: MARGIN + confidence * SIDE,
  y: MARGIN / 2 + (1 - right) * SIDE,
});

function drawAxes() {
  const ticks = [0, 0.2, 0.4, 0.6, 0.8, 1].flatMap((tick) => {
    const [below, left] = [place([tick, 0]), place([0, tick])];
    return [
      line(left, place([1, tick]), 'rule'),
      label(below.x, below.y + 18, tick, { anchor: 'middle', kind: 'small' }),
      label(left.x - 8, left.y + 4, tick, { anchor: 'end', kind: 'small' }),
    ];
  });
  const middle = place([0.5, 0]);
  return [
    ...ticks,
    line(place([0, 0]), place([1, 1]), 'ink dashed'),
    label(middle.x, middle.y + 38, 'confidence of the best figure', { anchor: 'middle' }),
    label(MARGIN, 18, 'share of right answers'),
  ];
}

/** SVG of the share of right answers against confidence; `answers` are { confidence, right }. */
function reliabilityPlot(answers) {
  const table = bins(answers);
  const points = table.map(({ confidence, right }) => place([confidence, right]));
  return sheet({
    width: SIDE + 2 * MARGIN,
    height: SIDE + 1.5 * MARGIN,
    title: 'Share of right answers against confidence, with the number of strokes',
    parts: [
      ...drawAxes(),
      curve(points, 'shape'),
      spots(points, 4, 'shape'),
      ...table.map(({ count }, i) =>
        label(points[i].x + 7, points[i].y + 14, count, { kind: 'small' }),
      ),
    ],
  });
}

module.exports = { bins, reliabilityPlot };
