'use strict';

const { escapeText } = require('../svg.js');

const INKML_HEAD = `<?xml version="1.0" encoding="UTF-8"?>
<ink xmlns="http://www.w3.org/2003/InkML">
<traceFormat>
<channel name="X" type="decimal"/>
<channel name="Y" type="decimal"/>
<intermittentChannels><channel name="F" type="decimal"/></intermittentChannels>
</traceFormat>
`;

const INKML_TAIL = '</ink>\n';

/** A stroke as a trace, in a group that bears its figure and other fields as annotations. */
function formatInkml({ fields }, { points, type, figure }, round) {
  const annotations = Object.entries({ ...fields, type, figure })
    .filter(([, value]) => typeof value === 'string' || typeof value === 'number')
    .map(([name, value]) => `<annotation type="${xmlText(name)}">${xmlText(value)}</annotation>`);
  const trace = points.map(([x, y, force]) =>
    typeof force === 'number' ? `${round(x)} ${round(y)} ${force}` : `${round(x)} ${round(y)}`,
  );
  return [`<traceGroup>${annotations.join('')}<trace>${trace.join(', ')}</trace></traceGroup>\n`];
}

// XML knows no way to write these.
// eslint-disable-next-line no-control-regex
const NOT_IN_XML = /[\u0000-\u0008\u000b\u000c\u000e-\u001f\ufffe\uffff]/g;

/** Text for XML, without the characters that XML has no place for. */
function xmlText(value) {
  return escapeText(value).replace(NOT_IN_XML, '');
}

module.exports = { INKML_HEAD, INKML_TAIL, formatInkml, xmlText };
