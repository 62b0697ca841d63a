'use strict';

/**
 * The members of a JSON object as they stand in its text. What JSON.parse makes of a value may be
 * less than was written: a number has at most 17 digits, and of members of one name the last alone
 * is left.
 */

const SPACE = /\s*/y;
const [QUOTE, COMMA, BACKSLASH] = ['"', ',', '\\'].map((character) => character.charCodeAt(0));

// This bit alone tells brackets from braces.
const CURLY = 0x20;
const [OPENING, CLOSING] = ['{', '}'].map((character) => character.charCodeAt(0));

/**
 * @param {string} text an object that JSON.parse can read
 * @returns {Array<{name: string, start: number, end: number}>} where the value of each member
 *   stands, in their order
 */
function membersOf(text) {
  const members = [];
  let at = skipSpace(text, text.indexOf('{') + 1);
  while (text.charCodeAt(at) === QUOTE) {
    const nameEnd = endOfString(text, at);
    const start = skipSpace(text, text.indexOf(':', nameEnd) + 1);
    const next = endOfValue(text, start);
    const end = start + text.slice(start, next).trimEnd().length;
    members.push({ name: JSON.parse(text.slice(at, nameEnd)), start, end });
    at = skipSpace(text, next + 1);
  }
  return members;
}

function skipSpace(text, at) {
  SPACE.lastIndex = at;
  SPACE.test(text);
  return SPACE.lastIndex;
}

/** After the closing quotation mark of the string that begins at `at`. */
function endOfString(text, at) {
  let i = at + 1;
  for (let code; (code = text.charCodeAt(i)) !== QUOTE; i += 1) if (code === BACKSLASH) i += 1;
  return i + 1;
}

/** The comma or brace after the value that begins at `at`. */
function endOfValue(text, at) {
  let depth = 0;
  for (let i = at; ; i += 1) {
    const code = text.charCodeAt(i);
    if (code === QUOTE) i = endOfString(text, i) - 1;
    else if (depth === 0 && (code === COMMA || (code | CURLY) === CLOSING)) return i;
    else if ((code | CURLY) === OPENING) depth += 1;
    else if ((code | CURLY) === CLOSING) depth -= 1;
  }
}

/**
 * Gives members of an object new values, or adds them at its end; all else stays to the letter.
 *
 * @param {string} text an object of one member at least that JSON.parse can read, without white
 *   space around it
 * @param {Record<string, unknown>} values by name
 * @returns {string}
 */
function replaceMembers(text, values) {
  const left = new Set(Object.keys(values));
  let [result, taken] = ['', 0];
  for (const { name, start, end } of membersOf(text)) {
    if (!Object.hasOwn(values, name)) continue;
    result += text.slice(taken, start) + JSON.stringify(values[name]);
    taken = end;
    left.delete(name);
  }
  const added = [...left].map((name) => `,${JSON.stringify(name)}:${JSON.stringify(values[name])}`);
  return `${result}${text.slice(taken, -1)}${added.join('')}}`;
}

module.exports = { membersOf, replaceMembers };
