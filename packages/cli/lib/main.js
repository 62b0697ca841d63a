'use strict';

const { version } = require('../package.json');
const { runCommand } = require('./command.js');
const { UserError } = require('./user-error.js');

/** Commands by name. Each is loaded when it is run, so that `--help` needs no native module. */
const COMMANDS = {
  idealise: {
    summary: 'replace freehand strokes by ideal figures',
    load: () => require('./commands/idealise.js'),
  },
  render: {
    summary: 'draw strokes and their figures side by side, as SVG or PNG',
    load: () => require('./commands/render.js'),
  },
  evaluate: {
    summary: 'score an engine on labelled strokes',
    load: () => require('./commands/evaluate.js'),
  },
  draw: {
    summary: 'open a page to draw on',
    load: () => require('./commands/draw.js'),
  },
};

const HELP = `usage: scrivo COMMAND [options] [FILE...]

${Object.entries(COMMANDS)
  .map(([name, { summary }]) => `  ${name.padEnd(10)} ${summary}`)
  .join('\n')}

  --help     this text; after a command, its options and examples
  --version  the version of scrivo
`;

const VERSION = `${version}\n`;
const TEXTS = { '--version': VERSION, '-V': VERSION, '--help': HELP, '-h': HELP, help: HELP };

const ALIASES = { idealize: 'idealise' };

/**
 * The program `scrivo`.
 *
 * @param {string[]} argv arguments after the program's name
 * @param {{stdout?: NodeJS.WriteStream, stderr?: NodeJS.WriteStream}} [io] the process's own by
 *   default
 * @returns {Promise<number>} exit code: that of the command, 2 for a wrong command line
 */
function main([first = '', ...rest], io) {
  const name = ALIASES[first] ?? first;
  if (first === 'help' && rest.length > 0) return main([rest[0], '--help'], io);
  if (Object.hasOwn(COMMANDS, name)) return runCommand(name, rest, COMMANDS[name].load, io);
  return runCommand('', rest, () => ({ parse: () => ({ help: true }), help: textFor(name) }), io);
}

function textFor(name) {
  if (Object.hasOwn(TEXTS, name)) return TEXTS[name];
  const problem = name === '' ? 'name a command' : `there is no command ${name}`;
  throw new UserError(`${problem}\n\n${HELP}`);
}

module.exports = { main };
