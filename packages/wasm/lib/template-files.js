// Template files: white space between outlines, each x1,y1,x2,y2,... Here JavaScript
// reads them and gets the same numbers as the core, which uses the C library.

const NUMBER = /^[+-]?(?:(?:\d+\.?\d*|\.\d+)(?:e[+-]?\d+)?|inf(?:inity)?|nan)/i;

/** The number that a text begins with, 0 without one. Hexadecimal numbers read as 0. */
function numberIn(text) {
  const [start] = NUMBER.exec(text) ?? ['0'];
  if (/n/i.test(start)) return /nan/i.test(start) ? NaN : start[0] === '-' ? -Infinity : Infinity;
  return Number(start);
}

/** The coordinates of an outline; an odd last number is left out. */
function coordinatesIn(token) {
  const fields = token.split(',').filter((field) => field !== '');
  return fields.slice(0, fields.length & ~1).map(numberIn);
}

/** The outlines of a template file as arrays of coordinates. */
const outlinesIn = (text) =>
  text
    .split(/[ \t\n\v\f\r]+/)
    .filter((token) => token !== '')
    .map(coordinatesIn);

const decoder = new TextDecoder('latin1');
const encoder = new TextEncoder();

/** The text of a file that is given as text or bytes. */
export const textOf = (content) =>
  typeof content === 'string' ? content : decoder.decode(content);

/** A file as the numbers that template_engine.cpp reads: its name and its outlines. */
export function packFile(name, text) {
  const bytes = encoder.encode(name);
  const outlines = outlinesIn(text);
  const parts = outlines.flatMap((outline) => [outline.length, ...outline]);
  return [bytes.length, ...bytes, outlines.length, ...parts];
}
