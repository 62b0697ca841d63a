'use strict';

// Small faults for C++ sources formatted by clang-format: spaces tell binary operators from
// signs, references and the brackets of templates.

/** Pairs of tokens that replace each other. */
const SWAPS = [
  [' + ', ' - '],
  [' * ', ' / '],
  [' += ', ' -= '],
  [' *= ', ' /= '],
  [' && ', ' || '],
  [' == ', ' != '],
  ['std::min', 'std::max'],
  ['std::sin', 'std::cos'],
  ['true', 'false'],
  ['front()', 'back()'],
];

/** A comparison moves its bound and is negated. */
const COMPARISONS = {
  ' < ': [' <= ', ' >= '],
  ' <= ': [' < ', ' > '],
  ' > ': [' >= ', ' <= '],
  ' >= ': [' > ', ' < '],
};

const TOKENS = new Map([
  ...SWAPS.flatMap(([a, b]) => [
    [a, [b]],
    [b, [a]],
  ]),
  ...Object.entries(COMPARISONS),
  ['std::abs', ['']],
]);

const TOKEN = new RegExp(
  [...TOKENS.keys()].map((token) => token.replace(/[*+|()]/g, '\\$&')).join('|'),
  'g',
);
const SIGN = /(?<![\w)\]-])[-!](?=[\w(])/g;
const NUMBER = /(?<![\w.])(\d+(?:\.\d+)?)(e-?\d+)?([FU]?)(?![\w.])/g;

/** Text and assertions, which change no answer, and lines of the preprocessor. */
const IGNORED =
  /\/\/[^\n]*|\/\*[^]*?\*\/|"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])*'(?!\d)|^\s*#[^\n]*|\b(?:static_)?assert\([^;]*;/gm;

const blank = (text) => text.replace(/[^\n]/g, ' ');

/** Numbers near one: whole ones a step away, others a tenth larger. */
function numbersNear([, digits, exponent = '', suffix]) {
  if (!digits.includes('.') && exponent === '') {
    const value = Number(digits);
    const near = value === 0 ? [1] : [value + 1, value - 1];
    return near.map((number) => `${number}${suffix}`);
  }
  const value = Number(digits) === 0 ? 0.1 : Number((1.1 * Number(digits)).toPrecision(12));
  const text = String(value);
  return [`${text.includes('.') ? text : `${text}.0`}${exponent}${suffix}`];
}

/** What may stand in the source instead of other text: `at` and `from`, `to`. */
function* changesOf(source) {
  const code = source.replace(IGNORED, blank);
  for (const match of code.matchAll(TOKEN)) {
    for (const to of TOKENS.get(match[0])) yield { at: match.index, from: match[0], to };
  }
  for (const match of code.matchAll(SIGN)) yield { at: match.index, from: match[0], to: '' };
  for (const match of code.matchAll(NUMBER)) {
    for (const to of numbersNear(match)) yield { at: match.index, from: match[0], to };
  }
}

/**
 * All mutants of a source: `text` is the whole source with the fault; `line` its number;
 * `before` and `after` are the line without and with it.
 */
function mutantsOf(source) {
  return [...changesOf(source)].map(({ at, from, to }) => {
    const text = source.slice(0, at) + to + source.slice(at + from.length);
    const start = source.lastIndexOf('\n', at - 1) + 1;
    const lineIn = (whole) => whole.slice(start).split('\n', 1)[0].trim();
    const line = source.slice(0, start).split('\n').length;
    return { line, before: lineIn(source), after: lineIn(text), text };
  });
}

module.exports = { mutantsOf };
