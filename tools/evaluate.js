'use strict';

// `scrivo evaluate`, and for the beautifier also the kinds of the figures and how
// far they lie from the ink.

const { parse } = require('../packages/cli/lib/commands/evaluate.js');
const { main } = require('../packages/cli/lib/main.js');

const ARGUMENTS = process.argv.slice(2);
const LINES = /\.ndjson(\.gz)?$/;

/** The files whose figures are to be measured. */
function filesOf({ help, json, engine, inputs }) {
  if (help || json || engine !== 'beautifier') return [];
  const files = inputs.filter((input) => LINES.test(input));
  if (files.length < inputs.length) {
    console.error('kinds and distances are printed for files of NDJSON only');
  }
  return files;
}

function printFigures(files) {
  const { printShapesOf } = require('../research/beautifier/evaluate.js');
  console.log('\nKinds and distances, longer sides of 200 units');
  printShapesOf(files);
}

main(['evaluate', ...ARGUMENTS]).then((exitCode) => {
  process.exitCode = exitCode;
  if (exitCode === 2) return;
  const files = filesOf(parse(ARGUMENTS));
  if (files.length > 0) printFigures(files);
});
