'use strict';

const SIDE = 360;
const MARGIN = 56;
const BINS = 10;

/** Mean confidence, share of right answers and their number for each tenth. */
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

const x = (value) => (MARGIN + value * SIDE).toFixed(1);
const y = (value) => (MARGIN / 2 + (1 - value) * SIDE).toFixed(1);

function axes() {
  const ticks = [0, 0.2, 0.4, 0.6, 0.8, 1];
  return [
    `<rect x="${x(0)}" y="${y(1)}" width="${SIDE}" height="${SIDE}" fill="#fff" stroke="#999"/>`,
    ...ticks.map(
      (t) => `<text x="${x(t)}" y="${Number(y(0)) + 18}" text-anchor="middle">${t}</text>`,
    ),
    ...ticks.map(
      (t) => `<text x="${x(0) - 8}" y="${Number(y(t)) + 4}" text-anchor="end">${t}</text>`,
    ),
    `<line x1="${x(0)}" y1="${y(0)}" x2="${x(1)}" y2="${y(1)}" stroke="#999" stroke-dasharray="4 4"/>`,
    `<text x="${x(0.5)}" y="${Number(y(0)) + 38}" text-anchor="middle">confidence of the best figure</text>`,
    `<text transform="translate(${x(0) - 38} ${y(0.5)}) rotate(-90)" text-anchor="middle">share that was right</text>`,
  ];
}

/** SVG of the share of right answers against confidence; `answers` are { confidence, right }. */
function reliabilityPlot(answers) {
  const points = bins(answers);
  const line = points.map((p) => `${x(p.confidence)},${y(p.right)}`).join(' ');
  return [
    `<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 ${SIDE + 2 * MARGIN} ${SIDE + 1.5 * MARGIN}" font-family="sans-serif" font-size="12">`,
    `<rect width="100%" height="100%" fill="#fff"/>`,
    ...axes(),
    `<polyline points="${line}" fill="none" stroke="#1565c0" stroke-width="2"/>`,
    ...points.map(
      (p) => `<circle cx="${x(p.confidence)}" cy="${y(p.right)}" r="4" fill="#1565c0"/>`,
    ),
    ...points.map(
      (p) =>
        `<text x="${Number(x(p.confidence)) + 7}" y="${Number(y(p.right)) + 14}" font-size="10" fill="#555">${p.count}</text>`,
    ),
    '</svg>',
    '',
  ].join('\n');
}

module.exports = { bins, reliabilityPlot };
