'use strict';

// The command line of the drawing page's server. Loads nothing that `npm install` has to fetch.

const { parseArgs } = require('node:util');

const DEFAULT_PORT = 4173;

const USAGE = `Serves a page to draw on, on this computer only.

usage: npm start -- [--port N]

  --port N  port to listen on, 0 for any free one (${DEFAULT_PORT}, or a free one when it is taken)
  --help    this text
`;

/** An error to show without its stack. */
const failure = (message) => Object.assign(new Error(message), { expected: true });

/** @returns {{help?: true, port?: number}} */
function parseCommandLine(args) {
  let values;
  try {
    ({ values } = parseArgs({
      args,
      options: { port: { type: 'string' }, help: { type: 'boolean' } },
    }));
  } catch (error) {
    throw failure(`${error.message.split('. ')[0]}\n\n${USAGE}`);
  }
  if (values.help) return { help: true };
  if (values.port === undefined) return {};
  const port = /^\d+$/.test(values.port) ? Number(values.port) : NaN;
  if (port < 65536) return { port };
  throw failure('--port must be a whole number from 0 (any free port) to 65535.');
}

function printHelp() {
  process.stdout.write(USAGE);
  return 0;
}

module.exports = { DEFAULT_PORT, failure, parseCommandLine, printHelp };
