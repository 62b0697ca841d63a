// @ts-check
// The ink of the drawing in the formats of the command line: InkML, and NDJSON with one stroke a line.

import { STRIDE } from '../model/ink.mjs';

const PIXELS_PER_INCH = 96;
const round = (/** @type {number} */ v) => Math.round(v * 1000) / 1000;

/** x, y, pressure (if it was measured) and time of each sample. @param {Ink} ink */
function pointsOf({ samples, measured }) {
  return Array.from({ length: samples.length / STRIDE }, (_, i) => {
    const [x, y, pressure, time] = Array.from(
      samples.subarray(STRIDE * i, STRIDE * (i + 1)),
      round,
    );
    return { x, y, force: measured ? pressure : null, time };
  });
}

/** @param {Ink} ink */
export function writeNdjson(ink) {
  const { frame } = ink;
  const points = pointsOf(ink).map(({ x, y, force, time }) => [x, y, force, time]);
  return `${JSON.stringify({ width: frame.width / frame.scale, height: frame.height / frame.scale, points })}\n`;
}

/** @param {Item[]} items @param {string[]} colours */
export function writeInkml(items, colours) {
  const brushes = new Map(
    items.map(({ colour, width }) => [`brush-${colour}-${width}`, { colour, width }]),
  );
  const brushTexts = Array.from(
    brushes,
    ([id, { colour, width }]) =>
      `<brush xml:id="${id}"><brushProperty name="color" value="${colours[colour]}"/>` +
      `<brushProperty name="width" value="${width}" units="px"/></brush>`,
  );
  const traces = items.map(({ ink, colour, width }) => {
    const points = pointsOf(ink).map(
      ({ x, y, force, time }) => `${x} ${y} ${force ?? '?'} ${time}`,
    );
    return `<trace brushRef="#brush-${colour}-${width}">${points.join(', ')}</trace>`;
  });
  const resolution = ['X', 'Y'].map(
    (channel) =>
      `<channelProperty channel="${channel}" name="resolution" value="${PIXELS_PER_INCH}" units="1/in"/>`,
  );
  return `<?xml version="1.0" encoding="UTF-8"?>
<ink xmlns="http://www.w3.org/2003/InkML">
<definitions>
<context xml:id="page"><inkSource xml:id="pen"><traceFormat>
<channel name="X" type="decimal"/><channel name="Y" type="decimal"/>
<intermittentChannels><channel name="F" type="decimal" min="0" max="1"/><channel name="T" type="decimal" units="ms"/></intermittentChannels>
</traceFormat><channelProperties>${resolution.join('')}</channelProperties></inkSource></context>
${brushTexts.join('\n')}
</definitions>
<traceGroup contextRef="#page">
${traces.join('\n')}
</traceGroup>
</ink>
`;
}
