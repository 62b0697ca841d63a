'use strict';

const { toText } = require('../read/long-integers.js');
const { PIXELS_PER_INCH } = require('../units.js');
const { escapeText } = require('../svg.js');
const { answerFields, textFields } = require('./fields.js');

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

/** The fields that become properties of a brush. */
const BRUSH = { color: 'stroke', width: 'stroke-width', transparency: 'stroke-opacity' };

/**
 * A stroke as a trace, in a group with the answer and other fields as annotations and references
 * to its unit and brush.
 */
function formatInkml(stroke, answer, round, scale) {
  const fields = textFields(stroke);
  const brush = takeBrush(fields);
  const references = { contextRef: unitOf(scale), brushRef: brush };
  for (const [name, value] of Object.entries(answerFields(answer))) {
    if (value === null) fields.delete(name);
    else fields.set(name, toText(value));
  }
  const annotations = Array.from(
    fields,
    ([name, value]) => `<annotation type="${escapeText(name)}">${escapeText(value)}</annotation>`,
  );
  const used = Object.entries(references).filter(([, definition]) => definition);
  const attributes = used.map(([name, { id }]) => ` ${name}="#${id}"`);
  const trace = answer.points.map((point) => formatPoint(point, round)).join(', ');
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

/** The definition of a context that states the length of a unit of the coordinates. */
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

/** The definition of a brush for the fields that it replaces, which are removed. */
function takeBrush(fields) {
  const properties = [];
  let id = 'brush';
  for (const [property, name] of Object.entries(BRUSH)) {
    const value = toProperty(property, fields.get(name));
    if (!value) continue;
    fields.delete(name);
    id += `_${property}-${toName(value)}`;
    properties.push(`<brushProperty name="${property}" value="${escapeText(value)}"/>`);
  }
  if (properties.length === 0) return undefined;
  const text = `<definitions><brush xml:id="${id}">${properties.join('')}</brush></definitions>\n`;
  return { id, text };
}

/** A width is written without a unit, so only plain numbers can be; transparency is up to 255. */
function toProperty(property, value) {
  if (property === 'color') return value;
  if (!(Number(value) > 0)) return undefined;
  if (property === 'width') return value;
  return Number(value) < 1 ? String(Math.round(255 * (1 - Number(value)))) : undefined;
}

/** Maps a text to an XML name, different for different texts. */
function toName(text) {
  return text.replace(/[^A-Za-z0-9.]/g, (character) => `-${character.charCodeAt(0).toString(16)}-`);
}

module.exports = { INKML_HEAD, INKML_TAIL, formatInkml };
