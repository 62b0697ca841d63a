'use strict';

const { parseArgs } = require('node:util');
const { closest, distance } = require('fastest-levenshtein');
const { UserError } = require('./user-error.js');

/** Whoever read our standard output has enough, as in `scrivo idealise ink.ndjson | head`. */
class ReaderGone extends Error {}

// Misspellings of more letters than this are other words.
const TYPO = 3;

/**
 * Runs a command and turns its failures into messages and exit codes.
 *
 * @param {string} name of the command
 * @param {(io: {stdout: NodeJS.WritableStream, stderr: NodeJS.WritableStream}) =>
 *   Promise<number>} body gives the exit code
 * @param {{stdout?: NodeJS.WritableStream, stderr?: NodeJS.WritableStream}} [io]
 * @returns {Promise<number>} exit code: that of the body, 0 when the reader of standard output has
 *   gone, 2 for a failure
 */
async function runCommand(name, body, { stdout = process.stdout, stderr = process.stderr } = {}) {
  try {
    return await body({ stdout, stderr });
  } catch (error) {
    if (error instanceof ReaderGone) return 0;
    const message = error instanceof UserError ? error.message : error.stack;
    stderr.write(`scrivo ${name}: ${message}\n`);
    return 2;
  }
}

/**
 * Runs a command that has options and a help text.
 *
 * @param {string} name of the command
 * @param {object} command
 * @param {() => object} command.parse the command line; `help` in the result asks for the text
 * @param {string} command.help
 * @param {(options: object, io: object) => Promise<number>} command.run gives the exit code
 * @param {object} [io] see runCommand
 * @returns {Promise<number>} exit code
 */
function runWithOptions(name, { parse, help, run }, io) {
  const body = async ({ stdout, stderr }) => {
    const options = parse();
    if (!options.help) return run(options, { stdout, stderr });
    await print(stdout, help);
    return 0;
  };
  return runCommand(name, body, io);
}

/** Writes a text and waits until it is out; says why when it cannot be. */
async function print(stream, text) {
  try {
    await new Promise((resolve, reject) => {
      stream.once('error', reject);
      stream.write(text, (error) => (error ? reject(error) : resolve()));
    });
  } catch (error) {
    throw writeFailure('standard output', error);
  }
}

/** The error to show when standard output, a pipe or a device cannot be written. */
function writeFailure(name, error) {
  if (error.code === 'EPIPE') return new ReaderGone();
  return new UserError(`${name} cannot be written: ${error.message}`);
}

/**
 * Reads a command line.
 *
 * @param {string} name of the command
 * @param {string[]} args
 * @param {object} options in the form of util.parseArgs
 * @returns {{values: object, positionals: string[]}}
 */
function parseCommandLine(name, args, options) {
  try {
    return parseArgs({ args, options, allowPositionals: true });
  } catch (error) {
    const [, unknown] = /^Unknown option '--?([^']*)'/.exec(error.message) ?? [];
    // What Node says beyond its first sentence is about arguments that begin with a dash.
    const message = error.message.split('. ')[0];
    const hint = unknown && suggest(`--${unknown}`, names(options));
    throw new UserError(`${message}${hint ?? ''}\nscrivo ${name} --help lists the options`);
  }
}

function names(options) {
  return Object.keys(options).map((option) => `--${option}`);
}

/** A question to be put after a word that is not known, when one of the known is much like it. */
function suggest(word, known) {
  const nearest = closest(word, known);
  return distance(word, nearest) <= TYPO ? ` - did you mean ${nearest}?` : undefined;
}

/** The value of an option that is a number above 0. */
function positive(name, text) {
  const value = Number(text);
  if (text.trim() !== '' && value > 0 && Number.isFinite(value)) return value;
  throw new UserError(`--${name} must be a positive number, found ${text}`);
}

/** The value of an option that is a whole number within bounds. */
function whole(name, text, least, most = 1e3) {
  const value = Number(text);
  if (/^\d+$/.test(text) && value >= least && value <= most) return value;
  throw new UserError(`--${name} must be a whole number from ${least} to ${most}, found ${text}`);
}

/** The value of --unit: what labelled strokes are scaled to, see placeStroke. */
function parseUnit(text) {
  if (text === 'natural') return text;
  if (Number(text) > 0 && Number.isFinite(Number(text))) return Number(text);
  throw new UserError(`--unit must be a positive number or natural, found ${text}`);
}

module.exports = {
  parseCommandLine,
  parseUnit,
  positive,
  print,
  runCommand,
  runWithOptions,
  suggest,
  whole,
  writeFailure,
};
