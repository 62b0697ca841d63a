'use strict';

const { pathData } = require('../svg.js');
const { openSvg } = require('./svg.js');

// The picture is drawn to this width, whatever unit the ink is in.
const PANEL = 800;
const GAP = 24;
const CAPTION = 44;
// Room for the captions over a narrow drawing.
const LEAST_WIDTH = 900;

const COLORS = {
  dot: '#a142f4',
  line: '#1a73e8',
  angle: '#e8710a',
  triangle: '#188038',
  quadrangle: '#d93025',
  polygon: '#d93025',
  ellipse: '#007b83',
};
const INK = '#3c4043';
const FAINT = '#c4c7c5';

/**
 * A stroke as two paths, in drawing units: the ink, which both sides of the picture show, and its
 * figure.
 */
function formatPictureParts({ points: drawn }, { points, figure }, round, scale = 1) {
  const ink = toPathData(drawn, scale);
  const isAsDrawn = points === drawn;
  const color = isAsDrawn ? INK : COLORS[figure];
  const ideal = isAsDrawn ? ink : toPathData(points, scale);
  return { texts: [`<path d="${ink}"/>\n`, `<path stroke="${color}" d="${ideal}"/>\n`] };
}

function toPathData(points, scale) {
  return pathData(points.map(([x, y]) => ({ x: x * scale, y: y * scale })));
}

/**
 * The picture: left the ink as drawn, right the figures over a shadow of it.
 *
 * @param {object} summary
 * @param {{x: number, y: number, width: number, height: number}} summary.view what is shown
 * @param {Record<string, number>} summary.figures strokes by figure
 * @returns {Array<string|number>} texts, and the numbers of the parts between them
 */
function composePicture({ view, figures }) {
  const zoom = Math.min(PANEL / view.width, PANEL / view.height);
  const panel = { width: view.width * zoom, height: view.height * zoom };
  const width = Math.max(2 * panel.width + 3 * GAP, LEAST_WIDTH);
  const height = panel.height + CAPTION + GAP;
  const right = width / 2 + GAP / 2;
  const place = (left) =>
    `transform="translate(${left} ${CAPTION}) scale(${zoom}) translate(${-view.x} ${-view.y})"`;
  return [
    `${openSvg({ x: 0, y: 0, width, height })}
<rect width="${width}" height="${height}" fill="#fff"/>
<g font-family="sans-serif" font-size="16" fill="${INK}">
<text x="${GAP}" y="28">as drawn</text>
<text x="${right}" y="28">idealised: ${describeFigures(figures)}</text>
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

function describeFigures(figures) {
  const counts = Object.keys(COLORS)
    .filter((figure) => figures[figure])
    .map((figure) => `<tspan fill="${COLORS[figure]}">${figure} ${figures[figure]}</tspan>`);
  if (figures.none) counts.push(`<tspan>left as drawn ${figures.none}</tspan>`);
  return counts.join(', ') || 'no stroke';
}

module.exports = { composePicture, formatPictureParts };
