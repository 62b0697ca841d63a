'use strict';

const { parseArgs } = require('node:util');
const { UserError } = require('./user-error.js');

/** The reader of our standard output has closed the pipe, as `head` does. */
class ReaderGone extends Error {}

/**
 * Runs a command and turns its failures into messages and exit codes.
 *
 * @param {string} name of the command
 * @param {string[]} argv arguments after the name
 * @param {() => object} load the command's module, with
 *   `parse`: (argv) => options, where `help` asks for the help text;
 *   `help`: that text;
 *   `run`: (options, {stdout, stderr}) => Promise of the exit code
 * @param {{stdout?: NodeJS.WriteStream, stderr?: NodeJS.WriteStream}} [io]
 * @returns {Promise<number>} exit code: that of `run`, 0 when the reader of standard output has
 *   gone, 2 for a failure
 */
async function runCommand(
  name,
  argv,
  load,
  { stdout = process.stdout, stderr = process.stderr } = {},
) {
  try {
    const command = load();
    const options = command.parse(argv);
    if (!options.help) return await command.run(options, { stdout, stderr });
    await print(stdout, command.help);
    return 0;
  } catch (error) {
    if (error instanceof ReaderGone) return 0;
    const message = error instanceof UserError ? error.message : error.stack;
    stderr.write(`${['scrivo', name].join(' ').trim()}: ${message}\n`);
    return 2;
  }
}

/** Writes a text and waits until it has been taken. */
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

/** The error to show when an output cannot be written. */
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
    // Node's further sentences are about arguments that begin with a dash.
    const [message] = error.message.split('. ');
    throw new UserError(`${message}\nscrivo ${name} --help lists the options`);
  }
}

/** The value of an option that is a positive number. */
function positive(name, text) {
  const value = Number(text);
  if (text.trim() !== '' && value > 0 && Number.isFinite(value)) return value;
  throw new UserError(`--${name} must be a positive number, found ${text}`);
}

/** The value of an option that is a whole number from `min` to `max`. */
function whole(name, text, min, max = 1000) {
  const value = Number(text);
  if (/^\d+$/.test(text) && value >= min && value <= max) return value;
  throw new UserError(`--${name} must be a whole number from ${min} to ${max}, found ${text}`);
}

module.exports = { parseCommandLine, positive, print, runCommand, whole, writeFailure };
