'use strict';

// svgpath takes time with the square of the numbers of a command, from some 16,000 on.
const LONG = 50000; // characters of a command
const RUN = 1000; // repetitions of a command in a part of it

// Not cut off within the digits, whatever follows.
const NUMBER = String.raw`[-+]?(?:\d+\.\d*|\.\d+|\d+(?![\d.]))(?:[eE][-+]?\d+)?(?!\d)`;
const GAP = String.raw`[\s,]*`;

const repeated = (count) => `(?:${NUMBER}${GAP}){${count}}`;
const ARC = `${repeated(3)}[01]${GAP}[01]${GAP}${repeated(2)}`;

/** Repetitions of each command's numbers, where the last match ended. */
const RUNS = Object.fromEntries(
  Object.entries({ M: 2, L: 2, H: 1, V: 1, C: 6, S: 4, Q: 4, T: 2, A: 7 }).map(
    ([letter, count]) => [
      letter,
      new RegExp(`${GAP}(?:${letter === 'A' ? ARC : repeated(count)}){1,${RUN}}`, 'y'),
    ],
  ),
);

const COMMAND = new RegExp(`([a-df-z])([^a-df-z]{${LONG},})`, 'gi');

/** Path data of the same meaning in which no command has very many numbers. */
function splitCommands(data) {
  return data.length < LONG ? data : data.replace(COMMAND, splitCommand);
}

function splitCommand(whole, letter, numbers) {
  const run = RUNS[letter.toUpperCase()];
  if (!run) return whole;
  const parts = [];
  run.lastIndex = 0;
  for (let end = 0; ; end = run.lastIndex) {
    const [part] = run.exec(numbers) ?? [];
    if (part === undefined) return parts.join('') + (end === 0 ? whole : numbers.slice(end));
    parts.push(parts.length === 0 ? letter : nextLetter(letter), part);
  }
}

/** Pairs after the first of a move are lines. */
function nextLetter(letter) {
  return { M: 'L', m: 'l' }[letter] ?? letter;
}

module.exports = { splitCommands };
