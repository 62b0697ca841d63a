'use strict';

const { readPoints } = require('./stroke-points.js');

/** What is neither ink nor a shape. */
const NOT_SHAPES = new Set(['textstroke', 'bitmapimage', 'vectorimage']);

/**
 * The pen strokes of an Rnote document, in its order. Curves are read as their end points, which
 * lie as close as the pen was sampled.
 *
 * @param {object} document
 * @yields {{records: object[], passedOver: string[]}} see readInk; each record has its element
 */
function* readRnote({ data }) {
  const { document = {}, stroke_components: components = [] } = data.engine_snapshot ?? data;
  const dpi = document.format?.dpi;
  const records = [];
  const passedOver = [];
  components.forEach((component, i) => {
    const [[name, element] = []] = Object.entries(component?.value ?? {});
    if (name === 'brushstroke') records.push({ ...readBrush(element, dpi), line: i + 1 });
    else if (name !== undefined && !NOT_SHAPES.has(name)) passedOver.push(name);
  });
  yield { records, passedOver };
}

function readBrush(element, dpi) {
  const { start, segments = [] } = element.path ?? {};
  const ends = [start, ...segments.map((segment) => Object.values(segment ?? {})[0]?.end)];
  const { points, problem } = readPoints(
    ends.map((end) => [...(end?.pos ?? []), end?.pressure ?? null]),
    'path',
  );
  if (problem) return { problem };
  const [style = {}] = Object.values(element.style ?? {});
  const fields = { ...colourOf(style.stroke_color) };
  if (style.stroke_width > 0) fields['stroke-width'] = style.stroke_width;
  return { stroke: { points, fields, ...(dpi > 0 && { scale: 96 / dpi }) }, element };
}

/** From fractions of red, green, blue and opacity. */
function colourOf(colour) {
  if (!colour) return {};
  const { r, g, b, a = 1 } = colour;
  const digits = [r, g, b].map((part) =>
    Math.round(255 * part)
      .toString(16)
      .padStart(2, '0'),
  );
  return { stroke: `#${digits.join('')}`, ...(a < 1 && { 'stroke-opacity': a }) };
}

/** Gives a brush stroke the path of its figure, drawn with even pressure. */
function rewriteBrush(element, { points }) {
  const pressure = Math.max(0.5, element.path.start.pressure ?? 0);
  const [start, ...ends] = points.map(([x, y]) => ({ pos: [x, y], pressure }));
  element.path = { start, segments: ends.map((end) => ({ lineto: { end } })) };
}

module.exports = { readRnote, rewriteBrush };
