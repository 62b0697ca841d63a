'use strict';

const { PIXELS_PER_INCH } = require('../units.js');
const { escapeText } = require('../svg.js');
const { textFields } = require('./fields.js');

const TRACE_FORMAT = `<traceFormat>
<channel name="X" type="decimal"/>
<channel name="Y" type="decimal"/>
<intermittentChannels>
<channel name="F" type="decimal" min="0" max="1"/>
<channel name="T" type="decimal" units="ms"/>
</intermittentChannels>
</traceFormat>`;

const INKML_HEAD = `<?xml version="1.0" encoding="UTF-8"?>
<ink xmlns="http://www.w3.org/2003/InkML">
<context>${TRACE_FORMAT}</context>
`;

const INKML_TAIL = '</ink>\n';

/** Fields that a brush stands for, by its properties. */
const BRUSH = { color: 'stroke', width: 'stroke-width' };

/**
 * A stroke as a trace, in a group that bears its figure and other fields as annotations, and refers
 * to its unit and its brush.
 */
function formatInkml(stroke, { points, type, figure }, round, scale) {
  const fields = textFields(stroke);
  const brush = takeBrush(fields);
  const references = { contextRef: unitOf(scale), brushRef: brush };
  fields.set('type', type).set('figure', figure);
  const annotations = Array.from(
    fields,
    ([name, value]) => `<annotation type="${xmlText(name)}">${xmlText(value)}</annotation>`,
  );
  const used = Object.entries(references).filter(([, definition]) => definition);
  const attributes = used.map(([name, { id }]) => ` ${name}="#${id}"`);
  const trace = points.map((point) => formatPoint(point, round)).join(', ');
  const text =
    `<traceGroup${attributes.join('')}>${annotations.join('')}` +
    `<trace>${trace}</trace></traceGroup>\n`;
  return {
    texts: [text],
    definitions: Object.fromEntries(used.map(([, { id, text: definition }]) => [id, definition])),
  };
}

function formatPoint([x, y, force, time], round) {
  const place = `${round(x)} ${round(y)}`;
  const isTimed = typeof time === 'number';
  if (typeof force === 'number') return isTimed ? `${place} ${force} ${time}` : `${place} ${force}`;
  return isTimed ? `${place} ? ${time}` : place;
}

/** The definition of a context that says how long a unit of the coordinates is. */
function unitOf(scale) {
  if (scale === undefined) return undefined;
  const id = `unit-${scale}`;
  const resolution = ['X', 'Y'].map(
    (channel) =>
      `<channelProperty channel="${channel}" name="resolution" ` +
      `value="${PIXELS_PER_INCH / scale}" units="1/in"/>\n`,
  );
  const text = `<definitions><context xml:id="${id}"><inkSource xml:id="source-${id}">
${TRACE_FORMAT}
<channelProperties>
${resolution.join('')}</channelProperties>
</inkSource></context></definitions>
`;
  return { id, text };
}

/** The definition of a brush for the fields that one stands for, which are taken away. */
function takeBrush(fields) {
  const properties = [];
  let id = 'brush';
  for (const [property, name] of Object.entries(BRUSH)) {
    const value = fields.get(name);
    // Without a word of its unit a width would be taken for one in the unit of the coordinates.
    if (!value || (property === 'width' && !(Number(value) > 0))) continue;
    fields.delete(name);
    id += `_${property}-${toName(value)}`;
    properties.push(`<brushProperty name="${property}" value="${xmlText(value)}"/>`);
  }
  if (properties.length === 0) return undefined;
  const text = `<definitions><brush xml:id="${id}">${properties.join('')}</brush></definitions>\n`;
  return { id, text };
}

/** Any text in the letters that an XML name may have, another one for each. */
function toName(text) {
  return text.replace(/[^A-Za-z0-9.]/g, (character) => `-${character.charCodeAt(0).toString(16)}-`);
}

// XML knows no way to write these.
// eslint-disable-next-line no-control-regex
const NOT_IN_XML = /[\u0000-\u0008\u000b\u000c\u000e-\u001f\ufffe\uffff]/g;

/** Text for XML, without the characters that XML has no place for. */
function xmlText(value) {
  return escapeText(value).replace(NOT_IN_XML, '');
}

module.exports = { INKML_HEAD, INKML_TAIL, formatInkml, xmlText };
