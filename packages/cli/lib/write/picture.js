'use strict';

const { ANSWERS } = require('../families.js');
const { polylinePoints } = require('../svg.js');
const { openSvg } = require('./svg.js');

// Pixels of the picture, whatever the unit of the ink.
const PANEL = 800;
const GAP = 24;
const CAPTION = 44;
// Room for the captions above a narrow drawing.
const MIN_WIDTH = 900;

const INK = ANSWERS.none.colour;
const FAINT = '#c4c7c5';

/**
 * A stroke as two polylines, in drawing units: the ink, which both sides of the picture show, and
 * its figure.
 */
function formatPictureParts({ points: drawn }, { points, family }, round, scale = 1) {
  const roundScaled = (value) => round(value * scale);
  const ink = polylinePoints(drawn, roundScaled);
  const ideal = points === drawn ? ink : polylinePoints(points, roundScaled);
  const { colour } = ANSWERS[family];
  return {
    texts: [`<polyline points="${ink}"/>\n`, `<polyline stroke="${colour}" points="${ideal}"/>\n`],
  };
}

/**
 * The picture: the ink on the left, the figures over pale ink on the right.
 *
 * @param {object} summary
 * @param {{x: number, y: number, width: number, height: number}} summary.view the visible part
 * @param {Record<string, number>} summary.families number of strokes answered with each
 * @returns {Array<string|number>} texts, and the numbers of the parts between them
 */
function composePicture({ view, families }) {
  const zoom = Math.min(PANEL / view.width, PANEL / view.height);
  const panel = { width: view.width * zoom, height: view.height * zoom };
  const width = Math.max(2 * panel.width + 3 * GAP, MIN_WIDTH);
  const height = panel.height + CAPTION + GAP;
  const right = width / 2 + GAP / 2;
  const place = (left) =>
    `transform="translate(${left} ${CAPTION}) scale(${zoom}) translate(${-view.x} ${-view.y})"`;
  return [
    `${openSvg({ x: 0, y: 0, width, height })}
<rect width="${width}" height="${height}" fill="#fff"/>
<g font-family="sans-serif" font-size="16" fill="${INK}">
<text x="${GAP}" y="28">as drawn</text>
<text x="${right}" y="28">idealised: ${describeFamilies(families)}</text>
</g>
<g fill="none" stroke-linecap="round" stroke-linejoin="round" stroke-width="${2 / zoom}">
<g stroke="${INK}" ${place(GAP)}>
`,
    0,
    `</g>\n<g ${place(right)}>\n<g stroke="${FAINT}">\n`,
    0,
    '</g>\n<g>\n',
    1,
    '</g>\n</g>\n</g>\n</svg>\n',
  ];
}

function describeFamilies(families) {
  const counts = Object.entries(ANSWERS)
    .filter(([family]) => families[family])
    .map(
      ([family, { colour, label }]) =>
        `<tspan fill="${colour}">${label} ${families[family]}</tspan>`,
    );
  return counts.join(', ') || 'no stroke';
}

module.exports = { composePicture, formatPictureParts };
